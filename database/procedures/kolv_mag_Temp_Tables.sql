-- Makes the ## tables of staged work that are not there. The server drops them when the session that made them has ended,
-- whoever else has rows in them, so every procedure that uses them calls this first, outside of its transaction, and
-- what they hold can be made again from the staged packages.
--
-- Two sessions may both find a table missing: then the second one's error 2714 says that it is there, which is all that
-- is wanted.
--
-- Clients read these tables by IDCodeBar and ID alone, as 16-bit numbers. IDCodeBar is therefore unique among the
-- packages of all users, and ID counts the proposed locations of one package.
DROP PROCEDURE IF EXISTS dbo.kolv_mag_Temp_Tables;
GO
-- An update may give them another shape.
DROP TABLE IF EXISTS ##Temp_Prop_Location;
DROP TABLE IF EXISTS ##Temp_Prop_Location_BarCode;
DROP TABLE IF EXISTS ##Temp_mag_PurchesOrders_GiveOut;
DROP TABLE IF EXISTS ##Temp_mag_ItemCode_GiveOut;
GO
CREATE PROCEDURE dbo.kolv_mag_Temp_Tables
AS
BEGIN
    SET NOCOUNT ON;

    BEGIN TRY
        IF OBJECT_ID(N'tempdb..##Temp_Prop_Location_BarCode') IS NULL
            CREATE TABLE ##Temp_Prop_Location_BarCode (
                IDCodeBar   smallint       NOT NULL PRIMARY KEY,
                HostName    nvarchar(128)  COLLATE DATABASE_DEFAULT NULL,
                SPID        int            NOT NULL,
                UserSign    smallint       NULL,
                Aplication  nvarchar(10)   COLLATE DATABASE_DEFAULT NULL,
                Operation   nvarchar(10)   COLLATE DATABASE_DEFAULT NULL,
                BarCode     nvarchar(50)   COLLATE DATABASE_DEFAULT NOT NULL,
                Quantity    decimal(19, 6) NULL,
                QuantityAdd decimal(19, 6) NULL
            );
    END TRY
    BEGIN CATCH
        IF ERROR_NUMBER() <> 2714
            THROW;
    END CATCH

    BEGIN TRY
        IF OBJECT_ID(N'tempdb..##Temp_Prop_Location') IS NULL
            CREATE TABLE ##Temp_Prop_Location (
                IDCodeBar    smallint      NOT NULL,
                ID           smallint      NOT NULL,
                HostName     nvarchar(128) COLLATE DATABASE_DEFAULT NULL,
                SPID         int           NOT NULL,
                UserSign     smallint      NULL,
                Aplication   nvarchar(10)  COLLATE DATABASE_DEFAULT NULL,
                Operation    nvarchar(10)  COLLATE DATABASE_DEFAULT NULL,
                ItemCode     nvarchar(20)  COLLATE DATABASE_DEFAULT NULL,
                ItemName     nvarchar(100) COLLATE DATABASE_DEFAULT NULL,
                Rank         smallint      NOT NULL,
                Stand        smallint      NOT NULL,
                Shelf        smallint      NOT NULL,
                Location     smallint      NOT NULL,
                Place        nvarchar(30)  COLLATE DATABASE_DEFAULT NULL,
                Status       nvarchar(1)   COLLATE DATABASE_DEFAULT NULL,
                Occupied     nvarchar(1)   COLLATE DATABASE_DEFAULT NULL,
                Proposed     nvarchar(1)   COLLATE DATABASE_DEFAULT NULL,
                PercentAfter int           NULL,
                Reason       nvarchar(100) COLLATE DATABASE_DEFAULT NULL,
                PRIMARY KEY (IDCodeBar, ID)
            );
    END TRY
    BEGIN CATCH
        IF ERROR_NUMBER() <> 2714
            THROW;
    END CATCH

    BEGIN TRY
        IF OBJECT_ID(N'tempdb..##Temp_mag_PurchesOrders_GiveOut') IS NULL
            CREATE TABLE ##Temp_mag_PurchesOrders_GiveOut (
                HostName        nvarchar(128) COLLATE DATABASE_DEFAULT NULL,
                SPID            int           NOT NULL,
                UserSign        smallint      NULL,
                Aplication      nvarchar(10)  COLLATE DATABASE_DEFAULT NULL,
                DocEntry        int           NOT NULL,
                UserSignGiveOut smallint      NULL,
                UNIQUE CLUSTERED (SPID, HostName, UserSign, Aplication, DocEntry)
            );
    END TRY
    BEGIN CATCH
        IF ERROR_NUMBER() <> 2714
            THROW;
    END CATCH

    BEGIN TRY
        IF OBJECT_ID(N'tempdb..##Temp_mag_ItemCode_GiveOut') IS NULL
            CREATE TABLE ##Temp_mag_ItemCode_GiveOut (
                HostName        nvarchar(128) COLLATE DATABASE_DEFAULT NULL,
                SPID            int           NOT NULL,
                UserSign        smallint      NULL,
                Aplication      nvarchar(10)  COLLATE DATABASE_DEFAULT NULL,
                ItemCode        nvarchar(20)  COLLATE DATABASE_DEFAULT NOT NULL,
                UserSignGiveOut smallint      NULL,
                UNIQUE CLUSTERED (SPID, HostName, UserSign, Aplication, ItemCode)
            );
    END TRY
    BEGIN CATCH
        IF ERROR_NUMBER() <> 2714
            THROW;
    END CATCH
    RETURN 0;
END
GO
