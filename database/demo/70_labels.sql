-- Templates of labels. The file of the first one comes with the demo warehouse; the client prints no labels of packages,
-- so those of the barcode window are names only.

DELETE FROM dbo.Kolv_ListPrint;
INSERT INTO dbo.Kolv_ListPrint (RaportCode, RaportName, RaportFile, RaporFileWath, GroupForm)
VALUES
    (1, N'Etykieta lokalizacji 100 x 60', N'Etykieta_lokalizacji_01.odt', N'Etykieta_lokalizacji_01.odt', 3),
    (2, N'Etykieta kodu, jedna na stronie', N'Etykieta_kodu_01.odt', N'Etykieta_kodu_01.odt', 4),
    (3, N'Etykieta kodu, dwie na stronie', N'Etykieta_kodu_02.odt', N'Etykieta_kodu_02.odt', 4);

DELETE FROM dbo.Kolv_PrintActiveUser;
INSERT INTO dbo.Kolv_PrintActiveUser (UserSign, RaportCode, GroupForm)
VALUES
    (1, 1, 3),
    (1, 2, 4),
    (2, 1, 3),
    (2, 3, 4);

-- A queue of CUPS that the workstations call so.
DELETE FROM dbo.Kolv_PrintersName;
INSERT INTO dbo.Kolv_PrintersName (EtykietCodePrint, PrintersName)
VALUES (100, N'Etykiety');
GO
