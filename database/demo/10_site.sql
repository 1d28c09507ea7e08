-- Folders, users and rights of the demo site.

DELETE FROM dbo.Kolv_setup;
INSERT INTO dbo.Kolv_setup (PathFile, PathBitmapMagSur, PathBitmapPlanProd)
VALUES (N'C:\Regalon', N'C:\Regalon\Ikony', N'C:\Regalon\Plany');

DELETE FROM dbo.OUSR;
INSERT INTO dbo.OUSR (UserID, User_Code, U_NAME)
VALUES
    (1, N'manager', N'Kierownik magazynu'),
    (2, N'jkowalska', N'Joanna Kowalska, magazynier'),
    (3, N'mwrobel', N'Marek Wróbel, magazynier'),
    (4, N'azielinska', N'Agnieszka Zielińska, planowanie'),
    (5, N'tnowak', N'Tomasz Nowak, produkcja'),
    (6, N'pszymanski', N'Paweł Szymański, praktykant');
GO

-- The main window asks for frmSlownikGrupa, frmMagCreate, frmMagWatch and MagSur. The right of MagSur that stands at
-- position 1 opens the view of the warehouse, 2 the layout editor, 5 the moving of stock, 7 the barcode window.
DELETE FROM dbo.kolv_RightsName;
INSERT INTO dbo.kolv_RightsName (FormName, LpShow, RightsName)
VALUES
    (N'MagSur', 1, N'Podgląd magazynu'),
    (N'MagSur', 2, N'Tworzenie magazynu'),
    (N'MagSur', 3, N'Przyjęcie surowca'),
    (N'MagSur', 4, N'Wydanie surowca'),
    (N'MagSur', 5, N'Przesunięcia między lokalizacjami'),
    (N'MagSur', 6, N'Zwrot z produkcji'),
    (N'MagSur', 7, N'Kody kreskowe na lokalizacjach'),
    (N'MagSur', 8, N'Wydruk etykiet'),
    (N'frmMagCreate', 11, N'Otwarcie okna'),
    (N'frmMagCreate', 12, N'Zmiana regałów'),
    (N'frmMagCreate', 13, N'Zmiana grup surowców'),
    (N'frmMagWatch', 21, N'Otwarcie okna'),
    (N'frmMagWatch', 22, N'Automatyczne odświeżanie'),
    (N'frmSlownikGrupa', 31, N'Słownik grup');

-- 1 everything; 2 a storekeeper: all but the layout; 3 a storekeeper without the barcode window; 4 a planner, who only
-- looks; 6 a trainee without the right that switches the rights on, so that nothing is closed to him.
-- User 5 is unknown here: nothing is closed to him either.
DELETE FROM dbo.kolv_user;
INSERT INTO dbo.kolv_user (UserID, RightsNumber, RightsUser)
VALUES
    (1, N'1,2,3,4,5,6,7,8,11,12,13,21,22,31', N'1,1,1,1,1,1,1,1,1,1,1,1,1,1'),
    (2, N'1,2,3,4,5,6,7,8,11,12,13,21,22,31', N'1,0,1,1,1,1,1,1,0,0,0,1,1,1'),
    (3, N'1,2,3,4,5,6,7,8,11,12,13,21,22,31', N'1,0,1,1,1,0,0,0,0,0,0,1,0,1'),
    (4, N'1,2,3,4,5,6,7,8,11,12,13,21,22,31', N'1,0,0,0,0,0,0,0,0,0,0,1,1,1'),
    (6, N'1,2', N'1,0');
GO
