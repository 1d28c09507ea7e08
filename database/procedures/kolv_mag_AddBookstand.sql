-- Adds a stand (@Stand -1) behind the last one of its row, or changes one, and brings shelf @Shelf to its number of
-- locations; @Shelf 0 leaves all shelves alone. New locations come at the right end of the shelf, and those that go
-- are taken from there, with what is assigned to them.
DROP PROCEDURE IF EXISTS dbo.kolv_mag_AddBookstand;
GO
CREATE PROCEDURE dbo.kolv_mag_AddBookstand
    @Rank smallint,
    @Stand smallint,
    @Shelf smallint,
    @StandIcon nvarchar(4000),
    @Top int,
    @Left int,
    @Shelf_1 smallint,
    @Shelf_2 smallint,
    @Shelf_3 smallint,
    @Shelf_4 smallint,
    @StandVisable nvarchar(10),
    @StandEnable nvarchar(10),
    @StandFrameArround nvarchar(10),
    @StandDescription nvarchar(4000),
    @ErrDesc nvarchar(250) OUTPUT
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;
    SET @ErrDesc = N'';

    BEGIN TRY
        DECLARE @Refused int;
        DECLARE @Stands int;
        DECLARE @Locations smallint = CASE @Shelf WHEN 1 THEN @Shelf_1 WHEN 2 THEN @Shelf_2 WHEN 3 THEN @Shelf_3
            WHEN 4 THEN @Shelf_4 ELSE 0 END;

        BEGIN TRANSACTION;
        -- Whoever lays stands out takes this lock first: numbers and places are judged against all stands.
        SELECT @Stands = COUNT(*) FROM dbo.kolv_mag_Stand WITH (UPDLOCK, HOLDLOCK);
        EXEC @Refused = dbo.kolv_mag_AddBookstandValidate @Rank, @Stand, @Shelf, @StandIcon, @Top, @Left, @Shelf_1,
            @Shelf_2, @Shelf_3, @Shelf_4, @StandVisable, @StandEnable, @StandFrameArround, @StandDescription,
            @ErrDesc OUTPUT;
        IF @Refused > 0
        BEGIN
            ROLLBACK TRANSACTION;
            RETURN 1;
        END

        IF @Stand = -1
        BEGIN
            SELECT @Stand = COUNT(*) + 1 FROM dbo.kolv_mag_Stand WHERE Rank = @Rank;
            INSERT INTO dbo.kolv_mag_Stand (Rank, Stand, StandName, ShelfCount)
            VALUES (@Rank, @Stand, N'Regał ' + CAST(@Stand AS nvarchar(6)), 0);
        END

        DELETE FROM dbo.kolv_mag_Location
        WHERE Rank = @Rank AND Stand = @Stand AND Shelf = @Shelf AND @Shelf > 0 AND Location > @Locations;
        INSERT INTO dbo.kolv_mag_Location (Rank, Stand, Shelf, Location)
        SELECT @Rank, @Stand, @Shelf, N.Number
        FROM dbo.kolv_mag_Number AS N
        WHERE N.Number <= @Locations AND NOT EXISTS (SELECT 1 FROM dbo.kolv_mag_Location AS L
            WHERE L.Rank = @Rank AND L.Stand = @Stand AND L.Shelf = @Shelf AND L.Location = N.Number);

        UPDATE dbo.kolv_mag_Stand
        -- The client's test of the icon file leaves blanks around the name aside; its drawing does not.
        SET StandIcon = LTRIM(RTRIM(ISNULL(@StandIcon, N''))), StandLeft = @Left, StandTop = @Top,
            StandVisable = UPPER(@StandVisable), StandEnable = UPPER(@StandEnable),
            StandFrameArround = UPPER(@StandFrameArround), StandDescription = ISNULL(@StandDescription, N''),
            ShelfCount = (SELECT ISNULL(MAX(L.Shelf), 0) FROM dbo.kolv_mag_Location AS L
                WHERE L.Rank = @Rank AND L.Stand = @Stand)
        WHERE Rank = @Rank AND Stand = @Stand;

        -- One location more or less changes the width of its neighbours, and with it their icons and what they hold.
        EXEC dbo.kolv_mag_Refresh_Percent_Shelf @Rank, @Stand, @Shelf;
        COMMIT TRANSACTION;
        RETURN 0;
    END TRY
    BEGIN CATCH
        IF @@TRANCOUNT > 0
            ROLLBACK TRANSACTION;
        SET @ErrDesc = LEFT(N'Błąd zapisu regału: ' + ERROR_MESSAGE(), 250);
        RETURN 1;
    END CATCH
END
GO
