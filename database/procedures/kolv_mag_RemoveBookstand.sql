-- Removes a stand with its shelves and locations and what is assigned to them.
DROP PROCEDURE IF EXISTS dbo.kolv_mag_RemoveBookstand;
GO
CREATE PROCEDURE dbo.kolv_mag_RemoveBookstand
    @Rank smallint,
    @Stand smallint,
    @ErrDesc nvarchar(250) OUTPUT
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;
    SET @ErrDesc = N'';

    BEGIN TRY
        DECLARE @Refused int;
        DECLARE @Stands int;

        BEGIN TRANSACTION;
        -- The same first lock as in kolv_mag_AddBookstand.
        SELECT @Stands = COUNT(*) FROM dbo.kolv_mag_Stand WITH (UPDLOCK, HOLDLOCK);
        EXEC @Refused = dbo.kolv_mag_RemoveBookstandValidate @Rank, @Stand, @ErrDesc OUTPUT;
        IF @Refused > 0
        BEGIN
            ROLLBACK TRANSACTION;
            RETURN 1;
        END
        DELETE FROM dbo.kolv_mag_Stand WHERE Rank = @Rank AND Stand = @Stand;
        COMMIT TRANSACTION;
        RETURN 0;
    END TRY
    BEGIN CATCH
        IF @@TRANCOUNT > 0
            ROLLBACK TRANSACTION;
        SET @ErrDesc = LEFT(N'Błąd usuwania regału: ' + ERROR_MESSAGE(), 250);
        RETURN 1;
    END CATCH
END
GO
