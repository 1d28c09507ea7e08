-- Judges whether a stand may be removed and changes nothing: 0, or 1 with the reason. kolv_mag_RemoveBookstand asks
-- here as well, inside its transaction; the lock hints are for that call.
--
-- Only the last stand of a row may go. The numbers of a row have no gaps, because the client takes the number of stands
-- as the number of a new one; and closing a gap would give the stands behind it new addresses, against the labels on
-- their shelves, the plans that are open elsewhere and the history of the packages.
DROP PROCEDURE IF EXISTS dbo.kolv_mag_RemoveBookstandValidate;
GO
CREATE PROCEDURE dbo.kolv_mag_RemoveBookstandValidate
    @Rank smallint,
    @Stand smallint,
    @ErrDesc nvarchar(250) OUTPUT
AS
BEGIN
    SET NOCOUNT ON;
    SET @ErrDesc = N'';

    BEGIN TRY
        DECLARE @Last smallint;
        DECLARE @Packages int;

        IF NOT EXISTS (SELECT 1 FROM dbo.kolv_mag_Stand WITH (UPDLOCK, HOLDLOCK) WHERE Rank = @Rank AND Stand = @Stand)
        BEGIN
            SET @ErrDesc = ISNULL(dbo.kolv_mag_fn_StandText(@Rank, @Stand), N'Wskazany regał')
                + N' nie istnieje. Mógł go usunąć inny użytkownik: odśwież magazyn.';
            RETURN 1;
        END

        SELECT @Packages = COUNT(*)
        FROM dbo.Kolv_Mag_BarCode_Sur WITH (UPDLOCK, HOLDLOCK)
        WHERE Rank = @Rank AND Stand = @Stand AND Active = N'Y';
        IF @Packages > 0
        BEGIN
            SET @ErrDesc = N'Nie można usunąć regału ' + dbo.kolv_mag_fn_StandText(@Rank, @Stand)
                + N': leżą na nim opakowania (liczba: ' + CAST(@Packages AS nvarchar(11))
                + N'). Przesuń je lub wydaj.';
            RETURN 1;
        END

        SELECT @Last = MAX(Stand) FROM dbo.kolv_mag_Stand WHERE Rank = @Rank;
        IF @Stand < @Last
        BEGIN
            SET @ErrDesc = N'Numery regałów w rzędzie nie mogą mieć luk. Najpierw usuń '
                + dbo.kolv_mag_fn_StandText(@Rank, @Last) + N', ostatni w tym rzędzie.';
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
