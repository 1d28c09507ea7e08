-- Moves one chosen package to a location, wholly or not at all, with a row of history and the fills of both shelves.
--
-- Everything is judged under a lock on the stands that lose and gain the package: whoever puts a package on a stand takes
-- the row of the stand first, the lower address before the higher one, so that two movers neither overfill a location
-- nor wait for each other in a circle. The package itself changes only if it still lies where it was staged.
DROP PROCEDURE IF EXISTS dbo.kolv_mag_Shift_Location_BarCode;
GO
CREATE PROCEDURE dbo.kolv_mag_Shift_Location_BarCode
    @BarCode nvarchar(50),
    @Rank smallint,
    @Stand smallint,
    @Shelf smallint,
    @Location smallint,
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
        DECLARE @FromRank smallint;
        DECLARE @FromStand smallint;
        DECLARE @FromShelf smallint;
        DECLARE @FromLocation smallint;
        DECLARE @Verdict int;
        DECLARE @Reason nvarchar(100);
        DECLARE @Place nvarchar(30);
        DECLARE @Locked int;

        SELECT @FromRank = Rank, @FromStand = Stand, @FromShelf = Shelf, @FromLocation = Location
        FROM dbo.Kolv_Mag_BarCode_Input_Sur_tym
        WHERE SPID = -@@SPID AND HostName = HOST_NAME() AND UserSign = @UserSign AND Aplication = @Aplication
            AND Operation = @Operation AND BarCode = @BarCode AND LineGrd = -1 AND YearCode = YEAR(GETDATE());
        IF @FromRank IS NULL
        BEGIN
            SET @ErrDesc = N'Opakowanie „' + ISNULL(@BarCode, N'') + N'” nie jest wybrane do przesunięcia.';
            RETURN 1;
        END

        BEGIN TRANSACTION;
        IF @FromRank < @Rank OR (@FromRank = @Rank AND @FromStand <= @Stand)
            SELECT @Locked = COUNT(*) FROM dbo.kolv_mag_Stand WITH (UPDLOCK, HOLDLOCK)
            WHERE Rank = @FromRank AND Stand = @FromStand;
        SELECT @Locked = COUNT(*) FROM dbo.kolv_mag_Stand WITH (UPDLOCK, HOLDLOCK)
        WHERE Rank = @Rank AND Stand = @Stand;
        IF @FromRank > @Rank OR (@FromRank = @Rank AND @FromStand > @Stand)
            SELECT @Locked = COUNT(*) FROM dbo.kolv_mag_Stand WITH (UPDLOCK, HOLDLOCK)
            WHERE Rank = @FromRank AND Stand = @FromStand;

        SELECT @Verdict = Verdict, @Reason = Reason, @Place = Place
        FROM dbo.Kolv_vv_mag_Package_Target
        WHERE BarCode = @BarCode AND Rank = @Rank AND Stand = @Stand AND Shelf = @Shelf AND Location = @Location;

        IF NOT EXISTS (SELECT 1 FROM dbo.kolv_mag_Location
                WHERE Rank = @Rank AND Stand = @Stand AND Shelf = @Shelf AND Location = @Location)
            SET @ErrDesc = N'Wskazana lokalizacja nie istnieje. Mógł ją usunąć inny użytkownik: odśwież magazyn.';
        ELSE IF NOT EXISTS (SELECT 1 FROM dbo.Kolv_Mag_BarCode_Sur
                WHERE BarCode = @BarCode AND Active = N'Y' AND Rank = @FromRank AND Stand = @FromStand
                    AND Shelf = @FromShelf AND Location = @FromLocation)
            SET @ErrDesc = N'Opakowanie „' + @BarCode
                + N'” przesunął lub wydał w międzyczasie inny użytkownik. Nie zostało przesunięte.';
        ELSE IF ISNULL(@Verdict, 9) NOT IN (1, 2)
            SET @ErrDesc = N'Opakowanie „' + @BarCode + N'” pozostało na miejscu. Lokalizacja ' + @Place + N': '
                + @Reason + N'.';

        IF @ErrDesc = N''
        BEGIN
            UPDATE dbo.Kolv_Mag_BarCode_Sur
            SET Rank = @Rank, Stand = @Stand, Shelf = @Shelf, Location = @Location, UserSign = @UserSign
            WHERE BarCode = @BarCode AND Active = N'Y' AND Rank = @FromRank AND Stand = @FromStand
                AND Shelf = @FromShelf AND Location = @FromLocation;
            -- Another program may take packages without the lock on the stand.
            IF @@ROWCOUNT = 0
                SET @ErrDesc = N'Opakowanie „' + @BarCode
                    + N'” zmieniło położenie. Nie zostało przesunięte.';
        END
        IF @ErrDesc <> N''
        BEGIN
            ROLLBACK TRANSACTION;
            RETURN 1;
        END

        INSERT INTO dbo.Kolv_Mag_BarCode_Sur_History (BarCode, Operation, Quantity, FromRank, FromStand, FromShelf,
            FromLocation, ToRank, ToStand, ToShelf, ToLocation, UserSign, HostName, BookDate)
        SELECT BarCode, N'S', Quantity, @FromRank, @FromStand, @FromShelf, @FromLocation, Rank, Stand, Shelf, Location,
            @UserSign, HOST_NAME(), GETDATE()
        FROM dbo.Kolv_Mag_BarCode_Sur
        WHERE BarCode = @BarCode;
        DELETE FROM dbo.Kolv_Mag_BarCode_Input_Sur_tym
        WHERE SPID = -@@SPID AND HostName = HOST_NAME() AND UserSign = @UserSign AND Aplication = @Aplication
            AND Operation = @Operation AND BarCode = @BarCode;

        EXEC dbo.kolv_mag_Refresh_Percent_Shelf @FromRank, @FromStand, @FromShelf;
        IF @FromRank <> @Rank OR @FromStand <> @Stand OR @FromShelf <> @Shelf
            EXEC dbo.kolv_mag_Refresh_Percent_Shelf @Rank, @Stand, @Shelf;
        COMMIT TRANSACTION;
        RETURN 0;
    END TRY
    BEGIN CATCH
        IF @@TRANCOUNT > 0
            ROLLBACK TRANSACTION;
        SET @ErrDesc = LEFT(N'Błąd przesunięcia opakowania: ' + ERROR_MESSAGE(), 250);
        RETURN 1;
    END CATCH
END
GO
