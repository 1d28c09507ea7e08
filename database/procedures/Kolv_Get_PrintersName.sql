-- Printer of a kind of label. 0 with its name, or 1 and an empty name where none is set: the label then goes to the
-- default printer of whoever prints it.
DROP PROCEDURE IF EXISTS dbo.Kolv_Get_PrintersName;
GO
CREATE PROCEDURE dbo.Kolv_Get_PrintersName
    @EtykietCodePrint int,
    @PrintersName     nvarchar(100) OUTPUT
AS
BEGIN
    SET NOCOUNT ON;

    SET @PrintersName = N'';
    SELECT @PrintersName = LTRIM(RTRIM(ISNULL(PrintersName, N'')))
    FROM dbo.Kolv_PrintersName (NOLOCK)
    WHERE EtykietCodePrint = @EtykietCodePrint;

    IF @PrintersName = N''
        RETURN 1;
    RETURN 0;
END
GO
