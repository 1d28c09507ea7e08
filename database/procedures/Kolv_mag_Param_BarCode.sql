-- Where a package lies, by its barcode, as one row. Error is 1 for a code that nobody knows and for a package that has no
-- place in the warehouse: it waits in the buffer or was given out. The code comes as it was typed, so it may be of any length;
-- a shorter parameter would cut it to the code of another package.
DROP PROCEDURE IF EXISTS dbo.Kolv_mag_Param_BarCode;
GO
CREATE PROCEDURE dbo.Kolv_mag_Param_BarCode
    @BarCode nvarchar(max)
AS
BEGIN
    SET NOCOUNT ON;

    DECLARE @Code nvarchar(max) = LTRIM(RTRIM(@BarCode));
    DECLARE @ItemCode nvarchar(20);
    DECLARE @ItemName nvarchar(100);
    DECLARE @Rank smallint;
    DECLARE @Stand smallint;
    DECLARE @Shelf smallint;
    DECLARE @Location smallint;
    DECLARE @NumberCode int;
    DECLARE @Error smallint = 1;

    SELECT @ItemCode = B.ItemCode, @ItemName = I.ItemName, @Rank = B.Rank, @Stand = B.Stand, @Shelf = B.Shelf,
        @Location = B.Location, @NumberCode = B.NumberCode, @Error = 0
    FROM dbo.Kolv_Mag_BarCode_Sur AS B
        LEFT JOIN dbo.OITM AS I ON I.ItemCode = B.ItemCode
    WHERE B.BarCode = @Code AND B.Active = N'Y' AND B.Rank IS NOT NULL;

    SELECT ISNULL(@ItemCode, N'') AS ItemCode, ISNULL(@ItemName, N'') AS ItemName, ISNULL(@Rank, 0) AS Rank,
        ISNULL(@Stand, 0) AS Stand, ISNULL(@Shelf, 0) AS Shelf, ISNULL(@Location, 0) AS Location,
        ISNULL(@NumberCode, 0) AS NumberCode, @Error AS Error;
    RETURN 0;
END
GO
