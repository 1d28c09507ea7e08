-- Replaces the members of a group by the materials of @ItemCode, their codes joined by commas; an empty text leaves the
-- group without members. One code that is no material refuses the whole list.
--
-- A code that itself holds a comma cannot be told apart from two codes. If such a material could be meant, the list is
-- refused with its code; it can be assigned to a location, but not to a group.
-- @UserSign is part of the call, but the tables of groups do not keep who changed them.
DROP PROCEDURE IF EXISTS dbo.kolv_mag_Add_Sur_On_Group;
GO
CREATE PROCEDURE dbo.kolv_mag_Add_Sur_On_Group
    @GroupCode smallint,
    @ItemCode nvarchar(max),
    @UserSign smallint,
    @ErrDesc nvarchar(250) OUTPUT
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;
    SET @ErrDesc = N'';

    BEGIN TRY
        DECLARE @List nvarchar(max) = ISNULL(@ItemCode, N'');
        DECLARE @From int = 1;
        DECLARE @Comma int;
        DECLARE @Wrong nvarchar(100);

        -- By a loop: the list of a large group is longer than kolv_mag_Number reaches.
        CREATE TABLE #Member (ItemCode nvarchar(4000) COLLATE DATABASE_DEFAULT NOT NULL);
        WHILE @List <> N'' AND @From > 0
        BEGIN
            SET @Comma = CHARINDEX(N',', @List, @From);
            INSERT INTO #Member (ItemCode)
            VALUES (LEFT(SUBSTRING(@List, @From, CASE WHEN @Comma > 0 THEN @Comma - @From ELSE LEN(@List) END), 4000));
            SET @From = CASE WHEN @Comma > 0 THEN @Comma + 1 ELSE 0 END;
        END

        BEGIN TRANSACTION;
        IF NOT EXISTS (SELECT 1 FROM dbo.kolv_mag_Location_Group WITH (UPDLOCK, HOLDLOCK) WHERE GroupSur = @GroupCode)
            SET @ErrDesc = N'Ta grupa surowców nie istnieje. Mógł ją usunąć inny użytkownik.';
        IF @ErrDesc = N''
        BEGIN
            SELECT @Wrong = MIN(ItemCode)
            FROM dbo.OITM
            WHERE ItemCode LIKE N'%,%' AND CHARINDEX(N',' + ItemCode + N',', N',' + @List + N',') > 0;
            IF @Wrong IS NOT NULL
                SET @ErrDesc = N'Kod surowca „' + @Wrong + N'” zawiera przecinek, dlatego surowiec nie może '
                    + N'należeć do grupy.';
        END
        IF @ErrDesc = N''
        BEGIN
            SELECT @Wrong = MIN(LEFT(M.ItemCode, 100))
            FROM #Member AS M
                LEFT JOIN dbo.OITM AS I ON I.ItemCode = M.ItemCode
            WHERE I.ItemCode IS NULL;
            IF @Wrong IS NOT NULL
                SET @ErrDesc = N'Nie ma surowca o kodzie „' + @Wrong + N'”. Grupa pozostała bez zmian.';
        END
        IF @ErrDesc <> N''
        BEGIN
            ROLLBACK TRANSACTION;
            RETURN 1;
        END

        DELETE FROM dbo.kolv_mag_Group_Item
        WHERE GroupSur = @GroupCode AND ItemCode NOT IN (SELECT ItemCode FROM #Member);
        INSERT INTO dbo.kolv_mag_Group_Item (GroupSur, ItemCode)
        SELECT @GroupCode, I.ItemCode
        FROM dbo.OITM AS I
        WHERE I.ItemCode IN (SELECT ItemCode FROM #Member)
            AND I.ItemCode NOT IN (SELECT ItemCode FROM dbo.kolv_mag_Group_Item WHERE GroupSur = @GroupCode);
        COMMIT TRANSACTION;
        RETURN 0;
    END TRY
    BEGIN CATCH
        IF @@TRANCOUNT > 0
            ROLLBACK TRANSACTION;
        SET @ErrDesc = LEFT(N'Błąd zapisu surowców grupy: ' + ERROR_MESSAGE(), 250);
        RETURN 1;
    END CATCH
END
GO
