-- Recomputes the proposals of the chosen packages. A package that no longer lies where it was staged is let go, or that
-- somebody else has received or taken back since, and so is all that was staged last year, which the client does not
-- count; the user is told. The proposals of the others are made all the same.
-- Goods-out calls with the user alone: NULL stands for every application and operation.
DROP PROCEDURE IF EXISTS dbo.Kolv_mag_Watch_Prop_Location_Confirm;
GO
CREATE PROCEDURE dbo.Kolv_mag_Watch_Prop_Location_Confirm
    @UserSign smallint,
    @Aplication nvarchar(10) = NULL,
    @Operation nvarchar(10) = NULL,
    @ErrDesc nvarchar(250) = NULL OUTPUT
AS
BEGIN
    SET NOCOUNT ON;
    SET @ErrDesc = N'';

    BEGIN TRY
        DECLARE @Gone TABLE (BarCode nvarchar(50) NOT NULL, YearCode smallint NULL, Operation nvarchar(10) NULL);
        DECLARE @Moved int;
        DECLARE @Refused int;
        DECLARE @Reason nvarchar(250);

        -- One statement, so that what is told is what was let go.
        DELETE T
        OUTPUT deleted.BarCode, deleted.YearCode, deleted.Operation INTO @Gone (BarCode, YearCode, Operation)
        FROM dbo.Kolv_Mag_BarCode_Input_Sur_tym AS T
        WHERE T.SPID = -@@SPID AND T.HostName = HOST_NAME() AND T.UserSign = @UserSign
            AND (@Aplication IS NULL OR T.Aplication = @Aplication) AND (@Operation IS NULL OR T.Operation = @Operation)
            AND (ISNULL(T.YearCode, 0) <> YEAR(GETDATE())
                OR T.LineGrd = -1 AND T.Rank IS NOT NULL AND NOT EXISTS (SELECT 1 FROM dbo.Kolv_Mag_BarCode_Sur AS B
                    WHERE B.BarCode = T.BarCode AND B.Active = N'Y' AND B.Rank = T.Rank AND B.Stand = T.Stand
                        AND B.Shelf = T.Shelf AND B.Location = T.Location)
                OR T.LineGrd = -1 AND T.Operation = N'I' AND EXISTS (SELECT 1 FROM dbo.Kolv_Mag_BarCode_Sur AS B
                    WHERE B.BarCode = T.BarCode)
                OR T.LineGrd = -1 AND T.Operation = N'R' AND NOT EXISTS (SELECT 1 FROM dbo.Kolv_Mag_BarCode_Sur AS B
                    WHERE B.BarCode = T.BarCode AND ISNULL(B.Active, N'N') <> N'Y'));
        SELECT @Moved = COUNT(*) FROM @Gone WHERE YearCode = YEAR(GETDATE());
        IF @Moved > 0
            SELECT @ErrDesc = N'Opakowanie „' + MIN(BarCode) + N'”' + CASE WHEN @Moved > 1 THEN N' i inne (razem: '
                + CAST(@Moved AS nvarchar(11)) + N')' ELSE N'' END
                + CASE WHEN MIN(Operation) = MAX(Operation) AND MAX(Operation) IN (N'I', N'R') THEN N' przyjął'
                    ELSE N' przesunął lub wydał' END
                + N' w międzyczasie inny użytkownik. Wycofano z wyboru.'
            FROM @Gone
            WHERE YearCode = YEAR(GETDATE());
        ELSE IF EXISTS (SELECT 1 FROM @Gone)
            SET @ErrDesc = N'Rozpoczął się nowy rok, a opakowania wybrano w poprzednim. Wybierz surowiec jeszcze raz.';

        EXEC @Refused = dbo.kolv_mag_Prop_Location_Make @UserSign, @Aplication, @Operation, @Reason OUTPUT;
        IF @Refused > 0
            SET @ErrDesc = @Reason;
        RETURN CASE WHEN @ErrDesc = N'' THEN 0 ELSE 1 END;
    END TRY
    BEGIN CATCH
        IF @@TRANCOUNT > 0
            ROLLBACK TRANSACTION;
        SET @ErrDesc = dbo.kolv_mag_fn_FailureText(N'Błąd wyznaczania lokalizacji', ERROR_NUMBER(), ERROR_MESSAGE());
        RETURN 1;
    END CATCH
END
GO
