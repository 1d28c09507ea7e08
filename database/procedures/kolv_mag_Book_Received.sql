-- Books the chosen packages of a goods-in: the half of Kolv_mag_Add_Sur_On_Bufor, inside its transaction. Refused is the
-- first package that cannot be booked, by the rules of staging. Its errors are that one's.
DROP PROCEDURE IF EXISTS dbo.kolv_mag_Book_Received;
GO
CREATE PROCEDURE dbo.kolv_mag_Book_Received
    @UserSign smallint,
    @Aplication nvarchar(10),
    @ErrDesc nvarchar(250) OUTPUT
AS
BEGIN
    SET NOCOUNT ON;

    DECLARE @Refusal nvarchar(250);

    CREATE TABLE #Book (
        BarCode    nvarchar(50)   COLLATE DATABASE_DEFAULT NOT NULL PRIMARY KEY,
        DocEntry   int            NOT NULL,
        DocNum     int            NULL,
        LineNum    smallint       NOT NULL,
        YearCode   int            NOT NULL,
        NumberCode int            NOT NULL,  -- 0: the next one of its line
        ItemCode   nvarchar(20)   COLLATE DATABASE_DEFAULT NOT NULL,
        Quantity   decimal(19, 6) NOT NULL,
        Refusal    nvarchar(250)  COLLATE DATABASE_DEFAULT NULL
    );
    INSERT INTO #Book (BarCode, DocEntry, DocNum, LineNum, YearCode, NumberCode, ItemCode, Quantity, Refusal)
    SELECT T.BarCode, T.DocEntry, T.DocNum, T.LineNum, ISNULL(C.YearCode, dbo.kolv_mag_fn_Order_Year(T.DocEntry)),
        ISNULL(C.NumberCode, ISNULL(T.NumberCode, 0)), T.ItemCode, T.Quantity,
        dbo.kolv_mag_fn_Receive_Refusal(T.DocEntry, T.DocNum, T.LineNum, T.BarCode, T.NumberCode, T.Quantity, T.ItemCode)
    FROM dbo.Kolv_Mag_BarCode_Input_Sur_tym AS T
        LEFT JOIN dbo.Kolv_Mag_BarCode_Sur_Code AS C ON C.BarCode = T.BarCode
    WHERE T.SPID = -@@SPID AND T.HostName = HOST_NAME() AND T.UserSign = @UserSign AND T.Aplication = @Aplication
        AND T.Operation = N'I' AND T.LineGrd = -1 AND T.YearCode = YEAR(GETDATE());

    SELECT TOP (1) @Refusal = Refusal FROM #Book WHERE Refusal IS NOT NULL ORDER BY BarCode;
    IF @Refusal IS NULL
        SELECT TOP (1) @Refusal = X.Refusal
        FROM (
            SELECT DocEntry, LineNum, dbo.kolv_mag_fn_Line_Overrun(DocEntry, LineNum, Quantity) AS Refusal
            FROM (SELECT DocEntry, LineNum, SUM(Quantity) AS Quantity FROM #Book GROUP BY DocEntry, LineNum) AS S
        ) AS X
        WHERE X.Refusal IS NOT NULL
        ORDER BY X.DocEntry, X.LineNum;
    IF @Refusal IS NULL
        SELECT TOP (1) @Refusal = N'Opakowania „' + MIN(BarCode) + N'” i „' + MAX(BarCode) + N'” mają ten sam numer '
            + CAST(NumberCode AS nvarchar(11)) + N' na pozycji zamówienia.'
        FROM #Book
        WHERE NumberCode > 0
        GROUP BY DocEntry, LineNum, YearCode, NumberCode
        HAVING COUNT(*) > 1;
    IF @Refusal IS NOT NULL
    BEGIN
        SET @ErrDesc = @Refusal;
        RETURN 1;
    END

    -- Next numbers follow both those in use and those that come with this booking.
    UPDATE B
    SET B.NumberCode = N.LastNumber + N.Place
    FROM #Book AS B
        INNER JOIN (
            SELECT W.BarCode, ROW_NUMBER() OVER (PARTITION BY W.DocEntry, W.LineNum, W.YearCode ORDER BY W.BarCode) AS Place,
                CASE WHEN L.Highest > L.LastNumber THEN L.Highest ELSE L.LastNumber END AS LastNumber
            FROM #Book AS W
                INNER JOIN (
                    SELECT DocEntry, LineNum, YearCode, MAX(NumberCode) AS Highest,
                        dbo.kolv_mag_fn_Last_Number(YearCode, DocEntry, LineNum) AS LastNumber
                    FROM #Book
                    GROUP BY DocEntry, LineNum, YearCode
                ) AS L ON L.DocEntry = W.DocEntry AND L.LineNum = W.LineNum AND L.YearCode = W.YearCode
            WHERE W.NumberCode = 0
        ) AS N ON N.BarCode = B.BarCode;

    INSERT INTO dbo.Kolv_Mag_BarCode_Sur_Code (BarCode, YearCode, DocEntry, DocNum, LineNum, NumberCode, ItemCode,
        UserSign, CreateDate)
    SELECT B.BarCode, B.YearCode, B.DocEntry, B.DocNum, B.LineNum, B.NumberCode, B.ItemCode, @UserSign, GETDATE()
    FROM #Book AS B
    WHERE NOT EXISTS (SELECT 1 FROM dbo.Kolv_Mag_BarCode_Sur_Code AS C WHERE C.BarCode = B.BarCode);
    INSERT INTO dbo.Kolv_Mag_BarCode_Sur (BarCode, YearCode, NumberCode, DocEntry, DocNum, LineNum, ItemCode, Quantity,
        PackLength, PackWidth, PackHeight, PackWeight, LinePercent, Active, UserSign, CreateDate)
    SELECT B.BarCode, B.YearCode, B.NumberCode, B.DocEntry, B.DocNum, B.LineNum, B.ItemCode, B.Quantity, Z.PackLength,
        Z.PackWidth, Z.PackHeight, Z.PackWeight, 0, N'Y', @UserSign, GETDATE()
    FROM #Book AS B
        INNER JOIN dbo.Kolv_vv_mag_Document_Size AS Z ON Z.BarCode = B.BarCode
    WHERE Z.SPID = -@@SPID AND Z.HostName = HOST_NAME() AND Z.UserSign = @UserSign AND Z.Aplication = @Aplication
        AND Z.Operation = N'I';
    INSERT INTO dbo.Kolv_Mag_BarCode_Sur_History (BarCode, Operation, Quantity, UserSign, HostName, BookDate)
    SELECT BarCode, N'I', Quantity, @UserSign, HOST_NAME(), GETDATE()
    FROM #Book
    ORDER BY BarCode;
    RETURN 0;
END
GO
