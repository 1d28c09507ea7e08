-- Writes the proposed locations of the packages in #Package, each with the verdict of the rooms in #Room, and marks one
-- of each package as the proposed one. The second half of kolv_mag_Prop_Location_Make, which makes both tables; what is
-- proposed is taken from #Room. Its errors are that one's.
DROP PROCEDURE IF EXISTS dbo.kolv_mag_Prop_Location_Lines;
GO
CREATE PROCEDURE dbo.kolv_mag_Prop_Location_Lines
    @UserSign smallint
AS
BEGIN
    SET NOCOUNT ON;
    SET TRANSACTION ISOLATION LEVEL READ UNCOMMITTED;

    DECLARE @Most int;
    DECLARE @Package int;
    DECLARE @Line int;

    -- Whoever chooses hundreds of packages gets fewer places for each, 40 at least, so that the list can still be read.
    SELECT @Most = 20000 / CASE WHEN COUNT(*) > 500 THEN 500 WHEN COUNT(*) = 0 THEN 1 ELSE COUNT(*) END FROM #Package;

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
