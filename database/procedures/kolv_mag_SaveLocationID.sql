-- Stores the name of one location.
DROP PROCEDURE IF EXISTS dbo.kolv_mag_SaveLocationID;
GO
CREATE PROCEDURE dbo.kolv_mag_SaveLocationID
    @Rank smallint,
    @Stand smallint,
    @Shelf smallint,
    @Location smallint,
    @LolcationID nvarchar(50),
    @ErrDesc nvarchar(250) OUTPUT
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;
    SET @ErrDesc = N'';

    BEGIN TRY
        DECLARE @Stands int;

        BEGIN TRANSACTION;
        -- The lock that every writer of the layout takes first.
        SELECT @Stands = COUNT(*) FROM dbo.kolv_mag_Stand WITH (UPDLOCK, HOLDLOCK);
        UPDATE dbo.kolv_mag_Location
        SET LocationName = @LolcationID
        WHERE Rank = @Rank AND Stand = @Stand AND Shelf = @Shelf AND Location = @Location;
        IF @@ROWCOUNT = 0
        BEGIN
            ROLLBACK TRANSACTION;
            SET @ErrDesc = N'Brak lokalizacji o podanym adresie.';
            RETURN 1;
        END
        COMMIT TRANSACTION;
        RETURN 0;
    END TRY
    BEGIN CATCH
        IF @@TRANCOUNT > 0
            ROLLBACK TRANSACTION;
        SET @ErrDesc = LEFT(N'Błąd zapisu nazwy lokalizacji: ' + ERROR_MESSAGE(), 250);
        RETURN 1;
    END CATCH
END
GO
