-- Makes the proposals of the chosen packages of this connection and user anew. NULL as @Aplication or @Operation stands
-- for all of them. For the procedures that confirm and show proposals; its errors are theirs. It refuses, with 1 and a
-- reason, when the numbers of packages have run out: the packages of all users together share those of kolv_mag_Number.
--
-- A package gets every location that can be its target, the best first, and those that one would expect there but that
-- refuse it, with the reason. Best is where the material belongs, then where some of it lies already, then what is near.
-- Proposed is N'Y' on one location of each package: the best one that still has room when the packages before it go to
-- theirs.
DROP PROCEDURE IF EXISTS dbo.kolv_mag_Prop_Location_Make;
GO
CREATE PROCEDURE dbo.kolv_mag_Prop_Location_Make
    @UserSign smallint,
    @Aplication nvarchar(10),
    @Operation nvarchar(10),
    @ErrDesc nvarchar(250) OUTPUT
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;
    -- Advice need not wait for those who move something now: the move judges again.
    SET TRANSACTION ISOLATION LEVEL READ UNCOMMITTED;

    DECLARE @InUse int;
    DECLARE @ItemCode nvarchar(20);

    CREATE TABLE #Package (
        Place      int            NOT NULL PRIMARY KEY,
        IDCodeBar  smallint       NULL,
        Aplication nvarchar(10)   COLLATE DATABASE_DEFAULT NULL,
        Operation  nvarchar(10)   COLLATE DATABASE_DEFAULT NULL,
        BarCode    nvarchar(50)   COLLATE DATABASE_DEFAULT NOT NULL,
        ItemCode   nvarchar(20)   COLLATE DATABASE_DEFAULT NOT NULL,
        Quantity   decimal(19, 6) NULL,
        PackLength int            NOT NULL,
        PackWidth  int            NOT NULL,
        PackHeight int            NOT NULL,
        PackVolume float          NOT NULL,
        PackWeight float          NOT NULL,
        Rank       smallint       NULL,
        Stand      smallint       NULL,
        Shelf      smallint       NULL,
        Location   smallint       NULL,
        StandLeft  int            NOT NULL,
        StandTop   int            NOT NULL
    );
    CREATE TABLE #Room (
        ItemCode     nvarchar(20) COLLATE DATABASE_DEFAULT NOT NULL,
        Rank         smallint     NOT NULL,
        Stand        smallint     NOT NULL,
        Shelf        smallint     NOT NULL,
        Location     smallint     NOT NULL,
        Place        nvarchar(30) COLLATE DATABASE_DEFAULT NOT NULL,
        StandLeft    int          NOT NULL,
        StandTop     int          NOT NULL,
        SpaceWidth   int          NOT NULL,
        SpaceHeight  int          NOT NULL,
        SpaceDepth   int          NOT NULL,
        SpaceVolume  float        NOT NULL,
        SpaceWeight  float        NOT NULL,
        FreeVolume   float        NOT NULL,
        FreeWeight   float        NOT NULL,
        PackageCount int          NOT NULL,
        StatLocation nvarchar(1)  COLLATE DATABASE_DEFAULT NOT NULL,
        Kin          int          NOT NULL,
        Verdict      int          NOT NULL,
        PRIMARY KEY (ItemCode, Rank, Stand, Shelf, Location)
    );

    INSERT INTO #Package (Place, Aplication, Operation, BarCode, ItemCode, Quantity, PackLength, PackWidth, PackHeight,
        PackVolume, PackWeight, Rank, Stand, Shelf, Location, StandLeft, StandTop)
    SELECT ROW_NUMBER() OVER (ORDER BY B.ItemCode, T.BarCode, T.ID), T.Aplication, T.Operation, T.BarCode, B.ItemCode,
        ISNULL(T.Quantity, 0), B.PackLength, B.PackWidth, B.PackHeight, B.PackVolume, B.PackWeight, B.Rank, B.Stand,
        B.Shelf, B.Location, ISNULL(S.StandLeft, 0), ISNULL(S.StandTop, 0)
    FROM dbo.Kolv_Mag_BarCode_Input_Sur_tym AS T
        INNER JOIN dbo.Kolv_vv_mag_Package_Size AS B ON B.BarCode = T.BarCode
        LEFT JOIN dbo.kolv_mag_Stand AS S ON S.Rank = B.Rank AND S.Stand = B.Stand
    WHERE T.SPID = -@@SPID AND T.HostName = HOST_NAME() AND T.UserSign = @UserSign AND T.YearCode = YEAR(GETDATE())
        AND T.LineGrd = -1 AND (@Aplication IS NULL OR T.Aplication = @Aplication)
        AND (@Operation IS NULL OR T.Operation = @Operation) AND ISNULL(T.Operation, N'') NOT IN (N'I', N'R');
    -- Packages that come in or come back are not in stock yet and lie nowhere.
    IF @Operation IS NULL OR @Operation IN (N'I', N'R')
        INSERT INTO #Package (Place, Aplication, Operation, BarCode, ItemCode, Quantity, PackLength, PackWidth,
            PackHeight, PackVolume, PackWeight, StandLeft, StandTop)
        SELECT (SELECT COUNT(*) FROM #Package) + ROW_NUMBER() OVER (ORDER BY Z.ItemCode, Z.BarCode, Z.ID), Z.Aplication,
            Z.Operation, Z.BarCode, ISNULL(Z.ItemCode, N''), ISNULL(Z.Quantity, 0), ISNULL(Z.PackLength, 0),
            ISNULL(Z.PackWidth, 0), ISNULL(Z.PackHeight, 0),
            CAST(ISNULL(Z.PackLength, 0) AS float) * ISNULL(Z.PackWidth, 0) * ISNULL(Z.PackHeight, 0) / 1000000.0,
            CAST(ISNULL(Z.PackWeight, 0) AS float), 0, 0
        FROM dbo.Kolv_vv_mag_Document_Size AS Z
        WHERE Z.SPID = -@@SPID AND Z.HostName = HOST_NAME() AND Z.UserSign = @UserSign AND Z.YearCode = YEAR(GETDATE())
            AND Z.LineGrd = -1 AND (@Aplication IS NULL OR Z.Aplication = @Aplication)
            AND (@Operation IS NULL OR Z.Operation = @Operation);

    SELECT @ItemCode = MIN(ItemCode) FROM #Package;
    WHILE @ItemCode IS NOT NULL
    BEGIN
        INSERT INTO #Room (ItemCode, Rank, Stand, Shelf, Location, Place, StandLeft, StandTop, SpaceWidth, SpaceHeight,
            SpaceDepth, SpaceVolume, SpaceWeight, FreeVolume, FreeWeight, PackageCount, StatLocation, Kin, Verdict)
        SELECT @ItemCode, Rank, Stand, Shelf, Location, Place, StandLeft, StandTop, SpaceWidth, SpaceHeight, SpaceDepth,
            SpaceVolume, SpaceWeight, FreeVolume, FreeWeight, PackageCount, StatLocation, Kin, Verdict
        FROM dbo.kolv_mag_fn_Item_Target(@ItemCode)
        WHERE Verdict <= 2 OR Kin = 1;
        SELECT @ItemCode = MIN(ItemCode) FROM #Package WHERE ItemCode > @ItemCode;
    END

    EXEC dbo.kolv_mag_Temp_Tables;
    -- The numbers of packages are given out to one session at a time. The table of packages can go with its maker while
    -- that of the lines stays: lines without a package go here, since their numbers are given out again.
    BEGIN TRANSACTION;
    SELECT @InUse = COUNT(*) FROM ##Temp_Prop_Location_BarCode WITH (TABLOCKX, HOLDLOCK);
    DELETE FROM ##Temp_Prop_Location_BarCode
    WHERE SPID = -@@SPID AND HostName = HOST_NAME() AND UserSign = @UserSign
        AND (@Aplication IS NULL OR Aplication = @Aplication) AND (@Operation IS NULL OR Operation = @Operation);
    DELETE FROM ##Temp_Prop_Location
    WHERE (SPID = -@@SPID AND HostName = HOST_NAME() AND UserSign = @UserSign
            AND (@Aplication IS NULL OR Aplication = @Aplication) AND (@Operation IS NULL OR Operation = @Operation))
        OR IDCodeBar NOT IN (SELECT IDCodeBar FROM ##Temp_Prop_Location_BarCode);
    UPDATE P
    SET P.IDCodeBar = N.Number
    FROM #Package AS P
        INNER JOIN (
            SELECT Number, ROW_NUMBER() OVER (ORDER BY Number) AS Place
            FROM dbo.kolv_mag_Number
            WHERE Number <= @InUse + (SELECT COUNT(*) FROM #Package)
                AND Number NOT IN (SELECT IDCodeBar FROM ##Temp_Prop_Location_BarCode)
        ) AS N ON N.Place = P.Place;
    IF EXISTS (SELECT 1 FROM #Package WHERE IDCodeBar IS NULL)
    BEGIN
        COMMIT TRANSACTION;
        SELECT @ErrDesc = N'Za dużo wybranych opakowań: u wszystkich użytkowników razem najwyżej '
            + CAST(COUNT(*) AS nvarchar(11)) + N'. Odznacz część z nich albo poczekaj, aż inni skończą.'
        FROM dbo.kolv_mag_Number;
        RETURN 1;
    END
    INSERT INTO ##Temp_Prop_Location_BarCode (IDCodeBar, HostName, SPID, UserSign, Aplication, Operation, BarCode,
        Quantity, QuantityAdd)
    SELECT IDCodeBar, HOST_NAME(), -@@SPID, @UserSign, Aplication, Operation, BarCode, Quantity, Quantity
    FROM #Package;
    COMMIT TRANSACTION;

    EXEC dbo.kolv_mag_Prop_Location_Lines @UserSign;
    RETURN 0;
END
GO
