CREATE TABLE dbo.Typy (
    Id int NOT NULL PRIMARY KEY,
    B bit NULL, TI tinyint NULL, SI smallint NULL, I int NULL, BI bigint NULL,
    M money NULL, D decimal(18, 4) NULL, R real NULL, F float NULL,
    DT datetime NULL, DA date NULL, G uniqueidentifier NULL,
    VB varbinary(20) NULL, C char(5) NULL, VC varchar(50) NULL, NC nchar(5) NULL, NV nvarchar(50) NULL,
    VM varchar(max) NULL, NM nvarchar(max) NULL, BM varbinary(max) NULL)
GO
INSERT INTO dbo.Typy (Id, B, TI, SI, I, BI, M, D, R, F, DT, DA, G, VB, C, VC, NC, NV, VM, NM, BM)
VALUES (1, 1, 255, -32768, -2147483648, 9223372036854775807, -12.3456, 12345678901234.5678, 1.5, -2.25,
        '2024-02-29 13:45:30.123', '2024-02-29', '6F9619FF-8B86-D011-B42D-00C04FC964FF',
        0x0001FF, 'gęś', 'zażółć gęślą jaźń', N'ńó', N'ZAŻÓŁĆ GĘŚLĄ JAŹŃ', 'długi łańcuch', N'długi łańcuch', 0xABCD)
GO
INSERT INTO dbo.Typy (Id) VALUES (2)
GO
CREATE TABLE dbo.Cyfry (n int NOT NULL PRIMARY KEY)
GO
INSERT INTO dbo.Cyfry (n) VALUES (0), (1), (2), (3), (4), (5), (6), (7), (8), (9)
GO
CREATE TABLE dbo.Stan (Id int NOT NULL PRIMARY KEY, Ilosc int NOT NULL)
GO
INSERT INTO dbo.Stan (Id, Ilosc) VALUES (1, 10)
GO
CREATE PROCEDURE dbo.Przyjmij
    @nazwa nvarchar(50), @ile int = 4, @podwojone int OUTPUT, @opis nvarchar(100) OUTPUT
AS
BEGIN
    SET NOCOUNT ON
    SELECT @nazwa AS Nazwa, @ile AS Ile
    SET @podwojone = @ile * 2
    SET @opis = N'Przyjęto: ' + @nazwa
    RETURN 3
END
GO
CREATE PROCEDURE dbo.Nadrzedna AS
BEGIN
    SET NOCOUNT ON
    EXEC dbo.Przyjmij N'x', 1, NULL, NULL
    RETURN 8
END
GO
CREATE PROCEDURE dbo.DwaZbiory AS
BEGIN
    SET NOCOUNT ON
    SELECT n FROM dbo.Cyfry WHERE n < 2 ORDER BY n
    PRINT 'pomiędzy'
    SELECT 'żuk' AS Nazwa
END
GO
CREATE PROCEDURE dbo.Odmowa AS
BEGIN
    SET NOCOUNT ON
    UPDATE dbo.Stan SET Ilosc = 0
    RAISERROR('Za mało miejsca w gnieździe', 16, 1)
    RETURN 1
END
GO
CREATE PROCEDURE dbo.BezKonca AS
BEGIN
    SET NOCOUNT ON
    UPDATE dbo.Stan SET Ilosc = Ilosc + 1
    DECLARE @i int
    SET @i = 0
    WHILE 1 = 1
        SET @i = (@i + 1) % 1000
END
GO
