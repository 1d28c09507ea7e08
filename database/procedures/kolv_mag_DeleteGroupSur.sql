-- Deletes a group of materials with its members: 0, or 1 while a location is given to it. There is no message.
DROP PROCEDURE IF EXISTS dbo.kolv_mag_DeleteGroupSur;
GO
CREATE PROCEDURE dbo.kolv_mag_DeleteGroupSur
    @GroupSur smallint
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;

    BEGIN TRY
        DECLARE @Refused int;

        BEGIN TRANSACTION;
        -- A location is given to a group under a lock of the group's row: none can be while it is taken here.
        SELECT @Refused = COUNT(*) FROM dbo.kolv_mag_Location_Group WITH (UPDLOCK, HOLDLOCK) WHERE GroupSur = @GroupSur;
        EXEC @Refused = dbo.kolv_mag_ConfirmGroupSur @GroupSur;
        IF @Refused > 0
        BEGIN
            ROLLBACK TRANSACTION;
            RETURN 1;
        END
        DELETE FROM dbo.kolv_mag_Location_Group WHERE GroupSur = @GroupSur;
        COMMIT TRANSACTION;
        RETURN 0;
    END TRY
    BEGIN CATCH
        IF @@TRANCOUNT > 0
            ROLLBACK TRANSACTION;
        RETURN 1;
    END CATCH
END
GO
