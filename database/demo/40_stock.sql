-- What lies where: assignments of locations, packages with barcodes, and how they came there.
-- Nothing here is random. Spread, a number made from the address, decides what becomes of a location, so that every
-- installation gives the same warehouse.

DELETE FROM dbo.Kolv_Mag_BarCode_Sur_History;
DELETE FROM dbo.Kolv_Mag_BarCode_Sur;
DELETE FROM dbo.kolv_mag_Location_Item;
GO

-- Materials that fit on a location, by row and width in slots of 900 mm. The racks of rows B and D keep their full
-- width for long goods.
CREATE TABLE #Choice (
    Rank smallint, Slots int, ItemCode nvarchar(20) COLLATE DATABASE_DEFAULT, GroupSur smallint, PackVolume float, PackWeight float,
    No int, GroupNo int
);
INSERT INTO #Choice (Rank, Slots, ItemCode, GroupSur, PackVolume, PackWeight, No, GroupNo)
SELECT Z.Rank, W.Slots, I.ItemCode, G.GroupSur,
    CAST(I.Blength1 AS float) * CAST(I.Bwidth1 AS float) * CAST(I.BHeight1 AS float) / 1000000.0,
    CAST(I.BWeight1 AS float),
    ROW_NUMBER() OVER (PARTITION BY Z.Rank, W.Slots ORDER BY I.ItemCode) - 1,
    ROW_NUMBER() OVER (PARTITION BY Z.Rank, W.Slots, G.GroupSur ORDER BY I.ItemCode) - 1
FROM (VALUES
        (1, 6), (1, 10), (2, 1), (2, 3), (3, 4), (3, 5), (3, 9), (4, 2), (4, 9), (5, 7), (5, 8)
    ) AS Z (Rank, GroupSur)
    INNER JOIN dbo.kolv_mag_Group_Item AS G ON G.GroupSur = Z.GroupSur
    INNER JOIN dbo.OITM AS I ON I.ItemCode = G.ItemCode
    CROSS JOIN (VALUES (1), (2), (3)) AS W (Slots)
WHERE (I.Blength1 <= 900 * W.Slots OR (I.Blength1 <= 1250 AND I.Bwidth1 <= 900 * W.Slots))
    AND (I.Blength1 > 1250 OR W.Slots < 3 OR Z.Rank NOT IN (2, 4));

-- Kind: E nothing assigned, M several materials, S one.
CREATE TABLE #Place (
    PlaceNo int, Rank smallint, Stand smallint, Shelf smallint, Location smallint, Slots int, Spread int,
    Kind nvarchar(1) COLLATE DATABASE_DEFAULT, ItemCode nvarchar(20) COLLATE DATABASE_DEFAULT, GroupSur smallint
);
INSERT INTO #Place (PlaceNo, Rank, Stand, Shelf, Location, Slots, Spread, Kind, ItemCode, GroupSur)
SELECT P.PlaceNo, P.Rank, P.Stand, P.Shelf, P.Location, P.Slots, P.Spread,
    CASE WHEN P.Spread % 13 = 5 THEN N'E' WHEN P.Spread % 7 = 3 THEN N'M' ELSE N'S' END,
    C.ItemCode, C.GroupSur
FROM (
        SELECT Rank, Stand, Shelf, Location, Slots,
            (Rank * 389 + Stand * 97 + Shelf * 53 + Location * 29) % 1009 AS Spread,
            ROW_NUMBER() OVER (ORDER BY Rank, Stand, Shelf, Location) AS PlaceNo
        FROM dbo.Kolv_vv_mag_Location_Space
    ) AS P
    INNER JOIN (
        SELECT Rank, Slots, COUNT(*) AS Choices
        FROM #Choice
        GROUP BY Rank, Slots
    ) AS T ON T.Rank = P.Rank AND T.Slots = P.Slots
    INNER JOIN #Choice AS C ON C.Rank = P.Rank AND C.Slots = P.Slots
        AND C.No = (P.Stand * 3 + P.Shelf + P.Location) % T.Choices;
GO

-- A location of several materials is given to their group, or, one in four, to no group at all. Some single-material
-- locations name the group of their material as well; some leave status and sizes open.
INSERT INTO dbo.kolv_mag_Location_Item (Rank, Stand, Shelf, Location, ItemCode, ItemName, GroupSur, Height_int,
    Width_int, Depth_int, Weight_int, Description_char, StatLocation_cmb, UserSign, UpdateDate)
SELECT P.Rank, P.Stand, P.Shelf, P.Location,
    CASE WHEN P.Kind = N'S' OR P.Spread % 4 = 0 THEN P.ItemCode ELSE N'' END,
    CASE WHEN P.Kind = N'S' OR P.Spread % 4 = 0 THEN I.ItemName ELSE N'' END,
    CASE WHEN P.Kind = N'M' AND P.Spread % 4 <> 0 THEN P.GroupSur
        WHEN P.Kind = N'S' AND P.Spread % 6 = 1 THEN P.GroupSur
        ELSE 0 END,
    CASE WHEN P.Spread % 5 = 2 THEN NULL WHEN P.Shelf = 4 THEN 900 ELSE 1200 END,
    CASE WHEN P.Spread % 5 = 2 THEN NULL ELSE 900 * P.Slots END,
    CASE WHEN P.Spread % 5 = 2 THEN NULL ELSE 1100 END,
    CASE WHEN P.Spread % 5 = 2 THEN NULL ELSE 1000 * P.Slots END,
    CASE WHEN P.Spread % 19 = 4 THEN N'Wolne miejsce zarezerwowane na dostawę w poniedziałek'
        WHEN P.Rank = 5 AND P.Shelf = 1 THEN N'Substancje ciekłe tylko nad wanną wychwytową'
        WHEN P.Rank = 3 AND P.GroupSur = 4 THEN N'Granulat higroskopijny: nie otwierać worków na regale'
        WHEN P.Rank = 2 AND P.Slots = 3 THEN N'Pobierać suwnicą, dwie osoby'
        WHEN P.Shelf = 4 THEN N'Dostęp tylko wózkiem wysokiego składowania'
        WHEN P.Spread % 8 = 1 THEN N'Pobierać od najstarszej dostawy'
        ELSE N'' END,
    CASE WHEN P.Kind = N'M' THEN N'1' WHEN P.Spread % 11 = 7 THEN NULL ELSE N'0' END,
    1, '20240102'
FROM #Place AS P
    INNER JOIN dbo.OITM AS I ON I.ItemCode = P.ItemCode
WHERE P.Kind <> N'E';
GO

-- How many packages lie on a location. Share is that of one package; on a location of several materials the greatest
-- of them counts. A full location ends with a package that has been cut to the rest.
CREATE TABLE #Fill (PlaceNo int, Share float, FullPlace int, PackCount int);
INSERT INTO #Fill (PlaceNo, Share, FullPlace, PackCount)
SELECT F.PlaceNo, F.Share, F.FullPlace,
    CASE WHEN F.Target = 0 THEN 0
        WHEN F.FullPlace = 1 THEN CAST(CEILING(1.0 / F.Share - 0.01) AS int)
        WHEN F.Target < F.Share THEN 1
        WHEN F.Target / F.Share >= 4 THEN 4
        ELSE CAST(FLOOR(F.Target / F.Share) AS int) END
FROM (
        SELECT H.PlaceNo, H.Share,
            CASE WHEN H.Kind = N'S' AND H.Spread % 6 = 4 AND H.Share > 0.18 THEN 1 ELSE 0 END AS FullPlace,
            CASE WHEN H.Kind = N'M' THEN 0.85
                WHEN H.Spread % 19 = 4 THEN 0.0
                ELSE CASE H.Spread % 10
                    WHEN 1 THEN 0.0 WHEN 2 THEN 0.6 WHEN 3 THEN 0.25 WHEN 4 THEN 0.8 WHEN 5 THEN 0.4
                    WHEN 6 THEN 0.15 WHEN 7 THEN 0.5 WHEN 8 THEN 0.3 WHEN 9 THEN 0.7 ELSE 0.9 END
                END AS Target
        FROM (
                SELECT P.PlaceNo, P.Kind, P.Spread,
                    MAX(CASE WHEN C.PackVolume / S.SpaceVolume > C.PackWeight / S.SpaceWeight
                        THEN C.PackVolume / S.SpaceVolume ELSE C.PackWeight / S.SpaceWeight END) AS Share
                FROM #Place AS P
                    INNER JOIN dbo.Kolv_vv_mag_Location_Space AS S
                        ON S.Rank = P.Rank AND S.Stand = P.Stand AND S.Shelf = P.Shelf AND S.Location = P.Location
                    INNER JOIN #Choice AS C ON C.Rank = P.Rank AND C.Slots = P.Slots
                        AND (C.ItemCode = P.ItemCode OR (P.Kind = N'M' AND C.GroupSur = P.GroupSur))
                WHERE P.Kind <> N'E'
                GROUP BY P.PlaceNo, P.Kind, P.Spread
            ) AS H
    ) AS F;

-- Part is the rest that is left in an opened or cut package. PlaceNo 0 is the buffer.
CREATE TABLE #Pack (PackNo int, PlaceNo int, ItemCode nvarchar(20) COLLATE DATABASE_DEFAULT, Part float, Cut int, Active nvarchar(1) COLLATE DATABASE_DEFAULT);
INSERT INTO #Pack (PackNo, PlaceNo, ItemCode, Part, Cut, Active)
SELECT ROW_NUMBER() OVER (ORDER BY K.PlaceNo, K.PackOfPlace), K.PlaceNo, K.ItemCode, K.Part, K.Cut, K.Active
FROM (
        SELECT P.PlaceNo, N.Number AS PackOfPlace, ISNULL(C.ItemCode, P.ItemCode) AS ItemCode,
            CASE WHEN F.FullPlace = 1 AND N.Number = F.PackCount
                    THEN CASE WHEN F.Share * F.PackCount <= 1 THEN 1.0
                        ELSE (1 - F.Share * (F.PackCount - 1)) / F.Share END
                WHEN F.FullPlace = 0 AND N.Number = 1 AND P.Spread % 4 = 3 THEN 0.4
                ELSE 1.0 END AS Part,
            CASE WHEN F.FullPlace = 1 AND N.Number = F.PackCount THEN 1 ELSE 0 END AS Cut,
            N'Y' AS Active
        FROM #Place AS P
            INNER JOIN #Fill AS F ON F.PlaceNo = P.PlaceNo
            INNER JOIN dbo.kolv_mag_Number AS N ON N.Number <= F.PackCount
            LEFT JOIN (
                SELECT Rank, Slots, GroupSur, COUNT(*) AS Choices
                FROM #Choice
                GROUP BY Rank, Slots, GroupSur
            ) AS T ON T.Rank = P.Rank AND T.Slots = P.Slots AND T.GroupSur = P.GroupSur AND P.Kind = N'M'
            LEFT JOIN #Choice AS C ON C.Rank = P.Rank AND C.Slots = P.Slots AND C.GroupSur = P.GroupSur
                AND C.GroupNo = (P.Spread + N.Number) % T.Choices
        UNION ALL
        -- A stranger here and there, left on a place of another material or on one without any.
        SELECT P.PlaceNo, 90, CASE WHEN P.Rank = 5 THEN N'OL-PR-068' ELSE N'SR-M12-050' END, 0.5, 0, N'Y'
        FROM #Place AS P
            LEFT JOIN #Fill AS F ON F.PlaceNo = P.PlaceNo
        WHERE (P.Spread % 37 = 6 AND F.FullPlace = 0) OR (P.Kind = N'E' AND P.Spread % 3 = 0)
        UNION ALL
        -- Given out, so that it fills nothing any more.
        SELECT P.PlaceNo, 95, P.ItemCode, 1.0, 0, N'N'
        FROM #Place AS P
        WHERE P.Spread % 17 = 2
        UNION ALL
        SELECT 0, N.Number, I.ItemCode, 1.0, 0, N'Y'
        FROM (
                SELECT ItemCode, ROW_NUMBER() OVER (ORDER BY ItemCode) AS ItemNo
                FROM dbo.OITM
            ) AS I
            INNER JOIN dbo.kolv_mag_Number AS N ON N.Number = I.ItemNo
        WHERE I.ItemNo % 2 = 1
    ) AS K;
GO

-- Each package came with an order of a supplier of its group.
CREATE TABLE #Order (GroupSur smallint, Turn int, DocEntry int);
INSERT INTO #Order (GroupSur, Turn, DocEntry)
VALUES
    (1, 0, 1101), (1, 1, 1106), (1, 2, 1112), (2, 0, 1102), (2, 1, 1110), (3, 0, 1102), (3, 1, 1110),
    (4, 0, 1103), (4, 1, 1109), (5, 0, 1103), (5, 1, 1109), (6, 0, 1104), (7, 0, 1105), (8, 0, 1105),
    (9, 0, 1107), (10, 0, 1108), (10, 1, 1111);

CREATE TABLE #Coded (
    PackNo int, PlaceNo int, ItemCode nvarchar(20) COLLATE DATABASE_DEFAULT, Part float, Cut int, Active nvarchar(1) COLLATE DATABASE_DEFAULT,
    DocEntry int, DocNum int, DocDate datetime, LineNum int, NumberCode int
);
INSERT INTO #Coded (PackNo, PlaceNo, ItemCode, Part, Cut, Active, DocEntry, DocNum, DocDate, LineNum, NumberCode)
SELECT K.PackNo, K.PlaceNo, K.ItemCode, K.Part, K.Cut, K.Active, D.DocEntry, D.DocNum, D.DocDate, L.LineNum,
    ROW_NUMBER() OVER (PARTITION BY D.DocEntry, K.ItemCode ORDER BY K.PackNo)
FROM #Pack AS K
    INNER JOIN dbo.kolv_mag_Group_Item AS G ON G.ItemCode = K.ItemCode
    INNER JOIN (
        SELECT GroupSur, COUNT(*) AS Turns
        FROM #Order
        GROUP BY GroupSur
    ) AS T ON T.GroupSur = G.GroupSur
    INNER JOIN #Order AS O ON O.GroupSur = G.GroupSur AND O.Turn = K.PackNo % T.Turns
    INNER JOIN dbo.OPOR AS D ON D.DocEntry = O.DocEntry
    INNER JOIN (
        SELECT ItemCode, ROW_NUMBER() OVER (ORDER BY ItemCode) - 1 AS LineNum
        FROM dbo.OITM
    ) AS L ON L.ItemCode = K.ItemCode;

-- One package in three carries the site's own label (year, order, line, number), the others an EAN-13.
INSERT INTO dbo.Kolv_Mag_BarCode_Sur (BarCode, YearCode, NumberCode, DocEntry, DocNum, LineNum, ItemCode, Quantity,
    PackLength, PackWidth, PackHeight, PackWeight, Rank, Stand, Shelf, Location, LinePercent, Active, UserSign,
    CreateDate)
SELECT
    CASE WHEN K.PackNo % 3 = 0
        THEN N'2024' + CAST(K.DocNum AS nvarchar(6)) + RIGHT(N'0' + CAST(K.LineNum AS nvarchar(2)), 2)
            + RIGHT(N'000' + CAST(K.NumberCode AS nvarchar(4)), 4)
        ELSE dbo.kolv_mag_fn_EAN13(N'5904172' + RIGHT(N'0000' + CAST(K.PackNo AS nvarchar(5)), 5)) END,
    2024, K.NumberCode, K.DocEntry, K.DocNum, K.LineNum, K.ItemCode,
    CASE WHEN K.Part < 1 THEN CAST(ROUND(CAST(I.PurPackUn AS float) * K.Part, 0) AS decimal(19, 6))
        ELSE I.PurPackUn END,
    CAST(I.Blength1 AS int), CAST(I.Bwidth1 AS int),
    CASE WHEN K.Cut = 1 THEN CAST(CEILING(CAST(I.BHeight1 AS float) * K.Part) AS int) ELSE CAST(I.BHeight1 AS int) END,
    CAST(ROUND(CAST(I.BWeight1 AS float) * K.Part, 1) AS decimal(19, 3)),
    P.Rank, P.Stand, P.Shelf, P.Location, 0, K.Active, 2 + K.PackNo % 2, DATEADD(day, 2, K.DocDate)
FROM #Coded AS K
    INNER JOIN dbo.OITM AS I ON I.ItemCode = K.ItemCode
    LEFT JOIN #Place AS P ON P.PlaceNo = K.PlaceNo
ORDER BY K.PackNo;
GO

INSERT INTO dbo.Kolv_Mag_BarCode_Sur_History (BarCode, Operation, Quantity, UserSign, HostName, BookDate)
SELECT BarCode, N'I', Quantity, UserSign, N'MAG-PRZYJECIA', CreateDate
FROM dbo.Kolv_Mag_BarCode_Sur
ORDER BY CreateDate, BarCode;
INSERT INTO dbo.Kolv_Mag_BarCode_Sur_History (BarCode, Operation, Quantity, ToRank, ToStand, ToShelf, ToLocation,
    UserSign, HostName, BookDate)
SELECT BarCode, N'L', Quantity, Rank, Stand, Shelf, Location, UserSign, N'MAG-WOZEK-1', DATEADD(hour, 5, CreateDate)
FROM dbo.Kolv_Mag_BarCode_Sur
WHERE Rank IS NOT NULL
ORDER BY CreateDate, BarCode;
INSERT INTO dbo.Kolv_Mag_BarCode_Sur_History (BarCode, Operation, Quantity, FromRank, FromStand, FromShelf,
    FromLocation, UserSign, HostName, BookDate)
SELECT BarCode, N'O', Quantity, Rank, Stand, Shelf, Location, UserSign, N'MAG-WYDANIA', DATEADD(day, 30, CreateDate)
FROM dbo.Kolv_Mag_BarCode_Sur
WHERE Active = N'N'
ORDER BY CreateDate, BarCode;

DROP TABLE #Coded;
DROP TABLE #Order;
DROP TABLE #Pack;
DROP TABLE #Fill;
DROP TABLE #Place;
DROP TABLE #Choice;

EXEC dbo.Kolv_mag_Refresh_Percent_Location N'Y';
GO
