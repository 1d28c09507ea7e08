-- Stages one given-out package that comes back from manufacturing (@DeleteLine N'N'), or takes it out again (N'Y'): the
-- counterpart of Kolv_mag_BarCode_Add_Temp, with its parameters and answers. Order, line and number are those that the
-- package came with; the quantity is what has come back of it.
DROP PROCEDURE IF EXISTS dbo.Kolv_mag_BarCode_Input_Kolv_Temp;
GO
CREATE PROCEDURE dbo.Kolv_mag_BarCode_Input_Kolv_Temp
    @DocEntry int,
    @DocNum int,
    @LineNum smallint,
    @BarCode nvarchar(100),
    @NumberCode smallint,
    @Quantity decimal(19, 6),
    @UserSign smallint,
    @LineGrd smallint,
    @DeleteLine nvarchar(10),
    @ItemCode nvarchar(100),
    @Aplication nvarchar(10),
    @Operation nvarchar(10),
    @ErrDesc nvarchar(250) = NULL OUTPUT
AS
BEGIN
    SET NOCOUNT ON;
    -- What is asked here is asked again under the lock of the movers: nobody waits for it, and no mover for him.
    SET TRANSACTION ISOLATION LEVEL READ UNCOMMITTED;
    SET @ErrDesc = N'';

    BEGIN TRY
        DECLARE @Refusal nvarchar(250);

        IF ISNULL(@Operation, N'') <> N'R'
            SET @Refusal = N'Zwrot z produkcji ma operację R, a nie „' + ISNULL(@Operation, N'') + N'”.';
        ELSE IF ISNULL(@DeleteLine, N'N') <> N'Y'
            SET @Refusal = dbo.kolv_mag_fn_Return_Refusal(@DocEntry, @DocNum, @LineNum, @BarCode, @NumberCode,
                @Quantity, @ItemCode);
        IF @Refusal IS NOT NULL
        BEGIN
            SET @ErrDesc = @Refusal;
            RETURN 1;
        END
        EXEC dbo.kolv_mag_Stage_Package @DocEntry, @DocNum, @LineNum, @BarCode, @NumberCode, @Quantity, @UserSign,
            @LineGrd, @DeleteLine, @ItemCode, @Aplication, @Operation, @ErrDesc OUTPUT;
        RETURN CASE WHEN @ErrDesc = N'' THEN 0 ELSE -1 END;
    END TRY
    BEGIN CATCH
        SET @ErrDesc = dbo.kolv_mag_fn_FailureText(N'Błąd wyboru opakowania do zwrotu', ERROR_NUMBER(), ERROR_MESSAGE());
        RETURN 1;
    END CATCH
END
GO
