-- Size (millimetres) and packing of a material's purchase package. Packages that are there keep theirs. The caller may
-- give the quantity of a package as a fraction, and reads it back as a whole number.
DROP PROCEDURE IF EXISTS dbo.Kolv_mag_SaveItemCodeParam_Sur;
GO
CREATE PROCEDURE dbo.Kolv_mag_SaveItemCodeParam_Sur
    @ItemCode nvarchar(100),
    @SLength1 decimal(19, 6),
    @SWidth1 decimal(19, 6),
    @BHeight1 decimal(19, 6),
    @PurPackUn decimal(19, 6),
    @PurPackMsr nvarchar(100),
    @UserSign smallint,
    @ErrDesc nvarchar(250) = NULL OUTPUT
AS
BEGIN
    SET NOCOUNT ON;
    SET @ErrDesc = N'';

    BEGIN TRY
        SET @ErrDesc = CASE
            WHEN NOT EXISTS (SELECT 1 FROM dbo.OITM WHERE ItemCode = @ItemCode)
                THEN N'Surowca „' + LEFT(ISNULL(@ItemCode, N''), 50) + N'” nie ma w kartotece.'
            WHEN @SLength1 < 0 OR @SWidth1 < 0 OR @BHeight1 < 0
                THEN N'Wymiary opakowania nie mogą być ujemne.'
            WHEN @SLength1 > 999999 OR @SWidth1 > 999999 OR @BHeight1 > 999999
                THEN N'Wymiary opakowania są za duże: najwyżej 999999 mm.'
            WHEN @PurPackUn < 0
                THEN N'Ilość w opakowaniu nie może być ujemna.'
            WHEN LEN(@PurPackMsr) > 20
                THEN N'Nazwa rodzaju opakowania jest za długa: najwyżej 20 znaków.'
            ELSE N'' END;
        IF @ErrDesc <> N''
            RETURN 1;
        UPDATE dbo.OITM
        SET Blength1 = @SLength1, Bwidth1 = @SWidth1, BHeight1 = @BHeight1, PurPackUn = @PurPackUn,
            PurPackMsr = @PurPackMsr
        WHERE ItemCode = @ItemCode;
        RETURN 0;
    END TRY
    BEGIN CATCH
        SET @ErrDesc = dbo.kolv_mag_fn_FailureText(N'Błąd zapisu opakowania surowca', ERROR_NUMBER(), ERROR_MESSAGE());
        RETURN 1;
    END CATCH
END
GO
