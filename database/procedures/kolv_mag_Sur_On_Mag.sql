-- The materials that the warehouse has a place for: assigned to a location or member of a group. First the row
-- "nothing chosen". The client takes column 1 as key and column 2 as text.
DROP PROCEDURE IF EXISTS dbo.kolv_mag_Sur_On_Mag;
GO
CREATE PROCEDURE dbo.kolv_mag_Sur_On_Mag
    @Aplication nvarchar(1)
AS
BEGIN
    SET NOCOUNT ON;

    SELECT S.ItemCode, S.ItemName
    FROM (
        SELECT 0 AS Place, N'0' AS ItemCode, N'wybierz' AS ItemName
        UNION ALL
        SELECT 1, I.ItemCode, I.ItemCode + N' - ' + ISNULL(I.ItemName, N'')
        FROM dbo.OITM AS I
        WHERE EXISTS (SELECT 1 FROM dbo.kolv_mag_Location_Item AS L WHERE L.ItemCode = I.ItemCode)
            OR EXISTS (SELECT 1 FROM dbo.kolv_mag_Group_Item AS G WHERE G.ItemCode = I.ItemCode)
    ) AS S
    ORDER BY S.Place, S.ItemCode;
    RETURN 0;
END
GO
