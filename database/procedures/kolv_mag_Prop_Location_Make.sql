-- Makes the proposals of the chosen packages of this connection and user anew. NULL as @Aplication or @Operation stands
-- for all of them. For the procedures that confirm and show proposals; its errors are theirs.
--
-- A package gets the locations that can be its target, the best first, and a few that one would expect there but that
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

    DECLARE @Users int;
    DECLARE @Free int;

    EXEC dbo.kolv_mag_Temp_Tables;
    BEGIN TRANSACTION;
    -- The numbers of packages are given out to one session at a time.
    SELECT @Users = COUNT(*) FROM ##Temp_Prop_Location_BarCode WITH (TABLOCKX, HOLDLOCK);
    DELETE FROM ##Temp_Prop_Location
    WHERE SPID = -@@SPID AND HostName = HOST_NAME() AND UserSign = @UserSign
        AND (@Aplication IS NULL OR Aplication = @Aplication) AND (@Operation IS NULL OR Operation = @Operation);
    DELETE FROM ##Temp_Prop_Location_BarCode
    WHERE SPID = -@@SPID AND HostName = HOST_NAME() AND UserSign = @UserSign
        AND (@Aplication IS NULL OR Aplication = @Aplication) AND (@Operation IS NULL OR Operation = @Operation);

    SELECT @Free = @Users + COUNT(*)
    FROM dbo.Kolv_Mag_BarCode_Input_Sur_tym
    WHERE SPID = -@@SPID AND HostName = HOST_NAME() AND UserSign = @UserSign AND YearCode = YEAR(GETDATE())
        AND LineGrd = -1;
    INSERT INTO ##Temp_Prop_Location_BarCode (IDCodeBar, HostName, SPID, UserSign, Aplication, Operation, BarCode,
        Quantity, QuantityAdd)
    SELECT N.Number, T.HostName, T.SPID, T.UserSign, T.Aplication, T.Operation, T.BarCode, T.Quantity, T.Quantity
    FROM (
            SELECT HostName, SPID, UserSign, Aplication, Operation, BarCode, Quantity,
                ROW_NUMBER() OVER (ORDER BY ItemCode, BarCode, ID) AS Place
            FROM dbo.Kolv_Mag_BarCode_Input_Sur_tym
            WHERE SPID = -@@SPID AND HostName = HOST_NAME() AND UserSign = @UserSign AND YearCode = YEAR(GETDATE())
                AND LineGrd = -1 AND (@Aplication IS NULL OR Aplication = @Aplication)
                AND (@Operation IS NULL OR Operation = @Operation)
        ) AS T
        INNER JOIN (
            SELECT Number, ROW_NUMBER() OVER (ORDER BY Number) AS Place
            FROM dbo.kolv_mag_Number
            WHERE Number <= @Free AND Number NOT IN (SELECT IDCodeBar FROM ##Temp_Prop_Location_BarCode)
        ) AS N ON N.Place = T.Place;

    INSERT INTO ##Temp_Prop_Location (IDCodeBar, ID, HostName, SPID, UserSign, Aplication, Operation, ItemCode,
        ItemName, Rank, Stand, Shelf, Location, Place, Status, Occupied, Proposed, PercentAfter, Reason)
    SELECT X.IDCodeBar, ROW_NUMBER() OVER (PARTITION BY X.IDCodeBar ORDER BY X.Turn, X.Place), X.HostName, X.SPID,
        X.UserSign, X.Aplication, X.Operation, X.ItemCode, I.ItemName, X.Rank, X.Stand, X.Shelf, X.Location, X.PlaceName,
        X.Status, X.Occupied, N'N', X.PercentAfter, X.Reason
    FROM (
            SELECT C.IDCodeBar, C.HostName, C.SPID, C.UserSign, C.Aplication, C.Operation, V.ItemCode, V.Rank, V.Stand,
                V.Shelf, V.Location, V.Place AS PlaceName, V.Status, V.Occupied, V.Reason,
                CAST(ROUND(V.PercentAfter, 0) AS int) AS PercentAfter,
                CASE WHEN V.Verdict <= 2 THEN 1 ELSE 2 END AS Turn,
                ROW_NUMBER() OVER (PARTITION BY C.IDCodeBar, CASE WHEN V.Verdict <= 2 THEN 1 ELSE 2 END
                    ORDER BY CASE V.Verdict WHEN 9 THEN 0 ELSE V.Verdict END, V.Kin DESC,
                        ABS(V.StandLeft - S.StandLeft) + ABS(V.StandTop - S.StandTop), V.Rank, V.Stand, V.Shelf,
                        V.Location) AS Place
            FROM ##Temp_Prop_Location_BarCode AS C
                INNER JOIN dbo.Kolv_vv_mag_Package_Target AS V ON V.BarCode = C.BarCode
                INNER JOIN dbo.Kolv_Mag_BarCode_Sur AS B ON B.BarCode = C.BarCode
                LEFT JOIN dbo.kolv_mag_Stand AS S ON S.Rank = B.Rank AND S.Stand = B.Stand
            WHERE C.SPID = -@@SPID AND C.HostName = HOST_NAME() AND C.UserSign = @UserSign
                AND (@Aplication IS NULL OR C.Aplication = @Aplication)
                AND (@Operation IS NULL OR C.Operation = @Operation)
                AND (V.Verdict <= 2 OR V.Kin = 1 OR V.Verdict = 9)
        ) AS X
        LEFT JOIN dbo.OITM AS I ON I.ItemCode = X.ItemCode
    WHERE X.Place <= CASE X.Turn WHEN 1 THEN 30 ELSE 10 END;
    COMMIT TRANSACTION;
    RETURN 0;
END
GO
