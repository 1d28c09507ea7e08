-- Ticks a material for a goods-out (@AddOrDelete N'A') or unticks it (N'D').
-- Ticked twice it takes the receiver of the second time. Ticks only say what a dialog lists: nothing is refused without.
DROP PROCEDURE IF EXISTS dbo.Kolv_mag_Add_ItemCode_GiveOut;
GO
CREATE PROCEDURE dbo.Kolv_mag_Add_ItemCode_GiveOut
    @Aplication nvarchar(10),
    @UserSign smallint,
    @UserSignGiveOut smallint,
    @ItemCode nvarchar(100),
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
            DELETE FROM ##Temp_mag_ItemCode_GiveOut
            WHERE SPID = -@@SPID AND HostName = HOST_NAME() AND UserSign = @UserSign AND Aplication = @Aplication
                AND ItemCode = @ItemCode;
            RETURN 0;
        END
        SET @ErrDesc = CASE
            WHEN ISNULL(@AddOrDelete, N'') <> N'A'
                THEN N'Surowiec można zaznaczyć (A) albo odznaczyć (D), a nie „' + ISNULL(@AddOrDelete, N'') + N'”.'
            WHEN NOT EXISTS (SELECT 1 FROM dbo.OITM WHERE ItemCode = @ItemCode)
                THEN N'Surowca „' + LEFT(ISNULL(@ItemCode, N''), 50) + N'” nie ma w kartotece.'
            ELSE N'' END;
        IF @ErrDesc <> N''
            RETURN 1;
        UPDATE ##Temp_mag_ItemCode_GiveOut
        SET UserSignGiveOut = @UserSignGiveOut
        WHERE SPID = -@@SPID AND HostName = HOST_NAME() AND UserSign = @UserSign AND Aplication = @Aplication
            AND ItemCode = @ItemCode;
        IF @@ROWCOUNT = 0
            INSERT INTO ##Temp_mag_ItemCode_GiveOut (HostName, SPID, UserSign, Aplication, ItemCode, UserSignGiveOut)
            VALUES (HOST_NAME(), -@@SPID, @UserSign, @Aplication, @ItemCode, @UserSignGiveOut);
        RETURN 0;
    END TRY
    BEGIN CATCH
        SET @ErrDesc = dbo.kolv_mag_fn_FailureText(N'Błąd zaznaczania do wydania', ERROR_NUMBER(), ERROR_MESSAGE());
        RETURN 1;
    END CATCH
END
GO
