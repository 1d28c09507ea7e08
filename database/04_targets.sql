-- Where a package may be put: the one place of these rules. Proposals show them, and the move asks them again.

-- A location as a target: what it can hold, what lies there, and whom it is given to. Place is how people name it.
DROP VIEW IF EXISTS dbo.Kolv_vv_mag_Location_Room;
GO
CREATE VIEW dbo.Kolv_vv_mag_Location_Room
AS
SELECT S.Rank, S.Stand, S.Shelf, S.Location, S.SpaceWidth, S.SpaceHeight, S.SpaceDepth, S.SpaceVolume, S.SpaceWeight,
    ISNULL(W.PackageCount, 0) AS PackageCount, ISNULL(W.LoadVolume, 0) AS LoadVolume,
    ISNULL(W.LoadWeight, 0) AS LoadWeight, ISNULL(W.FirstItem, N'') AS FirstItem, ISNULL(W.LastItem, N'') AS LastItem,
    ISNULL(I.ItemCode, N'') AS ItemCode, ISNULL(I.GroupSur, 0) AS GroupSur,
    ISNULL(I.StatLocation_cmb, N'0') AS StatLocation,
    ISNULL(D.StandEnable, N'Y') AS StandEnable, ISNULL(D.StandLeft, 0) AS StandLeft, ISNULL(D.StandTop, 0) AS StandTop,
    CASE WHEN S.Rank BETWEEN 1 AND 6 THEN SUBSTRING(N'ABCDEF', S.Rank, 1) ELSE CAST(S.Rank AS nvarchar(6)) END
        + N' ' + CAST(S.Stand AS nvarchar(6)) + N'-' + CAST(S.Shelf AS nvarchar(6)) + N'-'
        + CAST(S.Location AS nvarchar(6)) AS Place
FROM dbo.Kolv_vv_mag_Location_Space AS S
    INNER JOIN dbo.kolv_mag_Stand AS D ON D.Rank = S.Rank AND D.Stand = S.Stand
    LEFT JOIN dbo.kolv_mag_Location_Item AS I
        ON I.Rank = S.Rank AND I.Stand = S.Stand AND I.Shelf = S.Shelf AND I.Location = S.Location
    LEFT JOIN dbo.Kolv_vv_mag_Location_Load AS W
        ON W.Rank = S.Rank AND W.Stand = S.Stand AND W.Shelf = S.Shelf AND W.Location = S.Location;
GO

-- Every package against every location. To be read for a few packages or one location, never as a whole.
--
-- Status: D the location is given to the material and has room; C it is given to nobody in particular and has room; P it
-- would take the material, but is full now; O it does not take it. Reason says why, Occupied is N'C' for an empty location
-- and N'Z' for one where something lies. Kin is 1 where the material belongs or already lies.
-- A package may stand out 150 mm over the front edge of its location, as pallets do.
DROP VIEW IF EXISTS dbo.Kolv_vv_mag_Package_Target;
GO
CREATE VIEW dbo.Kolv_vv_mag_Package_Target
AS
SELECT X.BarCode, X.ItemCode, X.Quantity, X.Rank, X.Stand, X.Shelf, X.Location, X.Place, X.PackVolume, X.PackWeight,
    X.SpaceVolume, X.SpaceWeight, X.LoadVolume, X.LoadWeight, X.StandLeft, X.StandTop, X.Kin, X.Verdict,
    CASE WHEN X.PackageCount = 0 THEN N'C' ELSE N'Z' END AS Occupied,
    CASE X.Verdict WHEN 1 THEN N'D' WHEN 2 THEN N'C' WHEN 3 THEN N'P' ELSE N'O' END AS Status,
    CASE X.Verdict
        WHEN 1 THEN N'przypisana do surowca'
        WHEN 2 THEN N'bez przypisania do surowca'
        WHEN 3 THEN N'brak miejsca'
        WHEN 4 THEN N'opakowanie jest większe lub cięższe, niż lokalizacja dopuszcza'
        WHEN 5 THEN N'jednoindeksowa i leży na niej inny surowiec'
        WHEN 6 THEN N'przypisana do innego surowca'
        WHEN 7 THEN N'przypisana do grupy, do której surowiec nie należy'
        WHEN 8 THEN N'regał jest wyłączony'
        ELSE N'opakowanie już na niej leży' END AS Reason,
    CASE WHEN (X.LoadVolume + X.PackVolume) / X.SpaceVolume > (X.LoadWeight + X.PackWeight) / X.SpaceWeight
        THEN 100.0 * (X.LoadVolume + X.PackVolume) / X.SpaceVolume
        ELSE 100.0 * (X.LoadWeight + X.PackWeight) / X.SpaceWeight END AS PercentAfter
FROM (
    SELECT P.BarCode, P.ItemCode, P.Quantity, P.PackVolume, P.PackWeight, R.Rank, R.Stand, R.Shelf, R.Location, R.Place,
        R.SpaceVolume, R.SpaceWeight, R.LoadVolume, R.LoadWeight, R.PackageCount, R.StandLeft, R.StandTop,
        CASE WHEN R.ItemCode = P.ItemCode OR G.ItemCode IS NOT NULL OR EXISTS (SELECT 1
                FROM dbo.Kolv_Mag_BarCode_Sur AS K
                WHERE K.Rank = R.Rank AND K.Stand = R.Stand AND K.Shelf = R.Shelf AND K.Location = R.Location
                    AND K.ItemCode = P.ItemCode AND K.Active = N'Y') THEN 1 ELSE 0 END AS Kin,
        CASE WHEN P.Rank = R.Rank AND P.Stand = R.Stand AND P.Shelf = R.Shelf AND P.Location = R.Location THEN 9
            WHEN R.StandEnable = N'N' THEN 8
            WHEN R.ItemCode <> P.ItemCode AND G.ItemCode IS NULL AND R.GroupSur <> 0 THEN 7
            WHEN R.ItemCode <> P.ItemCode AND G.ItemCode IS NULL AND R.ItemCode <> N'' AND R.StatLocation <> N'1' THEN 6
            WHEN R.StatLocation <> N'1' AND R.PackageCount > 0
                AND (R.FirstItem <> P.ItemCode OR R.LastItem <> P.ItemCode) THEN 5
            WHEN P.PackHeight > R.SpaceHeight OR P.PackVolume > R.SpaceVolume * 1.000001
                OR P.PackWeight > R.SpaceWeight * 1.000001
                OR NOT ((P.PackLength <= R.SpaceWidth AND P.PackWidth <= R.SpaceDepth + 150)
                    OR (P.PackWidth <= R.SpaceWidth AND P.PackLength <= R.SpaceDepth + 150)) THEN 4
            WHEN R.LoadVolume + P.PackVolume > R.SpaceVolume * 1.000001
                OR R.LoadWeight + P.PackWeight > R.SpaceWeight * 1.000001 THEN 3
            WHEN R.ItemCode = P.ItemCode OR G.ItemCode IS NOT NULL THEN 1
            ELSE 2 END AS Verdict
    FROM (
        SELECT BarCode, ISNULL(ItemCode, N'') AS ItemCode, Quantity, Rank, Stand, Shelf, Location,
            ISNULL(PackLength, 0) AS PackLength, ISNULL(PackWidth, 0) AS PackWidth, ISNULL(PackHeight, 0) AS PackHeight,
            CAST(ISNULL(PackLength, 0) AS float) * ISNULL(PackWidth, 0) * ISNULL(PackHeight, 0) / 1000000.0 AS PackVolume,
            CAST(ISNULL(PackWeight, 0) AS float) AS PackWeight
        FROM dbo.Kolv_Mag_BarCode_Sur
        WHERE Active = N'Y'
        ) AS P
        CROSS JOIN dbo.Kolv_vv_mag_Location_Room AS R
        LEFT JOIN dbo.kolv_mag_Group_Item AS G ON G.GroupSur = R.GroupSur AND G.ItemCode = P.ItemCode
) AS X;
GO
