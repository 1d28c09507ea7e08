-- Tables of the warehouse. Running this file again drops them with their rows and makes them anew.
--
-- Columns outside the keys take NULL and hold no CHECK: rows come from other programs too, and the client promises to
-- show whatever it finds. The procedures are the guard of what they write.
-- Positions on the plan are twips. Sizes are millimetres, weights kilograms. Flags are N'Y' and N'N'.

DROP TABLE IF EXISTS dbo.Kolv_Mag_BarCode_Input_Sur_tym;
DROP TABLE IF EXISTS dbo.Kolv_Mag_BarCode_Output_Sur_tym;
DROP TABLE IF EXISTS dbo.Kolv_Mag_BarCode_Sur_Production;
DROP TABLE IF EXISTS dbo.Kolv_Mag_GiveOut;
DROP TABLE IF EXISTS dbo.Kolv_Mag_BarCode_Sur_Code;
DROP TABLE IF EXISTS dbo.Kolv_Mag_BarCode_Sur_History;
DROP TABLE IF EXISTS dbo.Kolv_Mag_BarCode_Sur;
DROP TABLE IF EXISTS dbo.kolv_mag_Group_Item;
DROP TABLE IF EXISTS dbo.kolv_mag_Location_Item;
DROP TABLE IF EXISTS dbo.kolv_mag_Location;
DROP TABLE IF EXISTS dbo.kolv_mag_Stand;
DROP TABLE IF EXISTS dbo.kolv_mag_Rank;
DROP TABLE IF EXISTS dbo.kolv_mag_Location_Group;
DROP TABLE IF EXISTS dbo.kolv_mag_Number;
DROP TABLE IF EXISTS dbo.kolv_user;
DROP TABLE IF EXISTS dbo.kolv_RightsName;
DROP TABLE IF EXISTS dbo.Kolv_setup;
DROP TABLE IF EXISTS dbo.kolv_mag_Order_Material;
DROP TABLE IF EXISTS dbo.RDR1;
DROP TABLE IF EXISTS dbo.POR1;
DROP TABLE IF EXISTS dbo.ORDR;
DROP TABLE IF EXISTS dbo.OPOR;
DROP TABLE IF EXISTS dbo.OITM;
DROP TABLE IF EXISTS dbo.OUSR;
GO

-- ---------------------------------------------------------------- business tables

CREATE TABLE dbo.OUSR (
    UserID    smallint      NOT NULL PRIMARY KEY,
    User_Code nvarchar(25)  NULL,
    U_NAME    nvarchar(155) NULL
);

CREATE TABLE dbo.OITM (
    ItemCode   nvarchar(20)   NOT NULL PRIMARY KEY,
    ItemName   nvarchar(100)  NULL,
    InvntryUom nvarchar(20)   NULL,  -- unit of every quantity of this material
    Blength1   decimal(19, 6) NULL,  -- size and weight of one purchase package
    Bwidth1    decimal(19, 6) NULL,
    BHeight1   decimal(19, 6) NULL,
    BWeight1   decimal(19, 6) NULL,
    PurPackUn  decimal(19, 6) NULL,  -- quantity in one purchase package
    PurPackMsr nvarchar(20)   NULL   -- kind of that package
);

CREATE TABLE dbo.OPOR (
    DocEntry  int           NOT NULL PRIMARY KEY,
    DocNum    int           NULL,
    DocDate   datetime      NULL,
    DocStatus nvarchar(1)   NULL,  -- O open, C closed
    CardCode  nvarchar(15)  NULL,
    CardName  nvarchar(100) NULL
);

CREATE TABLE dbo.ORDR (
    DocEntry  int           NOT NULL PRIMARY KEY,
    DocNum    int           NULL,
    DocDate   datetime      NULL,
    DocStatus nvarchar(1)   NULL,
    CardCode  nvarchar(15)  NULL,
    CardName  nvarchar(100) NULL
);

-- Lines of purchase orders. A line may close before its order; one whose status is NULL is open.
CREATE TABLE dbo.POR1 (
    DocEntry   int            NOT NULL,
    LineNum    smallint       NOT NULL,
    ItemCode   nvarchar(20)   NULL,
    Quantity   decimal(19, 6) NULL,  -- ordered, in the unit of the material
    LineStatus nvarchar(1)    NULL,  -- O open, C closed
    CONSTRAINT PK_POR1 PRIMARY KEY (DocEntry, LineNum)
);
CREATE INDEX IX_POR1_ItemCode ON dbo.POR1 (ItemCode);

-- Lines of manufacturing orders: what is made, and how many of it.
CREATE TABLE dbo.RDR1 (
    DocEntry   int            NOT NULL,
    LineNum    smallint       NOT NULL,
    Dscription nvarchar(100)  NULL,
    Quantity   decimal(19, 6) NULL,
    LineStatus nvarchar(1)    NULL,
    CONSTRAINT PK_RDR1 PRIMARY KEY (DocEntry, LineNum)
);

-- The materials that a line of a manufacturing order needs.
CREATE TABLE dbo.kolv_mag_Order_Material (
    DocEntry int            NOT NULL,
    LineNum  smallint       NOT NULL,
    ItemCode nvarchar(20)   NOT NULL,
    Quantity decimal(19, 6) NULL,
    CONSTRAINT PK_kolv_mag_Order_Material PRIMARY KEY (DocEntry, LineNum, ItemCode)
);
GO

-- ---------------------------------------------------------------- site and rights

-- One row. Without it the client starts with empty paths and says so.
CREATE TABLE dbo.Kolv_setup (
    PathFile           nvarchar(250) NULL,
    PathBitmapMagSur   nvarchar(250) NULL,
    PathBitmapPlanProd nvarchar(250) NULL
);

-- The rights of a window. The client counts them by position in the order of the rows, so the key puts them in the
-- order of LpShow. Numbers are unique over all windows because kolv_user names them without the window.
CREATE TABLE dbo.kolv_RightsName (
    FormName   nvarchar(50)  NOT NULL,
    LpShow     smallint      NULL,
    RightsName nvarchar(100) NULL
);
CREATE UNIQUE CLUSTERED INDEX IX_kolv_RightsName ON dbo.kolv_RightsName (FormName, LpShow);

-- RightsNumber and RightsUser are lists of equal length, joined by commas: numbers of rights and the user's values.
CREATE TABLE dbo.kolv_user (
    UserID       smallint      NOT NULL PRIMARY KEY,
    RightsNumber nvarchar(250) NULL,
    RightsUser   nvarchar(250) NULL
);
GO

-- ---------------------------------------------------------------- layout of the warehouse

CREATE TABLE dbo.kolv_mag_Rank (
    Rank           smallint     NOT NULL PRIMARY KEY,
    RankName       nvarchar(50) NULL,
    RankIconFamily nvarchar(50) NULL
);

CREATE TABLE dbo.kolv_mag_Stand (
    ID                int IDENTITY(1, 1) NOT NULL,
    Rank              smallint      NOT NULL,
    Stand             smallint      NOT NULL,
    StandName         nvarchar(50)  NULL,
    StandIcon         nvarchar(100) NULL,
    ShelfCount        smallint      NULL,
    StandLeft         int           NULL,
    StandTop          int           NULL,
    StandVisable      nvarchar(1)   NULL,
    StandEnable       nvarchar(1)   NULL,
    StandFrameArround nvarchar(1)   NULL,
    StandDescription  nvarchar(250) NULL,
    CONSTRAINT PK_kolv_mag_Stand PRIMARY KEY (Rank, Stand)
);

CREATE TABLE dbo.kolv_mag_Location (
    Rank            smallint      NOT NULL,
    Stand           smallint      NOT NULL,
    Shelf           smallint      NOT NULL,
    Location        smallint      NOT NULL,
    LocationName    nvarchar(50)  NULL,
    LocationIcon    nvarchar(100) NULL,
    LocationPercent smallint      NULL,
    CONSTRAINT PK_kolv_mag_Location PRIMARY KEY (Rank, Stand, Shelf, Location),
    CONSTRAINT FK_kolv_mag_Location_Stand FOREIGN KEY (Rank, Stand)
        REFERENCES dbo.kolv_mag_Stand (Rank, Stand) ON DELETE CASCADE
);

CREATE TABLE dbo.kolv_mag_Location_Group (
    GroupSur     smallint      NOT NULL PRIMARY KEY,
    GroupSurName nvarchar(100) NULL,
    OnOrOff      nvarchar(1)   NULL
);

CREATE TABLE dbo.kolv_mag_Group_Item (
    GroupSur smallint     NOT NULL,
    ItemCode nvarchar(20) NOT NULL,
    CONSTRAINT PK_kolv_mag_Group_Item PRIMARY KEY (GroupSur, ItemCode),
    CONSTRAINT FK_kolv_mag_Group_Item_Group FOREIGN KEY (GroupSur)
        REFERENCES dbo.kolv_mag_Location_Group (GroupSur) ON DELETE CASCADE
);
CREATE INDEX IX_kolv_mag_Group_Item_ItemCode ON dbo.kolv_mag_Group_Item (ItemCode);

-- The end of a column's name behind its last "_" tells the client how to edit it.
CREATE TABLE dbo.kolv_mag_Location_Item (
    Rank             smallint      NOT NULL,
    Stand            smallint      NOT NULL,
    Shelf            smallint      NOT NULL,
    Location         smallint      NOT NULL,
    ItemCode         nvarchar(20)  NULL,
    ItemName         nvarchar(100) NULL,
    GroupSur         smallint      NULL,
    Height_int       int           NULL,
    Width_int        int           NULL,
    Depth_int        int           NULL,
    Weight_int       int           NULL,
    Picture_pic      nvarchar(max) NULL,
    Description_char nvarchar(250) NULL,
    StatLocation_cmb nvarchar(1)   NULL,
    UserSign         smallint      NULL,
    UpdateDate       datetime      NULL,
    CONSTRAINT PK_kolv_mag_Location_Item PRIMARY KEY (Rank, Stand, Shelf, Location),
    CONSTRAINT FK_kolv_mag_Location_Item_Location FOREIGN KEY (Rank, Stand, Shelf, Location)
        REFERENCES dbo.kolv_mag_Location (Rank, Stand, Shelf, Location) ON DELETE CASCADE
);
CREATE INDEX IX_kolv_mag_Location_Item_ItemCode ON dbo.kolv_mag_Location_Item (ItemCode);
GO

-- ---------------------------------------------------------------- packages

-- One row for each barcoded package. NULL in the address: the package waits in the buffer. A package that was given
-- out stays with Active N'N' at the place where it lay last and fills nothing.
CREATE TABLE dbo.Kolv_Mag_BarCode_Sur (
    BarCode     nvarchar(50)   NOT NULL PRIMARY KEY,
    YearCode    smallint       NULL,
    NumberCode  int            NULL,  -- running number within the order line
    DocEntry    int            NULL,  -- purchase order
    DocNum      int            NULL,
    LineNum     smallint       NULL,
    ItemCode    nvarchar(20)   NULL,
    Quantity    decimal(19, 6) NULL,
    PackLength  int            NULL,
    PackWidth   int            NULL,
    PackHeight  int            NULL,
    PackWeight  decimal(19, 3) NULL,
    Rank        smallint       NULL,
    Stand       smallint       NULL,
    Shelf       smallint       NULL,
    Location    smallint       NULL,
    LinePercent decimal(9, 2)  NULL,  -- share of its location that it fills
    Active      nvarchar(1)    NULL,
    UserSign    smallint       NULL,
    CreateDate  datetime       NULL
);
CREATE INDEX IX_Kolv_Mag_BarCode_Sur_Location ON dbo.Kolv_Mag_BarCode_Sur (Rank, Stand, Shelf, Location);
CREATE INDEX IX_Kolv_Mag_BarCode_Sur_ItemCode ON dbo.Kolv_Mag_BarCode_Sur (ItemCode);
CREATE INDEX IX_Kolv_Mag_BarCode_Sur_DocEntry ON dbo.Kolv_Mag_BarCode_Sur (DocEntry, LineNum);

-- Every barcode that was given to a line of a purchase order, whether its package has come or not.
CREATE TABLE dbo.Kolv_Mag_BarCode_Sur_Code (
    BarCode    nvarchar(50) NOT NULL PRIMARY KEY,
    YearCode   smallint     NOT NULL,
    DocEntry   int          NOT NULL,
    DocNum     int          NULL,
    LineNum    smallint     NOT NULL,
    NumberCode int          NOT NULL,  -- running number within year, document and line
    ItemCode   nvarchar(20) NULL,
    UserSign   smallint     NULL,
    CreateDate datetime     NULL,
    CONSTRAINT UQ_Kolv_Mag_BarCode_Sur_Code UNIQUE (DocEntry, LineNum, YearCode, NumberCode)
);

-- Every booking of a package, never changed afterwards.
-- Operation: I into the buffer, L onto a location, S from location to location, O given out, R come back into the buffer.
CREATE TABLE dbo.Kolv_Mag_BarCode_Sur_History (
    ID           int IDENTITY(1, 1) NOT NULL PRIMARY KEY,
    BarCode      nvarchar(50)   NOT NULL,
    Operation    nvarchar(1)    NULL,
    Quantity     decimal(19, 6) NULL,
    FromRank     smallint       NULL,
    FromStand    smallint       NULL,
    FromShelf    smallint       NULL,
    FromLocation smallint       NULL,
    ToRank       smallint       NULL,
    ToStand      smallint       NULL,
    ToShelf      smallint       NULL,
    ToLocation   smallint       NULL,
    UserSign     smallint       NULL,
    HostName     nvarchar(128)  NULL,
    BookDate     datetime       NULL
);
CREATE INDEX IX_Kolv_Mag_BarCode_Sur_History_BarCode ON dbo.Kolv_Mag_BarCode_Sur_History (BarCode);

-- Documents of what was given out to a line of a manufacturing order.
CREATE TABLE dbo.Kolv_Mag_GiveOut (
    GiveOutDocNum   int           NOT NULL PRIMARY KEY,
    DocEntryProd    int           NOT NULL,
    DocNumProd      int           NULL,
    LineNumProd     smallint      NOT NULL,
    UserSign        smallint      NULL,  -- who gave it out
    UserSignGiveOut smallint      NULL,  -- who received it
    HostName        nvarchar(128) NULL,
    BookDate        datetime      NULL
);

-- Their lines. A part of a package has a code of its own in GiveOutBarCode; SourceBarCode is what it was taken from.
-- QuantityBack is NULL until the line has come back.
CREATE TABLE dbo.Kolv_Mag_BarCode_Sur_Production (
    GiveOutDocNum  int            NOT NULL,
    GiveOutLineNum smallint       NOT NULL,
    GiveOutBarCode nvarchar(50)   NULL,
    SourceBarCode  nvarchar(50)   NULL,
    ItemCode       nvarchar(20)   NULL,
    Quantity       decimal(19, 6) NULL,
    QuantityBack   decimal(19, 6) NULL,
    BackDate       datetime       NULL,
    CONSTRAINT PK_Kolv_Mag_BarCode_Sur_Production PRIMARY KEY (GiveOutDocNum, GiveOutLineNum)
);
CREATE INDEX IX_Kolv_Mag_BarCode_Sur_Production_BarCode ON dbo.Kolv_Mag_BarCode_Sur_Production (GiveOutBarCode);
GO

-- ---------------------------------------------------------------- staged work

-- Packages that a client has taken in hand for a shift, a goods-in or a return. A row belongs to the connection and user
-- of HostName, SPID (the number of the connection with its sign reversed) and UserSign; nobody else may touch it.
-- LineGrd is -1 once the user has chosen the package. The address is where the package lay when it was staged: a package
-- that lies elsewhere by now has been moved by somebody else. It is NULL for a package that has no place yet.
CREATE TABLE dbo.Kolv_Mag_BarCode_Input_Sur_tym (
    ID         int IDENTITY(1, 1) NOT NULL PRIMARY KEY NONCLUSTERED,
    HostName   nvarchar(128)  NULL,
    SPID       int            NOT NULL,
    UserSign   smallint       NULL,
    YearCode   smallint       NULL,
    LineGrd    smallint       NULL,
    Aplication nvarchar(10)   NULL,
    Operation  nvarchar(10)   NULL,
    DocEntry   int            NULL,
    DocNum     int            NULL,
    LineNum    smallint       NULL,
    NumberCode int            NULL,
    BarCode    nvarchar(50)   NOT NULL,
    ItemCode   nvarchar(20)   NULL,
    Quantity   decimal(19, 6) NULL,
    Rank       smallint       NULL,
    Stand      smallint       NULL,
    Shelf      smallint       NULL,
    Location   smallint       NULL,
    StageDate  datetime       NULL
);
-- The rows stand in the order of their keys, so that two clients who stage at once never come across each other's rows
-- and their locks.
CREATE UNIQUE CLUSTERED INDEX IX_Kolv_Mag_BarCode_Input_Sur_tym
    ON dbo.Kolv_Mag_BarCode_Input_Sur_tym (SPID, HostName, UserSign, Aplication, Operation, BarCode);

-- Packages that a client has taken in hand to give them out, under the same key.
CREATE TABLE dbo.Kolv_Mag_BarCode_Output_Sur_tym (
    ID           int IDENTITY(1, 1) NOT NULL PRIMARY KEY NONCLUSTERED,
    HostName     nvarchar(128)  NULL,
    SPID         int            NOT NULL,
    UserSign     smallint       NULL,
    YearCode     smallint       NULL,
    LineGrd      smallint       NULL,
    Aplication   nvarchar(10)   NULL,
    DocNum       int            NULL,
    BarCode      nvarchar(50)   NULL,
    ItemCode     nvarchar(20)   NULL,
    QuantityProp decimal(19, 6) NULL,
    QuantityOut  decimal(19, 6) NULL,
    PropOrOut    nvarchar(10)   NULL,
    StageDate    datetime       NULL
);
-- A line may stand here before its package is known: the number makes the key unique.
CREATE UNIQUE CLUSTERED INDEX IX_Kolv_Mag_BarCode_Output_Sur_tym
    ON dbo.Kolv_Mag_BarCode_Output_Sur_tym (SPID, HostName, UserSign, Aplication, BarCode, ID);
GO

-- ---------------------------------------------------------------- helper

-- The whole numbers 1 to 10000, to take lists apart in one statement.
CREATE TABLE dbo.kolv_mag_Number (
    Number int NOT NULL PRIMARY KEY
);
INSERT INTO dbo.kolv_mag_Number (Number)
SELECT 1 + D1.D + 10 * D2.D + 100 * D3.D + 1000 * D4.D
FROM (VALUES (0), (1), (2), (3), (4), (5), (6), (7), (8), (9)) AS D1 (D)
    CROSS JOIN (VALUES (0), (1), (2), (3), (4), (5), (6), (7), (8), (9)) AS D2 (D)
    CROSS JOIN (VALUES (0), (1), (2), (3), (4), (5), (6), (7), (8), (9)) AS D3 (D)
    CROSS JOIN (VALUES (0), (1), (2), (3), (4), (5), (6), (7), (8), (9)) AS D4 (D);
GO
