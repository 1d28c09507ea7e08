-- Whether any of a material is there to be given out: in the warehouse or in the buffer, with a quantity.
DROP PROCEDURE IF EXISTS dbo.Kolv_mag_Confirm_Item_GiveOut;
GO
CREATE PROCEDURE dbo.Kolv_mag_Confirm_Item_GiveOut
    @ItemCode nvarchar(100),
    @Aplication nvarchar(10),
    @ErrDesc nvarchar(250) = NULL OUTPUT
AS
BEGIN
    SET NOCOUNT ON;
    SET TRANSACTION ISOLATION LEVEL READ UNCOMMITTED;

    SET @ErrDesc = CASE
        WHEN NOT EXISTS (SELECT 1 FROM dbo.OITM WHERE ItemCode = @ItemCode)
            THEN N'Surowca „' + LEFT(ISNULL(@ItemCode, N''), 50) + N'” nie ma w kartotece.'
        WHEN NOT EXISTS (SELECT 1 FROM dbo.Kolv_Mag_BarCode_Sur
                WHERE ItemCode = @ItemCode AND Active = N'Y' AND Quantity > 0)
            THEN N'Surowca „' + @ItemCode + N'” nie ma w magazynie.'
        ELSE N'' END;
    RETURN CASE WHEN @ErrDesc = N'' THEN 0 ELSE 1 END;
END
GO
