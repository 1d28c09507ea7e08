-- Puts one package of the buffer onto the location of a label, wholly or not at all, with a row of history and the fill
-- of the shelf. Order and line are those of the package, 0 for one that has none. Judged as a move is judged.
DROP PROCEDURE IF EXISTS dbo.Kolv_mag_Add_Sur_On_Location;
GO
CREATE PROCEDURE dbo.Kolv_mag_Add_Sur_On_Location
    @DocEntry int,
    @LineNum smallint,
    @BarCodeSur nvarchar(100),
    @BarCodeLoc nvarchar(100),
    @UserSign smallint,
    @Operation nvarchar(10),
    @ErrDesc nvarchar(250) = NULL OUTPUT
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;
    SET @ErrDesc = N'';

    BEGIN TRY
        DECLARE @Stands int;
        DECLARE @Locations int = 0;
        DECLARE @Rank smallint;
        DECLARE @Stand smallint;
        DECLARE @Shelf smallint;
        DECLARE @Location smallint;
        DECLARE @ItemCode nvarchar(20);
        DECLARE @Verdict int;
        DECLARE @Place nvarchar(30);

        IF @@TRANCOUNT > 0
        BEGIN
            SET @ErrDesc = N'Opakowanie „' + LEFT(ISNULL(@BarCodeSur, N''), 50) + N'” nie zostało odłożone: połączenie '
                + N'z bazą ma niezakończoną operację. Uruchom program ponownie.';
            RETURN 1;
        END

        BEGIN TRANSACTION;
        SELECT @Stands = COUNT(*) FROM dbo.kolv_mag_Stand WITH (UPDLOCK, HOLDLOCK);
        SELECT @Locations = COUNT(*), @Rank = MIN(Rank), @Stand = MIN(Stand), @Shelf = MIN(Shelf),
            @Location = MIN(Location)
        FROM dbo.kolv_mag_fn_Location_BarCode(@BarCodeLoc);
        SET @ErrDesc = dbo.kolv_mag_fn_PutAway_Refusal(@DocEntry, @LineNum, @BarCodeSur, @BarCodeLoc, @Locations,
            @Operation);
        IF @ErrDesc IS NULL
        BEGIN
            SELECT @ItemCode = ItemCode FROM dbo.Kolv_vv_mag_Package_Size WHERE BarCode = @BarCodeSur;
            SELECT @Verdict = Verdict, @Place = Place
            FROM dbo.kolv_mag_fn_Location_Verdict(@BarCodeSur, @ItemCode, @Rank, @Stand, @Shelf, @Location);
            IF ISNULL(@Verdict, 0) NOT IN (1, 2)
                SET @ErrDesc = N'Opakowanie „' + @BarCodeSur + N'” pozostało w buforze. Lokalizacja '
                    + ISNULL(@Place, N'') + N': '
                    + ISNULL((SELECT Reason FROM dbo.Kolv_vv_mag_Verdict WHERE Verdict = @Verdict), N'') + N'.';
        END
        IF @ErrDesc IS NOT NULL
        BEGIN
            ROLLBACK TRANSACTION;
            RETURN 1;
        END

        UPDATE dbo.Kolv_Mag_BarCode_Sur
        SET Rank = @Rank, Stand = @Stand, Shelf = @Shelf, Location = @Location
        WHERE BarCode = @BarCodeSur;
        INSERT INTO dbo.Kolv_Mag_BarCode_Sur_History (BarCode, Operation, Quantity, ToRank, ToStand, ToShelf, ToLocation,
            UserSign, HostName, BookDate)
        SELECT BarCode, N'L', Quantity, Rank, Stand, Shelf, Location, @UserSign, HOST_NAME(), GETDATE()
        FROM dbo.Kolv_Mag_BarCode_Sur
        WHERE BarCode = @BarCodeSur;
        EXEC dbo.kolv_mag_Refresh_Percent_Shelf @Rank, @Stand, @Shelf;
        COMMIT TRANSACTION;
        SET @ErrDesc = N'';
        RETURN 0;
    END TRY
    BEGIN CATCH
        IF @@TRANCOUNT > 0
            ROLLBACK TRANSACTION;
        SET @ErrDesc = dbo.kolv_mag_fn_FailureText(N'Błąd odłożenia na lokalizację', ERROR_NUMBER(), ERROR_MESSAGE());
        RETURN 1;
    END CATCH
END
GO
