-- Stores the names that a map build gave to the locations: three comma-joined lists, each name beginning with the
-- address Rank_Stand_Shelf_Location_. A name whose location has gone in the meantime is passed over. A text that is no
-- name refuses the whole call, because it means that the plan on the screen and the stored one are not the same.
DROP PROCEDURE IF EXISTS dbo.kolv_mag_SaveLocationIDTab;
GO
CREATE PROCEDURE dbo.kolv_mag_SaveLocationIDTab
    @LocationName_1 nvarchar(4000),
    @LocationName_2 nvarchar(4000),
    @LocationName_3 nvarchar(4000),
    @ErrDesc nvarchar(250) OUTPUT
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;
    SET @ErrDesc = N'';

    BEGIN TRY
        DECLARE @Wrong nvarchar(100);
        DECLARE @Stands int;

        CREATE TABLE #Name (LocationName nvarchar(4000) COLLATE DATABASE_DEFAULT NOT NULL);
        INSERT INTO #Name (LocationName)
        SELECT SUBSTRING(L.List, N.Number, CHARINDEX(N',', L.List + N',', N.Number) - N.Number)
        FROM (SELECT @LocationName_1 AS List UNION ALL SELECT @LocationName_2 UNION ALL SELECT @LocationName_3) AS L
            INNER JOIN dbo.kolv_mag_Number AS N ON N.Number <= LEN(L.List)
        WHERE N.Number = 1 OR SUBSTRING(L.List, N.Number - 1, 1) = N',';

        -- Only the address counts: a shelf of four locations on a plan that begins with it has names without a family.
        SELECT @Wrong = MIN(LEFT(LocationName, 100))
        FROM #Name
        WHERE LocationName NOT LIKE N'[0-9]%[_][0-9]%[_][0-9]%[_][0-9]%[_]%' OR LEN(LocationName) > 50;
        IF @Wrong IS NOT NULL
        BEGIN
            SET @ErrDesc = N'Błędna nazwa lokalizacji: ' + @Wrong;
            RETURN 1;
        END

        CREATE TABLE #Address (
            Rank int NOT NULL,
            Stand int NOT NULL,
            Shelf int NOT NULL,
            Location int NOT NULL,
            LocationName nvarchar(50) COLLATE DATABASE_DEFAULT NOT NULL
        );
        INSERT INTO #Address (Rank, Stand, Shelf, Location, LocationName)
        SELECT CAST(LEFT(D.LocationName, D.P1 - 1) AS int),
            CAST(SUBSTRING(D.LocationName, D.P1 + 1, D.P2 - D.P1 - 1) AS int),
            CAST(SUBSTRING(D.LocationName, D.P2 + 1, D.P3 - D.P2 - 1) AS int),
            CAST(SUBSTRING(D.LocationName, D.P3 + 1, D.P4 - D.P3 - 1) AS int),
            D.LocationName
        FROM (
            SELECT C.LocationName, C.P1, C.P2, C.P3, CHARINDEX(N'_', C.LocationName, C.P3 + 1) AS P4
            FROM (
                SELECT B.LocationName, B.P1, B.P2, CHARINDEX(N'_', B.LocationName, B.P2 + 1) AS P3
                FROM (
                    SELECT A.LocationName, A.P1, CHARINDEX(N'_', A.LocationName, A.P1 + 1) AS P2
                    FROM (SELECT LocationName, CHARINDEX(N'_', LocationName) AS P1 FROM #Name) AS A
                ) AS B
            ) AS C
        ) AS D;

        BEGIN TRANSACTION;
        -- The lock that every writer of the layout takes first: a mover takes locations in another order than this does.
        SELECT @Stands = COUNT(*) FROM dbo.kolv_mag_Stand WITH (UPDLOCK, HOLDLOCK);
        UPDATE L
        SET L.LocationName = A.LocationName
        FROM dbo.kolv_mag_Location AS L
            INNER JOIN #Address AS A
                ON A.Rank = L.Rank AND A.Stand = L.Stand AND A.Shelf = L.Shelf AND A.Location = L.Location
        -- By bytes: the client tells names apart by letter case too.
        WHERE L.LocationName IS NULL OR CAST(L.LocationName AS varbinary(100)) <> CAST(A.LocationName AS varbinary(100));
        COMMIT TRANSACTION;
        RETURN 0;
    END TRY
    BEGIN CATCH
        IF @@TRANCOUNT > 0
            ROLLBACK TRANSACTION;
        SET @ErrDesc = LEFT(N'Błąd zapisu nazw lokalizacji: ' + ERROR_MESSAGE(), 250);
        RETURN 1;
    END CATCH
END
GO
