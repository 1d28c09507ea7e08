-- Stages one package of a purchase order line for goods-in (@DeleteLine N'N'), or takes it out again (N'Y'). Staged once
-- more it changes. @LineGrd -1 chooses it: it gets proposals and is booked.
--
-- -1 with a message is a success: somebody else has the package in hand too, or a program that has died had it. Which of
-- both cannot be seen, so whoever books first has it.
DROP PROCEDURE IF EXISTS dbo.Kolv_mag_BarCode_Add_Temp;
GO
CREATE PROCEDURE dbo.Kolv_mag_BarCode_Add_Temp
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
        DECLARE @InHand decimal(19, 6);
        DECLARE @Refusal nvarchar(250);

        IF ISNULL(@Operation, N'') <> N'I'
            SET @Refusal = N'Przyjęcie ma operację I, a nie „' + ISNULL(@Operation, N'') + N'”.';
        ELSE IF ISNULL(@DeleteLine, N'N') <> N'Y'
        BEGIN
            SET @Refusal = dbo.kolv_mag_fn_Receive_Refusal(@DocEntry, @DocNum, @LineNum, @BarCode, @NumberCode,
                @Quantity, @ItemCode);
            IF @Refusal IS NULL
            BEGIN
                SELECT @InHand = ISNULL(SUM(Quantity), 0)
                FROM dbo.Kolv_Mag_BarCode_Input_Sur_tym
                WHERE SPID = -@@SPID AND HostName = HOST_NAME() AND UserSign = @UserSign AND Aplication = @Aplication
                    AND Operation = @Operation AND YearCode = YEAR(GETDATE()) AND DocEntry = @DocEntry
                    AND LineNum = @LineNum AND BarCode <> @BarCode;
                SET @Refusal = dbo.kolv_mag_fn_Line_Overrun(@DocEntry, @LineNum, @InHand + @Quantity);
            END
        END
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
        SET @ErrDesc = dbo.kolv_mag_fn_FailureText(N'Błąd wyboru opakowania do przyjęcia', ERROR_NUMBER(), ERROR_MESSAGE());
        RETURN 1;
    END CATCH
END
GO
