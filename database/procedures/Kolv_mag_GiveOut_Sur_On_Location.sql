-- Gives out what the user has staged with N'O' to a line of a manufacturing order: one document, wholly or not at all, with
-- its lines, the history of the packages and the fills of their shelves.
--
-- The number of the document is taken in the same transaction, under the lock of all movers, so that numbers have neither
-- gaps nor doubles whatever fails. It is the last parameter but one, the message the last.
DROP PROCEDURE IF EXISTS dbo.Kolv_mag_GiveOut_Sur_On_Location;
GO
CREATE PROCEDURE dbo.Kolv_mag_GiveOut_Sur_On_Location
    @DocNumProd int,
    @DocEntryProd int,
    @LineNumProd smallint,
    @UserSign smallint,
    @UserSignGiveOut smallint,
    @Aplication nvarchar(10),
    @GiveOutDocNum int = NULL OUTPUT,
    @ErrDesc nvarchar(250) = NULL OUTPUT
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;
    SET @ErrDesc = N'';
    SET @GiveOutDocNum = NULL;

    BEGIN TRY
        DECLARE @Stands int;
        DECLARE @Number int;
        DECLARE @Refusal nvarchar(250);

        IF @@TRANCOUNT > 0
        BEGIN
            SET @ErrDesc = N'Niczego nie wydano: połączenie z bazą ma niezakończoną operację. Uruchom program ponownie.';
            RETURN 1;
        END

        BEGIN TRANSACTION;
        SELECT @Stands = COUNT(*) FROM dbo.kolv_mag_Stand WITH (UPDLOCK, HOLDLOCK);
        CREATE TABLE #Out (
            Line     smallint       NOT NULL PRIMARY KEY,
            BarCode  nvarchar(50)   COLLATE DATABASE_DEFAULT NOT NULL,
            PartCode nvarchar(50)   COLLATE DATABASE_DEFAULT NULL,  -- NULL: given out wholly
            ItemCode nvarchar(20)   COLLATE DATABASE_DEFAULT NULL,
            Quantity decimal(19, 6) NOT NULL,
            Has      decimal(19, 6) NULL,
            Refusal  nvarchar(250)  COLLATE DATABASE_DEFAULT NULL
        );
        INSERT INTO #Out (Line, BarCode, ItemCode, Quantity, Has, Refusal)
        SELECT ROW_NUMBER() OVER (ORDER BY T.ItemCode, T.BarCode), T.BarCode, ISNULL(T.ItemCode, N''),
            ISNULL(T.QuantityOut, 0), B.Quantity,
            dbo.kolv_mag_fn_GiveOut_Refusal(T.DocNum, T.ItemCode, T.QuantityOut, T.BarCode)
        FROM dbo.Kolv_Mag_BarCode_Output_Sur_tym AS T
            LEFT JOIN dbo.Kolv_Mag_BarCode_Sur AS B ON B.BarCode = T.BarCode
        WHERE T.SPID = -@@SPID AND T.HostName = HOST_NAME() AND T.UserSign = @UserSign AND T.Aplication = @Aplication
            AND T.PropOrOut = N'O' AND T.YearCode = YEAR(GETDATE());

        SET @Refusal = dbo.kolv_mag_fn_Production_Refusal(@DocEntryProd, @DocNumProd, @LineNumProd);
        IF @Refusal IS NULL AND NOT EXISTS (SELECT 1 FROM dbo.OUSR WHERE UserID = @UserSignGiveOut)
            SET @Refusal = N'Nie ma użytkownika ' + ISNULL(CAST(@UserSignGiveOut AS nvarchar(6)), N'?')
                + N', który miałby odebrać surowiec.';
        IF @Refusal IS NULL AND NOT EXISTS (SELECT 1 FROM #Out)
            SET @Refusal = N'Żadne opakowanie nie jest wybrane do wydania.';
        IF @Refusal IS NULL
            SELECT TOP (1) @Refusal = Refusal FROM #Out WHERE Refusal IS NOT NULL ORDER BY Line;
        IF @Refusal IS NULL
            SELECT TOP (1) @Refusal = N'Pozycja ' + CAST(@LineNumProd AS nvarchar(6)) + N' zlecenia produkcyjnego '
                + CAST(@DocNumProd AS nvarchar(11)) + N' nie potrzebuje surowca „' + O.ItemCode + N'”.'
            FROM #Out AS O
            WHERE NOT EXISTS (SELECT 1 FROM dbo.kolv_mag_Order_Material AS M
                WHERE M.DocEntry = @DocEntryProd AND M.LineNum = @LineNumProd AND M.ItemCode = O.ItemCode)
            ORDER BY O.Line;
        IF @Refusal IS NOT NULL
        BEGIN
            ROLLBACK TRANSACTION;
            SET @ErrDesc = @Refusal;
            RETURN 1;
        END

        SELECT @Number = ISNULL(MAX(GiveOutDocNum), 0) + 1 FROM dbo.Kolv_Mag_GiveOut;
        INSERT INTO dbo.Kolv_Mag_GiveOut (GiveOutDocNum, DocEntryProd, DocNumProd, LineNumProd, UserSign,
            UserSignGiveOut, HostName, BookDate)
        VALUES (@Number, @DocEntryProd, @DocNumProd, @LineNumProd, @UserSign, @UserSignGiveOut, HOST_NAME(), GETDATE());
        EXEC dbo.kolv_mag_Book_GiveOut @Number, @UserSign;
        DELETE FROM dbo.Kolv_Mag_BarCode_Output_Sur_tym
        WHERE SPID = -@@SPID AND HostName = HOST_NAME() AND UserSign = @UserSign AND Aplication = @Aplication
            AND PropOrOut = N'O' AND YearCode = YEAR(GETDATE());
        COMMIT TRANSACTION;
        SET @GiveOutDocNum = @Number;
        RETURN 0;
    END TRY
    BEGIN CATCH
        IF @@TRANCOUNT > 0
            ROLLBACK TRANSACTION;
        SET @ErrDesc = dbo.kolv_mag_fn_FailureText(N'Błąd wydania', ERROR_NUMBER(), ERROR_MESSAGE());
        RETURN 1;
    END CATCH
END
GO
