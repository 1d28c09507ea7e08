-- Clears the proposals of this connection and user. For Kolv_mag_BarCode_Clear_Temp, which tells what @All and a dead
-- connection mean. A procedure of its own, because the caller can catch its error when a table goes with its maker
-- between the look and the use; the server lets no procedure catch that of its own statement.
DROP PROCEDURE IF EXISTS dbo.kolv_mag_Temp_Clear;
GO
CREATE PROCEDURE dbo.kolv_mag_Temp_Clear
    @UserSign smallint,
    @All bit,
    @Aplication nvarchar(10),
    @Operation nvarchar(10)
AS
BEGIN
    SET NOCOUNT ON;

    EXEC dbo.kolv_mag_Temp_Tables;
    DELETE FROM ##Temp_Prop_Location
    WHERE SPID = -@@SPID AND ((HostName = HOST_NAME() AND UserSign = @UserSign
            AND (@All = 1 OR (Aplication = @Aplication AND Operation = @Operation)))
        OR HostName <> HOST_NAME());
    DELETE FROM ##Temp_Prop_Location_BarCode
    WHERE SPID = -@@SPID AND ((HostName = HOST_NAME() AND UserSign = @UserSign
            AND (@All = 1 OR (Aplication = @Aplication AND Operation = @Operation)))
        OR HostName <> HOST_NAME());
    RETURN 0;
END
GO
