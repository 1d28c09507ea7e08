-- Gives a barcode to an order line, under a running number of a year. Neither is ever given twice.
DROP PROCEDURE IF EXISTS dbo.Kolv_mag_SaveBarCode_Sur;
GO
CREATE PROCEDURE dbo.Kolv_mag_SaveBarCode_Sur
    @Year smallint,
    @DocEntry int,
    @DocNum int,
    @LineNum smallint,
    @NumberCode smallint,
    @BarCode nvarchar(100),
    @UserSign smallint,
    @ItemCode nvarchar(100),
    @ErrDesc nvarchar(250) = NULL OUTPUT
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;
    SET @ErrDesc = N'';

    BEGIN TRY
        DECLARE @Stands int;
        DECLARE @Refusal nvarchar(250);

        BEGIN TRANSACTION;
        -- The lock of those who book packages, which take numbers of the same count.
        SELECT @Stands = COUNT(*) FROM dbo.kolv_mag_Stand WITH (UPDLOCK, HOLDLOCK);
        SET @Refusal = dbo.kolv_mag_fn_Line_Refusal(@DocEntry, @DocNum, @LineNum, @ItemCode);
        IF @Refusal IS NULL
            SET @Refusal = dbo.kolv_mag_fn_BarCode_Refusal(@BarCode);
        IF @Refusal IS NULL
            SET @Refusal = CASE
                WHEN ISNULL(@Year, -1) <> 0 AND ISNULL(@Year, -1) NOT BETWEEN 1900 AND 9999
                    THEN N'Rok numeracji musi mieć cztery cyfry, a dla zamówienia bez daty jest zerem.'
                WHEN ISNULL(@NumberCode, 0) < 1
                    THEN N'Numer opakowania musi być większy od zera.'
                WHEN EXISTS (SELECT 1 FROM dbo.Kolv_Mag_BarCode_Sur_Code WHERE BarCode = @BarCode)
                    THEN N'Kod „' + @BarCode + N'” jest już nadany.'
                WHEN EXISTS (SELECT 1 FROM dbo.Kolv_Mag_BarCode_Sur_Code
                        WHERE DocEntry = @DocEntry AND LineNum = @LineNum AND YearCode = @Year
                            AND NumberCode = @NumberCode)
                    OR EXISTS (SELECT 1 FROM dbo.Kolv_Mag_BarCode_Sur
                        WHERE DocEntry = @DocEntry AND LineNum = @LineNum AND ISNULL(YearCode, 0) = @Year
                            AND NumberCode = @NumberCode)
                    THEN N'Numer ' + CAST(@NumberCode AS nvarchar(6))
                        + N' ma na tej pozycji zamówienia inne opakowanie.'
                END;
        IF @Refusal IS NOT NULL
        BEGIN
            ROLLBACK TRANSACTION;
            SET @ErrDesc = @Refusal;
            RETURN 1;
        END
        INSERT INTO dbo.Kolv_Mag_BarCode_Sur_Code (BarCode, YearCode, DocEntry, DocNum, LineNum, NumberCode, ItemCode,
            UserSign, CreateDate)
        VALUES (@BarCode, @Year, @DocEntry, @DocNum, @LineNum, @NumberCode, @ItemCode, @UserSign, GETDATE());
        COMMIT TRANSACTION;
        RETURN 0;
    END TRY
    BEGIN CATCH
        IF @@TRANCOUNT > 0
            ROLLBACK TRANSACTION;
        SET @ErrDesc = dbo.kolv_mag_fn_FailureText(N'Błąd zapisu kodu kreskowego', ERROR_NUMBER(), ERROR_MESSAGE());
        RETURN 1;
    END CATCH
END
GO
