-- Lines of the orders: purchase orders in every state, and what manufacturing needs.

DELETE FROM dbo.Kolv_Mag_BarCode_Sur_Production;
DELETE FROM dbo.Kolv_Mag_GiveOut;
DELETE FROM dbo.Kolv_Mag_BarCode_Sur_Code;
DELETE FROM dbo.kolv_mag_Order_Material;
DELETE FROM dbo.RDR1;
DELETE FROM dbo.POR1;
DELETE FROM dbo.OPOR WHERE DocEntry BETWEEN 1113 AND 1116;
GO

INSERT INTO dbo.OPOR (DocEntry, DocNum, DocDate, DocStatus, CardCode, CardName)
VALUES
    (1113, 240113, '20240527', N'O', N'D00021', N'Tworzywa Zachód'),
    (1114, 240114, '20240527', N'O', N'D00025', N'Złącza i Normalia Hurt'),
    (1115, 240115, '20240603', N'O', N'D00031', N'Lakiery Nadodrze'),
    (1116, 240116, '20240603', N'C', N'D00038', N'Płyty i Sklejki Bory');

-- Every barcode in stock was given to a line of its order, and the line ordered what has come. Of the open orders two lines
-- in three still wait for more, one in six has been closed for the rest.
INSERT INTO dbo.Kolv_Mag_BarCode_Sur_Code (BarCode, YearCode, DocEntry, DocNum, LineNum, NumberCode, ItemCode, UserSign,
    CreateDate)
SELECT BarCode, YearCode, DocEntry, DocNum, LineNum, NumberCode, ItemCode, UserSign, CreateDate
FROM dbo.Kolv_Mag_BarCode_Sur;
INSERT INTO dbo.POR1 (DocEntry, LineNum, ItemCode, Quantity, LineStatus)
SELECT B.DocEntry, B.LineNum, B.ItemCode,
    SUM(B.Quantity) + CASE WHEN D.DocStatus = N'O' AND B.LineNum % 3 > 0 THEN MAX(I.PurPackUn) * (1 + B.LineNum % 4)
        ELSE 0 END,
    CASE WHEN D.DocStatus = N'C' OR B.LineNum % 6 = 5 THEN N'C' ELSE N'O' END
FROM dbo.Kolv_Mag_BarCode_Sur AS B
    INNER JOIN dbo.OPOR AS D ON D.DocEntry = B.DocEntry
    INNER JOIN dbo.OITM AS I ON I.ItemCode = B.ItemCode
GROUP BY B.DocEntry, B.LineNum, B.ItemCode, D.DocStatus;

-- Orders of which nothing has come: 1113 without barcodes, 1114 with some printed, 1115 of both kinds, 1116 cancelled.
INSERT INTO dbo.POR1 (DocEntry, LineNum, ItemCode, Quantity, LineStatus)
VALUES
    (1113, 0, N'GR-PP-001', 1200, N'O'),
    (1113, 1, N'GR-AB-003', 600, N'O'),
    (1113, 2, N'BA-MB-010', 300, N'O'),
    (1114, 0, N'SR-M12-050', 3200, N'O'),
    (1114, 1, N'NI-ZR-048', 40000, N'O'),
    (1115, 0, N'FA-PR-701', 900, N'O'),
    (1115, 1, N'RO-EP-005', 120, N'O'),
    (1115, 2, N'OL-PR-068', 80, N'C'),
    (1116, 0, N'PL-HD-003', 180, N'C');

-- The site's own labels: year, order, line, number.
INSERT INTO dbo.Kolv_Mag_BarCode_Sur_Code (BarCode, YearCode, DocEntry, DocNum, LineNum, NumberCode, ItemCode, UserSign,
    CreateDate)
SELECT N'2024' + CAST(D.DocNum AS nvarchar(6)) + RIGHT(N'0' + CAST(L.LineNum AS nvarchar(2)), 2)
        + RIGHT(N'000' + CAST(N.Number AS nvarchar(4)), 4),
    2024, L.DocEntry, D.DocNum, L.LineNum, N.Number, L.ItemCode, 2, D.DocDate
FROM dbo.POR1 AS L
    INNER JOIN dbo.OPOR AS D ON D.DocEntry = L.DocEntry
    INNER JOIN dbo.kolv_mag_Number AS N ON N.Number <= 2
WHERE L.DocEntry = 1114 OR L.DocEntry = 1115 AND L.LineNum = 0;
GO

INSERT INTO dbo.RDR1 (DocEntry, LineNum, Dscription, Quantity, LineStatus)
VALUES
    (2101, 0, N'Stół wiertarski SW-20', 12, N'C'),
    (2102, 0, N'Biurko narożne Jantar 160', 60, N'C'),
    (2102, 1, N'Kontener trzyszufladowy Jantar', 60, N'C'),
    (2103, 0, N'Korpus pompy WP-80', 150, N'O'),
    (2103, 1, N'Osłona silnika WP-80', 150, N'O'),
    (2104, 0, N'Wrzeciono wiertarki W-35', 40, N'O'),
    (2104, 1, N'Regał warsztatowy RW-4', 25, N'C'),
    (2105, 0, N'Obudowa klimatyzatora KS-2', 200, N'O'),
    (2105, 1, N'Kratka wylotowa KS-2', 400, N'O'),
    (2106, 0, N'Rama agregatu AP-3', 30, N'O');

INSERT INTO dbo.kolv_mag_Order_Material (DocEntry, LineNum, ItemCode, Quantity)
VALUES
    (2101, 0, N'BL-GW-030', 1800), (2101, 0, N'KA-RW-050', 48), (2101, 0, N'FA-PR-701', 30),
    (2102, 0, N'PL-LA-016', 90), (2102, 0, N'WK-DR-445', 3000), (2102, 0, N'KT-5W-640', 60),
    (2102, 1, N'PL-MD-018', 80), (2102, 1, N'WK-DR-445', 2400), (2102, 1, N'FA-PR-901', 45),
    (2103, 0, N'BL-GW-030', 2600), (2103, 0, N'SR-M12-050', 1200), (2103, 0, N'FA-PO-100', 120),
    (2103, 1, N'BL-ZW-010', 900), (2103, 1, N'SR-M8-030', 2400), (2103, 1, N'FA-PR-701', 60),
    (2104, 0, N'PR-OK-035', 1400), (2104, 0, N'OL-PR-068', 20),
    (2104, 1, N'RU-PR-040', 100), (2104, 1, N'PL-SK-015', 50),
    (2105, 0, N'BL-OC-007', 1500), (2105, 0, N'NI-ZR-048', 4800), (2105, 0, N'FA-PR-901', 90),
    (2105, 1, N'GR-AB-003', 220), (2105, 1, N'BA-MB-010', 8),
    (2106, 0, N'KA-RW-050', 120), (2106, 0, N'RU-PR-040', 90), (2106, 0, N'SR-M12-050', 480);
GO

-- What the demo stock gives out went to closed orders, one document a supplier's order.
CREATE TABLE #Out (DocEntry int, Document int);
INSERT INTO #Out (DocEntry, Document)
SELECT X.DocEntry, ROW_NUMBER() OVER (ORDER BY X.DocEntry)
FROM (SELECT DISTINCT DocEntry FROM dbo.Kolv_Mag_BarCode_Sur WHERE Active = N'N') AS X;
INSERT INTO dbo.Kolv_Mag_GiveOut (GiveOutDocNum, DocEntryProd, DocNumProd, LineNumProd, UserSign, UserSignGiveOut,
    HostName, BookDate)
SELECT O.Document, R.DocEntry, R.DocNum, 0, 2, 5, N'MAG-WYDANIA', MAX(H.BookDate)
FROM #Out AS O
    INNER JOIN dbo.ORDR AS R ON R.DocEntry = 2101 + O.Document % 2
    INNER JOIN dbo.Kolv_Mag_BarCode_Sur AS B ON B.DocEntry = O.DocEntry AND B.Active = N'N'
    INNER JOIN dbo.Kolv_Mag_BarCode_Sur_History AS H ON H.BarCode = B.BarCode AND H.Operation = N'O'
GROUP BY O.Document, R.DocEntry, R.DocNum;
INSERT INTO dbo.Kolv_Mag_BarCode_Sur_Production (GiveOutDocNum, GiveOutLineNum, GiveOutBarCode, SourceBarCode, ItemCode,
    Quantity)
SELECT O.Document, ROW_NUMBER() OVER (PARTITION BY O.Document ORDER BY B.BarCode), B.BarCode, B.BarCode, B.ItemCode,
    B.Quantity
FROM dbo.Kolv_Mag_BarCode_Sur AS B
    INNER JOIN #Out AS O ON O.DocEntry = B.DocEntry
WHERE B.Active = N'N';
-- Whatever went to an order was needed there.
INSERT INTO dbo.kolv_mag_Order_Material (DocEntry, LineNum, ItemCode, Quantity)
SELECT G.DocEntryProd, G.LineNumProd, P.ItemCode, SUM(P.Quantity)
FROM dbo.Kolv_Mag_BarCode_Sur_Production AS P
    INNER JOIN dbo.Kolv_Mag_GiveOut AS G ON G.GiveOutDocNum = P.GiveOutDocNum
WHERE NOT EXISTS (SELECT 1 FROM dbo.kolv_mag_Order_Material AS M
    WHERE M.DocEntry = G.DocEntryProd AND M.LineNum = G.LineNumProd AND M.ItemCode = P.ItemCode)
GROUP BY G.DocEntryProd, G.LineNumProd, P.ItemCode;
DROP TABLE #Out;
GO
