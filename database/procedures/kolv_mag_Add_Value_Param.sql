-- Stores one parameter of a location. A parameter is a column of kolv_mag_Location_Item whose name ends in _int, _char,
-- _cmb or _pic, and the ending is its kind: a whole number, a text, the choice 0 or 1, a picture in Base64. @ParamType
-- repeats it. A picture comes in @ParamImage, all else in @ParamValue; the other of the two is not read.
--
-- The name of the column goes into a statement only as the catalogue of the database spells it, and the value only as a
-- parameter of that statement. An empty number is NULL, the size of the standard rack; an empty picture removes the
-- stored one.
DROP PROCEDURE IF EXISTS dbo.kolv_mag_Add_Value_Param;
GO
CREATE PROCEDURE dbo.kolv_mag_Add_Value_Param
    @Rank smallint,
    @Stand smallint,
    @Shelf smallint,
    @Location smallint,
    @ParamName nvarchar(4000),
    @ParamValue nvarchar(4000),
    @ParamImage nvarchar(max),
    @ParamType nvarchar(4000),
    @ErrDesc nvarchar(250) OUTPUT
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;
    SET @ErrDesc = N'';

    BEGIN TRY
        DECLARE @Column nvarchar(128);
        DECLARE @Kind nvarchar(128);
        DECLARE @Number nvarchar(4000) = LTRIM(RTRIM(ISNULL(@ParamValue, N'')));
        DECLARE @Characters int = DATALENGTH(ISNULL(@ParamImage, N'')) / 2;
        DECLARE @Padding int;
        DECLARE @Value nvarchar(max);
        DECLARE @Sql nvarchar(1000);
        DECLARE @Stands int;

        SELECT @Column = name
        FROM sys.columns
        WHERE object_id = OBJECT_ID(N'dbo.kolv_mag_Location_Item') AND name = @ParamName;
        IF CHARINDEX(N'_', @Column) > 0
            SET @Kind = LOWER(RIGHT(@Column, CHARINDEX(N'_', REVERSE(@Column)) - 1));

        IF @Kind IS NULL OR @Kind NOT IN (N'int', N'char', N'cmb', N'pic')
            SET @ErrDesc = N'Nie ma parametru lokalizacji o nazwie „' + LEFT(ISNULL(@ParamName, N''), 100) + N'”.';
        ELSE IF ISNULL(@ParamType, N'') <> @Kind
            SET @ErrDesc = N'Rodzaj parametru „' + @Column + N'” nie zgadza się z jego nazwą.';
        ELSE IF @Kind = N'int'
        BEGIN
            -- The editor lets six characters in. Whole numbers only: the columns hold millimetres and kilograms.
            IF @Number COLLATE Latin1_General_BIN LIKE N'%[^0-9]%' OR LEN(@Number) > 6
                SET @ErrDesc = N'Wartość parametru musi być liczbą całkowitą od 0 do 999999.';
            SET @Value = NULLIF(@Number, N'');
        END
        ELSE IF @Kind = N'char'
        BEGIN
            IF DATALENGTH(@ParamValue) > 500
                SET @ErrDesc = N'Tekst parametru ma najwyżej 250 znaków.';
            SET @Value = ISNULL(@ParamValue, N'');
        END
        ELSE IF @Kind = N'cmb'
        BEGIN
            IF ISNULL(@ParamValue, N'') NOT IN (N'0', N'1')
                SET @ErrDesc = N'Wybierz wartość parametru z listy.';
            SET @Value = @ParamValue;
        END
        ELSE
        BEGIN
            -- Base64: groups of four characters, one or two of them "=" at the very end. The head is that of a JPEG,
            -- a bitmap or an icon: without a new file the client sends what its box still holds, and a number or a
            -- word of another parameter must not take the stored picture's place.
            SET @Padding = CASE WHEN RIGHT(@ParamImage, 2) = N'==' THEN 2 WHEN RIGHT(@ParamImage, 1) = N'=' THEN 1
                ELSE 0 END;
            IF @Characters % 4 <> 0
                    OR LEFT(@ParamImage, @Characters - @Padding) COLLATE Latin1_General_BIN LIKE N'%[^A-Za-z0-9+/]%'
                    OR @Characters > 0 AND @ParamImage COLLATE Latin1_General_BIN NOT LIKE N'/9j/%'
                        AND @ParamImage COLLATE Latin1_General_BIN NOT LIKE N'Qk[0-3]%'
                        AND @ParamImage COLLATE Latin1_General_BIN NOT LIKE N'AAABAA%'
                SET @ErrDesc = N'Przekazany tekst nie jest obrazem. Wybierz plik obrazka.';
            ELSE IF @Characters / 4 * 3 - @Padding >= 3000000
                SET @ErrDesc = N'Obraz jest za duży. Największy dopuszczalny rozmiar to 2999999 bajtów.';
            SET @Value = ISNULL(@ParamImage, N'');
        END
        IF @ErrDesc <> N''
            RETURN 1;

        BEGIN TRANSACTION;
        -- The lock that every writer of the layout takes first: the fills of the shelf follow from this value, and a
        -- mover that holds them must not wait for it.
        SELECT @Stands = COUNT(*) FROM dbo.kolv_mag_Stand WITH (UPDLOCK, HOLDLOCK);
        IF NOT EXISTS (SELECT 1 FROM dbo.kolv_mag_Location WITH (UPDLOCK, HOLDLOCK)
                WHERE Rank = @Rank AND Stand = @Stand AND Shelf = @Shelf AND Location = @Location)
        BEGIN
            ROLLBACK TRANSACTION;
            SET @ErrDesc = N'Ta lokalizacja nie istnieje. Mógł ją usunąć inny użytkownik: odśwież magazyn.';
            RETURN 1;
        END
        INSERT INTO dbo.kolv_mag_Location_Item (Rank, Stand, Shelf, Location, ItemCode, ItemName, GroupSur)
        SELECT @Rank, @Stand, @Shelf, @Location, N'', N'', 0
        WHERE NOT EXISTS (SELECT 1 FROM dbo.kolv_mag_Location_Item
            WHERE Rank = @Rank AND Stand = @Stand AND Shelf = @Shelf AND Location = @Location);

        SET @Sql = N'UPDATE dbo.kolv_mag_Location_Item SET ' + QUOTENAME(@Column) + N' = @Value, UpdateDate = GETDATE()'
            + N' WHERE Rank = @Rank AND Stand = @Stand AND Shelf = @Shelf AND Location = @Location';
        EXEC sp_executesql @Sql,
            N'@Value nvarchar(max), @Rank smallint, @Stand smallint, @Shelf smallint, @Location smallint',
            @Value, @Rank, @Stand, @Shelf, @Location;

        -- The sizes say how much the location holds.
        IF @Kind = N'int'
            EXEC dbo.kolv_mag_Refresh_Percent_Shelf @Rank, @Stand, @Shelf;
        COMMIT TRANSACTION;
        RETURN 0;
    END TRY
    BEGIN CATCH
        IF @@TRANCOUNT > 0
            ROLLBACK TRANSACTION;
        SET @ErrDesc = LEFT(N'Błąd zapisu parametru lokalizacji: ' + ERROR_MESSAGE(), 250);
        RETURN 1;
    END CATCH
END
GO
