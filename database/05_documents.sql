-- Rules of the documents: purchase orders, barcodes, give-outs. Staging shows them, and the booking asks them again.

-- A quantity as a message shows it: 490, 12,5.
DROP FUNCTION IF EXISTS dbo.kolv_mag_fn_QuantityText;
GO
CREATE FUNCTION dbo.kolv_mag_fn_QuantityText (@Quantity decimal(19, 6))
RETURNS nvarchar(30)
AS
BEGIN
    RETURN REPLACE(REPLACE(CAST(CAST(ISNULL(@Quantity, 0) AS decimal(19, 2)) AS nvarchar(30)), N'.00', N''), N'.', N',');
END
GO

-- Whether a text has the form of a location's label: 7, the day of print, 1, row, stand, shelf and location.
DROP FUNCTION IF EXISTS dbo.kolv_mag_fn_IsLocationCode;
GO
CREATE FUNCTION dbo.kolv_mag_fn_IsLocationCode (@BarCode nvarchar(100))
RETURNS bit
AS
BEGIN
    RETURN CASE WHEN LEN(@BarCode) = 14 AND @BarCode NOT LIKE N'%[^0-9]%' AND LEFT(@BarCode, 1) = N'7'
        AND SUBSTRING(@BarCode, 8, 1) = N'1' THEN 1 ELSE 0 END;
END
GO

-- The locations that a label can stand for: one, or none, or several where stands have more than two digits, of which a
-- label holds the last two. The day in it is that of its print and says nothing about the place. Whether the text is a
-- label at all is asked apart, once instead of for each location.
DROP FUNCTION IF EXISTS dbo.kolv_mag_fn_Location_BarCode;
GO
CREATE FUNCTION dbo.kolv_mag_fn_Location_BarCode (@BarCode nvarchar(100))
RETURNS TABLE
AS
RETURN
    SELECT Rank, Stand, Shelf, Location
    FROM dbo.kolv_mag_Location
    WHERE RIGHT(N'0' + CAST(Rank AS nvarchar(6)), 2) = SUBSTRING(@BarCode, 9, 2)
        AND RIGHT(N'0' + CAST(Stand AS nvarchar(6)), 2) = SUBSTRING(@BarCode, 11, 2)
        AND CAST(Shelf AS nvarchar(6)) = SUBSTRING(@BarCode, 13, 1)
        AND CAST(Location AS nvarchar(6)) = SUBSTRING(@BarCode, 14, 1);
GO

-- Lines of purchase orders with what has come of them. Received is what was booked into the buffer, whatever became of
-- it since. Status: 0 no barcodes, 1 barcodes but nothing received, 2 partly and 3 wholly received, 4 closed.
DROP VIEW IF EXISTS dbo.Kolv_vv_mag_PurchaseOrder_Line;
GO
CREATE VIEW dbo.Kolv_vv_mag_PurchaseOrder_Line
AS
SELECT X.DocEntry, X.LineNum, X.DocNum, X.DocDate, X.ItemCode, X.Quantity, X.Received, X.WaitingCodes, X.IsOpen,
    CASE WHEN X.IsOpen = 0 THEN 4
        WHEN X.Received > 0 AND X.Received >= X.Quantity THEN 3
        WHEN X.Received > 0 THEN 2
        WHEN X.WaitingCodes > 0 OR X.PackageCount > 0 THEN 1
        ELSE 0 END AS Status
FROM (
    SELECT L.DocEntry, L.LineNum, D.DocNum, D.DocDate, L.ItemCode, L.Quantity,
        CASE WHEN ISNULL(D.DocStatus, N'O') = N'C' OR ISNULL(L.LineStatus, N'O') = N'C' THEN 0 ELSE 1 END AS IsOpen,
        ISNULL((SELECT SUM(H.Quantity)
            FROM dbo.Kolv_Mag_BarCode_Sur AS B
                INNER JOIN dbo.Kolv_Mag_BarCode_Sur_History AS H ON H.BarCode = B.BarCode
            WHERE B.DocEntry = L.DocEntry AND B.LineNum = L.LineNum AND H.Operation = N'I'), 0) AS Received,
        (SELECT COUNT(*) FROM dbo.Kolv_Mag_BarCode_Sur AS B
            WHERE B.DocEntry = L.DocEntry AND B.LineNum = L.LineNum) AS PackageCount,
        (SELECT COUNT(*) FROM dbo.Kolv_Mag_BarCode_Sur_Code AS C
            WHERE C.DocEntry = L.DocEntry AND C.LineNum = L.LineNum
                AND NOT EXISTS (SELECT 1 FROM dbo.Kolv_Mag_BarCode_Sur AS B WHERE B.BarCode = C.BarCode)) AS WaitingCodes
    FROM dbo.POR1 AS L
        INNER JOIN dbo.OPOR AS D ON D.DocEntry = L.DocEntry
) AS X;
GO

-- The state of one order line, or with -1, -1 of the open lines of a material: 3 when all of them are wholly received, 4
-- when none is open. NULL for a line or material that is not there.
DROP FUNCTION IF EXISTS dbo.kolv_mag_fn_Status_ItemCode;
GO
CREATE FUNCTION dbo.kolv_mag_fn_Status_ItemCode (@DocEntry int, @LineNum smallint, @ItemCode nvarchar(100))
RETURNS smallint
AS
BEGIN
    DECLARE @Lowest int;
    DECLARE @Highest int;

    IF @DocEntry <> -1
    BEGIN
        SELECT @Highest = Status FROM dbo.Kolv_vv_mag_PurchaseOrder_Line
        WHERE DocEntry = @DocEntry AND LineNum = @LineNum;
        RETURN @Highest;
    END
    IF NOT EXISTS (SELECT 1 FROM dbo.OITM WHERE ItemCode = @ItemCode)
        RETURN NULL;
    SELECT @Lowest = MIN(Status), @Highest = MAX(Status)
    FROM dbo.Kolv_vv_mag_PurchaseOrder_Line
    WHERE ItemCode = @ItemCode AND IsOpen = 1;
    RETURN CASE WHEN @Lowest IS NULL THEN 4 WHEN @Lowest = 3 THEN 3 WHEN @Highest >= 2 THEN 2 ELSE @Highest END;
END
GO

-- What an order line has under barcodes: what was received, and one purchase package for each code that waits for its
-- package. In whole units, as the client reads it. NULL for a line that is not there.
DROP FUNCTION IF EXISTS dbo.kolv_mag_fn_Quantity_BarCode;
GO
CREATE FUNCTION dbo.kolv_mag_fn_Quantity_BarCode (@DocEntry int, @LineNum smallint)
RETURNS int
AS
BEGIN
    DECLARE @Quantity decimal(19, 6);

    SELECT @Quantity = V.Received + V.WaitingCodes * ISNULL(I.PurPackUn, 0)
    FROM dbo.Kolv_vv_mag_PurchaseOrder_Line AS V
        LEFT JOIN dbo.OITM AS I ON I.ItemCode = V.ItemCode
    WHERE V.DocEntry = @DocEntry AND V.LineNum = @LineNum;
    RETURN CAST(ROUND(@Quantity, 0) AS int);
END
GO

-- The last running number of an order line in a year, 0 before the first.
DROP FUNCTION IF EXISTS dbo.kolv_mag_fn_Last_Number;
GO
CREATE FUNCTION dbo.kolv_mag_fn_Last_Number (@YearCode int, @DocEntry int, @LineNum smallint)
RETURNS int
AS
BEGIN
    DECLARE @Given int;
    DECLARE @Booked int;

    SELECT @Given = MAX(NumberCode) FROM dbo.Kolv_Mag_BarCode_Sur_Code
    WHERE DocEntry = @DocEntry AND LineNum = @LineNum AND YearCode = @YearCode;
    -- Other programs book packages without asking for their codes.
    SELECT @Booked = MAX(NumberCode) FROM dbo.Kolv_Mag_BarCode_Sur
    WHERE DocEntry = @DocEntry AND LineNum = @LineNum AND ISNULL(YearCode, 0) = @YearCode;
    RETURN CASE WHEN ISNULL(@Booked, 0) > ISNULL(@Given, 0) THEN @Booked ELSE ISNULL(@Given, 0) END;
END
GO

-- Why an order line takes no barcodes and no packages of a material; NULL when it takes them.
DROP FUNCTION IF EXISTS dbo.kolv_mag_fn_Line_Refusal;
GO
CREATE FUNCTION dbo.kolv_mag_fn_Line_Refusal (@DocEntry int, @DocNum int, @LineNum smallint, @ItemCode nvarchar(100))
RETURNS nvarchar(250)
AS
BEGIN
    DECLARE @Number int;
    DECLARE @LineItem nvarchar(20);
    DECLARE @IsOpen int;

    IF NOT EXISTS (SELECT 1 FROM dbo.OPOR WHERE DocEntry = @DocEntry)
        RETURN N'Zamówienie o identyfikatorze ' + ISNULL(CAST(@DocEntry AS nvarchar(11)), N'?') + N' nie istnieje.';
    SELECT @Number = DocNum FROM dbo.OPOR WHERE DocEntry = @DocEntry;
    IF ISNULL(@Number, 0) <> ISNULL(@DocNum, 0)
        RETURN N'Zamówienie o identyfikatorze ' + CAST(@DocEntry AS nvarchar(11)) + N' ma numer '
            + CAST(ISNULL(@Number, 0) AS nvarchar(11)) + N', a nie ' + CAST(ISNULL(@DocNum, 0) AS nvarchar(11)) + N'.';
    SELECT @LineItem = ISNULL(ItemCode, N''), @IsOpen = IsOpen
    FROM dbo.Kolv_vv_mag_PurchaseOrder_Line
    WHERE DocEntry = @DocEntry AND LineNum = @LineNum;
    IF @LineItem IS NULL
        RETURN N'Zamówienie ' + CAST(ISNULL(@Number, 0) AS nvarchar(11)) + N' nie ma pozycji '
            + ISNULL(CAST(@LineNum AS nvarchar(6)), N'?') + N'.';
    IF @IsOpen = 0
        RETURN N'Pozycja ' + CAST(@LineNum AS nvarchar(6)) + N' zamówienia ' + CAST(ISNULL(@Number, 0) AS nvarchar(11))
            + N' jest zamknięta.';
    IF @LineItem <> ISNULL(@ItemCode, N'') OR @LineItem = N''
        RETURN N'Pozycja ' + CAST(@LineNum AS nvarchar(6)) + N' zamówienia ' + CAST(ISNULL(@Number, 0) AS nvarchar(11))
            + N' zamawia surowiec „' + @LineItem + N'”, a nie „' + LEFT(ISNULL(@ItemCode, N''), 50) + N'”.';
    IF NOT EXISTS (SELECT 1 FROM dbo.OITM WHERE ItemCode = @ItemCode)
        RETURN N'Surowca „' + @LineItem + N'” nie ma w kartotece.';
    RETURN NULL;
END
GO

-- Why a text cannot be the barcode of a package that has not come yet; NULL when it can.
DROP FUNCTION IF EXISTS dbo.kolv_mag_fn_BarCode_Refusal;
GO
CREATE FUNCTION dbo.kolv_mag_fn_BarCode_Refusal (@BarCode nvarchar(100))
RETURNS nvarchar(250)
AS
BEGIN
    IF ISNULL(@BarCode, N'') = N''
        RETURN N'Podaj kod kreskowy opakowania.';
    IF LEN(@BarCode) > 50
        RETURN N'Kod kreskowy opakowania jest za długi: najwyżej 50 znaków.';
    IF dbo.kolv_mag_fn_IsLocationCode(@BarCode) = 1
        RETURN N'Kod „' + @BarCode + N'” jest etykietą lokalizacji, a nie opakowania.';
    IF EXISTS (SELECT 1 FROM dbo.Kolv_Mag_BarCode_Sur WHERE BarCode = @BarCode AND Active = N'Y')
        RETURN N'Opakowanie „' + @BarCode + N'” jest już w magazynie.';
    IF EXISTS (SELECT 1 FROM dbo.Kolv_Mag_BarCode_Sur WHERE BarCode = @BarCode)
        RETURN N'Opakowanie „' + @BarCode + N'” zostało wydane. Przyjmij je jako zwrot z produkcji.';
    RETURN NULL;
END
GO

-- The year that counts the packages of an order: that of its date, 0 without one.
DROP FUNCTION IF EXISTS dbo.kolv_mag_fn_Order_Year;
GO
CREATE FUNCTION dbo.kolv_mag_fn_Order_Year (@DocEntry int)
RETURNS int
AS
BEGIN
    DECLARE @DocDate datetime;

    SELECT @DocDate = DocDate FROM dbo.OPOR WHERE DocEntry = @DocEntry;
    RETURN ISNULL(YEAR(@DocDate), 0);
END
GO

-- Why a package cannot be received on an order line; NULL when it can. What others of the line bring is
-- kolv_mag_fn_Line_Overrun's question.
DROP FUNCTION IF EXISTS dbo.kolv_mag_fn_Receive_Refusal;
GO
CREATE FUNCTION dbo.kolv_mag_fn_Receive_Refusal (
    @DocEntry int, @DocNum int, @LineNum smallint, @BarCode nvarchar(100), @NumberCode int,
    @Quantity decimal(19, 6), @ItemCode nvarchar(100)
)
RETURNS nvarchar(250)
AS
BEGIN
    DECLARE @Refusal nvarchar(250) = dbo.kolv_mag_fn_Line_Refusal(@DocEntry, @DocNum, @LineNum, @ItemCode);
    DECLARE @CodeEntry int;
    DECLARE @CodeLine smallint;
    DECLARE @CodeNum int;
    DECLARE @CodeNumber int;

    IF @Refusal IS NULL
        SET @Refusal = dbo.kolv_mag_fn_BarCode_Refusal(@BarCode);
    IF @Refusal IS NOT NULL
        RETURN @Refusal;
    IF ISNULL(@Quantity, 0) <= 0
        RETURN N'Podaj ilość większą od zera: opakowanie „' + @BarCode + N'”.';
    SELECT @CodeEntry = DocEntry, @CodeNum = DocNum, @CodeLine = LineNum, @CodeNumber = NumberCode
    FROM dbo.Kolv_Mag_BarCode_Sur_Code
    WHERE BarCode = @BarCode;
    IF @CodeEntry IS NOT NULL AND (@CodeEntry <> @DocEntry OR @CodeLine <> @LineNum)
        RETURN N'Kod „' + @BarCode + N'” nadano pozycji ' + CAST(@CodeLine AS nvarchar(6)) + N' zamówienia '
            + CAST(ISNULL(@CodeNum, 0) AS nvarchar(11)) + N'.';
    IF @CodeEntry IS NOT NULL AND ISNULL(@NumberCode, 0) NOT IN (0, @CodeNumber)
        RETURN N'Kod „' + @BarCode + N'” ma na tej pozycji numer ' + CAST(@CodeNumber AS nvarchar(11)) + N', a nie '
            + CAST(@NumberCode AS nvarchar(11)) + N'.';
    IF ISNULL(@NumberCode, 0) < 0
        RETURN N'Numer opakowania nie może być ujemny: „' + @BarCode + N'”.';
    IF @CodeEntry IS NULL AND @NumberCode > 0
        AND (EXISTS (SELECT 1 FROM dbo.Kolv_Mag_BarCode_Sur_Code
                WHERE DocEntry = @DocEntry AND LineNum = @LineNum AND NumberCode = @NumberCode
                    AND YearCode = dbo.kolv_mag_fn_Order_Year(@DocEntry))
            OR EXISTS (SELECT 1 FROM dbo.Kolv_Mag_BarCode_Sur
                WHERE DocEntry = @DocEntry AND LineNum = @LineNum AND NumberCode = @NumberCode
                    AND ISNULL(YearCode, 0) = dbo.kolv_mag_fn_Order_Year(@DocEntry)))
        RETURN N'Numer ' + CAST(@NumberCode AS nvarchar(11)) + N' ma na tej pozycji zamówienia inne opakowanie.';
    RETURN NULL;
END
GO

-- Why an order line does not take so much more; NULL when it does. A tenth over the order is taken, since steel and
-- granulates come by weight, and any quantity where nobody has entered what was ordered.
DROP FUNCTION IF EXISTS dbo.kolv_mag_fn_Line_Overrun;
GO
CREATE FUNCTION dbo.kolv_mag_fn_Line_Overrun (@DocEntry int, @LineNum smallint, @More decimal(19, 6))
RETURNS nvarchar(250)
AS
BEGIN
    DECLARE @Refusal nvarchar(250);

    SELECT @Refusal = N'Za dużo na pozycji ' + CAST(LineNum AS nvarchar(6)) + N' zamówienia '
        + CAST(ISNULL(DocNum, 0) AS nvarchar(11)) + N': zamówiono ' + dbo.kolv_mag_fn_QuantityText(Quantity)
        + N', przyjęto ' + dbo.kolv_mag_fn_QuantityText(Received) + N', teraz ' + dbo.kolv_mag_fn_QuantityText(@More)
        + N'. Pozycja przyjmuje najwyżej o jedną dziesiątą więcej.'
    FROM dbo.Kolv_vv_mag_PurchaseOrder_Line
    WHERE DocEntry = @DocEntry AND LineNum = @LineNum AND Received + @More > Quantity * 1.1;
    RETURN @Refusal;
END
GO

-- The give-out line with which each package went last, if it has not come back.
DROP VIEW IF EXISTS dbo.Kolv_vv_mag_GiveOut_Last;
GO
CREATE VIEW dbo.Kolv_vv_mag_GiveOut_Last
AS
SELECT P.GiveOutDocNum, P.GiveOutLineNum, P.GiveOutBarCode, P.ItemCode, P.Quantity
FROM dbo.Kolv_Mag_BarCode_Sur_Production AS P
WHERE P.QuantityBack IS NULL
    AND NOT EXISTS (SELECT 1 FROM dbo.Kolv_Mag_BarCode_Sur_Production AS N
        WHERE N.GiveOutBarCode = P.GiveOutBarCode AND (N.GiveOutDocNum > P.GiveOutDocNum
            OR N.GiveOutDocNum = P.GiveOutDocNum AND N.GiveOutLineNum > P.GiveOutLineNum));
GO

-- Why a package cannot come back from manufacturing; NULL when it can. Order, line and number are those the package came
-- with; a package of another program may have none, which are 0.
DROP FUNCTION IF EXISTS dbo.kolv_mag_fn_Return_Refusal;
GO
CREATE FUNCTION dbo.kolv_mag_fn_Return_Refusal (
    @DocEntry int, @DocNum int, @LineNum smallint, @BarCode nvarchar(100), @NumberCode int,
    @Quantity decimal(19, 6), @ItemCode nvarchar(100)
)
RETURNS nvarchar(250)
AS
BEGIN
    DECLARE @Active nvarchar(1);
    DECLARE @Given decimal(19, 6);

    SELECT @Active = ISNULL(Active, N'N') FROM dbo.Kolv_Mag_BarCode_Sur WHERE BarCode = @BarCode;
    IF @Active IS NULL
        RETURN N'Opakowania „' + LEFT(ISNULL(@BarCode, N''), 50) + N'” nie ma w kartotece opakowań.';
    IF @Active = N'Y'
        RETURN N'Opakowanie „' + @BarCode + N'” jest w magazynie: nie zostało wydane albo już wróciło.';
    SELECT @Given = Quantity FROM dbo.Kolv_vv_mag_GiveOut_Last WHERE GiveOutBarCode = @BarCode;
    IF @Given IS NULL
        RETURN N'Opakowanie „' + @BarCode + N'” nie ma dokumentu wydania.';
    IF NOT EXISTS (SELECT 1 FROM dbo.Kolv_Mag_BarCode_Sur
            WHERE BarCode = @BarCode AND ISNULL(ItemCode, N'') = ISNULL(@ItemCode, N''))
        RETURN N'Opakowanie „' + @BarCode + N'” nie zawiera surowca „' + LEFT(ISNULL(@ItemCode, N''), 50) + N'”.';
    IF NOT EXISTS (SELECT 1 FROM dbo.Kolv_Mag_BarCode_Sur
            WHERE BarCode = @BarCode AND ISNULL(DocEntry, 0) = ISNULL(@DocEntry, 0)
                AND ISNULL(DocNum, 0) = ISNULL(@DocNum, 0) AND ISNULL(LineNum, 0) = ISNULL(@LineNum, 0)
                AND (ISNULL(@NumberCode, 0) = 0 OR NumberCode = @NumberCode))
        RETURN N'Opakowanie „' + @BarCode + N'” nie przyszło z podanej pozycji zamówienia.';
    IF ISNULL(@Quantity, 0) <= 0
        RETURN N'Podaj ilość większą od zera: opakowanie „' + @BarCode + N'”.';
    IF @Quantity > @Given
        RETURN N'Opakowanie „' + @BarCode + N'” wydano z ilością ' + dbo.kolv_mag_fn_QuantityText(@Given)
            + N': nie może wrócić ' + dbo.kolv_mag_fn_QuantityText(@Quantity) + N'.';
    RETURN NULL;
END
GO

-- Staged packages that are not in stock yet, with the size that they will have there: that of the purchase package of
-- their material, or their own when they come back. The weight is in proportion to the quantity.
DROP VIEW IF EXISTS dbo.Kolv_vv_mag_Document_Size;
GO
CREATE VIEW dbo.Kolv_vv_mag_Document_Size
AS
SELECT T.ID, T.HostName, T.SPID, T.UserSign, T.YearCode, T.LineGrd, T.Aplication, T.Operation, T.BarCode, T.ItemCode,
    T.Quantity, CAST(I.Blength1 AS int) AS PackLength, CAST(I.Bwidth1 AS int) AS PackWidth,
    CAST(I.BHeight1 AS int) AS PackHeight,
    CAST(ROUND(CASE WHEN I.PurPackUn > 0 THEN CAST(I.BWeight1 AS float) * CAST(T.Quantity AS float)
        / CAST(I.PurPackUn AS float) ELSE CAST(I.BWeight1 AS float) END, 3) AS decimal(19, 3)) AS PackWeight
FROM dbo.Kolv_Mag_BarCode_Input_Sur_tym AS T
    INNER JOIN dbo.OITM AS I ON I.ItemCode = T.ItemCode
WHERE T.Operation = N'I' AND NOT EXISTS (SELECT 1 FROM dbo.Kolv_Mag_BarCode_Sur AS B WHERE B.BarCode = T.BarCode)
UNION ALL
SELECT T.ID, T.HostName, T.SPID, T.UserSign, T.YearCode, T.LineGrd, T.Aplication, T.Operation, T.BarCode, T.ItemCode,
    T.Quantity, B.PackLength, B.PackWidth, B.PackHeight,
    CAST(ROUND(CASE WHEN B.Quantity > 0 THEN CAST(B.PackWeight AS float) * CAST(T.Quantity AS float)
        / CAST(B.Quantity AS float) ELSE CAST(B.PackWeight AS float) END, 3) AS decimal(19, 3))
FROM dbo.Kolv_Mag_BarCode_Input_Sur_tym AS T
    INNER JOIN dbo.Kolv_Mag_BarCode_Sur AS B ON B.BarCode = T.BarCode
WHERE T.Operation = N'R' AND ISNULL(B.Active, N'N') <> N'Y';
GO

-- Why a package is not put onto the location of a label, whatever that location says to it; NULL when it may be.
-- @Locations is how many locations the label can stand for.
DROP FUNCTION IF EXISTS dbo.kolv_mag_fn_PutAway_Refusal;
GO
CREATE FUNCTION dbo.kolv_mag_fn_PutAway_Refusal (
    @DocEntry int, @LineNum smallint, @BarCode nvarchar(100), @BarCodeLoc nvarchar(100), @Locations int,
    @Operation nvarchar(10)
)
RETURNS nvarchar(250)
AS
BEGIN
    DECLARE @Active nvarchar(1);
    DECLARE @Placed smallint;

    IF ISNULL(@Operation, N'') NOT IN (N'I', N'R')
        RETURN N'Na lokalizację trafia przyjęcie (I) albo zwrot z produkcji (R), a nie operacja „'
            + ISNULL(@Operation, N'') + N'”.';
    SELECT @Active = ISNULL(Active, N'N'), @Placed = Rank FROM dbo.Kolv_Mag_BarCode_Sur WHERE BarCode = @BarCode;
    IF @Active IS NULL
        RETURN N'Opakowania „' + LEFT(ISNULL(@BarCode, N''), 50) + N'” nie ma w buforze: najpierw je przyjmij.';
    IF @Active <> N'Y'
        RETURN N'Opakowanie „' + @BarCode + N'” zostało wydane.';
    IF @Placed IS NOT NULL
        RETURN N'Opakowanie „' + @BarCode + N'” leży już na lokalizacji.';
    IF NOT EXISTS (SELECT 1 FROM dbo.Kolv_Mag_BarCode_Sur
            WHERE BarCode = @BarCode AND ISNULL(DocEntry, 0) = ISNULL(@DocEntry, 0)
                AND ISNULL(LineNum, 0) = ISNULL(@LineNum, 0))
        RETURN N'Opakowanie „' + @BarCode + N'” nie przyszło z podanej pozycji zamówienia.';
    IF dbo.kolv_mag_fn_IsLocationCode(@BarCodeLoc) = 0
        RETURN N'Kod „' + LEFT(ISNULL(@BarCodeLoc, N''), 50) + N'” nie jest etykietą lokalizacji.';
    IF @Locations = 0
        RETURN N'Lokalizacja z etykiety „' + @BarCodeLoc + N'” nie istnieje. Mógł ją usunąć inny użytkownik.';
    IF @Locations > 1
        RETURN N'Etykieta „' + @BarCodeLoc + N'” pasuje do kilku lokalizacji: regał ma więcej niż dwie cyfry.';
    RETURN NULL;
END
GO

-- Why a package cannot be given out in this quantity; NULL when it can. The order is that of the purchase it came with.
DROP FUNCTION IF EXISTS dbo.kolv_mag_fn_GiveOut_Refusal;
GO
CREATE FUNCTION dbo.kolv_mag_fn_GiveOut_Refusal (
    @DocNum int, @ItemCode nvarchar(100), @Quantity decimal(19, 6), @BarCode nvarchar(100)
)
RETURNS nvarchar(250)
AS
BEGIN
    DECLARE @Active nvarchar(1);
    DECLARE @Number int;
    DECLARE @Item nvarchar(20);
    DECLARE @Has decimal(19, 6);

    SELECT @Active = ISNULL(Active, N'N'), @Number = ISNULL(DocNum, 0), @Item = ISNULL(ItemCode, N''),
        @Has = ISNULL(Quantity, 0)
    FROM dbo.Kolv_Mag_BarCode_Sur
    WHERE BarCode = @BarCode;
    IF @Active IS NULL
        RETURN N'Opakowania „' + LEFT(ISNULL(@BarCode, N''), 50) + N'” nie ma w magazynie.';
    IF @Active <> N'Y'
        RETURN N'Opakowanie „' + @BarCode + N'” zostało już wydane.';
    IF @Item <> ISNULL(@ItemCode, N'')
        RETURN N'Opakowanie „' + @BarCode + N'” zawiera surowiec „' + @Item + N'”, a nie „'
            + LEFT(ISNULL(@ItemCode, N''), 50) + N'”.';
    IF @Number <> ISNULL(@DocNum, 0)
        RETURN N'Opakowanie „' + @BarCode + N'” przyszło z zamówieniem ' + CAST(@Number AS nvarchar(11)) + N', a nie '
            + CAST(ISNULL(@DocNum, 0) AS nvarchar(11)) + N'.';
    IF ISNULL(@Quantity, 0) <= 0
        RETURN N'Podaj ilość większą od zera: opakowanie „' + @BarCode + N'”.';
    IF @Quantity > @Has
        RETURN N'W opakowaniu „' + @BarCode + N'” jest ' + dbo.kolv_mag_fn_QuantityText(@Has) + N': nie można wydać '
            + dbo.kolv_mag_fn_QuantityText(@Quantity) + N'.';
    -- A part gets the code with -1, -2 and so on.
    IF @Quantity < @Has AND LEN(@BarCode) > 44
        RETURN N'Kod „' + @BarCode + N'” jest za długi, żeby wydać część opakowania.';
    RETURN NULL;
END
GO

-- Why nothing is given out to a line of a manufacturing order; NULL when it takes material.
DROP FUNCTION IF EXISTS dbo.kolv_mag_fn_Production_Refusal;
GO
CREATE FUNCTION dbo.kolv_mag_fn_Production_Refusal (@DocEntry int, @DocNum int, @LineNum smallint)
RETURNS nvarchar(250)
AS
BEGIN
    DECLARE @Number int;
    DECLARE @Status nvarchar(1);

    SELECT @Number = ISNULL(DocNum, 0), @Status = ISNULL(DocStatus, N'O') FROM dbo.ORDR WHERE DocEntry = @DocEntry;
    IF @Number IS NULL
        RETURN N'Zlecenie produkcyjne o identyfikatorze ' + ISNULL(CAST(@DocEntry AS nvarchar(11)), N'?')
            + N' nie istnieje.';
    IF @Number <> ISNULL(@DocNum, 0)
        RETURN N'Zlecenie produkcyjne o identyfikatorze ' + CAST(@DocEntry AS nvarchar(11)) + N' ma numer '
            + CAST(@Number AS nvarchar(11)) + N', a nie ' + CAST(ISNULL(@DocNum, 0) AS nvarchar(11)) + N'.';
    IF @Status = N'C'
        RETURN N'Zlecenie produkcyjne ' + CAST(@Number AS nvarchar(11)) + N' jest zamknięte.';
    SET @Status = NULL;
    SELECT @Status = ISNULL(LineStatus, N'O') FROM dbo.RDR1 WHERE DocEntry = @DocEntry AND LineNum = @LineNum;
    IF @Status IS NULL
        RETURN N'Zlecenie produkcyjne ' + CAST(@Number AS nvarchar(11)) + N' nie ma pozycji '
            + ISNULL(CAST(@LineNum AS nvarchar(6)), N'?') + N'.';
    IF @Status = N'C'
        RETURN N'Pozycja ' + CAST(@LineNum AS nvarchar(6)) + N' zlecenia produkcyjnego ' + CAST(@Number AS nvarchar(11))
            + N' jest zamknięta.';
    RETURN NULL;
END
GO
