-- As Kolv_mag_LookFor_Item, but only the materials that are in the warehouse: assigned to a location or member of a
-- group. These are the materials of kolv_mag_Sur_On_Mag, since the window that opened the dialog looks the chosen code
-- up in that list; a package that lies somewhere without a place of its own does not make its material one of them.
DROP PROCEDURE IF EXISTS dbo.Kolv_mag_LookFor_Item_2;
GO
CREATE PROCEDURE dbo.Kolv_mag_LookFor_Item_2
    @Pattern nvarchar(4000),
    @Column nvarchar(20),
    @Step smallint
AS
BEGIN
    SET NOCOUNT ON;
    IF @Step <> 1
        RETURN 0;

    IF @Column = N'ItemName'
        SELECT I.ItemCode AS [Indeks:2200;0],
            I.ItemName AS [Nazwa:5300;0],
            I.InvntryUom AS [Jm:700;2]
        FROM dbo.OITM AS I
        WHERE ISNULL(I.ItemName, N'') LIKE @Pattern
            AND (EXISTS (SELECT 1 FROM dbo.kolv_mag_Location_Item AS L WHERE L.ItemCode = I.ItemCode)
                OR EXISTS (SELECT 1 FROM dbo.kolv_mag_Group_Item AS G WHERE G.ItemCode = I.ItemCode))
        ORDER BY I.ItemName, I.ItemCode;
    ELSE
        SELECT I.ItemCode AS [Indeks:2200;0],
            I.ItemName AS [Nazwa:5300;0],
            I.InvntryUom AS [Jm:700;2]
        FROM dbo.OITM AS I
        WHERE I.ItemCode LIKE @Pattern
            AND (EXISTS (SELECT 1 FROM dbo.kolv_mag_Location_Item AS L WHERE L.ItemCode = I.ItemCode)
                OR EXISTS (SELECT 1 FROM dbo.kolv_mag_Group_Item AS G WHERE G.ItemCode = I.ItemCode))
        ORDER BY I.ItemCode;
    RETURN 0;
END
GO
