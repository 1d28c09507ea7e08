-- Writes or deletes the staged row of a package that comes in or comes back. The second half of the two procedures that
-- stage them, which have judged it; its errors are theirs. @ErrDesc tells who else has the package in hand.
DROP PROCEDURE IF EXISTS dbo.kolv_mag_Stage_Package;
GO
CREATE PROCEDURE dbo.kolv_mag_Stage_Package
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
    @ErrDesc nvarchar(250) OUTPUT
AS
BEGIN
    SET NOCOUNT ON;
    SET @ErrDesc = N'';

    IF @DeleteLine = N'Y'
    BEGIN
        DELETE FROM dbo.Kolv_Mag_BarCode_Input_Sur_tym
        WHERE SPID = -@@SPID AND HostName = HOST_NAME() AND UserSign = @UserSign AND Aplication = @Aplication
            AND Operation = @Operation AND BarCode = @BarCode;
        RETURN 0;
    END
    -- The key has one connection, and a connection one call at a time: nobody comes between these two.
    UPDATE dbo.Kolv_Mag_BarCode_Input_Sur_tym
    SET YearCode = YEAR(GETDATE()), LineGrd = @LineGrd, DocEntry = @DocEntry, DocNum = @DocNum, LineNum = @LineNum,
        NumberCode = @NumberCode, ItemCode = @ItemCode, Quantity = @Quantity, StageDate = GETDATE()
    WHERE SPID = -@@SPID AND HostName = HOST_NAME() AND UserSign = @UserSign AND Aplication = @Aplication
        AND Operation = @Operation AND BarCode = @BarCode;
    IF @@ROWCOUNT = 0
        INSERT INTO dbo.Kolv_Mag_BarCode_Input_Sur_tym (HostName, SPID, UserSign, YearCode, LineGrd, Aplication,
            Operation, DocEntry, DocNum, LineNum, NumberCode, BarCode, ItemCode, Quantity, StageDate)
        VALUES (HOST_NAME(), -@@SPID, @UserSign, YEAR(GETDATE()), @LineGrd, @Aplication, @Operation, @DocEntry, @DocNum,
            @LineNum, @NumberCode, @BarCode, @ItemCode, @Quantity, GETDATE());

    SELECT TOP (1) @ErrDesc = N'Opakowanie „' + @BarCode + N'” wybrał także użytkownik '
        + CAST(ISNULL(UserSign, 0) AS nvarchar(6)) + N' na stanowisku ' + ISNULL(HostName, N'?')
        + N'. Zaksięguje je ten, kto zrobi to pierwszy.'
    FROM dbo.Kolv_Mag_BarCode_Input_Sur_tym WITH (NOLOCK)
    WHERE BarCode = @BarCode AND Operation = @Operation AND YearCode = YEAR(GETDATE())
        AND (SPID <> -@@SPID OR HostName <> HOST_NAME() OR UserSign <> @UserSign)
    ORDER BY ID;
    RETURN 0;
END
GO
