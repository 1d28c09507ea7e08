-- The materials of one location for the stand detail and for moving stock (@Operation tells which window asks). The
-- client calls phase 0, whose result it does not read, and then phase 1 for the rows. The rows are computed when they
-- are asked for, so phase 0 has nothing to prepare.
-- The client counts columns from the end: the code of the material is the last, before it stand A for a material that
-- belongs on the location or B for a stranger, the quantity, and 1 where several materials may lie (0 lets the client
-- tick a row by itself). Nothing visible or hidden may come behind the code.
-- A quantity that is there does not round to 0, since the client lets only what has one be ticked. Packages whose
-- quantity nobody has entered are listed with their number and 0: they can be moved once they have a quantity, rather
-- than that a number be shown which nobody has counted.
-- The widths fill the list of the stand detail, 7785 twips inside its frame with the 700 of the row numbers; the name
-- takes what the others can spare. The window that moves stock has a wider list, where quantities and codes show whole.
DROP PROCEDURE IF EXISTS dbo.kolv_mag_Watch_Item_On_Location;
GO
CREATE PROCEDURE dbo.kolv_mag_Watch_Item_On_Location
    @Rank smallint,
    @Stand smallint,
    @Shelf smallint,
    @Location smallint,
    @UserSign smallint,
    @Aplication nvarchar(1),
    @Phase smallint,
    @Operation nvarchar(1)
AS
BEGIN
    SET NOCOUNT ON;
    -- A list need not wait for those who move something now, nor they for it.
    SET TRANSACTION ISOLATION LEVEL READ UNCOMMITTED;
    IF @Phase <> 1
        RETURN 0;

    IF @Operation = N'S'
    BEGIN
        SELECT ItemName AS [Nazwa surowca:5000;0],
            InvntryUom AS [Jm:500;2],
            PackageCount AS [Op.:500;1],
            CASE WHEN StatLocation = N'1' THEN 1 ELSE 0 END AS [M.:400;2],
            CAST(CASE WHEN Quantity > 0 AND Quantity < 0.01 THEN 0.01 ELSE Quantity END AS decimal(19, 2))
                AS [Ilość:1400;1],
            Kind AS [St.:450;2],
            ItemCode AS [Kod:2000;0]
        FROM dbo.Kolv_vv_mag_Location_Material
        WHERE Rank = @Rank AND Stand = @Stand AND Shelf = @Shelf AND Location = @Location
        ORDER BY ItemCode;
        RETURN 0;
    END

    SELECT ItemName AS [Nazwa surowca:3900;0],
        InvntryUom AS [Jm:360;2],
        PackageCount AS [Op.:380;1],
        CASE WHEN StatLocation = N'1' THEN 1 ELSE 0 END AS [M.:300;2],
        CAST(CASE WHEN Quantity > 0 AND Quantity < 0.01 THEN 0.01 ELSE Quantity END AS decimal(19, 2)) AS [Ilość:760;1],
        Kind AS [St.:360;2],
        ItemCode AS [Kod:1020;0]
    FROM dbo.Kolv_vv_mag_Location_Material
    WHERE Rank = @Rank AND Stand = @Stand AND Shelf = @Shelf AND Location = @Location
    ORDER BY ItemCode;
    RETURN 0;
END
GO
