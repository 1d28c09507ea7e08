-- Views that the client reads with "select *", and five of the procedures' own.
-- A list takes column 1 as key and column 2 as text. A grid takes a column's name as caption:width;alignment, width in
-- twips, alignment 0 left, 1 right, 2 centre; names with xxx_ are hidden and must stand last, without a width.

-- What a location can hold, in litres, kilograms and millimetres, and the family of its icon.
-- The family tells how many of the shelf's three slots the location covers: LA one, LB two, LC three. A size that the
-- location's row leaves open is that of the covered slots of a standard stand.
DROP VIEW IF EXISTS dbo.Kolv_vv_mag_Location_Space;
GO
CREATE VIEW dbo.Kolv_vv_mag_Location_Space
AS
SELECT F.Rank, F.Stand, F.Shelf, F.Location, F.Family, F.Slots,
    CAST(ISNULL(NULLIF(I.Width_int, 0), 900 * F.Slots) AS float)
        * ISNULL(NULLIF(I.Height_int, 0), 1200)
        * ISNULL(NULLIF(I.Depth_int, 0), 1100) / 1000000.0 AS SpaceVolume,
    CAST(ISNULL(NULLIF(I.Weight_int, 0), 1000 * F.Slots) AS float) AS SpaceWeight,
    ISNULL(NULLIF(I.Width_int, 0), 900 * F.Slots) AS SpaceWidth,
    ISNULL(NULLIF(I.Height_int, 0), 1200) AS SpaceHeight,
    ISNULL(NULLIF(I.Depth_int, 0), 1100) AS SpaceDepth
FROM (
    SELECT L.Rank, L.Stand, L.Shelf, L.Location,
        CASE WHEN C.LocationCount = 1 THEN N'LC'
            WHEN C.LocationCount = 2 AND L.Location = 2 THEN N'LB'
            ELSE N'LA' END AS Family,
        CASE WHEN C.LocationCount = 1 THEN 3
            WHEN C.LocationCount = 2 AND L.Location = 2 THEN 2
            ELSE 1 END AS Slots
    FROM dbo.kolv_mag_Location AS L
        INNER JOIN (
            SELECT Rank, Stand, Shelf, COUNT(*) AS LocationCount
            FROM dbo.kolv_mag_Location
            GROUP BY Rank, Stand, Shelf
        ) AS C ON C.Rank = L.Rank AND C.Stand = L.Stand AND C.Shelf = L.Shelf
    ) AS F
    LEFT JOIN dbo.kolv_mag_Location_Item AS I
        ON I.Rank = F.Rank AND I.Stand = F.Stand AND I.Shelf = F.Shelf AND I.Location = F.Location;
GO

-- What the active packages of each location take up, in litres and kilograms. All are of one material when FirstItem and
-- LastItem are the same.
DROP VIEW IF EXISTS dbo.Kolv_vv_mag_Location_Load;
GO
CREATE VIEW dbo.Kolv_vv_mag_Location_Load
AS
SELECT Rank, Stand, Shelf, Location, COUNT(*) AS PackageCount, SUM(Quantity) AS Quantity,
    SUM(CAST(ISNULL(PackLength, 0) AS float) * ISNULL(PackWidth, 0) * ISNULL(PackHeight, 0) / 1000000.0) AS LoadVolume,
    SUM(CAST(ISNULL(PackWeight, 0) AS float)) AS LoadWeight,
    MIN(ISNULL(ItemCode, N'')) AS FirstItem, MAX(ISNULL(ItemCode, N'')) AS LastItem
FROM dbo.Kolv_Mag_BarCode_Sur
WHERE Active = N'Y' AND Rank IS NOT NULL
GROUP BY Rank, Stand, Shelf, Location;
GO

-- Fill and icon that each location ought to show: the greater of the shares of volume and weight, 0 only when nothing
-- lies there, 100 at most.
DROP VIEW IF EXISTS dbo.Kolv_vv_mag_Location_Fill;
GO
CREATE VIEW dbo.Kolv_vv_mag_Location_Fill
AS
SELECT X.Rank, X.Stand, X.Shelf, X.Location, X.Fill AS LocationPercent,
    X.Family + N'_P_' + CASE WHEN X.Fill < 10 THEN N'0' ELSE N'' END + CAST(X.Fill AS nvarchar(3)) + N'.ico'
        AS LocationIcon
FROM (
    SELECT P.Rank, P.Stand, P.Shelf, P.Location, P.Family,
        CAST(CASE WHEN P.Share IS NULL THEN 0
            WHEN P.Share >= 99.5 THEN 100
            WHEN P.Share < 1 THEN 1
            ELSE ROUND(P.Share, 0) END AS smallint) AS Fill
    FROM (
        SELECT S.Rank, S.Stand, S.Shelf, S.Location, S.Family,
            CASE WHEN W.LoadVolume / S.SpaceVolume > W.LoadWeight / S.SpaceWeight
                THEN 100.0 * W.LoadVolume / S.SpaceVolume
                ELSE 100.0 * W.LoadWeight / S.SpaceWeight END AS Share
        FROM dbo.Kolv_vv_mag_Location_Space AS S
            LEFT JOIN dbo.Kolv_vv_mag_Location_Load AS W
                ON W.Rank = S.Rank AND W.Stand = S.Stand AND W.Shelf = S.Shelf AND W.Location = S.Location
    ) AS P
) AS X;
GO

-- The share of its location that each placed package takes up, in per cent; as much as the column holds where somebody
-- has entered a location of some millimetres, so that packages can leave it.
DROP VIEW IF EXISTS dbo.Kolv_vv_mag_Package_Share;
GO
CREATE VIEW dbo.Kolv_vv_mag_Package_Share
AS
SELECT P.BarCode, P.Rank, P.Stand, P.Shelf, P.Location,
    CAST(CASE WHEN P.VolumeShare > 9999999 OR P.WeightShare > 9999999 THEN 9999999
        WHEN P.VolumeShare > P.WeightShare THEN P.VolumeShare ELSE P.WeightShare END AS decimal(9, 2)) AS LinePercent
FROM (
    SELECT K.BarCode, K.Rank, K.Stand, K.Shelf, K.Location,
        CAST(ISNULL(K.PackLength, 0) AS float) * ISNULL(K.PackWidth, 0) * ISNULL(K.PackHeight, 0)
            / 10000.0 / S.SpaceVolume AS VolumeShare,
        100.0 * CAST(ISNULL(K.PackWeight, 0) AS float) / S.SpaceWeight AS WeightShare
    FROM dbo.Kolv_Mag_BarCode_Sur AS K
        INNER JOIN dbo.Kolv_vv_mag_Location_Space AS S
            ON S.Rank = K.Rank AND S.Stand = K.Stand AND S.Shelf = K.Shelf AND S.Location = K.Location
) AS P;
GO

-- What lies on each location, one row for each material, and the assigned material also where none of it lies.
-- Kind is A for a material that belongs there (assigned, or a member of the location's group) and B for a stranger.
-- GroupSurName is the location's group for its members and empty for the others.
-- A quantity that nobody has entered counts as 0, and packages without a code are a material of their own, with an empty
-- code, which belongs nowhere: what lies there is always listed.
DROP VIEW IF EXISTS dbo.Kolv_vv_mag_Location_Material;
GO
CREATE VIEW dbo.Kolv_vv_mag_Location_Material
AS
SELECT X.Rank, X.Stand, X.Shelf, X.Location, X.ItemCode, I.ItemName, I.InvntryUom,
    SUM(ISNULL(X.Quantity, 0)) AS Quantity, SUM(X.PackageCount) AS PackageCount, SUM(X.PackWeight) AS PackWeight,
    CASE WHEN X.ItemCode <> N'' AND X.ItemCode = L.ItemCode OR MAX(G.GroupSur) IS NOT NULL THEN N'A'
        ELSE N'B' END AS Kind,
    ISNULL(L.GroupSur, 0) AS GroupSur, ISNULL(MAX(N.GroupSurName), N'') AS GroupSurName,
    ISNULL(L.StatLocation_cmb, N'0') AS StatLocation
FROM (
    SELECT Rank, Stand, Shelf, Location, ISNULL(ItemCode, N'') AS ItemCode, Quantity, 1 AS PackageCount,
        ISNULL(PackWeight, 0) AS PackWeight
    FROM dbo.Kolv_Mag_BarCode_Sur
    WHERE Active = N'Y' AND Rank IS NOT NULL
    UNION ALL
    SELECT Rank, Stand, Shelf, Location, ItemCode, 0, 0, 0
    FROM dbo.kolv_mag_Location_Item
    WHERE ItemCode <> N''
    ) AS X
    LEFT JOIN dbo.kolv_mag_Location_Item AS L
        ON L.Rank = X.Rank AND L.Stand = X.Stand AND L.Shelf = X.Shelf AND L.Location = X.Location
    LEFT JOIN dbo.OITM AS I ON I.ItemCode = X.ItemCode
    LEFT JOIN dbo.kolv_mag_Group_Item AS G ON G.GroupSur = L.GroupSur AND G.ItemCode = X.ItemCode
    LEFT JOIN dbo.kolv_mag_Location_Group AS N ON N.GroupSur = G.GroupSur
GROUP BY X.Rank, X.Stand, X.Shelf, X.Location, X.ItemCode, I.ItemName, I.InvntryUom, L.ItemCode, L.GroupSur,
    L.StatLocation_cmb;
GO

DROP VIEW IF EXISTS dbo.Kolv_vv_mag_Sur_On_Add;
GO
CREATE VIEW dbo.Kolv_vv_mag_Sur_On_Add
AS
SELECT CAST(N'0' AS nvarchar(20)) AS ItemCode, CAST(N'wybierz' AS nvarchar(130)) AS ItemName
UNION ALL
SELECT ItemCode, CAST(ItemCode + N' - ' + ISNULL(ItemName, N'') AS nvarchar(130))
FROM dbo.OITM;
GO

DROP VIEW IF EXISTS dbo.Kolv_vv_mag_Group_On_Localization;
GO
CREATE VIEW dbo.Kolv_vv_mag_Group_On_Localization
AS
SELECT CAST(0 AS smallint) AS GroupSur, CAST(N'wybierz' AS nvarchar(100)) AS GroupSurName
UNION ALL
SELECT GroupSur, GroupSurName
FROM dbo.kolv_mag_Location_Group
WHERE OnOrOff = N'Y';
GO

-- A new parameter of a location is a column of kolv_mag_Location_Item and a row here.
DROP VIEW IF EXISTS dbo.Kolv_vv_mag_Param_Location;
GO
CREATE VIEW dbo.Kolv_vv_mag_Param_Location
AS
SELECT CAST(N'0' AS nvarchar(50)) AS ParamName, CAST(N'wybierz' AS nvarchar(50)) AS ParamText
UNION ALL SELECT N'Height_int', N'Wysokość [mm]'
UNION ALL SELECT N'Width_int', N'Szerokość [mm]'
UNION ALL SELECT N'Depth_int', N'Głębokość [mm]'
UNION ALL SELECT N'Weight_int', N'Nośność [kg]'
UNION ALL SELECT N'StatLocation_cmb', N'Status lokalizacji'
UNION ALL SELECT N'Picture_pic', N'Zdjęcie'
UNION ALL SELECT N'Description_char', N'Opis';
GO

DROP VIEW IF EXISTS dbo.Kolv_vv_mag_Sur_Mag;
GO
CREATE VIEW dbo.Kolv_vv_mag_Sur_Mag
AS
SELECT ItemCode AS [Kod surowca:1450;0], ItemName AS [Nazwa surowca:4600;0], InvntryUom AS [Jm:600;2]
FROM dbo.OITM;
GO

DROP VIEW IF EXISTS dbo.Kolv_vv_mag_Sur_Location_group;
GO
CREATE VIEW dbo.Kolv_vv_mag_Sur_Location_group
AS
SELECT G.ItemCode AS [Kod surowca:1450;0], I.ItemName AS [Nazwa surowca:4600;0], G.GroupSur AS xxx_GroupSur
FROM dbo.kolv_mag_Group_Item AS G
    LEFT JOIN dbo.OITM AS I ON I.ItemCode = G.ItemCode;
GO
