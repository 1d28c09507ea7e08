-- Returns the state of an order line, a number that selects an icon: 0 no barcodes, 1 barcodes but nothing received, 2
-- partly and 3 wholly received, 4 closed; -1 for a line that is not there. The message says it in words.
DROP PROCEDURE IF EXISTS dbo.kolv_mag_Line_Status_PurchaseOrder;
GO
CREATE PROCEDURE dbo.kolv_mag_Line_Status_PurchaseOrder
    @DocEntry int,
    @Linenum smallint,
    @UserSign smallint,
    @ErrDesc nvarchar(250) = NULL OUTPUT
AS
BEGIN
    SET NOCOUNT ON;
    SET TRANSACTION ISOLATION LEVEL READ UNCOMMITTED;

    DECLARE @Status int;

    SET @ErrDesc = N'Zamówienie nie ma takiej pozycji.';
    SELECT @Status = Status, @ErrDesc = CASE Status
        WHEN 0 THEN N'Pozycja bez kodów kreskowych.'
        WHEN 1 THEN N'Kody kreskowe nadane, niczego nie przyjęto.'
        WHEN 2 THEN N'Przyjęto częściowo: ' + dbo.kolv_mag_fn_QuantityText(Received) + N' z '
            + dbo.kolv_mag_fn_QuantityText(Quantity) + N'.'
        WHEN 3 THEN N'Przyjęto w całości.'
        ELSE N'Pozycja zamknięta.' END
    FROM dbo.Kolv_vv_mag_PurchaseOrder_Line
    WHERE DocEntry = @DocEntry AND LineNum = @Linenum;
    RETURN ISNULL(@Status, -1);
END
GO
