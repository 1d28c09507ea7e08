-- The materials of the master file for the item search dialog, by the beginning of their code (ItemCode) or of their
-- name (ItemName). The dialog calls step 0, whose result it does not read, and then step 1 for the rows, both with the
-- same arguments at each key stroke. The rows are read when they are asked for, so step 0 has nothing to prepare.
-- The pattern is the user's text and a closing %: wildcards in the text act as wildcards, and letter case is that of
-- the columns' collation. It has room for any text a user types: a cut would take the closing % first.
-- Each column has a statement of its own, so that the list by code comes along the key without a sort.
-- The client takes column 1 as the code. The dialog keeps the headers of its first list, so this procedure and
-- Kolv_mag_LookFor_Item_2 have the same columns.
DROP PROCEDURE IF EXISTS dbo.Kolv_mag_LookFor_Item;
GO
CREATE PROCEDURE dbo.Kolv_mag_LookFor_Item
    @Pattern nvarchar(4000),
    @Column nvarchar(20),
    @Step smallint
AS
BEGIN
    SET NOCOUNT ON;
    IF @Step <> 1
        RETURN 0;

    IF @Column = N'ItemName'
        SELECT ItemCode AS [Indeks:2200;0],
            ItemName AS [Nazwa:5300;0],
            InvntryUom AS [Jm:700;2]
        FROM dbo.OITM
        WHERE ISNULL(ItemName, N'') LIKE @Pattern
        ORDER BY ItemName, ItemCode;
    ELSE
        SELECT ItemCode AS [Indeks:2200;0],
            ItemName AS [Nazwa:5300;0],
            InvntryUom AS [Jm:700;2]
        FROM dbo.OITM
        WHERE ItemCode LIKE @Pattern
        ORDER BY ItemCode;
    RETURN 0;
END
GO
