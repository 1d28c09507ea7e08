-- Whether so much of a give-out line may come back, and how much: in @ConfirmedQuantity the quantity accepted, or on a
-- refusal the most that may. Nothing is written. Its message is the last parameter but one.
DROP PROCEDURE IF EXISTS dbo.kolv_mag_Confirm_Quantity_Input_Prod;
GO
CREATE PROCEDURE dbo.kolv_mag_Confirm_Quantity_Input_Prod
    @GiveOutDocNum int,
    @GiveOutLineNum smallint,
    @BarCode nvarchar(100),
    @ItemCode nvarchar(100),
    @Quantity decimal(19, 6),
    @Aplication nvarchar(10),
    @Operation nvarchar(10),
    @ErrDesc nvarchar(250) = NULL OUTPUT,
    @ConfirmedQuantity decimal(19, 6) = NULL OUTPUT
AS
BEGIN
    SET NOCOUNT ON;
    -- What is asked here is asked again under the lock of the movers: nobody waits for it, and no mover for him.
    SET TRANSACTION ISOLATION LEVEL READ UNCOMMITTED;
    SET @ErrDesc = N'';
    SET @ConfirmedQuantity = 0;

    BEGIN TRY
        DECLARE @LineCode nvarchar(50);
        DECLARE @LineItem nvarchar(20);
        DECLARE @Given decimal(19, 6);
        DECLARE @Back decimal(19, 6);

        SELECT @LineCode = ISNULL(GiveOutBarCode, N''), @LineItem = ISNULL(ItemCode, N''), @Given = ISNULL(Quantity, 0),
            @Back = QuantityBack
        FROM dbo.Kolv_Mag_BarCode_Sur_Production
        WHERE GiveOutDocNum = @GiveOutDocNum AND GiveOutLineNum = @GiveOutLineNum;
        SET @ErrDesc = CASE
            WHEN ISNULL(@Operation, N'') <> N'R'
                THEN N'Zwrot z produkcji ma operację R, a nie „' + ISNULL(@Operation, N'') + N'”.'
            WHEN @LineCode IS NULL
                THEN N'Wydanie ' + ISNULL(CAST(@GiveOutDocNum AS nvarchar(11)), N'?') + N' nie ma pozycji '
                    + ISNULL(CAST(@GiveOutLineNum AS nvarchar(6)), N'?') + N'.'
            WHEN @LineCode <> ISNULL(@BarCode, N'')
                THEN N'Na tej pozycji wydano opakowanie „' + @LineCode + N'”, a nie „'
                    + LEFT(ISNULL(@BarCode, N''), 50) + N'”.'
            WHEN @LineItem <> ISNULL(@ItemCode, N'')
                THEN N'Na tej pozycji wydano surowiec „' + @LineItem + N'”, a nie „'
                    + LEFT(ISNULL(@ItemCode, N''), 50) + N'”.'
            WHEN @Back IS NOT NULL
                THEN N'Opakowanie „' + @LineCode + N'” wróciło już z tego wydania: '
                    + dbo.kolv_mag_fn_QuantityText(@Back) + N'.'
            WHEN NOT EXISTS (SELECT 1 FROM dbo.Kolv_vv_mag_GiveOut_Last
                    WHERE GiveOutDocNum = @GiveOutDocNum AND GiveOutLineNum = @GiveOutLineNum)
                OR NOT EXISTS (SELECT 1 FROM dbo.Kolv_Mag_BarCode_Sur
                    WHERE BarCode = @LineCode AND ISNULL(Active, N'N') <> N'Y')
                THEN N'Opakowanie „' + @LineCode + N'” nie jest już w produkcji z tego wydania.'
            WHEN ISNULL(@Quantity, 0) <= 0
                THEN N'Podaj ilość większą od zera: opakowanie „' + @LineCode + N'”.'
            WHEN @Quantity > @Given
                THEN N'Opakowanie „' + @LineCode + N'” wydano z ilością ' + dbo.kolv_mag_fn_QuantityText(@Given)
                    + N': nie może wrócić ' + dbo.kolv_mag_fn_QuantityText(@Quantity) + N'.'
            ELSE N'' END;
        IF @ErrDesc = N''
        BEGIN
            SET @ConfirmedQuantity = @Quantity;
            RETURN 0;
        END
        -- What is left to come back; nothing where the line is not that of the package.
        IF @LineCode = @BarCode AND @LineItem = @ItemCode AND @Back IS NULL
            SELECT @ConfirmedQuantity = Quantity FROM dbo.Kolv_vv_mag_GiveOut_Last
            WHERE GiveOutDocNum = @GiveOutDocNum AND GiveOutLineNum = @GiveOutLineNum;
        RETURN 1;
    END TRY
    BEGIN CATCH
        SET @ErrDesc = dbo.kolv_mag_fn_FailureText(N'Błąd sprawdzenia zwrotu', ERROR_NUMBER(), ERROR_MESSAGE());
        RETURN 1;
    END CATCH
END
GO
