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
