-- Marks one staged package as chosen (@Delete N'N') or not chosen (N'Y'). Rows of last year count as gone, as they do for
-- the client's count of chosen packages and for the move.
DROP PROCEDURE IF EXISTS dbo.kolv_mag_Shift_Location_BarCode_Status;
GO
CREATE PROCEDURE dbo.kolv_mag_Shift_Location_BarCode_Status
    @BarCode nvarchar(50),
    @UserSign smallint,
    @Aplication nvarchar(10),
    @Delete nvarchar(10),
    @Operation nvarchar(10),
    @ErrDesc nvarchar(250) = NULL OUTPUT
AS
BEGIN
    SET NOCOUNT ON;
    SET @ErrDesc = N'';

    BEGIN TRY
        UPDATE dbo.Kolv_Mag_BarCode_Input_Sur_tym
        SET LineGrd = CASE WHEN @Delete = N'Y' THEN 0 ELSE -1 END
        WHERE SPID = -@@SPID AND HostName = HOST_NAME() AND UserSign = @UserSign AND Aplication = @Aplication
            AND Operation = @Operation AND BarCode = @BarCode AND YearCode = YEAR(GETDATE());
        IF @@ROWCOUNT = 0
        BEGIN
            SET @ErrDesc = N'Opakowanie „' + ISNULL(@BarCode, N'') + N'” nie należy do wybranego surowca.';
            RETURN 1;
        END
        RETURN 0;
    END TRY
    BEGIN CATCH
        SET @ErrDesc = LEFT(N'Błąd wyboru opakowania: ' + ERROR_MESSAGE(), 250);
        RETURN 1;
    END CATCH
END
GO
