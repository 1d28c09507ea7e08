-- The staged packages of this connection and user, those of this year as everywhere else. The client takes the barcode
-- from the last column. @Mode 1 returns the rows, any other nothing.
DROP PROCEDURE IF EXISTS dbo.kolv_mag_Watch_BarCode_On_Location;
GO
CREATE PROCEDURE dbo.kolv_mag_Watch_BarCode_On_Location
    @UserSign smallint,
    @Aplication nvarchar(10),
    @Operation nvarchar(10),
    @Mode smallint
AS
BEGIN
    SET NOCOUNT ON;
    SET TRANSACTION ISOLATION LEVEL READ UNCOMMITTED;
    IF @Mode <> 1
        RETURN 0;

    SELECT T.ItemCode AS [Kod surowca:1300;0],
        CAST(T.Quantity AS decimal(19, 2)) AS [Ilość:1000;1],
        I.InvntryUom AS [Jm:500;2],
        CAST(B.PackWeight AS decimal(19, 1)) AS [Masa kg:850;1],
        CAST(B.PackLength AS nvarchar(11)) + N'×' + CAST(B.PackWidth AS nvarchar(11)) + N'×'
            + CAST(B.PackHeight AS nvarchar(11)) AS [Wymiary mm:1500;0],
        T.DocNum AS [Zamówienie:1250;1],
        T.BarCode AS [Kod kreskowy:2600;0]
    FROM dbo.Kolv_Mag_BarCode_Input_Sur_tym AS T
        LEFT JOIN dbo.Kolv_Mag_BarCode_Sur AS B ON B.BarCode = T.BarCode
        LEFT JOIN dbo.OITM AS I ON I.ItemCode = T.ItemCode
    WHERE T.SPID = -@@SPID AND T.HostName = HOST_NAME() AND T.UserSign = @UserSign AND T.Aplication = @Aplication
        AND T.Operation = @Operation AND T.YearCode = YEAR(GETDATE())
    ORDER BY T.ItemCode, T.BarCode;
    RETURN 0;
END
GO
