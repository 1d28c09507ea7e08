-- Makes the proposals of the chosen packages of this connection and user anew. NULL as @Aplication or @Operation stands
-- for all of them. For the procedures that confirm and show proposals; its errors are theirs.
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
    @Operation nvarchar(10)
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;
    -- Advice need not wait for those who move something now: the move judges again.
    SET TRANSACTION ISOLATION LEVEL READ UNCOMMITTED;

    DECLARE @Most int;
    DECLARE @InUse int;
    DECLARE @ItemCode nvarchar(20);
    DECLARE @Package int;
    DECLARE @Line int;

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
        AND (@Operation IS NULL OR T.Operation = @Operation);

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

    -- Whoever chooses hundreds of packages gets fewer places for each, so that the list can still be read.
    SELECT @Most = CASE WHEN COUNT(*) > 500 THEN 40 ELSE 20000 / (COUNT(*) + 1) END FROM #Package;

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
    INSERT INTO ##Temp_Prop_Location_BarCode (IDCodeBar, HostName, SPID, UserSign, Aplication, Operation, BarCode,
        Quantity, QuantityAdd)
    SELECT IDCodeBar, HOST_NAME(), -@@SPID, @UserSign, Aplication, Operation, BarCode, Quantity, Quantity
    FROM #Package;
    COMMIT TRANSACTION;

    INSERT INTO ##Temp_Prop_Location (IDCodeBar, ID, HostName, SPID, UserSign, Aplication, Operation, ItemCode,
        ItemName, Rank, Stand, Shelf, Location, Place, Status, Occupied, Proposed, PercentAfter, Reason)
    SELECT X.IDCodeBar, X.ID, HOST_NAME(), -@@SPID, @UserSign, X.Aplication, X.Operation, X.ItemCode, I.ItemName,
        X.Rank, X.Stand, X.Shelf, X.Location, X.Place, V.Status, CASE WHEN X.PackageCount = 0 THEN N'C' ELSE N'Z' END,
        N'N', CASE WHEN X.ShareAfter < 99.99 THEN CAST(ROUND(100 * X.ShareAfter, 0) AS int) ELSE 9999 END, V.Reason
    FROM (
            SELECT F.IDCodeBar, F.Aplication, F.Operation, F.ItemCode, F.Rank, F.Stand, F.Shelf, F.Location, F.Place,
                F.PackageCount, F.Verdict,
                CASE WHEN F.VolumeAfter > F.WeightAfter THEN F.VolumeAfter ELSE F.WeightAfter END AS ShareAfter,
                ROW_NUMBER() OVER (PARTITION BY F.IDCodeBar ORDER BY F.Verdict, F.Kin DESC, F.Way, F.Rank, F.Stand,
                    F.Shelf, F.Location) AS ID
            FROM (
                    SELECT P.IDCodeBar, P.Aplication, P.Operation, P.ItemCode, R.Rank, R.Stand, R.Shelf, R.Location,
                        R.Place, R.PackageCount, R.Kin,
                        1 - (R.FreeVolume - P.PackVolume) / R.SpaceVolume AS VolumeAfter,
                        1 - (R.FreeWeight - P.PackWeight) / R.SpaceWeight AS WeightAfter,
                        ABS(R.StandLeft - P.StandLeft) + ABS(R.StandTop - P.StandTop) AS Way,
                        (SELECT Verdict FROM dbo.kolv_mag_fn_Package_Verdict(
                            CASE WHEN R.Rank = P.Rank AND R.Stand = P.Stand AND R.Shelf = P.Shelf
                                AND R.Location = P.Location THEN 9 ELSE R.Verdict END,
                            P.PackLength, P.PackWidth, P.PackHeight, P.PackVolume, P.PackWeight, R.SpaceWidth,
                            R.SpaceHeight, R.SpaceDepth, R.SpaceVolume, R.SpaceWeight, R.FreeVolume, R.FreeWeight))
                            AS Verdict
                    FROM #Package AS P
                        INNER JOIN #Room AS R ON R.ItemCode = P.ItemCode
                ) AS F
            WHERE F.Verdict <= 2 OR F.Kin = 1
        ) AS X
        INNER JOIN dbo.Kolv_vv_mag_Verdict AS V ON V.Verdict = X.Verdict
        LEFT JOIN dbo.OITM AS I ON I.ItemCode = X.ItemCode
    WHERE X.ID <= @Most;

    -- Package by package; what is promised is taken from the room that the next ones find.
    SELECT @Package = MIN(Place) FROM #Package;
    WHILE @Package IS NOT NULL
    BEGIN
        SET @Line = NULL;
        SELECT @Line = MIN(L.ID)
        FROM #Package AS P
            INNER JOIN ##Temp_Prop_Location AS L ON L.IDCodeBar = P.IDCodeBar
            INNER JOIN #Room AS R ON R.ItemCode = P.ItemCode AND R.Rank = L.Rank AND R.Stand = L.Stand
                AND R.Shelf = L.Shelf AND R.Location = L.Location
        WHERE P.Place = @Package AND L.Status IN (N'D', N'C')
            AND (SELECT Verdict FROM dbo.kolv_mag_fn_Package_Verdict(R.Verdict, P.PackLength, P.PackWidth, P.PackHeight,
                P.PackVolume, P.PackWeight, R.SpaceWidth, R.SpaceHeight, R.SpaceDepth, R.SpaceVolume, R.SpaceWeight,
                R.FreeVolume, R.FreeWeight)) <= 2;
        IF @Line IS NOT NULL
        BEGIN
            UPDATE L
            SET L.Proposed = N'Y'
            FROM ##Temp_Prop_Location AS L
                INNER JOIN #Package AS P ON P.IDCodeBar = L.IDCodeBar
            WHERE P.Place = @Package AND L.ID = @Line;
            -- A location of one material that is promised to another one is no longer a place for it.
            UPDATE R
            SET R.FreeVolume = R.FreeVolume - P.PackVolume, R.FreeWeight = R.FreeWeight - P.PackWeight,
                R.Verdict = CASE WHEN R.StatLocation <> N'1' AND R.ItemCode <> P.ItemCode THEN 5 ELSE R.Verdict END
            FROM #Room AS R
                INNER JOIN ##Temp_Prop_Location AS L
                    ON L.Rank = R.Rank AND L.Stand = R.Stand AND L.Shelf = R.Shelf AND L.Location = R.Location
                INNER JOIN #Package AS P ON P.IDCodeBar = L.IDCodeBar
            WHERE P.Place = @Package AND L.ID = @Line;
        END
        SELECT @Package = MIN(Place) FROM #Package WHERE Place > @Package;
    END
    RETURN 0;
END
GO
