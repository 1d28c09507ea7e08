-- Returns the last running number of a package of an order line in a year, 0 before the first, so that the next one always
-- follows from it; -1 for a line that is not there, and for an order of another number.
DROP PROCEDURE IF EXISTS dbo.Kolv_mag_GetLastBarCode_Sur;
GO
CREATE PROCEDURE dbo.Kolv_mag_GetLastBarCode_Sur
    @Year smallint,
    @DocEntry int,
    @DocNum int,
    @LineNum smallint
AS
BEGIN
    SET NOCOUNT ON;

    IF NOT EXISTS (SELECT 1 FROM dbo.Kolv_vv_mag_PurchaseOrder_Line
            WHERE DocEntry = @DocEntry AND LineNum = @LineNum AND ISNULL(DocNum, 0) = ISNULL(@DocNum, 0))
        RETURN -1;
    RETURN dbo.kolv_mag_fn_Last_Number(@Year, @DocEntry, @LineNum);
END
GO
