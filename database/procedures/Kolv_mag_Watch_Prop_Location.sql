-- The proposed locations of the chosen packages. @Mode 0 sees to it that they are there and returns no rows; 1 to 10
-- return them in the order of that column of the client's list, whose column 1 is the number of the row and stands for
-- the order of the proposals.
--
-- The client counts columns from the end: the letter of occupation (only N'C' matters, an empty location), the reason,
-- the status, the fill after the move, the quantity, the barcode, and Location, Shelf, Stand, Rank. Only D and C can be
-- ticked. Nothing may come behind or between them.
--
-- @ErrDesc comes in as what the client holds of an earlier message, even as the text NULL, and is not looked at.
DROP PROCEDURE IF EXISTS dbo.Kolv_mag_Watch_Prop_Location;
GO
CREATE PROCEDURE dbo.Kolv_mag_Watch_Prop_Location
    @UserSign smallint,
    @Aplication nvarchar(10),
    @Operation nvarchar(10),
    @Mode smallint,
    @ErrDesc nvarchar(250) = NULL OUTPUT
AS
BEGIN
    SET NOCOUNT ON;
    SET TRANSACTION ISOLATION LEVEL READ UNCOMMITTED;
    SET @ErrDesc = N'';

    BEGIN TRY
        DECLARE @Refused int = 0;

        EXEC dbo.kolv_mag_Temp_Tables;
        -- Either table may have gone with the session that made it.
        IF EXISTS (SELECT 1 FROM dbo.Kolv_Mag_BarCode_Input_Sur_tym AS T
                WHERE T.SPID = -@@SPID AND T.HostName = HOST_NAME() AND T.UserSign = @UserSign
                    AND T.Aplication = @Aplication AND T.Operation = @Operation AND T.YearCode = YEAR(GETDATE())
                    AND T.LineGrd = -1 AND NOT EXISTS (SELECT 1 FROM ##Temp_Prop_Location_BarCode AS C
                            INNER JOIN ##Temp_Prop_Location AS P ON P.IDCodeBar = C.IDCodeBar AND P.SPID = C.SPID
                                AND P.HostName = C.HostName AND P.UserSign = C.UserSign
                        WHERE C.SPID = T.SPID AND C.HostName = T.HostName AND C.UserSign = T.UserSign
                            AND C.Aplication = T.Aplication AND C.Operation = T.Operation AND C.BarCode = T.BarCode))
            EXEC @Refused = dbo.kolv_mag_Prop_Location_Make @UserSign, @Aplication, @Operation, @ErrDesc OUTPUT;
        IF @Mode = 0
            RETURN @Refused;

        SELECT P.Place AS [Miejsce:1000;0],
            P.Rank AS [Rząd:550;2],
            P.Stand AS [Regał:650;2],
            P.Shelf AS [Półka:600;2],
            P.Location AS [Lok.:500;2],
            C.BarCode AS [Kod kreskowy:2500;0],
            CAST(C.Quantity AS decimal(19, 2)) AS [Ilość:900;1],
            P.PercentAfter AS [Po %:650;1],
            P.Status AS [St.:450;2],
            CASE WHEN P.Proposed = N'Y' THEN N'Proponowana, ' + P.Reason
                ELSE UPPER(LEFT(P.Reason, 1)) + SUBSTRING(P.Reason, 2, 100) END AS [Uwagi:3500;0],
            P.Occupied AS [Z.:400;2]
        FROM ##Temp_Prop_Location AS P
            INNER JOIN ##Temp_Prop_Location_BarCode AS C ON C.IDCodeBar = P.IDCodeBar AND C.SPID = P.SPID
                AND C.HostName = P.HostName AND C.UserSign = P.UserSign AND C.Aplication = P.Aplication
                AND C.Operation = P.Operation
        WHERE C.SPID = -@@SPID AND C.HostName = HOST_NAME() AND C.UserSign = @UserSign AND C.Aplication = @Aplication
            AND C.Operation = @Operation
        -- A place sorts by its numbers, not by its text: A 2-1-1 before A 10-1-1.
        ORDER BY CASE @Mode WHEN 2 THEN P.Rank WHEN 3 THEN P.Rank WHEN 4 THEN P.Stand WHEN 5 THEN P.Shelf
                WHEN 6 THEN P.Location WHEN 9 THEN P.PercentAfter END,
            CASE @Mode WHEN 2 THEN P.Stand END, CASE @Mode WHEN 2 THEN P.Shelf END,
            CASE @Mode WHEN 2 THEN P.Location END,
            CASE @Mode WHEN 7 THEN C.BarCode WHEN 10 THEN P.Status END,
            CASE @Mode WHEN 8 THEN C.Quantity END,
            C.BarCode, P.ID;
        RETURN 0;
    END TRY
    BEGIN CATCH
        IF @@TRANCOUNT > 0
            ROLLBACK TRANSACTION;
        -- Nobody reads the message of a list: the client shows an error of its own.
        IF @Mode <> 0
            THROW;
        SET @ErrDesc = LEFT(N'Błąd odczytu proponowanych lokalizacji: ' + ERROR_MESSAGE(), 250);
        RETURN 1;
    END CATCH
END
GO
