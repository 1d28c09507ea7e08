-- Materials, their groups and the orders that brought them.
-- Sizes of a package in millimetres, its weight in kilograms. Long goods come cut to what a stand can take.

DELETE FROM dbo.OITM;
INSERT INTO dbo.OITM (ItemCode, ItemName, InvntryUom, Blength1, Bwidth1, BHeight1, BWeight1, PurPackUn, PurPackMsr)
VALUES
    (N'BL-ZW-010', N'Blacha zimnowalcowana DC01 1,0x1250x2500', N'kg', 2500, 1250, 140, 490, 490, N'pakiet'),
    (N'BL-ZW-015', N'Blacha zimnowalcowana DC01 1,5x1250x2500', N'kg', 2500, 1250, 150, 552, 552, N'pakiet'),
    (N'BL-GW-030', N'Blacha gorącowalcowana S235 3,0x1000x1700', N'kg', 1700, 1000, 160, 520, 520, N'pakiet'),
    (N'BL-OC-007', N'Blacha ocynkowana DX51 0,7x1000x2000', N'kg', 2000, 1000, 130, 385, 385, N'pakiet'),
    (N'BL-NI-010', N'Blacha nierdzewna 1.4301 1,0x1000x800', N'kg', 1000, 800, 120, 190, 190, N'pakiet'),
    (N'BL-AL-020', N'Blacha aluminiowa EN AW-5754 2,0x1000x800', N'kg', 1000, 800, 180, 130, 130, N'pakiet'),
    (N'TA-ST-120', N'Taśma stalowa C75S 1,2x40, krąg', N'kg', 900, 900, 90, 145, 145, N'krąg'),
    (N'PR-OK-020', N'Pręt okrągły S355 fi 20, 2,5 m', N'kg', 2500, 250, 250, 430, 430, N'wiązka'),
    (N'PR-OK-035', N'Pręt okrągły C45 fi 35, 2,5 m', N'kg', 2500, 280, 260, 560, 560, N'wiązka'),
    (N'PR-KW-016', N'Pręt kwadratowy S235 16x16, 1,5 m', N'kg', 1500, 240, 220, 260, 260, N'wiązka'),
    (N'PR-MO-058', N'Pręt mosiężny CW614N fi 18, 1 m', N'kg', 1000, 180, 150, 165, 165, N'wiązka'),
    (N'KA-RW-050', N'Kątownik równoramienny 50x50x5, 2,5 m', N'szt', 2500, 320, 300, 377, 40, N'wiązka'),
    (N'RU-PR-040', N'Rura profilowa 40x40x2, 2,5 m', N'szt', 2500, 400, 400, 344, 60, N'wiązka'),
    (N'RU-OK-033', N'Rura okrągła ze szwem 33,7x2,6, 1,7 m', N'szt', 1700, 380, 360, 271, 80, N'wiązka'),
    (N'RU-AL-025', N'Rura aluminiowa 25x2, 1 m', N'szt', 1000, 300, 260, 78, 200, N'wiązka'),
    (N'GR-PP-001', N'Granulat PP homopolimer naturalny', N'kg', 800, 600, 700, 300, 300, N'worek 12x25'),
    (N'GR-PE-002', N'Granulat LDPE folia', N'kg', 800, 600, 720, 300, 300, N'worek 12x25'),
    (N'GR-AB-003', N'Granulat ABS czarny', N'kg', 800, 600, 650, 300, 300, N'worek 12x25'),
    (N'GR-PA-004', N'Granulat PA6 z włóknem szklanym 30%', N'kg', 800, 600, 680, 350, 350, N'worek 14x25'),
    (N'GR-PC-005', N'Granulat PC przezroczysty', N'kg', 800, 600, 760, 250, 250, N'karton 10x25'),
    (N'BA-MB-010', N'Barwnik masterbatch biały', N'kg', 600, 400, 600, 100, 100, N'worek 4x25'),
    (N'BA-MB-020', N'Barwnik masterbatch czerwony RAL 3020', N'kg', 600, 400, 600, 100, 100, N'worek 4x25'),
    (N'SR-M8-030', N'Śruba M8x30 DIN 933 kl. 8.8 ocynk', N'szt', 800, 600, 400, 336, 20000, N'półpaleta'),
    (N'SR-M12-050', N'Śruba M12x50 DIN 931 kl. 8.8', N'szt', 400, 300, 220, 58, 800, N'karton'),
    (N'NA-M8-000', N'Nakrętka M8 DIN 934 ocynk', N'szt', 800, 600, 340, 152, 30000, N'półpaleta'),
    (N'PO-M8-000', N'Podkładka 8,4 DIN 125 ocynk', N'szt', 400, 300, 140, 36, 18000, N'karton'),
    (N'WK-DR-445', N'Wkręt do drewna 4,5x40', N'szt', 800, 600, 380, 93, 30000, N'półpaleta'),
    (N'NI-ZR-048', N'Nit zrywalny Al/St 4,8x12', N'szt', 400, 300, 180, 19, 10000, N'karton'),
    (N'FA-PR-701', N'Farba proszkowa RAL 7016 mat', N'kg', 800, 600, 800, 320, 300, N'półpaleta 12x25'),
    (N'FA-PR-901', N'Farba proszkowa RAL 9010 połysk', N'kg', 800, 600, 800, 320, 300, N'półpaleta 12x25'),
    (N'FA-PO-100', N'Farba podkładowa epoksydowa szara', N'l', 800, 600, 760, 248, 160, N'półpaleta 8x20'),
    (N'RO-EP-005', N'Rozcieńczalnik do farb epoksydowych', N'l', 600, 400, 350, 38, 40, N'karton 8x5'),
    (N'OL-HY-046', N'Olej hydrauliczny HL 46', N'l', 600, 600, 900, 190, 205, N'beczka'),
    (N'OL-PR-068', N'Olej do prowadnic ślizgowych CG 68', N'l', 300, 300, 400, 19, 20, N'bańka'),
    (N'CH-EM-020', N'Emulsja chłodząca, koncentrat', N'l', 600, 600, 900, 205, 200, N'beczka'),
    (N'PL-MD-018', N'Płyta MDF surowa 18 mm 1035x835', N'szt', 1050, 850, 400, 227, 20, N'paczka'),
    (N'PL-SK-015', N'Sklejka brzozowa 15 mm 1250x1500', N'szt', 1500, 1250, 200, 225, 12, N'paczka'),
    (N'PL-LA-016', N'Płyta laminowana biała W1100 16 mm 1035x2070', N'szt', 2070, 1050, 180, 260, 10, N'paczka'),
    (N'PL-HD-003', N'Płyta HDF 3 mm 1200x800', N'szt', 1200, 800, 300, 236, 90, N'paczka'),
    (N'FO-ST-023', N'Folia stretch przezroczysta 23 mikrony', N'rolka', 800, 600, 1000, 216, 96, N'półpaleta'),
    (N'FO-BA-100', N'Folia bąbelkowa 1,2x100 m', N'rolka', 1000, 500, 500, 9, 1, N'rolka'),
    (N'KT-5W-640', N'Karton klapowy 5-warstwowy 600x400x400', N'szt', 1200, 800, 800, 192, 240, N'paleta'),
    (N'KT-3W-320', N'Karton klapowy 3-warstwowy 320x220x150', N'szt', 800, 600, 1000, 144, 800, N'półpaleta'),
    (N'TK-FA-120', N'Tektura falista w rolce 1,2 m', N'mb', 1200, 500, 500, 38, 70, N'rolka'),
    (N'ET-TT-100', N'Etykieta termotransferowa 100x150', N'szt', 600, 400, 640, 48, 24000, N'karton'),
    (N'PA-EU-800', N'Przekładka paletowa 800x1200', N'szt', 1200, 800, 700, 168, 300, N'paleta');
GO

DELETE FROM dbo.kolv_mag_Location_Group;
INSERT INTO dbo.kolv_mag_Location_Group (GroupSur, GroupSurName, OnOrOff)
VALUES
    (1, N'Blachy i taśmy', N'Y'),
    (2, N'Pręty i kształtowniki', N'Y'),
    (3, N'Rury', N'Y'),
    (4, N'Granulaty', N'Y'),
    (5, N'Barwniki do tworzyw', N'Y'),
    (6, N'Śruby i złącza', N'Y'),
    (7, N'Farby i rozcieńczalniki', N'Y'),
    (8, N'Oleje i emulsje', N'Y'),
    (9, N'Płyty drewnopochodne', N'Y'),
    (10, N'Opakowania', N'Y'),
    (11, N'Surowce wycofane', N'N');

-- The first letters of a code tell its group.
INSERT INTO dbo.kolv_mag_Group_Item (GroupSur, ItemCode)
SELECT P.GroupSur, I.ItemCode
FROM dbo.OITM AS I
    INNER JOIN (VALUES
        (N'BL', 1), (N'TA', 1), (N'PR', 2), (N'KA', 2), (N'RU', 3), (N'GR', 4), (N'BA', 5), (N'SR', 6), (N'NA', 6),
        (N'PO', 6), (N'WK', 6), (N'NI', 6), (N'FA', 7), (N'RO', 7), (N'OL', 8), (N'CH', 8), (N'PL', 9), (N'FO', 10),
        (N'KT', 10), (N'TK', 10), (N'ET', 10), (N'PA', 10)
    ) AS P (Prefix, GroupSur) ON P.Prefix = LEFT(I.ItemCode, 2);
GO

DELETE FROM dbo.OPOR;
INSERT INTO dbo.OPOR (DocEntry, DocNum, DocDate, DocStatus, CardCode, CardName)
VALUES
    (1101, 240101, '20240108', N'C', N'D00012', N'Hurtownia Stali Centrum'),
    (1102, 240102, '20240115', N'C', N'D00017', N'Kształtowniki Kowalczyk'),
    (1103, 240103, '20240129', N'C', N'D00021', N'Tworzywa Zachód'),
    (1104, 240104, '20240212', N'C', N'D00025', N'Złącza i Normalia Hurt'),
    (1105, 240105, '20240226', N'C', N'D00031', N'Lakiery Nadodrze'),
    (1106, 240106, '20240311', N'C', N'D00012', N'Hurtownia Stali Centrum'),
    (1107, 240107, '20240325', N'C', N'D00038', N'Płyty i Sklejki Bory'),
    (1108, 240108, '20240408', N'C', N'D00042', N'Opakowania Pod Lipą'),
    (1109, 240109, '20240422', N'O', N'D00021', N'Tworzywa Zachód'),
    (1110, 240110, '20240506', N'O', N'D00017', N'Kształtowniki Kowalczyk'),
    (1111, 240111, '20240513', N'O', N'D00042', N'Opakowania Pod Lipą'),
    (1112, 240112, '20240520', N'O', N'D00012', N'Hurtownia Stali Centrum');

DELETE FROM dbo.ORDR;
INSERT INTO dbo.ORDR (DocEntry, DocNum, DocDate, DocStatus, CardCode, CardName)
VALUES
    (2101, 510031, '20240318', N'C', N'O00003', N'Wiertarnia Północ'),
    (2102, 510032, '20240402', N'C', N'O00007', N'Meble Biurowe Jantar'),
    (2103, 510033, '20240417', N'O', N'O00011', N'Fabryka Pomp Wisła'),
    (2104, 510034, '20240429', N'O', N'O00003', N'Wiertarnia Północ'),
    (2105, 510035, '20240514', N'O', N'O00015', N'Klimatyzacja Sudety'),
    (2106, 510036, '20240522', N'O', N'O00011', N'Fabryka Pomp Wisła');
GO
