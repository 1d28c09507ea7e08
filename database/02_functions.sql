-- Barcode text of an EAN-13: twelve digits in, thirteen out. Anything but twelve digits gives NULL.
DROP FUNCTION IF EXISTS dbo.kolv_mag_fn_EAN13;
GO
CREATE FUNCTION dbo.kolv_mag_fn_EAN13 (@Digits nvarchar(20))
RETURNS nvarchar(13)
AS
BEGIN
    DECLARE @Position int = 1;
    DECLARE @Sum int = 0;

    IF @Digits IS NULL OR LEN(@Digits) <> 12 OR @Digits LIKE N'%[^0-9]%'
        RETURN NULL;
    WHILE @Position <= 12
    BEGIN
        SET @Sum = @Sum + CAST(SUBSTRING(@Digits, @Position, 1) AS int)
            * CASE WHEN @Position % 2 = 0 THEN 3 ELSE 1 END;
        SET @Position = @Position + 1;
    END
    RETURN @Digits + CAST((10 - @Sum % 10) % 10 AS nvarchar(1));
END
GO

-- A stand as a message names it: „Regał 4” (Rząd B).
DROP FUNCTION IF EXISTS dbo.kolv_mag_fn_StandText;
GO
CREATE FUNCTION dbo.kolv_mag_fn_StandText (@Rank smallint, @Stand smallint)
RETURNS nvarchar(110)
AS
BEGIN
    DECLARE @StandName nvarchar(50);
    DECLARE @RankName nvarchar(50);

    SELECT @StandName = StandName FROM dbo.kolv_mag_Stand WHERE Rank = @Rank AND Stand = @Stand;
    SELECT @RankName = RankName FROM dbo.kolv_mag_Rank WHERE Rank = @Rank;
    IF ISNULL(@StandName, N'') = N''
        SET @StandName = N'Regał ' + CAST(@Stand AS nvarchar(6));
    IF ISNULL(@RankName, N'') = N''
        SET @RankName = N'Rząd ' + CAST(@Rank AS nvarchar(6));
    RETURN N'„' + @StandName + N'” (' + @RankName + N')';
END
GO

-- How far a stand reaches above the top edge of its picture, in twips: the upper edge of its highest locations.
DROP FUNCTION IF EXISTS dbo.kolv_mag_fn_StandReach;
GO
CREATE FUNCTION dbo.kolv_mag_fn_StandReach (@ShelfCount smallint)
RETURNS int
AS
BEGIN
    RETURN CASE WHEN @ShelfCount >= 4 THEN 765
        WHEN @ShelfCount = 3 THEN 580
        WHEN @ShelfCount = 2 THEN 400
        WHEN @ShelfCount = 1 THEN 215
        ELSE 0 END;
END
GO

-- What the user reads when a procedure of the movers has failed. The victim of a deadlock (1205), and whoever has waited
-- too long for a lock (1222), is only asked to try again.
DROP FUNCTION IF EXISTS dbo.kolv_mag_fn_FailureText;
GO
CREATE FUNCTION dbo.kolv_mag_fn_FailureText (@What nvarchar(100), @Number int, @Message nvarchar(4000))
RETURNS nvarchar(250)
AS
BEGIN
    IF @Number IN (1205, 1222)
        RETURN N'W tej samej chwili ktoś inny zmieniał stan magazynu. Niczego nie zapisano: spróbuj ponownie.';
    RETURN LEFT(@What + N': ' + @Message, 250);
END
GO
