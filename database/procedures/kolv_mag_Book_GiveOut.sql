-- Books the packages in #Out as lines of a give-out document: the half of Kolv_mag_GiveOut_Sur_On_Location, which makes the
-- table, inside its transaction. Its errors are that one's.
--
-- A package given out wholly stays as an inactive row where it lay. Of a part, the rest stays what and where it is, and the
-- part becomes an inactive package of its own: one row is one thing, and the part can come back without the rest.
DROP PROCEDURE IF EXISTS dbo.kolv_mag_Book_GiveOut;
GO
CREATE PROCEDURE dbo.kolv_mag_Book_GiveOut
    @GiveOutDocNum int,
    @UserSign smallint
AS
BEGIN
    SET NOCOUNT ON;

    DECLARE @Line smallint;
    DECLARE @Whole nvarchar(50);
    DECLARE @Shelf int;
    DECLARE @ShelfRank smallint;
    DECLARE @ShelfStand smallint;
    DECLARE @ShelfNumber smallint;

    -- Codes of parts: the first free one behind those that the package has lost before. They are digits again, which a
    -- scanner reads and the lookup takes, two of them, so that the code keeps its even length.
    SELECT @Line = MIN(Line) FROM #Out WHERE Quantity < Has;
    WHILE @Line IS NOT NULL
    BEGIN
        SELECT @Whole = BarCode FROM #Out WHERE Line = @Line;
        UPDATE #Out
        SET PartCode = (SELECT TOP (1) X.Code
            FROM (
                SELECT Number, @Whole + CASE WHEN Number < 10 THEN N'0' ELSE N'' END + CAST(Number AS nvarchar(5)) AS Code
                FROM dbo.kolv_mag_Number
            ) AS X
            WHERE NOT EXISTS (SELECT 1 FROM dbo.Kolv_Mag_BarCode_Sur AS B WHERE B.BarCode = X.Code)
                AND NOT EXISTS (SELECT 1 FROM dbo.Kolv_Mag_BarCode_Sur_Code AS C WHERE C.BarCode = X.Code)
                AND NOT EXISTS (SELECT 1 FROM #Out AS P WHERE P.PartCode = X.Code)
            ORDER BY X.Number)
        WHERE Line = @Line;
        SELECT @Line = MIN(Line) FROM #Out WHERE Quantity < Has AND Line > @Line;
    END

    INSERT INTO dbo.Kolv_Mag_BarCode_Sur_Production (GiveOutDocNum, GiveOutLineNum, GiveOutBarCode, SourceBarCode,
        ItemCode, Quantity)
    SELECT @GiveOutDocNum, Line, ISNULL(PartCode, BarCode), BarCode, ItemCode, Quantity
    FROM #Out;
    INSERT INTO dbo.Kolv_Mag_BarCode_Sur_History (BarCode, Operation, Quantity, FromRank, FromStand, FromShelf,
        FromLocation, UserSign, HostName, BookDate)
    SELECT B.BarCode, N'O', O.Quantity, B.Rank, B.Stand, B.Shelf, B.Location, @UserSign, HOST_NAME(), GETDATE()
    FROM #Out AS O
        INNER JOIN dbo.Kolv_Mag_BarCode_Sur AS B ON B.BarCode = O.BarCode
    ORDER BY O.Line;
    INSERT INTO dbo.Kolv_Mag_BarCode_Sur (BarCode, YearCode, NumberCode, DocEntry, DocNum, LineNum, ItemCode, Quantity,
        PackLength, PackWidth, PackHeight, PackWeight, Rank, Stand, Shelf, Location, LinePercent, Active, UserSign,
        CreateDate)
    SELECT O.PartCode, B.YearCode, B.NumberCode, B.DocEntry, B.DocNum, B.LineNum, B.ItemCode, O.Quantity, B.PackLength,
        B.PackWidth,
        CAST(CEILING(CAST(B.PackHeight AS float) * CAST(O.Quantity AS float) / CAST(O.Has AS float)) AS int),
        CAST(ROUND(CAST(B.PackWeight AS float) * CAST(O.Quantity AS float) / CAST(O.Has AS float), 3)
            AS decimal(19, 3)),
        B.Rank, B.Stand, B.Shelf, B.Location, 0, N'N', @UserSign, B.CreateDate
    FROM #Out AS O
        INNER JOIN dbo.Kolv_Mag_BarCode_Sur AS B ON B.BarCode = O.BarCode
    WHERE O.PartCode IS NOT NULL;
    -- An opened package keeps its outer size.
    UPDATE B
    SET B.Quantity = B.Quantity - O.Quantity, B.PackWeight = B.PackWeight - P.PackWeight
    FROM dbo.Kolv_Mag_BarCode_Sur AS B
        INNER JOIN #Out AS O ON O.BarCode = B.BarCode
        INNER JOIN dbo.Kolv_Mag_BarCode_Sur AS P ON P.BarCode = O.PartCode;
    UPDATE B
    SET B.Active = N'N'
    FROM dbo.Kolv_Mag_BarCode_Sur AS B
        INNER JOIN #Out AS O ON O.BarCode = B.BarCode
    WHERE O.PartCode IS NULL;

    CREATE TABLE #Shelf (Number int NOT NULL PRIMARY KEY, Rank smallint, Stand smallint, Shelf smallint);
    INSERT INTO #Shelf (Number, Rank, Stand, Shelf)
    SELECT ROW_NUMBER() OVER (ORDER BY X.Rank, X.Stand, X.Shelf), X.Rank, X.Stand, X.Shelf
    FROM (
        SELECT DISTINCT B.Rank, B.Stand, B.Shelf
        FROM #Out AS O
            INNER JOIN dbo.Kolv_Mag_BarCode_Sur AS B ON B.BarCode = O.BarCode
        WHERE B.Rank IS NOT NULL
    ) AS X;
    SELECT @Shelf = MIN(Number) FROM #Shelf;
    WHILE @Shelf IS NOT NULL
    BEGIN
        SELECT @ShelfRank = Rank, @ShelfStand = Stand, @ShelfNumber = Shelf FROM #Shelf WHERE Number = @Shelf;
        EXEC dbo.kolv_mag_Refresh_Percent_Shelf @ShelfRank, @ShelfStand, @ShelfNumber;
        SELECT @Shelf = MIN(Number) FROM #Shelf WHERE Number > @Shelf;
    END
    RETURN 0;
END
GO
