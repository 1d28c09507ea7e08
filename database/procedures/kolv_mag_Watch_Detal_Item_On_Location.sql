-- The materials of one location for the warehouse view. The client calls phase 0, whose result it does not read, and
-- then phase 1 for the rows. The rows are computed when they are asked for, so phase 0 has nothing to prepare.
-- The visible column before the last is A for a material that belongs on the location and B for a stranger; the client
-- picks the row's icon by it.
DROP PROCEDURE IF EXISTS dbo.kolv_mag_Watch_Detal_Item_On_Location;
GO
CREATE PROCEDURE dbo.kolv_mag_Watch_Detal_Item_On_Location
    @Rank smallint,
    @Stand smallint,
    @Shelf smallint,
    @Location smallint,
    @UserSign smallint,
    @Aplication nvarchar(1),
    @Phase smallint
AS
BEGIN
    SET NOCOUNT ON;
    -- A list need not wait for those who move something now, nor they for it.
    SET TRANSACTION ISOLATION LEVEL READ UNCOMMITTED;
    IF @Phase <> 1
        RETURN 0;

    SELECT ItemCode AS [Kod surowca:1500;0],
        ItemName AS [Nazwa surowca:4500;0],
        CAST(Quantity AS decimal(19, 2)) AS [Ilość:1100;1],
        InvntryUom AS [Jm:600;2],
        PackageCount AS [Opakowania:1350;1],
        CAST(PackWeight AS decimal(19, 1)) AS [Masa kg:1000;1],
        Kind AS [St.:500;2],
        GroupSurName AS [Grupa:2000;0],
        GroupSur AS xxx_GroupSur
    FROM dbo.Kolv_vv_mag_Location_Material
    WHERE Rank = @Rank AND Stand = @Stand AND Shelf = @Shelf AND Location = @Location
    ORDER BY ItemCode;
    RETURN 0;
END
GO
