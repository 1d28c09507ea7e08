-- Assigns a material and a group to a location. N'0' or an empty code is no material, 0 no group. The parameters that
-- the location already has stay as they are.
DROP PROCEDURE IF EXISTS dbo.kolv_mag_Save_Sur_Location;
GO
CREATE PROCEDURE dbo.kolv_mag_Save_Sur_Location
    @Rank smallint,
    @Stand smallint,
    @Shelf smallint,
    @Location smallint,
    @ItemCode nvarchar(100),
    @GroupSur smallint,
    @UserSign smallint,
    @ErrDesc nvarchar(250) OUTPUT
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;
    SET @ErrDesc = N'';

    BEGIN TRY
        DECLARE @Code nvarchar(20);
        DECLARE @ItemName nvarchar(100) = N'';
        DECLARE @Stands int;

        SET @GroupSur = ISNULL(@GroupSur, 0);

        BEGIN TRANSACTION;
        -- The lock that every writer of the layout takes first.
        SELECT @Stands = COUNT(*) FROM dbo.kolv_mag_Stand WITH (UPDLOCK, HOLDLOCK);
        IF ISNULL(@ItemCode, N'') IN (N'', N'0')
            SET @Code = N'';
        ELSE
            SELECT @Code = ItemCode, @ItemName = ISNULL(ItemName, N'')
            FROM dbo.OITM
            WHERE ItemCode = @ItemCode;

        IF NOT EXISTS (SELECT 1 FROM dbo.kolv_mag_Location WITH (UPDLOCK, HOLDLOCK)
                WHERE Rank = @Rank AND Stand = @Stand AND Shelf = @Shelf AND Location = @Location)
            SET @ErrDesc = N'Ta lokalizacja nie istnieje. Mógł ją usunąć inny użytkownik: odśwież magazyn.';
        ELSE IF @Code IS NULL
            SET @ErrDesc = N'Nie ma surowca o kodzie „' + @ItemCode + N'”.';
        ELSE IF @GroupSur <> 0 AND NOT EXISTS (SELECT 1 FROM dbo.kolv_mag_Location_Group WITH (UPDLOCK, HOLDLOCK)
                WHERE GroupSur = @GroupSur AND OnOrOff = N'Y')
            SET @ErrDesc = N'Wskazana grupa surowców nie istnieje lub jest wyłączona.';
        IF @ErrDesc <> N''
        BEGIN
            ROLLBACK TRANSACTION;
            RETURN 1;
        END

        UPDATE dbo.kolv_mag_Location_Item
        SET ItemCode = @Code, ItemName = @ItemName, GroupSur = @GroupSur, UserSign = @UserSign, UpdateDate = GETDATE()
        WHERE Rank = @Rank AND Stand = @Stand AND Shelf = @Shelf AND Location = @Location;
        IF @@ROWCOUNT = 0
            INSERT INTO dbo.kolv_mag_Location_Item (Rank, Stand, Shelf, Location, ItemCode, ItemName, GroupSur,
                UserSign, UpdateDate)
            VALUES (@Rank, @Stand, @Shelf, @Location, @Code, @ItemName, @GroupSur, @UserSign, GETDATE());
        COMMIT TRANSACTION;
        RETURN 0;
    END TRY
    BEGIN CATCH
        IF @@TRANCOUNT > 0
            ROLLBACK TRANSACTION;
        SET @ErrDesc = LEFT(N'Błąd zapisu surowca na lokalizacji: ' + ERROR_MESSAGE(), 250);
        RETURN 1;
    END CATCH
END
GO
