-- The figures of one location for the window of barcodes, as one row; Error is 1 for a location that does not exist.
-- A location without an assigned material has NULL in ItemCode, which the client words itself. Quantity sums the active
-- packages, strangers too, since that is what the list of the window shows. QuantityPer is the fill as the plan shows it,
-- QuantityPerCalculate the sum of the shares of the packages: they may differ, since the fill counts volume and weight apart.
DROP PROCEDURE IF EXISTS dbo.Kolv_mag_Param_Location_BarCode;
GO
CREATE PROCEDURE dbo.Kolv_mag_Param_Location_BarCode
    @Rank smallint,
    @Stand smallint,
    @Shelf smallint,
    @Location smallint
AS
BEGIN
    SET NOCOUNT ON;

    DECLARE @ItemCode nvarchar(20);
    DECLARE @ItemName nvarchar(100);
    DECLARE @GroupCode smallint;
    DECLARE @GroupName nvarchar(100);
    DECLARE @Fill smallint;
    DECLARE @Quantity decimal(19, 2);
    DECLARE @Shares decimal(19, 2);
    DECLARE @CodeActive int;
    DECLARE @CodeGlobal int;
    DECLARE @Error smallint = 1;

    SELECT @Fill = LocationPercent, @Error = 0
    FROM dbo.kolv_mag_Location
    WHERE Rank = @Rank AND Stand = @Stand AND Shelf = @Shelf AND Location = @Location;

    SELECT @ItemCode = NULLIF(L.ItemCode, N''), @ItemName = L.ItemName, @GroupCode = L.GroupSur,
        @GroupName = G.GroupSurName
    FROM dbo.kolv_mag_Location_Item AS L
        LEFT JOIN dbo.kolv_mag_Location_Group AS G ON G.GroupSur = L.GroupSur
    WHERE L.Rank = @Rank AND L.Stand = @Stand AND L.Shelf = @Shelf AND L.Location = @Location;

    SELECT @CodeGlobal = COUNT(*),
        @CodeActive = SUM(CASE WHEN Active = N'Y' THEN 1 ELSE 0 END),
        @Quantity = SUM(CASE WHEN Active = N'Y' THEN Quantity ELSE 0 END),
        @Shares = SUM(CASE WHEN Active = N'Y' THEN LinePercent ELSE 0 END)
    FROM dbo.Kolv_Mag_BarCode_Sur
    WHERE Rank = @Rank AND Stand = @Stand AND Shelf = @Shelf AND Location = @Location;

    SELECT @ItemCode AS ItemCode, @ItemName AS ItemName, ISNULL(@Quantity, 0) AS Quantity,
        ISNULL(@Fill, 0) AS QuantityPer, ISNULL(@CodeActive, 0) AS CodeActive, ISNULL(@CodeGlobal, 0) AS CodeGlobal,
        ISNULL(@GroupCode, 0) AS GroupCode, @GroupName AS GroupName, ISNULL(@Shares, 0) AS QuantityPerCalculate,
        @Error AS Error;
    RETURN 0;
END
GO
