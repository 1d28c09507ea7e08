-- Brings fill and icon of the locations of one shelf up to date, and the shares of its packages. For procedures that
-- change what a shelf can hold or what lies on it: they call it last inside their transaction; its errors are theirs.
DROP PROCEDURE IF EXISTS dbo.kolv_mag_Refresh_Percent_Shelf;
GO
CREATE PROCEDURE dbo.kolv_mag_Refresh_Percent_Shelf
    @Rank smallint,
    @Stand smallint,
    @Shelf smallint
AS
BEGIN
    SET NOCOUNT ON;

    UPDATE L
    SET L.LocationPercent = N.LocationPercent, L.LocationIcon = N.LocationIcon
    FROM dbo.kolv_mag_Location AS L
        INNER JOIN dbo.Kolv_vv_mag_Location_Fill AS N
            ON N.Rank = L.Rank AND N.Stand = L.Stand AND N.Shelf = L.Shelf AND N.Location = L.Location
    WHERE L.Rank = @Rank AND L.Stand = @Stand AND L.Shelf = @Shelf
        AND N.Rank = @Rank AND N.Stand = @Stand AND N.Shelf = @Shelf;

    UPDATE B
    SET B.LinePercent = N.LinePercent
    FROM dbo.Kolv_Mag_BarCode_Sur AS B
        INNER JOIN dbo.Kolv_vv_mag_Package_Share AS N ON N.BarCode = B.BarCode
    WHERE B.Rank = @Rank AND B.Stand = @Stand AND B.Shelf = @Shelf
        AND N.Rank = @Rank AND N.Stand = @Stand AND N.Shelf = @Shelf;
    RETURN 0;
END
GO
