-- Books the chosen packages of a goods-in (@Operation N'I') or a return from manufacturing (N'R') into the buffer: all of
-- them with their history, or none. Their staged rows are used up, so that no package is booked twice.
--
-- Like a move it is judged under the lock of all movers, and says what is final: not inside an open transaction.
DROP PROCEDURE IF EXISTS dbo.Kolv_mag_Add_Sur_On_Bufor;
GO
CREATE PROCEDURE dbo.Kolv_mag_Add_Sur_On_Bufor
    @UserSign smallint,
    @Aplication nvarchar(10),
    @Operation nvarchar(10),
    @ErrDesc nvarchar(250) = NULL OUTPUT
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;
    SET @ErrDesc = N'';

    BEGIN TRY
        DECLARE @Stands int;
        DECLARE @Refused int = 1;

        IF @@TRANCOUNT > 0
        BEGIN
            SET @ErrDesc = N'Niczego nie zaksięgowano: połączenie z bazą ma niezakończoną operację. '
                + N'Uruchom program ponownie.';
            RETURN 1;
        END
        IF ISNULL(@Operation, N'') NOT IN (N'I', N'R')
        BEGIN
            SET @ErrDesc = N'Do bufora trafia przyjęcie (I) albo zwrot z produkcji (R), a nie operacja „'
                + ISNULL(@Operation, N'') + N'”.';
            RETURN 1;
        END

        BEGIN TRANSACTION;
        SELECT @Stands = COUNT(*) FROM dbo.kolv_mag_Stand WITH (UPDLOCK, HOLDLOCK);
        IF NOT EXISTS (SELECT 1 FROM dbo.Kolv_Mag_BarCode_Input_Sur_tym
                WHERE SPID = -@@SPID AND HostName = HOST_NAME() AND UserSign = @UserSign AND Aplication = @Aplication
                    AND Operation = @Operation AND LineGrd = -1 AND YearCode = YEAR(GETDATE()))
            SET @ErrDesc = N'Żadne opakowanie nie jest wybrane.';
        ELSE IF @Operation = N'I'
            EXEC @Refused = dbo.kolv_mag_Book_Received @UserSign, @Aplication, @ErrDesc OUTPUT;
        ELSE
            EXEC @Refused = dbo.kolv_mag_Book_Returned @UserSign, @Aplication, @ErrDesc OUTPUT;
        IF @Refused > 0
        BEGIN
            ROLLBACK TRANSACTION;
            RETURN 1;
        END
        DELETE FROM dbo.Kolv_Mag_BarCode_Input_Sur_tym
        WHERE SPID = -@@SPID AND HostName = HOST_NAME() AND UserSign = @UserSign AND Aplication = @Aplication
            AND Operation = @Operation AND LineGrd = -1 AND YearCode = YEAR(GETDATE());
        COMMIT TRANSACTION;
        RETURN 0;
    END TRY
    BEGIN CATCH
        IF @@TRANCOUNT > 0
            ROLLBACK TRANSACTION;
        SET @ErrDesc = dbo.kolv_mag_fn_FailureText(N'Błąd księgowania w buforze', ERROR_NUMBER(), ERROR_MESSAGE());
        RETURN 1;
    END CATCH
END
GO
