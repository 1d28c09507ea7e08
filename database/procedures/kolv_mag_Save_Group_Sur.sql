-- Creates a group of materials (@GroupCode -1) under the next free number, without members, or changes the name of one.
-- The name is stored as given, blanks included: the editor looks the new group up by the text that was typed.
-- @UserSign is part of the call, but the tables of groups do not keep who changed them.
DROP PROCEDURE IF EXISTS dbo.kolv_mag_Save_Group_Sur;
GO
CREATE PROCEDURE dbo.kolv_mag_Save_Group_Sur
    @GroupCode smallint,
    @NewGroupName nvarchar(4000),
    @UserSign smallint,
    @ErrDesc nvarchar(250) OUTPUT
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;
    SET @ErrDesc = N'';

    BEGIN TRY
        DECLARE @Last smallint;

        SET @GroupCode = ISNULL(@GroupCode, 0);
        IF @GroupCode < 1 AND @GroupCode <> -1
            SET @ErrDesc = N'Wskaż grupę surowców.';
        ELSE IF LTRIM(ISNULL(@NewGroupName, N'')) = N''
            SET @ErrDesc = N'Podaj nazwę grupy surowców.';
        ELSE IF DATALENGTH(@NewGroupName) > 200
            SET @ErrDesc = N'Nazwa grupy surowców ma najwyżej 100 znaków.';
        -- These two stand in the list of groups beside them, and the list is searched by text.
        ELSE IF @NewGroupName IN (N'wybierz', N'nowa')
            SET @ErrDesc = N'Nazwa „' + @NewGroupName + N'” jest zastrzeżona. Podaj inną nazwę grupy.';
        IF @ErrDesc <> N''
            RETURN 1;

        BEGIN TRANSACTION;
        SELECT @Last = ISNULL(MAX(GroupSur), 0) FROM dbo.kolv_mag_Location_Group WITH (UPDLOCK, HOLDLOCK);
        IF @Last < 0
            SET @Last = 0;
        IF @GroupCode > 0 AND NOT EXISTS (SELECT 1 FROM dbo.kolv_mag_Location_Group WHERE GroupSur = @GroupCode)
            SET @ErrDesc = N'Ta grupa surowców nie istnieje. Mógł ją usunąć inny użytkownik.';
        ELSE IF @GroupCode = -1 AND @Last = 32767
            SET @ErrDesc = N'Nie ma wolnego numeru dla nowej grupy surowców.';
        ELSE IF EXISTS (SELECT 1 FROM dbo.kolv_mag_Location_Group
                WHERE GroupSurName = @NewGroupName AND OnOrOff = N'Y' AND GroupSur <> @GroupCode)
            SET @ErrDesc = N'Grupa surowców o nazwie „' + @NewGroupName + N'” już istnieje.';
        IF @ErrDesc <> N''
        BEGIN
            ROLLBACK TRANSACTION;
            RETURN 1;
        END

        IF @GroupCode = -1
            INSERT INTO dbo.kolv_mag_Location_Group (GroupSur, GroupSurName, OnOrOff)
            VALUES (@Last + 1, @NewGroupName, N'Y');
        ELSE
            UPDATE dbo.kolv_mag_Location_Group SET GroupSurName = @NewGroupName WHERE GroupSur = @GroupCode;
        COMMIT TRANSACTION;
        RETURN 0;
    END TRY
    BEGIN CATCH
        IF @@TRANCOUNT > 0
            ROLLBACK TRANSACTION;
        SET @ErrDesc = LEFT(N'Błąd zapisu grupy surowców: ' + ERROR_MESSAGE(), 250);
        RETURN 1;
    END CATCH
END
GO
