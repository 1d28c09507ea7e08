-- The packages that lie on a location, or lay there last: @Filter Y lists the active ones, N all. @Mode 1 returns the
-- rows, any other nothing.
-- The result has exactly six visible columns and none hidden. The client takes the barcode from the first one to show it
-- and from the sixth one counted from the end to print it, and with six these are the same. From the end it also takes
-- the running number (2), the line (3, 16 bits) and the number of the order (4), which must be numbers.
DROP PROCEDURE IF EXISTS dbo.Kolv_mag_Watch_BarCode_Location;
GO
CREATE PROCEDURE dbo.Kolv_mag_Watch_BarCode_Location
    @Rank smallint,
    @Stand smallint,
    @Shelf smallint,
    @Location smallint,
    @Filter nvarchar(1),
    @Mode smallint
AS
BEGIN
    SET NOCOUNT ON;
    SET TRANSACTION ISOLATION LEVEL READ UNCOMMITTED;
    IF @Mode <> 1
        RETURN 0;

    SELECT B.BarCode AS [Kod kreskowy:2000;0],
        ISNULL(B.ItemCode, N'') + ISNULL(N' - ' + I.ItemName, N'') AS [Surowiec:4450;0],
        ISNULL(B.DocNum, 0) AS [Zamówienie:1200;1],
        ISNULL(B.LineNum, 0) AS [Poz.:600;1],
        ISNULL(B.NumberCode, 0) AS [Nr kodu:900;1],
        CASE WHEN B.Active = N'Y' THEN N'' ELSE N'wydano ' END
            + REPLACE(CAST(CAST(ISNULL(B.Quantity, 0) AS decimal(19, 2)) AS nvarchar(25)), N'.', N',')
            + ISNULL(N' ' + I.InvntryUom, N'') AS [Ilość:2250;1]
    FROM dbo.Kolv_Mag_BarCode_Sur AS B
        LEFT JOIN dbo.OITM AS I ON I.ItemCode = B.ItemCode
    WHERE B.Rank = @Rank AND B.Stand = @Stand AND B.Shelf = @Shelf AND B.Location = @Location
        AND (B.Active = N'Y' OR @Filter = N'N')
    ORDER BY B.ItemCode, B.BarCode;
    RETURN 0;
END
GO
