-- Recomputes fill and icon of every location from the packages that lie on it: the greater of the shares of volume and
-- weight, 0 only when nothing lies there, 100 at most. With @RefreshLinePercent N'Y' the share of each package is
-- recomputed as well. Only rows that change are written, so that plans which refresh all day lock nothing.
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
            Family nvarchar(2) COLLATE DATABASE_DEFAULT NOT NULL,
            Fill smallint NOT NULL,
            PRIMARY KEY (Rank, Stand, Shelf, Location)
        );
        INSERT INTO #Fill (Rank, Stand, Shelf, Location, Family, Fill)
        SELECT P.Rank, P.Stand, P.Shelf, P.Location, P.Family,
            CASE WHEN P.Share IS NULL THEN 0
                WHEN P.Share >= 99.5 THEN 100
                WHEN P.Share < 1 THEN 1
                ELSE CAST(ROUND(P.Share, 0) AS smallint) END
        FROM (
            SELECT S.Rank, S.Stand, S.Shelf, S.Location, S.Family,
                CASE WHEN W.LoadVolume / S.SpaceVolume > W.LoadWeight / S.SpaceWeight
                    THEN 100.0 * W.LoadVolume / S.SpaceVolume
                    ELSE 100.0 * W.LoadWeight / S.SpaceWeight END AS Share
            FROM dbo.Kolv_vv_mag_Location_Space AS S
                LEFT JOIN dbo.Kolv_vv_mag_Location_Load AS W
                    ON W.Rank = S.Rank AND W.Stand = S.Stand AND W.Shelf = S.Shelf AND W.Location = S.Location
        ) AS P;

        BEGIN TRANSACTION;
        UPDATE L
        SET L.LocationPercent = N.Fill, L.LocationIcon = N.Icon
        FROM dbo.kolv_mag_Location AS L
            INNER JOIN (
                SELECT Rank, Stand, Shelf, Location, Fill,
                    Family + N'_P_' + CASE WHEN Fill < 10 THEN N'0' ELSE N'' END
                        + CAST(Fill AS nvarchar(3)) + N'.ico' AS Icon
                FROM #Fill
            ) AS N ON N.Rank = L.Rank AND N.Stand = L.Stand AND N.Shelf = L.Shelf AND N.Location = L.Location
        WHERE L.LocationPercent IS NULL OR L.LocationPercent <> N.Fill
            OR L.LocationIcon IS NULL OR L.LocationIcon <> N.Icon;

        IF @RefreshLinePercent = N'Y'
            UPDATE B
            SET B.LinePercent = CASE WHEN N.VolumeShare > N.WeightShare THEN N.VolumeShare ELSE N.WeightShare END
            FROM dbo.Kolv_Mag_BarCode_Sur AS B
                INNER JOIN (
                    SELECT K.BarCode,
                        CAST(CAST(ISNULL(K.PackLength, 0) AS float) * ISNULL(K.PackWidth, 0) * ISNULL(K.PackHeight, 0)
                            / 10000.0 / S.SpaceVolume AS decimal(9, 2)) AS VolumeShare,
                        CAST(100.0 * CAST(ISNULL(K.PackWeight, 0) AS float) / S.SpaceWeight AS decimal(9, 2)) AS WeightShare
                    FROM dbo.Kolv_Mag_BarCode_Sur AS K
                        INNER JOIN dbo.Kolv_vv_mag_Location_Space AS S
                            ON S.Rank = K.Rank AND S.Stand = K.Stand AND S.Shelf = K.Shelf AND S.Location = K.Location
                ) AS N ON N.BarCode = B.BarCode;
        COMMIT TRANSACTION;
        RETURN 0;
    END TRY
    BEGIN CATCH
        IF @@TRANCOUNT > 0
            ROLLBACK TRANSACTION;
        RETURN 1;
    END CATCH
END
GO
