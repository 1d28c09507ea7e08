-- Makes line @ID of package @IDCodeBar the proposed one.
DROP PROCEDURE IF EXISTS dbo.Kolv_mag_Prop_Location_Change;
GO
CREATE PROCEDURE dbo.Kolv_mag_Prop_Location_Change
    @UserSign smallint,
    @ID smallint,
    @IDCodeBar smallint,
    @ErrDesc nvarchar(250) = NULL OUTPUT
AS
BEGIN
    SET NOCOUNT ON;
    SET @ErrDesc = N'';

    BEGIN TRY
        EXEC dbo.kolv_mag_Temp_Tables;
        IF NOT EXISTS (SELECT 1 FROM ##Temp_Prop_Location
                WHERE SPID = -@@SPID AND HostName = HOST_NAME() AND UserSign = @UserSign AND ID = @ID
                    AND IDCodeBar = @IDCodeBar AND Status IN (N'D', N'C'))
        BEGIN
            SET @ErrDesc = N'Tej lokalizacji nie można wybrać dla opakowania.';
            RETURN 1;
        END
        UPDATE ##Temp_Prop_Location
        SET Proposed = CASE WHEN ID = @ID THEN N'Y' ELSE N'N' END
        WHERE SPID = -@@SPID AND HostName = HOST_NAME() AND UserSign = @UserSign AND IDCodeBar = @IDCodeBar;
        RETURN 0;
    END TRY
    BEGIN CATCH
        SET @ErrDesc = LEFT(N'Błąd zmiany lokalizacji: ' + ERROR_MESSAGE(), 250);
        RETURN 1;
    END CATCH
END
GO
