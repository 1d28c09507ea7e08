-- Brings fill and icon of every location up to date with the packages that lie on it. With @RefreshLinePercent N'Y'
-- the share of each package is recomputed as well. Only rows that change are written, so that plans which refresh all
-- day lock nothing. A failure is undone and raised again: clients do not read the return value.
DROP PROCEDURE IF EXISTS dbo.Kolv_mag_Refresh_Percent_Location;
GO
CREATE PROCEDURE dbo.Kolv_mag_Refresh_Percent_Location
    @RefreshLinePercent nvarchar(1)
AS
BEGIN
    SET NOCOUNT ON;

    BEGIN TRY
        CREATE TABLE #Fill (
            Rank smallint NOT NULL,
            Stand smallint NOT NULL,
            Shelf smallint NOT NULL,
            Location smallint NOT NULL,
            LocationPercent smallint NOT NULL,
            LocationIcon nvarchar(100) COLLATE DATABASE_DEFAULT NOT NULL,
            PRIMARY KEY (Rank, Stand, Shelf, Location)
        );
        INSERT INTO #Fill (Rank, Stand, Shelf, Location, LocationPercent, LocationIcon)
        SELECT Rank, Stand, Shelf, Location, LocationPercent, LocationIcon
        FROM dbo.Kolv_vv_mag_Location_Fill;

        BEGIN TRANSACTION;
        UPDATE L
        SET L.LocationPercent = N.LocationPercent, L.LocationIcon = N.LocationIcon
        FROM dbo.kolv_mag_Location AS L
            INNER JOIN #Fill AS N
                ON N.Rank = L.Rank AND N.Stand = L.Stand AND N.Shelf = L.Shelf AND N.Location = L.Location
        WHERE L.LocationPercent IS NULL OR L.LocationPercent <> N.LocationPercent
            OR L.LocationIcon IS NULL OR L.LocationIcon <> N.LocationIcon;

        IF @RefreshLinePercent = N'Y'
            UPDATE B
            SET B.LinePercent = N.LinePercent
            FROM dbo.Kolv_Mag_BarCode_Sur AS B
                INNER JOIN dbo.Kolv_vv_mag_Package_Share AS N ON N.BarCode = B.BarCode;
        COMMIT TRANSACTION;
        RETURN 0;
    END TRY
    BEGIN CATCH
        IF @@TRANCOUNT > 0
            ROLLBACK TRANSACTION;
        THROW;
    END CATCH
END
GO
