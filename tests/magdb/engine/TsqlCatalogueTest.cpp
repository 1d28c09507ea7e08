#include "engine/SystemCatalogue.h"
#include "engine/SystemTypes.h"
#include "magdb/engine/TsqlRunner.h"

#include <gtest/gtest.h>

// What T-SQL and drivers can ask about the database.

namespace {

class Catalogue : public testing::Test {
protected:
    void SetUp() override {
        m_runner.run(
            "CREATE TABLE Towar (Id int IDENTITY(1,1) NOT NULL CONSTRAINT PK_Towar PRIMARY KEY, Nazwa "
            "nvarchar(50) "
            "NOT NULL CONSTRAINT DF_Nazwa DEFAULT N'-', Cena decimal(10,2) NULL CONSTRAINT CK_Cena CHECK "
            "(Cena >= "
            "0), Opis varchar(max), CONSTRAINT UQ_Nazwa UNIQUE (Nazwa))");
        m_runner.run(
            "CREATE TABLE Ruch (Lp int NOT NULL, Towar int CONSTRAINT FK_Ruch REFERENCES Towar (Id) ON "
            "DELETE "
            "CASCADE)");
        m_runner.run("CREATE INDEX IX_Ruch ON Ruch (Towar DESC, Lp)");
        m_runner.run("CREATE VIEW Widok AS SELECT Id, Nazwa AS Kod FROM Towar");
        m_runner.run(
            "CREATE PROCEDURE Dodaj @Id int, @Nazwa nvarchar(50) = NULL, @Ile decimal(10,2) OUTPUT, @Kiedy "
            "datetime "
            "AS\nRETURN 0");
        m_runner.run("CREATE FUNCTION Ile (@a int) RETURNS money AS BEGIN RETURN @a END");
        m_runner.run("CREATE FUNCTION Lista (@a int) RETURNS TABLE AS RETURN (SELECT @a AS v)");
    }
    std::string run(std::string_view sql) { return m_runner.values(sql); }

    TsqlRunner m_runner;
};

TEST_F(Catalogue, ListsObjectsWithTheirTypes) {
    EXPECT_EQ(run("SELECT name, type FROM sys.objects WHERE parent_object_id = 0 ORDER BY name"),
              "'Dodaj'|'P';'Ile'|'FN';'Lista'|'IF';'Ruch'|'U';'Towar'|'U';'Widok'|'V'");
    EXPECT_EQ(run("SELECT o.name, o.type FROM sys.objects o JOIN sys.tables t ON t.object_id = "
                  "o.parent_object_id WHERE "
                  "t.name = 'Towar' ORDER BY o.name"),
              "'CK_Cena'|'C';'DF_Nazwa'|'D';'PK_Towar'|'PK';'UQ_Nazwa'|'UQ'");
    EXPECT_EQ(run("SELECT name FROM sysobjects WHERE xtype = 'P'"), "'Dodaj'");
    EXPECT_EQ(run("SELECT name FROM dbo.sysobjects WHERE type = 'U' ORDER BY name"), "'Ruch';'Towar'");
    EXPECT_EQ(run("SELECT name FROM sys.views"), "'Widok'");
    EXPECT_EQ(run("SELECT name FROM sys.procedures"), "'Dodaj'");
}

TEST_F(Catalogue, NumbersOfObjectsAndConstraintsDiffer) {
    EXPECT_EQ(run("SELECT COUNT(*) - COUNT(DISTINCT object_id) FROM sys.objects"), "0");
}

TEST_F(Catalogue, ListsColumnsOfTablesAndViews) {
    EXPECT_EQ(run("SELECT c.name, c.column_id, t.name, c.max_length, c.precision, c.scale, c.is_nullable, "
                  "c.is_identity FROM "
                  "sys.columns c JOIN sys.types t ON t.user_type_id = c.user_type_id WHERE c.object_id = "
                  "OBJECT_ID('Towar') ORDER BY c.column_id"),
              "'Id'|1|'int'|4|10|0|0|1;'Nazwa'|2|'nvarchar'|100|0|0|0|0;'Cena'|3|'decimal'|9|10|2|1|0;"
              "'Opis'|4|'varchar'|-1|0|0|1|0");
    EXPECT_EQ(run("SELECT name FROM syscolumns WHERE id = OBJECT_ID('Widok') ORDER BY colid"), "'Id';'Kod'");
    EXPECT_EQ(run("SELECT COLUMN_NAME, DATA_TYPE, CHARACTER_MAXIMUM_LENGTH, NUMERIC_PRECISION, IS_NULLABLE, "
                  "COLUMN_DEFAULT FROM INFORMATION_SCHEMA.COLUMNS WHERE TABLE_NAME = 'Towar' ORDER BY "
                  "ORDINAL_POSITION"),
              "'Id'|'int'|NULL|10|'NO'|NULL;'Nazwa'|'nvarchar'|50|NULL|'NO'|'(N'-')';"
              "'Cena'|'decimal'|NULL|10|'YES'|NULL;'Opis'|'varchar'|-1|NULL|'YES'|NULL");
}

TEST_F(Catalogue, ListsKeysAndIndexes) {
    EXPECT_EQ(run("SELECT i.name, i.is_unique, i.is_primary_key FROM sys.indexes i WHERE i.object_id = "
                  "OBJECT_ID('Towar') AND "
                  "i.index_id > 0 ORDER BY i.name"),
              "'PK_Towar'|1|1;'UQ_Nazwa'|1|0");
    EXPECT_EQ(
        run("SELECT c.name, k.is_descending_key FROM sys.indexes i JOIN sys.index_columns k ON k.object_id = "
            "i.object_id AND k.index_id = i.index_id JOIN sys.columns c ON c.object_id = k.object_id AND "
            "c.column_id = k.column_id WHERE i.name = 'IX_Ruch' ORDER BY k.key_ordinal"),
        "'Towar'|1;'Lp'|0");
    EXPECT_EQ(run("SELECT f.name, OBJECT_NAME(f.referenced_object_id), f.delete_referential_action_desc FROM "
                  "sys.foreign_keys f"),
              "'FK_Ruch'|'Towar'|'CASCADE'");
    EXPECT_EQ(
        run("SELECT CONSTRAINT_NAME, CONSTRAINT_TYPE FROM INFORMATION_SCHEMA.TABLE_CONSTRAINTS ORDER BY 1"),
        "'CK_Cena'|'CHECK';'FK_Ruch'|'FOREIGN KEY';'PK_Towar'|'PRIMARY KEY';'UQ_Nazwa'|'UNIQUE'");
}

TEST_F(Catalogue, ListsParametersAndRoutines) {
    EXPECT_EQ(run("SELECT name, parameter_id, TYPE_NAME(user_type_id), is_output FROM sys.parameters WHERE "
                  "object_id = "
                  "OBJECT_ID('Dodaj') ORDER BY parameter_id"),
              "'@Id'|1|'int'|0;'@Nazwa'|2|'nvarchar'|0;'@Ile'|3|'decimal'|1;'@Kiedy'|4|'datetime'|0");
    EXPECT_EQ(run("SELECT ROUTINE_NAME, ROUTINE_TYPE, DATA_TYPE FROM INFORMATION_SCHEMA.ROUTINES ORDER BY 1"),
              "'Dodaj'|'PROCEDURE'|NULL;'Ile'|'FUNCTION'|'money';'Lista'|'FUNCTION'|'TABLE'");
    EXPECT_EQ(run("SELECT PARAMETER_NAME, PARAMETER_MODE FROM INFORMATION_SCHEMA.PARAMETERS WHERE "
                  "SPECIFIC_NAME = 'Ile' "
                  "ORDER BY ORDINAL_POSITION"),
              "''|'OUT';'@a'|'IN'");
}

TEST_F(Catalogue, KnowsTheDatabases) {
    EXPECT_EQ(run("SELECT name FROM sysdatabases ORDER BY dbid"), "'master';'tempdb';'Testowa'");
    EXPECT_EQ(run("SELECT name FROM master..sysdatabases WHERE name = 'testowa'"), "'Testowa'");
    EXPECT_EQ(run("SELECT name FROM master.dbo.sysdatabases WHERE dbid > 4"), "'Testowa'");
    EXPECT_EQ(run("SELECT DB_NAME(), DB_ID(), DB_ID('master'), DB_NAME(2), DB_ID('nowhere')"),
              "'Testowa'|5|1|'tempdb'|NULL");
    EXPECT_EQ(run("SELECT COUNT(*) FROM master..sysobjects WHERE xtype = 'U'"), "0");
    EXPECT_EQ(run("USE master SELECT DB_NAME(), OBJECT_ID('Towar'), OBJECT_NAME(OBJECT_ID('Testowa..Towar')) "
                  "USE Testowa"),
              "'master'|NULL|NULL");
}

TEST_F(Catalogue, AnswersMetadataFunctions) {
    EXPECT_EQ(
        run("SELECT OBJECT_NAME(OBJECT_ID('dbo.towar')), OBJECT_ID('Towar', 'P'), OBJECT_ID('nowhere'), "
            "OBJECT_ID('[dbo].[Widok]', 'V') - OBJECT_ID('Widok')"),
        "'Towar'|NULL|NULL|0");
    EXPECT_EQ(
        run("SELECT COL_LENGTH('Towar', 'nazwa'), COL_LENGTH('Towar', 'x'), COL_NAME(OBJECT_ID('Towar'), 3)"),
        "100|NULL|'Cena'");
    EXPECT_EQ(
        run("SELECT OBJECTPROPERTY(OBJECT_ID('Dodaj'), 'IsProcedure'), OBJECTPROPERTY(OBJECT_ID('Towar'), "
            "'IsUserTable'), OBJECTPROPERTY(OBJECT_ID('Towar'), 'IsView'), OBJECTPROPERTY(1, 'IsView')"),
        "1|1|0|NULL");
    EXPECT_EQ(run("SELECT COLUMNPROPERTY(OBJECT_ID('Towar'), 'Id', 'IsIdentity'), "
                  "COLUMNPROPERTY(OBJECT_ID('Towar'), 'Cena', "
                  "'AllowsNull'), COLUMNPROPERTY(OBJECT_ID('Towar'), 'Cena', 'Scale')"),
              "1|1|2");
    EXPECT_EQ(
        run("SELECT SCHEMA_NAME(), SCHEMA_ID('sys'), SCHEMA_ID('x'), TYPE_NAME(56), TYPE_ID('nvarchar')"),
        "'dbo'|4|NULL|'int'|231");
    EXPECT_EQ(run("SELECT SERVERPROPERTY('ProductVersion'), SERVERPROPERTY('nothing')"),
              "'14.0.1000.169'|NULL");
    EXPECT_EQ(run("SELECT PARSENAME('a.[b c].d', 1), PARSENAME('a.[b c].d', 2), PARSENAME('a', 2)"),
              "'d'|'b c'|NULL");
    EXPECT_EQ(run("SELECT OBJECT_DEFINITION(OBJECT_ID('Widok'))"),
              "'CREATE VIEW Widok AS SELECT Id, Nazwa AS Kod FROM Towar'");
}

TEST_F(Catalogue, SprocColumnsHasTheDocumentedColumns) {
    EXPECT_EQ(
        m_runner.names("EXEC sp_sproc_columns 'Dodaj'"),
        "PROCEDURE_QUALIFIER|PROCEDURE_OWNER|PROCEDURE_NAME|COLUMN_NAME|COLUMN_TYPE|DATA_TYPE|TYPE_NAME|"
        "PRECISION|"
        "LENGTH|SCALE|RADIX|NULLABLE|REMARKS|COLUMN_DEF|SQL_DATA_TYPE|SQL_DATETIME_SUB|CHAR_OCTET_LENGTH|"
        "ORDINAL_POSITION|IS_NULLABLE|SS_DATA_TYPE");
}

TEST_F(Catalogue, SprocColumnsListsTheReturnValueFirst) {
    EXPECT_EQ(
        run("EXEC sp_sproc_columns N'Dodaj', @ODBCVer = 3"),
        "'Testowa'|'dbo'|'Dodaj;1'|'@RETURN_VALUE'|5|4|'int'|10|4|0|10|0|NULL|NULL|4|NULL|NULL|0|'NO'|56;"
        "'Testowa'|'dbo'|'Dodaj;1'|'@Id'|1|4|'int'|10|4|0|10|1|NULL|NULL|4|NULL|NULL|1|'YES'|38;"
        "'Testowa'|'dbo'|'Dodaj;1'|'@Nazwa'|1|-9|'nvarchar'|50|100|NULL|NULL|1|NULL|NULL|-9|NULL|100|2|'YES'|"
        "39;"
        "'Testowa'|'dbo'|'Dodaj;1'|'@Ile'|2|3|'decimal'|10|12|2|10|1|NULL|NULL|3|NULL|NULL|3|'YES'|106;"
        "'Testowa'|'dbo'|'Dodaj;1'|'@Kiedy'|1|93|'datetime'|23|16|3|NULL|1|NULL|NULL|9|3|NULL|4|'YES'|111");
}

TEST_F(Catalogue, SprocColumnsAnswersOldClientsWithOldTypes) {
    const std::string rows = run("EXEC sp_sproc_columns 'Dodaj', @column_name = '@Kiedy'");
    EXPECT_NE(rows.find("'@Kiedy'|1|11|'datetime'"), std::string::npos) << rows;
}

TEST_F(Catalogue, SprocColumnsTakesPatternsAndPlainNames) {
    EXPECT_EQ(run("EXEC sp_sproc_columns 'Doda_', 'dbo', 'Testowa', '@I%', 3").substr(0, 38),
              "'Testowa'|'dbo'|'Dodaj;1'|'@Id'|1|4|'i");
    EXPECT_EQ(run("EXEC sp_sproc_columns 'nowhere'"), "");
    EXPECT_EQ(run("EXEC sp_sproc_columns 'Doda_', @fUsePattern = 0"), "");
    EXPECT_EQ(run("EXEC sp_sproc_columns 'Dodaj', 'other'"), "");
}

TEST_F(Catalogue, DriverProceduresAnswer) {
    EXPECT_EQ(run("EXEC sp_tables"),
              "'Testowa'|'dbo'|'Ruch'|'TABLE'|NULL;'Testowa'|'dbo'|'Towar'|'TABLE'|NULL;'Testowa'|'dbo'|'"
              "Widok'|'VIEW'|NULL");
    EXPECT_EQ(run("EXEC sp_tables 'W%', @table_type = \"'VIEW'\""), "'Testowa'|'dbo'|'Widok'|'VIEW'|NULL");
    EXPECT_EQ(run("EXEC sp_tables @table_name = '', @table_owner = '', @table_qualifier = '%'"),
              "'master'|NULL|NULL|NULL|NULL;'tempdb'|NULL|NULL|NULL|NULL;'Testowa'|NULL|NULL|NULL|NULL");
    EXPECT_EQ(run("EXEC sp_pkeys 'Towar'"), "'Testowa'|'dbo'|'Towar'|'Id'|1|'PK_Towar'");
    EXPECT_EQ(run("EXEC sp_fkeys 'Towar'"),
              "'Testowa'|'dbo'|'Towar'|'Id'|'Testowa'|'dbo'|'Ruch'|'Towar'|1|1|0|'FK_Ruch'|'PK_Towar'|7");
    EXPECT_EQ(run("EXEC sp_stored_procedures 'D%'"), "'Testowa'|'dbo'|'Dodaj;1'|-1|-1|-1|NULL|1");
    EXPECT_EQ(run("EXEC sp_databases"), "'master'|NULL|NULL;'tempdb'|NULL|NULL;'Testowa'|NULL|NULL");
    EXPECT_EQ(run("EXEC sp_columns 'Towar', @column_name = 'Id', @ODBCVer = 3"),
              "'Testowa'|'dbo'|'Towar'|'Id'|4|'int identity'|10|4|0|10|0|NULL|NULL|4|NULL|NULL|1|'NO'|56");
    EXPECT_EQ(run("EXEC sp_special_columns 'Towar'"), "0|'Id'|4|'int identity'|10|4|0|1");
    EXPECT_EQ(run("EXEC sp_statistics 'Ruch'"),
              "'Testowa'|'dbo'|'Ruch'|NULL|NULL|NULL|0|NULL|NULL|NULL|NULL|NULL|NULL;"
              "'Testowa'|'dbo'|'Ruch'|1|'Ruch'|'IX_Ruch'|3|1|'Towar'|'D'|NULL|NULL|NULL;"
              "'Testowa'|'dbo'|'Ruch'|1|'Ruch'|'IX_Ruch'|3|2|'Lp'|'A'|NULL|NULL|NULL");
    EXPECT_EQ(run("EXEC sp_datatype_info 4, 3").substr(0, 13), "'int'|4|10|NU");
    EXPECT_EQ(run("EXEC sp_server_info 2"), "2|'DBMS_VER'|'14.0.1000.169'");
}

TEST_F(Catalogue, HelpTextGivesTheLinesOfTheSource) {
    EXPECT_EQ(run("EXEC sp_helptext 'Dodaj'"),
              "'CREATE PROCEDURE Dodaj @Id int, @Nazwa nvarchar(50) = NULL, @Ile decimal(10,2) OUTPUT, "
              "@Kiedy datetime AS\n"
              "';'RETURN 0'");
    EXPECT_EQ(
        m_runner.messages("EXEC sp_helptext 'nowhere'"),
        "15009 The object 'nowhere' does not exist in database 'Testowa' or is invalid for this operation.");
}

TEST_F(Catalogue, EverySystemProcedureParses) {
    for (const char* name : {"sp_sproc_columns", "sp_stored_procedures", "sp_tables", "sp_columns",
                             "sp_pkeys", "sp_fkeys", "sp_statistics", "sp_special_columns",
                             "sp_datatype_info", "sp_databases", "sp_helptext", "SP_Server_Info"}) {
        const auto module = magdb::findSystemProcedure(name);
        ASSERT_NE(module, nullptr) << name;
        EXPECT_TRUE(module->system);
    }
    EXPECT_EQ(magdb::findSystemProcedure("sp_nothing"), nullptr);
}

TEST(TypeFacts, DescribeLongTypesForOdbc) {
    const auto facts = magdb::odbcFacts(magdb::textType(magdb::TypeId::NVarChar, -1), true);
    EXPECT_EQ(facts.type, -10);
    EXPECT_EQ(facts.precision, 1073741823);
    EXPECT_EQ(facts.length, 2147483646);
    EXPECT_EQ(magdb::storedLength(magdb::decimalType(19, 4)), 9);
    EXPECT_EQ(magdb::storedLength(magdb::decimalType(38, 4)), 17);
}

}  // namespace
