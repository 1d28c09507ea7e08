-- Moves one chosen package to a location, wholly or not at all, with a row of history and the fills of both shelves.
--
-- Everything is judged under the lock that whoever changes the stands takes first, kolv_mag_AddBookstand as well: one
-- package moves at a time. So two movers neither overfill a location nor wait for each other in a circle, and a move
-- is short. The package itself changes only if it still lies where it was staged.
--
-- What it says is final, so it does not work inside a transaction that somebody has left open: its COMMIT would only
-- count that one down, the locks would stay, and a later ROLLBACK would take back a move that the user saw made.
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
        DECLARE @ItemCode nvarchar(20);
        DECLARE @Place nvarchar(30);
        DECLARE @Stands int;
        DECLARE @Moved int = 0;

        IF @@TRANCOUNT > 0
        BEGIN
            SET @ErrDesc = N'Opakowanie „' + ISNULL(@BarCode, N'') + N'” nie zostało przesunięte: połączenie z bazą ma '
                + N'niezakończoną operację. Uruchom program ponownie.';
            RETURN 1;
        END
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
        SELECT @Stands = COUNT(*) FROM dbo.kolv_mag_Stand WITH (UPDLOCK, HOLDLOCK);

        SELECT @ItemCode = ItemCode FROM dbo.Kolv_vv_mag_Package_Size WHERE BarCode = @BarCode;
        SELECT @Verdict = Verdict, @Place = Place
        FROM dbo.kolv_mag_fn_Location_Verdict(@BarCode, @ItemCode, @Rank, @Stand, @Shelf, @Location);

        IF @Place IS NOT NULL AND @Verdict IN (1, 2)
        BEGIN
            UPDATE dbo.Kolv_Mag_BarCode_Sur
            SET Rank = @Rank, Stand = @Stand, Shelf = @Shelf, Location = @Location
            WHERE BarCode = @BarCode AND Active = N'Y' AND Rank = @FromRank AND Stand = @FromStand
                AND Shelf = @FromShelf AND Location = @FromLocation;
            SET @Moved = @@ROWCOUNT;
        END
        IF @Moved = 0
        BEGIN
            SET @ErrDesc = CASE
                WHEN NOT EXISTS (SELECT 1 FROM dbo.kolv_mag_Location
                        WHERE Rank = @Rank AND Stand = @Stand AND Shelf = @Shelf AND Location = @Location)
                    THEN N'Wskazana lokalizacja nie istnieje. Mógł ją usunąć inny użytkownik: odśwież magazyn.'
                WHEN NOT EXISTS (SELECT 1 FROM dbo.Kolv_Mag_BarCode_Sur
                        WHERE BarCode = @BarCode AND Active = N'Y' AND Rank = @FromRank AND Stand = @FromStand
                            AND Shelf = @FromShelf AND Location = @FromLocation)
                    THEN N'Opakowanie „' + @BarCode
                        + N'” przesunął lub wydał w międzyczasie inny użytkownik. Nie zostało przesunięte.'
                ELSE N'Opakowanie „' + @BarCode + N'” pozostało na miejscu. Lokalizacja ' + ISNULL(@Place, N'') + N': '
                    + ISNULL((SELECT Reason FROM dbo.Kolv_vv_mag_Verdict WHERE Verdict = @Verdict), N'') + N'.' END;
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
        SET @ErrDesc = dbo.kolv_mag_fn_FailureText(N'Błąd przesunięcia opakowania', ERROR_NUMBER(), ERROR_MESSAGE());
        RETURN 1;
    END CATCH
END
GO
