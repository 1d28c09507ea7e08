-- Clears what this connection and user have staged. @Param 0: the rows of this application and operation; 1: the rows of
-- all of them. What is staged for a goods-out has no operation of its own in its rows: it goes with the letter O.
-- Nothing to clear is no refusal.
--
-- Numbers of connections come again. Rows under this connection's number from another workstation are what a dead
-- connection left: they go too. Rows of this workstation under another user stay, since one connection may serve two.
DROP PROCEDURE IF EXISTS dbo.Kolv_mag_BarCode_Clear_Temp;
GO
CREATE PROCEDURE dbo.Kolv_mag_BarCode_Clear_Temp
    @UserSign smallint,
    @Param smallint,
    @Aplication nvarchar(10),
    @Operation nvarchar(10)
AS
BEGIN
    SET NOCOUNT ON;

    BEGIN TRY
        DECLARE @All bit = CASE WHEN @Param = 1 THEN 1 ELSE 0 END;

        DELETE FROM dbo.Kolv_Mag_BarCode_Input_Sur_tym
        WHERE SPID = -@@SPID AND ((HostName = HOST_NAME() AND UserSign = @UserSign
                AND (@All = 1 OR (Aplication = @Aplication AND Operation = @Operation)))
            OR HostName <> HOST_NAME());
        DELETE FROM dbo.Kolv_Mag_BarCode_Output_Sur_tym
        WHERE SPID = -@@SPID AND ((HostName = HOST_NAME() AND UserSign = @UserSign
                AND (@All = 1 OR (Aplication = @Aplication AND @Operation = N'O')))
            OR HostName <> HOST_NAME());

        -- Proposals without staged packages are only in nobody's way, and their tables may go with their maker at any
        -- moment: what is wrong with them is no failure.
        BEGIN TRY
            EXEC dbo.kolv_mag_Temp_Clear @UserSign, @All, @Aplication, @Operation;
        END TRY
        BEGIN CATCH
        END CATCH
        RETURN 0;
    END TRY
    BEGIN CATCH
        RETURN 1;
    END CATCH
END
GO
