-- The figures of one location for the stand detail, as one row; no row for a location that does not exist.
-- QuantityLocation is what lies there of the materials that belong there (assigned, or members of the location's
-- group), QuantityBufor what the buffer holds of the same materials. QuantityPer sums the shares of all packages on the
-- location, strangers too: it may differ from LocationPercent, which counts volume and weight apart.
DROP PROCEDURE IF EXISTS dbo.Kolv_mag_Param_Location;
GO
CREATE PROCEDURE dbo.Kolv_mag_Param_Location
    @Rank smallint,
    @Stand smallint,
    @Shelf smallint,
    @Location smallint
AS
BEGIN
    SET NOCOUNT ON;
    -- Figures to look at need not wait for those who move something now, nor they for them.
    SET TRANSACTION ISOLATION LEVEL READ UNCOMMITTED;

    DECLARE @QuantityLocation decimal(19, 2);
    DECLARE @QuantityBufor decimal(19, 2);
    DECLARE @QuantityPer decimal(19, 2);
    SELECT @QuantityLocation = SUM(Quantity)
    FROM dbo.Kolv_vv_mag_Location_Material
    WHERE Rank = @Rank AND Stand = @Stand AND Shelf = @Shelf AND Location = @Location AND Kind = N'A';

    SELECT @QuantityBufor = SUM(B.Quantity)
    FROM dbo.kolv_mag_Location_Item AS L
        INNER JOIN dbo.Kolv_Mag_BarCode_Sur AS B ON B.ItemCode = L.ItemCode
            OR B.ItemCode IN (SELECT G.ItemCode FROM dbo.kolv_mag_Group_Item AS G WHERE G.GroupSur = L.GroupSur)
    WHERE L.Rank = @Rank AND L.Stand = @Stand AND L.Shelf = @Shelf AND L.Location = @Location
        AND B.Rank IS NULL AND B.Active = N'Y';

    SELECT @QuantityPer = SUM(LinePercent)
    FROM dbo.Kolv_Mag_BarCode_Sur
    WHERE Rank = @Rank AND Stand = @Stand AND Shelf = @Shelf AND Location = @Location AND Active = N'Y';

    SELECT ISNULL(LocationPercent, 0) AS LocationPercent, ISNULL(@QuantityLocation, 0) AS QuantityLocation,
        ISNULL(@QuantityBufor, 0) AS QuantityBufor, ISNULL(@QuantityPer, 0) AS QuantityPer
    FROM dbo.kolv_mag_Location
    WHERE Rank = @Rank AND Stand = @Stand AND Shelf = @Shelf AND Location = @Location;
    RETURN 0;
END
GO
