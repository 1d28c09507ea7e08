-- Judges whether what lies on a shelf allows the shelf to have @Locations locations: 0, or 1 with the reason. For
-- kolv_mag_AddBookstandValidate; its errors are that one's.
--
-- Locations go from the right, and the others change their width, so none goes while anything lies on the shelf. More
-- locations leave fewer slots of the shelf to each: what lies on those that become narrower must still fit, one by one
-- and together. A width or weight that the location's own row gives does not change.
DROP PROCEDURE IF EXISTS dbo.kolv_mag_AddBookstandPackages;
GO
CREATE PROCEDURE dbo.kolv_mag_AddBookstandPackages
    @Rank smallint,
    @Stand smallint,
    @Shelf smallint,
    @Locations smallint,
    @ErrDesc nvarchar(250) OUTPUT
AS
BEGIN
    SET NOCOUNT ON;

    DECLARE @Packages int = 0;
    DECLARE @Narrow smallint;

    IF EXISTS (SELECT 1 FROM dbo.kolv_mag_Location
            WHERE Rank = @Rank AND Stand = @Stand AND Shelf = @Shelf AND Location > @Locations)
        SELECT @Packages = COUNT(*)
        FROM dbo.Kolv_Mag_BarCode_Sur WITH (UPDLOCK, HOLDLOCK)
        WHERE Rank = @Rank AND Stand = @Stand AND Shelf = @Shelf AND Active = N'Y';
    IF @Packages > 0
    BEGIN
        SET @ErrDesc = N'Na półce ' + CAST(@Shelf AS nvarchar(6)) + N' leżą opakowania (liczba: '
            + CAST(@Packages AS nvarchar(11)) + N'). Opróżnij półkę, zanim zmniejszysz liczbę jej lokalizacji.';
        RETURN 1;
    END

    -- The slots that are left to each location, as Kolv_vv_mag_Location_Space counts them.
    SELECT @Narrow = MIN(N.Location)
    FROM (
            SELECT S.Rank, S.Stand, S.Shelf, S.Location, S.SpaceWidth, S.SpaceDepth, S.SpaceVolume, S.SpaceWeight,
                ISNULL(NULLIF(I.Width_int, 0), 900 * S.SlotsAfter) AS WidthAfter,
                ISNULL(NULLIF(I.Weight_int, 0), 1000 * S.SlotsAfter) AS WeightAfter
            FROM (
                    SELECT Rank, Stand, Shelf, Location, SpaceWidth, SpaceDepth, SpaceVolume, SpaceWeight,
                        CASE WHEN @Locations = 1 THEN 3
                            WHEN @Locations = 2 AND Location = 2 THEN 2
                            ELSE 1 END AS SlotsAfter
                    FROM dbo.Kolv_vv_mag_Location_Space
                    WHERE Rank = @Rank AND Stand = @Stand AND Shelf = @Shelf
                ) AS S
                LEFT JOIN dbo.kolv_mag_Location_Item AS I
                    ON I.Rank = S.Rank AND I.Stand = S.Stand AND I.Shelf = S.Shelf AND I.Location = S.Location
        ) AS N
        INNER JOIN dbo.Kolv_vv_mag_Location_Load AS W
            ON W.Rank = N.Rank AND W.Stand = N.Stand AND W.Shelf = N.Shelf AND W.Location = N.Location
    WHERE N.WeightAfter < N.SpaceWeight AND W.LoadWeight > N.WeightAfter * 1.000001
        OR N.WidthAfter < N.SpaceWidth AND (W.LoadVolume > N.SpaceVolume * N.WidthAfter / N.SpaceWidth * 1.000001
            OR EXISTS (SELECT 1 FROM dbo.Kolv_vv_mag_Package_Size AS B
                WHERE B.Rank = N.Rank AND B.Stand = N.Stand AND B.Shelf = N.Shelf AND B.Location = N.Location
                    AND NOT (B.PackLength <= N.WidthAfter AND B.PackWidth <= N.SpaceDepth + 150)
                    AND NOT (B.PackWidth <= N.WidthAfter AND B.PackLength <= N.SpaceDepth + 150)));
    IF @Narrow IS NOT NULL
    BEGIN
        SET @ErrDesc = N'Lokalizacja ' + CAST(@Narrow AS nvarchar(6)) + N' na półce ' + CAST(@Shelf AS nvarchar(6))
            + N' zrobi się węższa i nie pomieści opakowań, które na niej leżą. Przesuń je, zanim zwiększysz liczbę '
            + N'lokalizacji półki.';
        RETURN 1;
    END
    RETURN 0;
END
GO
