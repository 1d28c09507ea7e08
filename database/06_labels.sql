-- Labels: the templates, which of them a user has active, and the printer of each kind of label. Running this file again
-- drops the tables with their rows and makes them anew.
--
-- GroupForm is the group of windows that a template belongs to: 3 the layout editor, 4 the barcode window.

DROP TABLE IF EXISTS dbo.Kolv_PrintActiveUser;
DROP TABLE IF EXISTS dbo.Kolv_PrintersName;
DROP TABLE IF EXISTS dbo.Kolv_ListPrint;
GO

-- RaportFile is a file of the folder Etykiety of the site. RaporFileWath is spelled so; the client reads it and does
-- nothing with it.
CREATE TABLE dbo.Kolv_ListPrint (
    RaportCode    int           NOT NULL,
    RaportName    nvarchar(100) NULL,
    RaportFile    nvarchar(100) NULL,
    RaporFileWath nvarchar(100) NULL,
    GroupForm     smallint      NOT NULL,
    PRIMARY KEY (RaportCode, GroupForm)
);

-- One active template for each user and group of windows.
CREATE TABLE dbo.Kolv_PrintActiveUser (
    UserSign   smallint NOT NULL,
    RaportCode int      NULL,
    GroupForm  smallint NOT NULL,
    PRIMARY KEY (UserSign, GroupForm)
);

-- Printer by the code of a kind of label: 100 the label of a location. A name as the workstations know it.
CREATE TABLE dbo.Kolv_PrintersName (
    EtykietCodePrint int           NOT NULL PRIMARY KEY,
    PrintersName     nvarchar(100) NULL
);
GO
