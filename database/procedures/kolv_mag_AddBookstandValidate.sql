-- Judges a stand as the editor wants to save it and changes nothing: 0, or 1 with the reason.
--
-- kolv_mag_AddBookstand asks here as well, inside its transaction, since the warehouse may have changed after the
-- editor asked. The lock hints are for that call; on its own the procedure holds nothing.
--
-- Only shelf @Shelf is judged: the client passes 0 for the shelves above it, which says nothing about them.
-- @StandDescriprion is spelled so on purpose: clients name it.
DROP PROCEDURE IF EXISTS dbo.kolv_mag_AddBookstandValidate;
GO
CREATE PROCEDURE dbo.kolv_mag_AddBookstandValidate
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
    @StandDescriprion nvarchar(4000),
    @ErrDesc nvarchar(250) OUTPUT
AS
BEGIN
    SET NOCOUNT ON;
    SET @ErrDesc = N'';

    BEGIN TRY
        DECLARE @StandWidth int = 615;
        DECLARE @StandHeight int = 270;
        DECLARE @Locations smallint;
        DECLARE @Exists bit = 0;
        DECLARE @OldLeft int;
        DECLARE @OldTop int;
        DECLARE @OldShelves smallint = 0;
        DECLARE @OtherShelves smallint = 0;
        DECLARE @NewShelves smallint;
        DECLARE @Refused int;
        DECLARE @InTheWay nvarchar(110);

        SET @Stand = ISNULL(@Stand, 0);
        SET @Shelf = ISNULL(@Shelf, -1);
        SET @Left = ISNULL(@Left, 0);
        SET @Top = ISNULL(@Top, 0);
        SET @Locations = ISNULL(CASE @Shelf WHEN 1 THEN @Shelf_1 WHEN 2 THEN @Shelf_2 WHEN 3 THEN @Shelf_3
            WHEN 4 THEN @Shelf_4 ELSE 0 END, -1);

        -- What the values say by themselves.
        IF NOT EXISTS (SELECT 1 FROM dbo.kolv_mag_Rank WHERE Rank = @Rank)
            SET @ErrDesc = N'Wskaż rząd, w którym ma stać regał.';
        ELSE IF @Stand < 1 AND @Stand <> -1
            SET @ErrDesc = N'Wskaż regał albo wybierz „Nowy”.';
        ELSE IF @Shelf NOT BETWEEN 0 AND 4
            SET @ErrDesc = N'Regał ma najwyżej 4 półki.';
        ELSE IF @Locations NOT BETWEEN 0 AND 3
            SET @ErrDesc = N'Półka ' + CAST(@Shelf AS nvarchar(6)) + N' może mieć od 0 do 3 lokalizacji.';
        ELSE IF @Left NOT BETWEEN 200 AND 14500
            SET @ErrDesc = N'Położenie X = ' + CAST(@Left AS nvarchar(11))
                + N' jest poza granicami magazynu (od 200 do 14500).';
        ELSE IF @Top NOT BETWEEN 1100 AND 8500
            SET @ErrDesc = N'Położenie Y = ' + CAST(@Top AS nvarchar(11))
                + N' jest poza granicami magazynu (od 1100 do 8500).';
        ELSE IF DATALENGTH(@StandIcon) > 200
            SET @ErrDesc = N'Nazwa ikony regału ma najwyżej 100 znaków.';
        ELSE IF DATALENGTH(@StandDescriprion) > 500
            SET @ErrDesc = N'Opis regału ma najwyżej 250 znaków.';
        ELSE IF ISNULL(@StandVisable, N'') NOT IN (N'Y', N'N') OR ISNULL(@StandEnable, N'') NOT IN (N'Y', N'N')
                OR ISNULL(@StandFrameArround, N'') NOT IN (N'Y', N'N')
            SET @ErrDesc = N'Znaczniki regału przyjmują wartości Y albo N.';
        IF @ErrDesc <> N''
            RETURN 1;

        -- What they mean for the warehouse as it is.
        SELECT @Exists = 1, @OldLeft = StandLeft, @OldTop = StandTop, @OldShelves = ISNULL(ShelfCount, 0)
        FROM dbo.kolv_mag_Stand WITH (UPDLOCK, HOLDLOCK)
        WHERE Rank = @Rank AND Stand = @Stand;
        IF @Exists = 0 AND @Stand <> -1
        BEGIN
            SET @ErrDesc = dbo.kolv_mag_fn_StandText(@Rank, @Stand)
                + N' nie istnieje. Mógł go usunąć inny użytkownik: odśwież magazyn.';
            RETURN 1;
        END
        -- The client takes the number of stands of the row as the number of the stand that it has just added.
        IF @Stand = -1 AND EXISTS (SELECT 1 FROM dbo.kolv_mag_Stand WHERE Rank = @Rank
                AND Stand > (SELECT COUNT(*) FROM dbo.kolv_mag_Stand AS C WHERE C.Rank = @Rank))
        BEGIN
            SET @ErrDesc = N'Numery regałów tego rzędu mają luki, dlatego nie można dodać kolejnego regału.';
            RETURN 1;
        END

        SELECT @OtherShelves = ISNULL(MAX(Shelf), 0)
        FROM dbo.kolv_mag_Location
        WHERE Rank = @Rank AND Stand = @Stand AND Shelf <> @Shelf;
        SET @NewShelves = CASE WHEN @Locations > 0 AND @Shelf > @OtherShelves THEN @Shelf ELSE @OtherShelves END;
        IF @Shelf > @OldShelves + 1 AND @Shelf > @OtherShelves + 1
        BEGIN
            SET @ErrDesc = N'Półka ' + CAST(@Shelf AS nvarchar(6)) + N' może powstać dopiero nad półką '
                + CAST(@Shelf - 1 AS nvarchar(6)) + N'. Zacznij od najniższej brakującej.';
            RETURN 1;
        END

        EXEC @Refused = dbo.kolv_mag_AddBookstandPackages @Rank, @Stand, @Shelf, @Locations, @ErrDesc OUTPUT;
        IF @Refused > 0
            RETURN 1;

        -- A stand that neither moves nor grows stays where it is: its other values can be edited even if another
        -- program has put it on top of its neighbour.
        IF @Stand = -1 OR @OldLeft IS NULL OR @OldTop IS NULL OR @OldLeft <> @Left OR @OldTop <> @Top
                OR @NewShelves > @OldShelves
            SELECT TOP 1 @InTheWay = dbo.kolv_mag_fn_StandText(Rank, Stand)
            FROM dbo.kolv_mag_Stand
            WHERE NOT (Rank = @Rank AND Stand = @Stand)
                AND StandLeft < @Left + @StandWidth AND @Left < StandLeft + @StandWidth
                AND StandTop - dbo.kolv_mag_fn_StandReach(ShelfCount) < @Top + @StandHeight
                AND @Top - dbo.kolv_mag_fn_StandReach(@NewShelves) < StandTop + @StandHeight
            ORDER BY Rank, Stand;
        IF @InTheWay IS NOT NULL
        BEGIN
            SET @ErrDesc = N'W tym miejscu stoi już ' + @InTheWay
                + N'. Zmień położenie X lub Y tak, aby półki regałów nie zachodziły na siebie.';
            RETURN 1;
        END
        RETURN 0;
    END TRY
    BEGIN CATCH
        SET @ErrDesc = LEFT(N'Błąd sprawdzania regału: ' + ERROR_MESSAGE(), 250);
        RETURN 1;
    END CATCH
END
GO
