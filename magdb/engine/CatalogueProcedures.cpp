#include "engine/SystemCatalogue.h"
#include "engine/Text.h"
#include "tsql/Parser.h"

#include <array>
#include <unordered_map>

// The catalogue procedures of drivers. Their columns, their order and their names are fixed by the protocol
// between driver and server: drivers read them by position.

namespace magdb {

namespace {

constexpr const char* kSprocColumns = R"(CREATE PROCEDURE sp_sproc_columns
    @procedure_name nvarchar(390) = N'%', @procedure_owner nvarchar(384) = NULL,
    @procedure_qualifier nvarchar(128) = NULL, @column_name nvarchar(384) = N'%', @ODBCVer int = 2,
    @fUsePattern bit = 1 AS
SET NOCOUNT ON
SELECT PROCEDURE_QUALIFIER, PROCEDURE_OWNER, PROCEDURE_NAME, COLUMN_NAME, COLUMN_TYPE,
    CONVERT(smallint, CASE WHEN @ODBCVer >= 3 THEN DATA_TYPE ELSE ODBC2_TYPE END) AS DATA_TYPE, TYPE_NAME,
    [PRECISION], LENGTH, SCALE, RADIX, NULLABLE, REMARKS, COLUMN_DEF, SQL_DATA_TYPE, SQL_DATETIME_SUB,
    CHAR_OCTET_LENGTH, ORDINAL_POSITION, IS_NULLABLE, SS_DATA_TYPE
FROM sys.spt_sproc_columns
WHERE (@procedure_name IS NULL OR @fUsePattern = 1 AND PROCEDURE_NAME LIKE @procedure_name + N';1'
        OR @fUsePattern = 1 AND PROCEDURE_NAME LIKE @procedure_name
        OR PROCEDURE_NAME = @procedure_name + N';1' OR PROCEDURE_NAME = @procedure_name)
    AND (@procedure_owner IS NULL OR PROCEDURE_OWNER = @procedure_owner
        OR @fUsePattern = 1 AND PROCEDURE_OWNER LIKE @procedure_owner)
    AND (@procedure_qualifier IS NULL OR PROCEDURE_QUALIFIER = @procedure_qualifier)
    AND (@column_name IS NULL OR COLUMN_NAME = @column_name
        OR @fUsePattern = 1 AND COLUMN_NAME LIKE @column_name)
ORDER BY 1, 2, 3, 18
)";

constexpr const char* kStoredProcedures = R"(CREATE PROCEDURE sp_stored_procedures
    @sp_name nvarchar(390) = NULL, @sp_owner nvarchar(384) = NULL, @sp_qualifier nvarchar(128) = NULL,
    @fUsePattern bit = 1 AS
SET NOCOUNT ON
SELECT CONVERT(nvarchar(128), DB_NAME()) AS PROCEDURE_QUALIFIER, CONVERT(nvarchar(128), N'dbo') AS PROCEDURE_OWNER,
    CONVERT(nvarchar(134), name + N';1') AS PROCEDURE_NAME, -1 AS NUM_INPUT_PARAMS, -1 AS NUM_OUTPUT_PARAMS,
    -1 AS NUM_RESULT_SETS, CONVERT(varchar(254), NULL) AS REMARKS,
    CONVERT(smallint, CASE type WHEN 'P' THEN 1 ELSE 2 END) AS PROCEDURE_TYPE
FROM sys.objects
WHERE type IN ('P', 'FN', 'IF', 'TF')
    AND (@sp_name IS NULL OR name = @sp_name OR @fUsePattern = 1 AND name LIKE @sp_name)
    AND (@sp_owner IS NULL OR N'dbo' = @sp_owner OR @fUsePattern = 1 AND N'dbo' LIKE @sp_owner)
    AND (@sp_qualifier IS NULL OR DB_NAME() = @sp_qualifier)
ORDER BY 1, 2, 3
)";

constexpr const char* kTables = R"(CREATE PROCEDURE sp_tables
    @table_name nvarchar(384) = NULL, @table_owner nvarchar(384) = NULL, @table_qualifier nvarchar(128) = NULL,
    @table_type varchar(100) = NULL, @fUsePattern bit = 1 AS
SET NOCOUNT ON
IF @table_qualifier = N'%' AND @table_owner = N'' AND @table_name = N''
    SELECT name AS TABLE_QUALIFIER, CONVERT(nvarchar(128), NULL) AS TABLE_OWNER,
        CONVERT(nvarchar(128), NULL) AS TABLE_NAME, CONVERT(varchar(32), NULL) AS TABLE_TYPE,
        CONVERT(varchar(254), NULL) AS REMARKS
    FROM sys.databases ORDER BY 1
ELSE IF @table_qualifier = N'' AND @table_owner = N'%' AND @table_name = N''
    SELECT CONVERT(nvarchar(128), NULL) AS TABLE_QUALIFIER, name AS TABLE_OWNER,
        CONVERT(nvarchar(128), NULL) AS TABLE_NAME, CONVERT(varchar(32), NULL) AS TABLE_TYPE,
        CONVERT(varchar(254), NULL) AS REMARKS
    FROM sys.schemas ORDER BY 2
ELSE IF @table_qualifier = N'' AND @table_owner = N'' AND @table_name = N'' AND @table_type = '%'
    SELECT CONVERT(nvarchar(128), NULL) AS TABLE_QUALIFIER, CONVERT(nvarchar(128), NULL) AS TABLE_OWNER,
        CONVERT(nvarchar(128), NULL) AS TABLE_NAME, CONVERT(varchar(32), t) AS TABLE_TYPE,
        CONVERT(varchar(254), NULL) AS REMARKS
    FROM (VALUES ('SYSTEM TABLE'), ('TABLE'), ('VIEW')) AS kinds (t) ORDER BY 4
ELSE
    SELECT CONVERT(nvarchar(128), TABLE_CATALOG) AS TABLE_QUALIFIER,
        CONVERT(nvarchar(128), TABLE_SCHEMA) AS TABLE_OWNER, TABLE_NAME,
        CONVERT(varchar(32), CASE TABLE_TYPE WHEN 'BASE TABLE' THEN 'TABLE' ELSE 'VIEW' END) AS TABLE_TYPE,
        CONVERT(varchar(254), NULL) AS REMARKS
    FROM INFORMATION_SCHEMA.TABLES
    WHERE (@table_name IS NULL OR TABLE_NAME = @table_name OR @fUsePattern = 1 AND TABLE_NAME LIKE @table_name)
        AND (@table_owner IS NULL OR TABLE_SCHEMA = @table_owner
            OR @fUsePattern = 1 AND TABLE_SCHEMA LIKE @table_owner)
        AND (@table_qualifier IS NULL OR TABLE_CATALOG = @table_qualifier
            OR @fUsePattern = 1 AND TABLE_CATALOG LIKE @table_qualifier)
        AND (@table_type IS NULL OR @table_type IN ('', '%')
            OR TABLE_TYPE = 'VIEW' AND CHARINDEX('VIEW', @table_type) > 0
            OR TABLE_TYPE = 'BASE TABLE' AND (CHARINDEX('''TABLE''', @table_type) > 0 OR @table_type = 'TABLE'))
    ORDER BY 4, 1, 2, 3
)";

constexpr const char* kColumns = R"(CREATE PROCEDURE sp_columns
    @table_name nvarchar(384), @table_owner nvarchar(384) = NULL, @table_qualifier nvarchar(128) = NULL,
    @column_name nvarchar(384) = NULL, @ODBCVer int = 2, @fUsePattern bit = 1 AS
SET NOCOUNT ON
SELECT TABLE_QUALIFIER, TABLE_OWNER, TABLE_NAME, COLUMN_NAME,
    CONVERT(smallint, CASE WHEN @ODBCVer >= 3 THEN DATA_TYPE ELSE ODBC2_TYPE END) AS DATA_TYPE, TYPE_NAME,
    [PRECISION], LENGTH, SCALE, RADIX, NULLABLE, REMARKS, COLUMN_DEF, SQL_DATA_TYPE, SQL_DATETIME_SUB,
    CHAR_OCTET_LENGTH, ORDINAL_POSITION, IS_NULLABLE, SS_DATA_TYPE
FROM sys.spt_columns
WHERE (TABLE_NAME = @table_name OR @fUsePattern = 1 AND TABLE_NAME LIKE @table_name)
    AND (@table_owner IS NULL OR TABLE_OWNER = @table_owner OR @fUsePattern = 1 AND TABLE_OWNER LIKE @table_owner)
    AND (@table_qualifier IS NULL OR TABLE_QUALIFIER = @table_qualifier)
    AND (@column_name IS NULL OR COLUMN_NAME = @column_name
        OR @fUsePattern = 1 AND COLUMN_NAME LIKE @column_name)
ORDER BY 1, 2, 3, 17
)";

constexpr const char* kPrimaryKeys = R"(CREATE PROCEDURE sp_pkeys
    @table_name nvarchar(128), @table_owner nvarchar(128) = NULL, @table_qualifier nvarchar(128) = NULL AS
SET NOCOUNT ON
SELECT CONVERT(nvarchar(128), DB_NAME()) AS TABLE_QUALIFIER, CONVERT(nvarchar(128), N'dbo') AS TABLE_OWNER,
    t.name AS TABLE_NAME, c.name AS COLUMN_NAME, CONVERT(smallint, i.key_ordinal) AS KEY_SEQ, k.name AS PK_NAME
FROM sys.tables t
    INNER JOIN sys.key_constraints k ON k.parent_object_id = t.object_id AND k.type = 'PK'
    INNER JOIN sys.index_columns i ON i.object_id = t.object_id AND i.index_id = k.unique_index_id
    INNER JOIN sys.columns c ON c.object_id = t.object_id AND c.column_id = i.column_id
WHERE t.name = @table_name AND (@table_owner IS NULL OR @table_owner = N'dbo')
    AND (@table_qualifier IS NULL OR @table_qualifier = DB_NAME())
ORDER BY 1, 2, 3, 5
)";

constexpr const char* kForeignKeys = R"(CREATE PROCEDURE sp_fkeys
    @pktable_name nvarchar(128) = NULL, @pktable_owner nvarchar(128) = NULL,
    @pktable_qualifier nvarchar(128) = NULL, @fktable_name nvarchar(128) = NULL,
    @fktable_owner nvarchar(128) = NULL, @fktable_qualifier nvarchar(128) = NULL AS
SET NOCOUNT ON
SELECT CONVERT(nvarchar(128), DB_NAME()) AS PKTABLE_QUALIFIER, CONVERT(nvarchar(128), N'dbo') AS PKTABLE_OWNER,
    p.name AS PKTABLE_NAME, pc.name AS PKCOLUMN_NAME, CONVERT(nvarchar(128), DB_NAME()) AS FKTABLE_QUALIFIER,
    CONVERT(nvarchar(128), N'dbo') AS FKTABLE_OWNER, f.name AS FKTABLE_NAME, fc.name AS FKCOLUMN_NAME,
    CONVERT(smallint, kc.constraint_column_id) AS KEY_SEQ,
    CONVERT(smallint, CASE k.update_referential_action WHEN 1 THEN 0 WHEN 0 THEN 1 ELSE k.update_referential_action
        END) AS UPDATE_RULE,
    CONVERT(smallint, CASE k.delete_referential_action WHEN 1 THEN 0 WHEN 0 THEN 1 ELSE k.delete_referential_action
        END) AS DELETE_RULE,
    k.name AS FK_NAME, pk.name AS PK_NAME, CONVERT(smallint, 7) AS DEFERRABILITY
FROM sys.foreign_keys k
    INNER JOIN sys.foreign_key_columns kc ON kc.constraint_object_id = k.object_id
    INNER JOIN sys.tables p ON p.object_id = k.referenced_object_id
    INNER JOIN sys.columns pc ON pc.object_id = p.object_id AND pc.column_id = kc.referenced_column_id
    INNER JOIN sys.tables f ON f.object_id = k.parent_object_id
    INNER JOIN sys.columns fc ON fc.object_id = f.object_id AND fc.column_id = kc.parent_column_id
    LEFT JOIN sys.key_constraints pk ON pk.parent_object_id = p.object_id AND pk.type = 'PK'
WHERE (@pktable_name IS NULL OR p.name = @pktable_name) AND (@fktable_name IS NULL OR f.name = @fktable_name)
ORDER BY 5, 6, 7, 9
)";

constexpr const char* kStatistics = R"(CREATE PROCEDURE sp_statistics
    @table_name nvarchar(128), @table_owner nvarchar(128) = NULL, @table_qualifier nvarchar(128) = NULL,
    @index_name nvarchar(128) = N'%', @is_unique char(1) = 'N', @accuracy char(1) = 'Q' AS
SET NOCOUNT ON
SELECT CONVERT(nvarchar(128), DB_NAME()) AS TABLE_QUALIFIER, CONVERT(nvarchar(128), N'dbo') AS TABLE_OWNER,
    t.name AS TABLE_NAME, CONVERT(smallint, CASE i.is_unique WHEN 1 THEN 0 ELSE 1 END) AS NON_UNIQUE,
    t.name AS INDEX_QUALIFIER, i.name AS INDEX_NAME,
    CONVERT(smallint, CASE i.type WHEN 1 THEN 1 ELSE 3 END) AS TYPE, CONVERT(smallint, k.key_ordinal) AS SEQ_IN_INDEX,
    c.name AS COLUMN_NAME, CONVERT(char(1), CASE k.is_descending_key WHEN 1 THEN 'D' ELSE 'A' END) AS COLLATION,
    CONVERT(int, NULL) AS CARDINALITY, CONVERT(int, NULL) AS PAGES, CONVERT(varchar(128), NULL) AS FILTER_CONDITION
FROM sys.tables t
    INNER JOIN sys.indexes i ON i.object_id = t.object_id AND i.index_id > 0
    INNER JOIN sys.index_columns k ON k.object_id = t.object_id AND k.index_id = i.index_id
    INNER JOIN sys.columns c ON c.object_id = t.object_id AND c.column_id = k.column_id
WHERE t.name = @table_name AND (@index_name IS NULL OR i.name LIKE @index_name)
    AND (@is_unique <> 'Y' OR i.is_unique = 1)
UNION ALL
SELECT CONVERT(nvarchar(128), DB_NAME()), CONVERT(nvarchar(128), N'dbo'), t.name, NULL, NULL, NULL,
    CONVERT(smallint, 0), NULL, NULL, NULL, NULL, NULL, NULL
FROM sys.tables t WHERE t.name = @table_name
ORDER BY 4, 7, 6, 8
)";

constexpr const char* kSpecialColumns = R"(CREATE PROCEDURE sp_special_columns
    @table_name nvarchar(390), @table_owner nvarchar(384) = NULL, @table_qualifier nvarchar(128) = NULL,
    @col_type char(1) = 'R', @scope char(1) = 'T', @nullable char(1) = 'U', @ODBCVer int = 2 AS
SET NOCOUNT ON
SELECT CONVERT(smallint, CASE @col_type WHEN 'R' THEN 0 ELSE NULL END) AS SCOPE, c.COLUMN_NAME,
    CONVERT(smallint, CASE WHEN @ODBCVer >= 3 THEN c.DATA_TYPE ELSE c.ODBC2_TYPE END) AS DATA_TYPE, c.TYPE_NAME,
    c.[PRECISION], c.LENGTH, c.SCALE, CONVERT(smallint, 1) AS PSEUDO_COLUMN
FROM sys.tables t
    INNER JOIN sys.key_constraints k ON k.parent_object_id = t.object_id AND k.type = 'PK'
    INNER JOIN sys.index_columns i ON i.object_id = t.object_id AND i.index_id = k.unique_index_id
    INNER JOIN sys.spt_columns c ON c.TABLE_NAME = t.name AND c.ORDINAL_POSITION = i.column_id
WHERE t.name = @table_name AND @col_type = 'R'
ORDER BY i.key_ordinal
)";

constexpr const char* kDatatypeInfo = R"(CREATE PROCEDURE sp_datatype_info
    @data_type int = 0, @ODBCVer tinyint = 2 AS
SET NOCOUNT ON
SELECT TYPE_NAME, CONVERT(smallint, CASE WHEN @ODBCVer >= 3 THEN DATA_TYPE ELSE ODBC2_TYPE END) AS DATA_TYPE,
    [PRECISION], LITERAL_PREFIX, LITERAL_SUFFIX, CREATE_PARAMS, NULLABLE, CASE_SENSITIVE, SEARCHABLE,
    UNSIGNED_ATTRIBUTE, MONEY, AUTO_INCREMENT, LOCAL_TYPE_NAME, MINIMUM_SCALE, MAXIMUM_SCALE, SQL_DATA_TYPE,
    SQL_DATETIME_SUB, NUM_PREC_RADIX, INTERVAL_PRECISION, USERTYPE
FROM sys.spt_datatype_info
WHERE @data_type = 0 OR CASE WHEN @ODBCVer >= 3 THEN DATA_TYPE ELSE ODBC2_TYPE END = @data_type
ORDER BY 2, 1
)";

// The same for clients that know the type date as such.
constexpr const char* kDatatypeInfo100 = R"(CREATE PROCEDURE sp_datatype_info_100
    @data_type int = 0, @ODBCVer tinyint = 2 AS
SET NOCOUNT ON
SELECT TYPE_NAME, DATA_TYPE, [PRECISION], LITERAL_PREFIX, LITERAL_SUFFIX, CREATE_PARAMS, NULLABLE, CASE_SENSITIVE,
    SEARCHABLE, UNSIGNED_ATTRIBUTE, MONEY, AUTO_INCREMENT, LOCAL_TYPE_NAME, MINIMUM_SCALE, MAXIMUM_SCALE,
    CONVERT(smallint, CASE TYPE_NAME WHEN 'date' THEN 9 ELSE SQL_DATA_TYPE END) AS SQL_DATA_TYPE,
    CONVERT(smallint, CASE TYPE_NAME WHEN 'date' THEN 1 ELSE SQL_DATETIME_SUB END) AS SQL_DATETIME_SUB,
    NUM_PREC_RADIX, INTERVAL_PRECISION, USERTYPE
FROM (SELECT TYPE_NAME,
        CONVERT(smallint, CASE WHEN TYPE_NAME = 'date' THEN CASE WHEN @ODBCVer >= 3 THEN 91 ELSE 9 END
            WHEN @ODBCVer >= 3 THEN DATA_TYPE ELSE ODBC2_TYPE END) AS DATA_TYPE,
        [PRECISION], LITERAL_PREFIX, LITERAL_SUFFIX, CREATE_PARAMS, NULLABLE, CASE_SENSITIVE, SEARCHABLE,
        UNSIGNED_ATTRIBUTE, MONEY, AUTO_INCREMENT, LOCAL_TYPE_NAME, MINIMUM_SCALE, MAXIMUM_SCALE, SQL_DATA_TYPE,
        SQL_DATETIME_SUB, NUM_PREC_RADIX, INTERVAL_PRECISION, USERTYPE
    FROM sys.spt_datatype_info) AS types
WHERE @data_type = 0 OR DATA_TYPE = @data_type
ORDER BY 2, 1
)";

constexpr const char* kDatabases = R"(CREATE PROCEDURE sp_databases AS
SET NOCOUNT ON
SELECT name AS DATABASE_NAME, CONVERT(int, NULL) AS DATABASE_SIZE, CONVERT(varchar(254), NULL) AS REMARKS
FROM sys.databases ORDER BY 1
)";

constexpr const char* kHelpText =
    R"(CREATE PROCEDURE sp_helptext @objname nvarchar(776), @columnname nvarchar(128) = NULL AS
SET NOCOUNT ON
DECLARE @id int = OBJECT_ID(@objname), @database nvarchar(128) = DB_NAME()
IF @id IS NULL
BEGIN
    RAISERROR (15009, -1, -1, @objname, @database)
    RETURN 1
END
IF NOT EXISTS (SELECT * FROM sys.spt_helptext WHERE id = @id)
BEGIN
    RAISERROR (15197, -1, -1, @objname)
    RETURN 1
END
SELECT Text FROM sys.spt_helptext WHERE id = @id ORDER BY line
RETURN 0
)";

constexpr const char* kServerInfo = R"(CREATE PROCEDURE sp_server_info @attribute_id int = NULL AS
SET NOCOUNT ON
SELECT attribute_id, CONVERT(varchar(60), attribute_name) AS attribute_name,
    CONVERT(varchar(255), attribute_value) AS attribute_value
FROM (VALUES (1, 'DBMS_NAME', 'Microsoft SQL Server'),
    (2, 'DBMS_VER', CONVERT(varchar(255), SERVERPROPERTY('ProductVersion'))),
    (10, 'OWNER_TERM', 'owner'), (11, 'TABLE_TERM', 'table'), (12, 'MAX_OWNER_NAME_LENGTH', '128'),
    (13, 'TABLE_LENGTH', '128'), (14, 'MAX_QUAL_LENGTH', '128'), (15, 'COLUMN_LENGTH', '128'),
    (16, 'IDENTIFIER_CASE', 'MIXED'), (17, 'TX_ISOLATION', '2'), (18, 'COLLATION_SEQ', 'collation=Polish_CI_AS'),
    (19, 'SAVEPOINT_SUPPORT', 'Y'), (20, 'MULTI_RESULT_SETS', 'Y'), (22, 'ACCESSIBLE_TABLES', 'Y'),
    (100, 'USERID_LENGTH', '128'), (101, 'QUALIFIER_TERM', 'database'), (102, 'NAMED_TRANSACTIONS', 'Y'),
    (103, 'SPROC_AS_LANGUAGE', 'Y'), (104, 'ACCESSIBLE_SPROC', 'Y'), (105, 'MAX_INDEX_COLS', '16'),
    (106, 'RENAME_TABLE', 'N'), (107, 'RENAME_COLUMN', 'N'), (108, 'DROP_COLUMN', 'Y'),
    (109, 'INCREASE_COLUMN_LENGTH', 'N'), (110, 'DDL_IN_TRANSACTION', 'Y'), (111, 'DESCENDING_INDEXES', 'Y'),
    (112, 'SP_RENAME', 'N'), (113, 'REMOTE_SPROC', 'N'), (500, 'SYS_SPROC_VERSION', '14.00.1000')
    ) AS info (attribute_id, attribute_name, attribute_value)
WHERE @attribute_id IS NULL OR attribute_id = @attribute_id
ORDER BY 1
)";

constexpr std::array kSources = {
    kSprocColumns,   kStoredProcedures, kTables,          kColumns,   kPrimaryKeys, kForeignKeys, kStatistics,
    kSpecialColumns, kDatatypeInfo,     kDatatypeInfo100, kDatabases, kHelpText,    kServerInfo};

/// All modules by name; parsed once for the program.
std::unordered_map<std::string, std::shared_ptr<const Module>> makeModules() {
    std::unordered_map<std::string, std::shared_ptr<const Module>> modules;
    std::int32_t id = -1000;  // numbers of system objects are negative
    for (const char* source : kSources) {
        auto module = std::make_shared<Module>();
        module->source = source;
        module->system = true;
        module->batch = tsql::parseBatch(module->source);
        module->id = id--;
        module->name = module->procedure().name.name;
        module->kind = ObjectKind::Procedure;
        modules.emplace(nameKey(module->name), std::move(module));
    }
    return modules;
}

}  // namespace

std::shared_ptr<const Module> findSystemProcedure(std::string_view name) {
    static const auto modules = makeModules();
    const auto found = modules.find(nameKey(name));
    return found == modules.end() ? nullptr : found->second;
}

}  // namespace magdb
