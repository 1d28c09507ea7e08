-- Stages one package for a goods-out (@DeleteLine N'N'), or takes it out again (N'Y'; with @Param 1 everything that the
-- key has staged for a goods-out). @PropOrOut N'P' notes a proposal, of which @QuantityProp counts; N'O' has @QuantityOut
-- of it given out. A package has one row: staged once more it changes, so a proposal becomes a give-out.
--
-- -1 with a message is a success, as in Kolv_mag_BarCode_Add_Temp.
DROP PROCEDURE IF EXISTS dbo.Kolv_mag_BarCode_Add_Temp_Out;
GO
CREATE PROCEDURE dbo.Kolv_mag_BarCode_Add_Temp_Out
    @DocNum int,
    @ItemCode nvarchar(100),
    @QuantityProp decimal(19, 6),
    @QuantityOut decimal(19, 6),
    @UserSign smallint,
    @LineGrd smallint,
    @PropOrOut nvarchar(10),
    @DeleteLine nvarchar(10),
    @Aplication nvarchar(10),
    @Param smallint,
    @BarCode nvarchar(100),
    @ErrDesc nvarchar(250) = NULL OUTPUT
AS
BEGIN
    SET NOCOUNT ON;
    -- What is asked here is asked again under the lock of the movers: nobody waits for it, and no mover for him.
    SET TRANSACTION ISOLATION LEVEL READ UNCOMMITTED;
    SET @ErrDesc = N'';

    BEGIN TRY
        DECLARE @Refusal nvarchar(250);

        IF @DeleteLine = N'Y'
        BEGIN
            DELETE FROM dbo.Kolv_Mag_BarCode_Output_Sur_tym
            WHERE SPID = -@@SPID AND HostName = HOST_NAME() AND UserSign = @UserSign
                AND (@Param = 1 OR Aplication = @Aplication AND BarCode = @BarCode);
            RETURN 0;
        END
        IF ISNULL(@PropOrOut, N'') NOT IN (N'P', N'O')
            SET @Refusal = N'Opakowanie jest proponowane (P) albo wydawane (O), a nie „' + ISNULL(@PropOrOut, N'') + N'”.';
        ELSE
            SET @Refusal = dbo.kolv_mag_fn_GiveOut_Refusal(@DocNum, @ItemCode,
                CASE WHEN @PropOrOut = N'O' THEN @QuantityOut ELSE @QuantityProp END, @BarCode);
        IF @Refusal IS NOT NULL
        BEGIN
            SET @ErrDesc = @Refusal;
            RETURN 1;
        END

        -- The key has one connection, and a connection one call at a time: nobody comes between these two.
        UPDATE dbo.Kolv_Mag_BarCode_Output_Sur_tym
        SET YearCode = YEAR(GETDATE()), LineGrd = @LineGrd, DocNum = @DocNum, ItemCode = @ItemCode,
            QuantityProp = @QuantityProp, QuantityOut = @QuantityOut, PropOrOut = @PropOrOut, StageDate = GETDATE()
        WHERE SPID = -@@SPID AND HostName = HOST_NAME() AND UserSign = @UserSign AND Aplication = @Aplication
            AND BarCode = @BarCode;
        IF @@ROWCOUNT = 0
            INSERT INTO dbo.Kolv_Mag_BarCode_Output_Sur_tym (HostName, SPID, UserSign, YearCode, LineGrd, Aplication,
                DocNum, BarCode, ItemCode, QuantityProp, QuantityOut, PropOrOut, StageDate)
            VALUES (HOST_NAME(), -@@SPID, @UserSign, YEAR(GETDATE()), @LineGrd, @Aplication, @DocNum, @BarCode, @ItemCode,
                @QuantityProp, @QuantityOut, @PropOrOut, GETDATE());

        SELECT TOP (1) @ErrDesc = N'Opakowanie „' + @BarCode + N'” wybrał do wydania także użytkownik '
            + CAST(ISNULL(UserSign, 0) AS nvarchar(6)) + N' na stanowisku ' + ISNULL(HostName, N'?')
            + N'. Wyda je ten, kto zrobi to pierwszy.'
        FROM dbo.Kolv_Mag_BarCode_Output_Sur_tym WITH (NOLOCK)
        WHERE BarCode = @BarCode AND YearCode = YEAR(GETDATE())
            AND (SPID <> -@@SPID OR HostName <> HOST_NAME() OR UserSign <> @UserSign)
        ORDER BY ID;
        RETURN CASE WHEN @ErrDesc = N'' THEN 0 ELSE -1 END;
    END TRY
    BEGIN CATCH
        SET @ErrDesc = dbo.kolv_mag_fn_FailureText(N'Błąd wyboru opakowania do wydania', ERROR_NUMBER(), ERROR_MESSAGE());
        RETURN 1;
    END CATCH
END
GO
