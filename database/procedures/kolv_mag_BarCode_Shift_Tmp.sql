-- Stages the packages of one material that lie on a location (@DeleteLine N'N'), or takes the material out again (N'Y').
-- Taking out asks no address: the user may have clicked on another location since. Staged once more, packages that are
-- still there keep their choice; those from elsewhere go, and so do those of last year, which are staged anew. An empty
-- code stands for packages without one.
DROP PROCEDURE IF EXISTS dbo.kolv_mag_BarCode_Shift_Tmp;
GO
CREATE PROCEDURE dbo.kolv_mag_BarCode_Shift_Tmp
    @ItemCode nvarchar(100),
    @Rank smallint,
    @Stand smallint,
    @Shelf smallint,
    @Location smallint,
    @UserSign smallint,
    @Aplication nvarchar(10),
    @DeleteLine nvarchar(10),
    @Operation nvarchar(10),
    @ErrDesc nvarchar(250) = NULL OUTPUT
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;
    SET @ErrDesc = N'';

    BEGIN TRY
        DECLARE @Stands int;

        BEGIN TRANSACTION;
        -- The lock of the movers. A mover changes a package and then its entry in the index of places; whoever reads
        -- the other way, from the place to the package, would wait for the mover and the mover for him.
        SELECT @Stands = COUNT(*) FROM dbo.kolv_mag_Stand WITH (UPDLOCK, HOLDLOCK);
        DELETE T
        FROM dbo.Kolv_Mag_BarCode_Input_Sur_tym AS T
        WHERE T.SPID = -@@SPID AND T.HostName = HOST_NAME() AND T.UserSign = @UserSign
            AND T.Aplication = @Aplication AND T.Operation = @Operation AND T.ItemCode = @ItemCode
            AND (@DeleteLine = N'Y' OR ISNULL(T.YearCode, 0) <> YEAR(GETDATE())
                OR NOT EXISTS (SELECT 1 FROM dbo.Kolv_Mag_BarCode_Sur AS B
                    WHERE B.BarCode = T.BarCode AND B.Active = N'Y' AND B.Rank = @Rank AND B.Stand = @Stand
                        AND B.Shelf = @Shelf AND B.Location = @Location
                        AND T.Rank = @Rank AND T.Stand = @Stand AND T.Shelf = @Shelf AND T.Location = @Location));

        IF @DeleteLine <> N'Y'
        BEGIN
            INSERT INTO dbo.Kolv_Mag_BarCode_Input_Sur_tym (HostName, SPID, UserSign, YearCode, LineGrd, Aplication,
                Operation, DocEntry, DocNum, LineNum, NumberCode, BarCode, ItemCode, Quantity, Rank, Stand, Shelf,
                Location, StageDate)
            SELECT HOST_NAME(), -@@SPID, @UserSign, YEAR(GETDATE()), 0, @Aplication, @Operation, B.DocEntry, B.DocNum,
                B.LineNum, B.NumberCode, B.BarCode, ISNULL(B.ItemCode, N''), B.Quantity, B.Rank, B.Stand, B.Shelf,
                B.Location, GETDATE()
            FROM dbo.Kolv_Mag_BarCode_Sur AS B
            WHERE B.Rank = @Rank AND B.Stand = @Stand AND B.Shelf = @Shelf AND B.Location = @Location
                AND ISNULL(B.ItemCode, N'') = @ItemCode AND B.Active = N'Y'
                AND NOT EXISTS (SELECT 1 FROM dbo.Kolv_Mag_BarCode_Input_Sur_tym AS T
                    WHERE T.SPID = -@@SPID AND T.HostName = HOST_NAME() AND T.UserSign = @UserSign
                        AND T.Aplication = @Aplication AND T.Operation = @Operation AND T.BarCode = B.BarCode);
            IF NOT EXISTS (SELECT 1 FROM dbo.Kolv_Mag_BarCode_Input_Sur_tym
                    WHERE SPID = -@@SPID AND HostName = HOST_NAME() AND UserSign = @UserSign
                        AND Aplication = @Aplication AND Operation = @Operation AND ItemCode = @ItemCode)
                SET @ErrDesc = N'Na tej lokalizacji nie ma opakowań surowca „' + ISNULL(@ItemCode, N'')
                    + N'”. Mógł je przesunąć inny użytkownik: wybierz lokalizację jeszcze raz.';
        END
        COMMIT TRANSACTION;
        RETURN CASE WHEN @ErrDesc = N'' THEN 0 ELSE 1 END;
    END TRY
    BEGIN CATCH
        IF @@TRANCOUNT > 0
            ROLLBACK TRANSACTION;
        SET @ErrDesc = dbo.kolv_mag_fn_FailureText(N'Błąd wyboru surowca do przesunięcia', ERROR_NUMBER(), ERROR_MESSAGE());
        RETURN 1;
    END CATCH
END
GO
