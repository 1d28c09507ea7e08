-- The hall: rows A to D across it, each ending on the right at its letter, row E along the left wall.
-- The walls run x 600 to 14760 and y 840 to 8280, with doors in the bottom wall at x 1560 to 2760 and x 12480 to 13920.
-- With its frame a stand reaches from Left - 25 to Left + 645, and from Top + 290 up to Top - 120, - 285, - 450, - 615
-- or - 800 for 0 to 4 shelves. Aisles: behind both doors from bottom to top, between the rows, and one across the
-- middle of rows B and C.

DELETE FROM dbo.kolv_mag_Stand;
DELETE FROM dbo.kolv_mag_Rank;
INSERT INTO dbo.kolv_mag_Rank (Rank, RankName, RankIconFamily)
VALUES
    (1, N'Rząd A', N'R1_S_*.ico'),
    (2, N'Rząd B', N'R2_S_*.ico'),
    (3, N'Rząd C', N'R3_S_*.ico'),
    (4, N'Rząd D', N'R4_S_*.ico'),
    (5, N'Rząd E', N'R5_S_*.ico');
GO

-- Lines of stands. Profiles holds a cell of five characters for each stand: the locations of its shelves from the
-- bottom up, so '203' is a stand of three shelves whose second one is closed.
CREATE TABLE #Line (
    Rank smallint, FirstStand int, LastStand int, FirstLeft int, StepLeft int, FirstTop int, Profiles nvarchar(100)
);
INSERT INTO #Line (Rank, FirstStand, LastStand, FirstLeft, StepLeft, FirstTop, Profiles)
VALUES
    (1, 1, 18, 1990, 680, 1700,
        N'1233 1223 123  222  1233 1123 112  123  1233 1223 222  123  1122 1112 223  123  1233 1112 '),
    (2, 1, 7, 2300, 680, 3040, N'11   12   11   12   22   1    11   '),
    (2, 8, 15, 7680, 680, 3040, N'12   12   22   11   12   23   12   11   '),
    (2, 16, 22, 2300, 680, 3985, N'112  111  112  122  123  112  11   '),
    (2, 23, 30, 7680, 680, 3985, N'112  203  122  112  123  122  111  112  '),
    (3, 1, 7, 2300, 680, 5540, N'233  222  123  233  223  122  233  '),
    (3, 8, 15, 7680, 680, 5540, N'123  22   233  222  123  133  233  122  '),
    (3, 16, 22, 2300, 680, 6320, N'23   22   33   12   23   22   3    '),
    (3, 23, 30, 7680, 680, 6320, N'23   33   12   22   23   13   22   23   '),
    (4, 1, 13, 3100, 680, 7880, N'112  111  122  112  11   123  112  122  111  12   112  122  113  '),
    (5, 1, 1, 650, 0, 1545, N'123  '),
    (5, 2, 2, 650, 0, 2320, N'23   '),
    (5, 3, 3, 650, 0, 3445, N'1233 '),
    (5, 4, 4, 650, 0, 4220, N'22   '),
    (5, 5, 5, 650, 0, 4830, N'3    '),
    (5, 6, 6, 650, 0, 5275, N'     '),
    (5, 7, 7, 650, 0, 6050, N'22   '),
    (5, 8, 8, 650, 0, 6825, N'33   '),
    (5, 9, 9, 650, 0, 7435, N'3    ');

CREATE TABLE #Place (Rank smallint, Stand smallint, StandLeft int, StandTop int, Profile nvarchar(5));
INSERT INTO #Place (Rank, Stand, StandLeft, StandTop, Profile)
SELECT L.Rank, N.Number, L.FirstLeft + (N.Number - L.FirstStand) * L.StepLeft, L.FirstTop,
    RTRIM(SUBSTRING(L.Profiles, (N.Number - L.FirstStand) * 5 + 1, 5))
FROM #Line AS L
    INNER JOIN dbo.kolv_mag_Number AS N ON N.Number BETWEEN L.FirstStand AND L.LastStand;

INSERT INTO dbo.kolv_mag_Stand (Rank, Stand, StandName, StandIcon, ShelfCount, StandLeft, StandTop, StandVisable,
    StandEnable, StandFrameArround, StandDescription)
SELECT P.Rank, P.Stand, N'Regał ' + CAST(P.Stand AS nvarchar(3)),
    N'R' + CAST(P.Rank AS nvarchar(1)) + N'_S_' + RIGHT(N'0' + CAST(P.Stand AS nvarchar(2)), 2) + N'.ico',
    LEN(P.Profile), P.StandLeft, P.StandTop, N'Y', N'Y', N'Y',
    CASE P.Rank
        WHEN 1 THEN N'Regał przyścienny: złącza i opakowania'
        WHEN 2 THEN N'Regał wspornikowy: blachy, kształtowniki i rury'
        WHEN 3 THEN N'Regał paletowy: granulaty, barwniki i płyty'
        WHEN 4 THEN N'Regał wspornikowy przy wydaniu: pręty i płyty'
        ELSE N'Regał z wanną wychwytową: farby, oleje i emulsje' END
FROM #Place AS P
ORDER BY P.Rank, P.Stand;

-- Stands without a picture of their own name the common one. An empty name would draw the same, but the search for a
-- material puts the stands' pictures back by their names and takes an empty one for a missing file.
UPDATE dbo.kolv_mag_Stand
SET StandIcon = N'Reg.ico'
WHERE (Rank = 2 AND Stand = 6) OR (Rank = 4 AND Stand = 5) OR (Rank = 5 AND Stand = 6);
UPDATE dbo.kolv_mag_Stand
SET StandDescription = N'Miejsce wagi paletowej, bez półek', StandFrameArround = N'N'
WHERE Rank = 5 AND Stand = 6;
UPDATE dbo.kolv_mag_Stand
SET StandDescription = N'Półka 2 wyłączona: uszkodzona belka', StandEnable = N'N'
WHERE Rank = 2 AND Stand = 24;

INSERT INTO dbo.kolv_mag_Location (Rank, Stand, Shelf, Location)
SELECT P.Rank, P.Stand, S.Number, K.Number
FROM #Place AS P
    INNER JOIN dbo.kolv_mag_Number AS S ON S.Number <= LEN(P.Profile)
    INNER JOIN dbo.kolv_mag_Number AS K ON K.Number <= CAST(SUBSTRING(P.Profile, S.Number, 1) AS int)
ORDER BY P.Rank, P.Stand, S.Number, K.Number;

-- The names that the first build of the plan gives: the last field counts from 2, for element 0 is a template.
UPDATE L
SET L.LocationName = CAST(N.Rank AS nvarchar(5)) + N'_' + CAST(N.Stand AS nvarchar(5)) + N'_'
    + CAST(N.Shelf AS nvarchar(5)) + N'_' + CAST(N.Location AS nvarchar(5)) + N'_' + N.Family + N'_'
    + CAST(N.Place + 1 AS nvarchar(5))
FROM dbo.kolv_mag_Location AS L
    INNER JOIN (
        SELECT Rank, Stand, Shelf, Location, Family,
            ROW_NUMBER() OVER (ORDER BY Rank, Stand, Shelf, Location) AS Place
        FROM dbo.Kolv_vv_mag_Location_Space
    ) AS N ON N.Rank = L.Rank AND N.Stand = L.Stand AND N.Shelf = L.Shelf AND N.Location = L.Location;

DROP TABLE #Place;
DROP TABLE #Line;
GO
