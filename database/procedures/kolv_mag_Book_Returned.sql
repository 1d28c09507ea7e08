-- Books the chosen packages of a return from manufacturing: the half of Kolv_mag_Add_Sur_On_Bufor, inside its
-- transaction. Refused is the first package that cannot come back, by the rules of staging. Its errors are that one's.
DROP PROCEDURE IF EXISTS dbo.kolv_mag_Book_Returned;
GO
CREATE PROCEDURE dbo.kolv_mag_Book_Returned
    @UserSign smallint,
    @Aplication nvarchar(10),
    @ErrDesc nvarchar(250) OUTPUT
AS
BEGIN
    SET NOCOUNT ON;

    DECLARE @Refusal nvarchar(250);

    CREATE TABLE #Back (
        BarCode        nvarchar(50)   COLLATE DATABASE_DEFAULT NOT NULL PRIMARY KEY,
        Quantity       decimal(19, 6) NULL,
        PackWeight     decimal(19, 3) NULL,
        GiveOutDocNum  int            NULL,
        GiveOutLineNum smallint       NULL,
        Refusal        nvarchar(250)  COLLATE DATABASE_DEFAULT NULL
    );
    INSERT INTO #Back (BarCode, Quantity, PackWeight, GiveOutDocNum, GiveOutLineNum, Refusal)
    SELECT T.BarCode, T.Quantity, Z.PackWeight, G.GiveOutDocNum, G.GiveOutLineNum,
        dbo.kolv_mag_fn_Return_Refusal(T.DocEntry, T.DocNum, T.LineNum, T.BarCode, T.NumberCode, T.Quantity, T.ItemCode)
    FROM dbo.Kolv_Mag_BarCode_Input_Sur_tym AS T
        LEFT JOIN dbo.Kolv_vv_mag_Document_Size AS Z ON Z.ID = T.ID
        LEFT JOIN dbo.Kolv_vv_mag_GiveOut_Last AS G ON G.GiveOutBarCode = T.BarCode
    WHERE T.SPID = -@@SPID AND T.HostName = HOST_NAME() AND T.UserSign = @UserSign AND T.Aplication = @Aplication
        AND T.Operation = N'R' AND T.LineGrd = -1 AND T.YearCode = YEAR(GETDATE());

    SELECT TOP (1) @Refusal = Refusal FROM #Back WHERE Refusal IS NOT NULL ORDER BY BarCode;
    IF @Refusal IS NOT NULL
    BEGIN
        SET @ErrDesc = @Refusal;
        RETURN 1;
    END

    UPDATE B
    SET B.Active = N'Y', B.Quantity = K.Quantity, B.PackWeight = K.PackWeight, B.Rank = NULL, B.Stand = NULL,
        B.Shelf = NULL, B.Location = NULL, B.LinePercent = 0
    FROM dbo.Kolv_Mag_BarCode_Sur AS B
        INNER JOIN #Back AS K ON K.BarCode = B.BarCode;
    UPDATE P
    SET P.QuantityBack = K.Quantity, P.BackDate = GETDATE()
    FROM dbo.Kolv_Mag_BarCode_Sur_Production AS P
        INNER JOIN #Back AS K ON K.GiveOutDocNum = P.GiveOutDocNum AND K.GiveOutLineNum = P.GiveOutLineNum;
    INSERT INTO dbo.Kolv_Mag_BarCode_Sur_History (BarCode, Operation, Quantity, UserSign, HostName, BookDate)
    SELECT BarCode, N'R', Quantity, @UserSign, HOST_NAME(), GETDATE()
    FROM #Back
    ORDER BY BarCode;
    RETURN 0;
END
GO
