-- The materials of one location for the warehouse view. The client calls phase 0, whose result it does not read, and
-- then phase 1 for the rows. The rows are computed when they are asked for, so phase 0 has nothing to prepare.
-- The visible column before the last is A for a material that belongs on the location (assigned to it or a member of
-- its group) and B for a stranger; the client picks the row's icon by it. The assigned material is listed also when
-- none of it lies there.
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
    IF @Phase <> 1
        RETURN 0;

    DECLARE @ItemCode nvarchar(20) = N'';
    DECLARE @GroupSur smallint = 0;
    SELECT @ItemCode = ISNULL(ItemCode, N''), @GroupSur = ISNULL(GroupSur, 0)
    FROM dbo.kolv_mag_Location_Item
    WHERE Rank = @Rank AND Stand = @Stand AND Shelf = @Shelf AND Location = @Location;

    SELECT X.ItemCode AS [Kod surowca:1500;0],
        I.ItemName AS [Nazwa surowca:4500;0],
        CAST(SUM(X.Quantity) AS decimal(19, 2)) AS [Ilość:1100;1],
        I.InvntryUom AS [Jm:600;2],
        SUM(X.PackageCount) AS [Opakowania:1350;1],
        CAST(SUM(X.PackWeight) AS decimal(19, 1)) AS [Masa kg:1000;1],
        CASE WHEN X.ItemCode = @ItemCode OR MAX(G.GroupSur) IS NOT NULL THEN N'A' ELSE N'B' END AS [St.:500;2],
        ISNULL(MAX(N.GroupSurName), N'') AS [Grupa:2000;0],
        @GroupSur AS xxx_GroupSur
    FROM (
        SELECT ItemCode, Quantity, 1 AS PackageCount, ISNULL(PackWeight, 0) AS PackWeight
        FROM dbo.Kolv_Mag_BarCode_Sur
        WHERE Rank = @Rank AND Stand = @Stand AND Shelf = @Shelf AND Location = @Location AND Active = N'Y'
        UNION ALL
        SELECT @ItemCode, 0, 0, 0
        WHERE @ItemCode <> N''
    ) AS X
        LEFT JOIN dbo.OITM AS I ON I.ItemCode = X.ItemCode
        LEFT JOIN dbo.kolv_mag_Group_Item AS G ON G.GroupSur = @GroupSur AND G.ItemCode = X.ItemCode
        LEFT JOIN dbo.kolv_mag_Location_Group AS N ON N.GroupSur = G.GroupSur
    GROUP BY X.ItemCode, I.ItemName, I.InvntryUom
    ORDER BY X.ItemCode;
    RETURN 0;
END
GO
