-- Brings fill and icon of every location up to date with the packages that lie on it. With @RefreshLinePercent N'Y'
-- the share of each package is recomputed as well. Only rows that change are written, and plans which refresh all day
-- neither lock nor wait while all is right. What is wrong is computed again under the lock that movers of packages take
-- first, so that a fill of a moment ago is not written over theirs. A failure is undone and raised again: clients do not
-- read the return value.
DROP PROCEDURE IF EXISTS dbo.Kolv_mag_Refresh_Percent_Location;
GO
CREATE PROCEDURE dbo.Kolv_mag_Refresh_Percent_Location
    @RefreshLinePercent nvarchar(1)
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;
    SET TRANSACTION ISOLATION LEVEL READ UNCOMMITTED;

    BEGIN TRY
        DECLARE @Stands int;

        CREATE TABLE #Fill (
            Rank smallint NOT NULL,
            Stand smallint NOT NULL,
            Shelf smallint NOT NULL,
            Location smallint NOT NULL,
            PRIMARY KEY (Rank, Stand, Shelf, Location)
        );
        CREATE TABLE #Share (BarCode nvarchar(50) COLLATE DATABASE_DEFAULT NOT NULL PRIMARY KEY);
        INSERT INTO #Fill (Rank, Stand, Shelf, Location)
        SELECT L.Rank, L.Stand, L.Shelf, L.Location
        FROM dbo.kolv_mag_Location AS L
            INNER JOIN dbo.Kolv_vv_mag_Location_Fill AS N
                ON N.Rank = L.Rank AND N.Stand = L.Stand AND N.Shelf = L.Shelf AND N.Location = L.Location
        WHERE L.LocationPercent IS NULL OR L.LocationPercent <> N.LocationPercent
            OR L.LocationIcon IS NULL OR L.LocationIcon <> N.LocationIcon;
        IF @RefreshLinePercent = N'Y'
            INSERT INTO #Share (BarCode)
            SELECT B.BarCode
            FROM dbo.Kolv_Mag_BarCode_Sur AS B
                INNER JOIN dbo.Kolv_vv_mag_Package_Share AS N ON N.BarCode = B.BarCode
            WHERE B.LinePercent IS NULL OR B.LinePercent <> N.LinePercent;
        IF NOT EXISTS (SELECT 1 FROM #Fill) AND NOT EXISTS (SELECT 1 FROM #Share)
            RETURN 0;

        SET TRANSACTION ISOLATION LEVEL READ COMMITTED;
        BEGIN TRANSACTION;
        SELECT @Stands = COUNT(*) FROM dbo.kolv_mag_Stand WITH (UPDLOCK, HOLDLOCK);
        UPDATE L
        SET L.LocationPercent = N.LocationPercent, L.LocationIcon = N.LocationIcon
        FROM dbo.kolv_mag_Location AS L
            INNER JOIN dbo.Kolv_vv_mag_Location_Fill AS N
                ON N.Rank = L.Rank AND N.Stand = L.Stand AND N.Shelf = L.Shelf AND N.Location = L.Location
            INNER JOIN #Fill AS F
                ON F.Rank = L.Rank AND F.Stand = L.Stand AND F.Shelf = L.Shelf AND F.Location = L.Location;
        UPDATE B
        SET B.LinePercent = N.LinePercent
        FROM dbo.Kolv_Mag_BarCode_Sur AS B
            INNER JOIN dbo.Kolv_vv_mag_Package_Share AS N ON N.BarCode = B.BarCode
            INNER JOIN #Share AS S ON S.BarCode = B.BarCode;
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
