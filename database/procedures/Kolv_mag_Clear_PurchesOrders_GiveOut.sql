-- Unticks the purchase orders that this connection and user have ticked for a goods-out: those of this application (@Param 0) or of
-- all (1). Called at the beginning, it also makes their table, which the client reads by itself.
DROP PROCEDURE IF EXISTS dbo.Kolv_mag_Clear_PurchesOrders_GiveOut;
GO
CREATE PROCEDURE dbo.Kolv_mag_Clear_PurchesOrders_GiveOut
    @Aplication nvarchar(10),
    @UserSign smallint,
    @Param smallint
AS
BEGIN
    SET NOCOUNT ON;

    BEGIN TRY
        EXEC dbo.kolv_mag_Temp_Tables;
        -- Numbers of connections come again: rows of another workstation are what a dead connection left.
        DELETE FROM ##Temp_mag_PurchesOrders_GiveOut
        WHERE SPID = -@@SPID AND ((HostName = HOST_NAME() AND UserSign = @UserSign
                AND (@Param = 1 OR Aplication = @Aplication))
            OR HostName <> HOST_NAME());
        RETURN 0;
    END TRY
    BEGIN CATCH
        RETURN 1;
    END CATCH
END
GO
