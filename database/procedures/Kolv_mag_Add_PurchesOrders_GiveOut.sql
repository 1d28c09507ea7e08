-- Ticks a purchase order for a goods-out (@AddOrDelete N'A') or unticks it (N'D').
-- Ticked twice it takes the receiver of the second time. Ticks only say what a dialog lists: nothing is refused without.
DROP PROCEDURE IF EXISTS dbo.Kolv_mag_Add_PurchesOrders_GiveOut;
GO
CREATE PROCEDURE dbo.Kolv_mag_Add_PurchesOrders_GiveOut
    @Aplication nvarchar(10),
    @UserSign smallint,
    @UserSignGiveOut smallint,
    @DocEntry int,
    @AddOrDelete nvarchar(10),
    @ErrDesc nvarchar(250) = NULL OUTPUT
AS
BEGIN
    SET NOCOUNT ON;
    SET @ErrDesc = N'';

    BEGIN TRY
        EXEC dbo.kolv_mag_Temp_Tables;
        IF @AddOrDelete = N'D'
        BEGIN
            DELETE FROM ##Temp_mag_PurchesOrders_GiveOut
            WHERE SPID = -@@SPID AND HostName = HOST_NAME() AND UserSign = @UserSign AND Aplication = @Aplication
                AND DocEntry = @DocEntry;
            RETURN 0;
        END
        SET @ErrDesc = CASE
            WHEN ISNULL(@AddOrDelete, N'') <> N'A'
                THEN N'Zamówienie można zaznaczyć (A) albo odznaczyć (D), a nie „' + ISNULL(@AddOrDelete, N'') + N'”.'
            WHEN NOT EXISTS (SELECT 1 FROM dbo.OPOR WHERE DocEntry = @DocEntry)
                THEN N'Zamówienie o identyfikatorze ' + ISNULL(CAST(@DocEntry AS nvarchar(11)), N'?') + N' nie istnieje.'
            ELSE N'' END;
        IF @ErrDesc <> N''
            RETURN 1;
        UPDATE ##Temp_mag_PurchesOrders_GiveOut
        SET UserSignGiveOut = @UserSignGiveOut
        WHERE SPID = -@@SPID AND HostName = HOST_NAME() AND UserSign = @UserSign AND Aplication = @Aplication
            AND DocEntry = @DocEntry;
        IF @@ROWCOUNT = 0
            INSERT INTO ##Temp_mag_PurchesOrders_GiveOut (HostName, SPID, UserSign, Aplication, DocEntry, UserSignGiveOut)
            VALUES (HOST_NAME(), -@@SPID, @UserSign, @Aplication, @DocEntry, @UserSignGiveOut);
        RETURN 0;
    END TRY
    BEGIN CATCH
        SET @ErrDesc = dbo.kolv_mag_fn_FailureText(N'Błąd zaznaczania do wydania', ERROR_NUMBER(), ERROR_MESSAGE());
        RETURN 1;
    END CATCH
END
GO
