-- Where a package may be put: the one place of these rules. Proposals show them, and the move asks them again.

-- A location as a target: what it can hold, what lies there, and whom it is given to. Place is how people name it.
DROP VIEW IF EXISTS dbo.Kolv_vv_mag_Location_Room;
GO
CREATE VIEW dbo.Kolv_vv_mag_Location_Room
AS
SELECT S.Rank, S.Stand, S.Shelf, S.Location, S.SpaceWidth, S.SpaceHeight, S.SpaceDepth, S.SpaceVolume, S.SpaceWeight,
    S.SpaceVolume - ISNULL(W.LoadVolume, 0) AS FreeVolume, S.SpaceWeight - ISNULL(W.LoadWeight, 0) AS FreeWeight,
    ISNULL(W.PackageCount, 0) AS PackageCount, ISNULL(W.FirstItem, N'') AS FirstItem, ISNULL(W.LastItem, N'') AS LastItem,
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

-- What is said of a package and a location. D: the location is given to the material. C: it is given to nobody in
-- particular. P: it would take the package, but is full now. O: it does not take it. Only D and C may become the target.
DROP VIEW IF EXISTS dbo.Kolv_vv_mag_Verdict;
GO
CREATE VIEW dbo.Kolv_vv_mag_Verdict
AS
SELECT V.Verdict, V.Status, V.Reason
FROM (VALUES
        (1, N'D', N'przypisana do surowca'),
        (2, N'C', N'bez przypisania do surowca'),
        (3, N'P', N'brak miejsca'),
        (4, N'O', N'opakowanie za duże lub za ciężkie'),
        (5, N'O', N'jednoindeksowa, leży inny surowiec'),
        (6, N'O', N'przypisana do innego surowca'),
        (7, N'O', N'grupa nie obejmuje surowca'),
        (8, N'O', N'regał jest wyłączony'),
        (9, N'O', N'opakowanie już na niej leży')
    ) AS V (Verdict, Status, Reason);
GO

-- Every location with what it says to a material, its room left aside: verdict 1, 2 or 5 to 8.
-- A location of several materials that is given to one of them, and to no group, takes the others as well. Kin is 1
-- where the material belongs or lies already. No location is given to packages without a code, the material N''.
DROP FUNCTION IF EXISTS dbo.kolv_mag_fn_Item_Target;
GO
CREATE FUNCTION dbo.kolv_mag_fn_Item_Target (@ItemCode nvarchar(20))
RETURNS TABLE
AS
RETURN
    SELECT R.Rank, R.Stand, R.Shelf, R.Location, R.Place, R.StandLeft, R.StandTop, R.SpaceWidth, R.SpaceHeight,
        R.SpaceDepth, R.SpaceVolume, R.SpaceWeight, R.FreeVolume, R.FreeWeight, R.PackageCount, R.StatLocation,
        CASE WHEN R.ItemCode = @ItemCode AND @ItemCode <> N'' OR G.ItemCode IS NOT NULL OR EXISTS (SELECT 1
                FROM dbo.Kolv_Mag_BarCode_Sur AS K
                WHERE K.Rank = R.Rank AND K.Stand = R.Stand AND K.Shelf = R.Shelf AND K.Location = R.Location
                    AND ISNULL(K.ItemCode, N'') = @ItemCode AND K.Active = N'Y') THEN 1 ELSE 0 END AS Kin,
        CASE WHEN R.StandEnable = N'N' THEN 8
            WHEN R.ItemCode <> @ItemCode AND G.ItemCode IS NULL AND R.GroupSur <> 0 THEN 7
            WHEN R.ItemCode <> @ItemCode AND G.ItemCode IS NULL AND R.ItemCode <> N'' AND R.StatLocation <> N'1' THEN 6
            WHEN R.StatLocation <> N'1' AND R.PackageCount > 0
                AND (R.FirstItem <> @ItemCode OR R.LastItem <> @ItemCode) THEN 5
            WHEN R.ItemCode = @ItemCode AND @ItemCode <> N'' OR G.ItemCode IS NOT NULL THEN 1
            ELSE 2 END AS Verdict
    FROM dbo.Kolv_vv_mag_Location_Room AS R
        LEFT JOIN dbo.kolv_mag_Group_Item AS G ON G.GroupSur = R.GroupSur AND G.ItemCode = @ItemCode;
GO

-- An active package with its size, for the question where it fits. A size that nobody has entered takes no room.
DROP VIEW IF EXISTS dbo.Kolv_vv_mag_Package_Size;
GO
CREATE VIEW dbo.Kolv_vv_mag_Package_Size
AS
SELECT B.BarCode, ISNULL(B.ItemCode, N'') AS ItemCode, B.Rank, B.Stand, B.Shelf, B.Location,
    ISNULL(B.PackLength, 0) AS PackLength, ISNULL(B.PackWidth, 0) AS PackWidth, ISNULL(B.PackHeight, 0) AS PackHeight,
    CAST(ISNULL(B.PackLength, 0) AS float) * ISNULL(B.PackWidth, 0) * ISNULL(B.PackHeight, 0) / 1000000.0 AS PackVolume,
    CAST(ISNULL(B.PackWeight, 0) AS float) AS PackWeight
FROM dbo.Kolv_Mag_BarCode_Sur AS B
WHERE B.Active = N'Y';
GO

-- The whole verdict: what the location says to the material, and if it takes it, what its room says to the package.
-- A package may stand out 150 mm over the front edge, as pallets do. The last millionth lets a location be filled in
-- parts that do not sum up exactly.
DROP FUNCTION IF EXISTS dbo.kolv_mag_fn_Package_Verdict;
GO
CREATE FUNCTION dbo.kolv_mag_fn_Package_Verdict (
    @ItemVerdict int,
    @PackLength int, @PackWidth int, @PackHeight int, @PackVolume float, @PackWeight float,
    @SpaceWidth int, @SpaceHeight int, @SpaceDepth int, @SpaceVolume float, @SpaceWeight float,
    @FreeVolume float, @FreeWeight float
)
RETURNS TABLE
AS
RETURN
    SELECT CASE WHEN @ItemVerdict > 2 THEN @ItemVerdict
            WHEN @PackHeight > @SpaceHeight
                OR NOT ((@PackLength <= @SpaceWidth AND @PackWidth <= @SpaceDepth + 150)
                    OR (@PackWidth <= @SpaceWidth AND @PackLength <= @SpaceDepth + 150))
                OR @PackVolume > @SpaceVolume * 1.000001 OR @PackWeight > @SpaceWeight * 1.000001 THEN 4
            WHEN @PackVolume > @FreeVolume + @SpaceVolume * 0.000001
                OR @PackWeight > @FreeWeight + @SpaceWeight * 0.000001 THEN 3
            ELSE @ItemVerdict END AS Verdict;
GO

-- What one location says to one package, wherever that lies now: the question of whoever puts it there. The material is
-- the package's own, handed in because the server plans the question by it.
DROP FUNCTION IF EXISTS dbo.kolv_mag_fn_Location_Verdict;
GO
CREATE FUNCTION dbo.kolv_mag_fn_Location_Verdict (
    @BarCode nvarchar(50), @ItemCode nvarchar(20), @Rank smallint, @Stand smallint, @Shelf smallint, @Location smallint
)
RETURNS TABLE
AS
RETURN
    SELECT R.Place, (SELECT Verdict FROM dbo.kolv_mag_fn_Package_Verdict(
            CASE WHEN B.Rank = R.Rank AND B.Stand = R.Stand AND B.Shelf = R.Shelf AND B.Location = R.Location
                THEN 9 ELSE R.Verdict END,
            B.PackLength, B.PackWidth, B.PackHeight, B.PackVolume, B.PackWeight, R.SpaceWidth, R.SpaceHeight,
            R.SpaceDepth, R.SpaceVolume, R.SpaceWeight, R.FreeVolume, R.FreeWeight)) AS Verdict
    FROM dbo.Kolv_vv_mag_Package_Size AS B
        CROSS JOIN dbo.kolv_mag_fn_Item_Target(@ItemCode) AS R
    WHERE B.BarCode = @BarCode AND R.Rank = @Rank AND R.Stand = @Stand AND R.Shelf = @Shelf AND R.Location = @Location;
GO
