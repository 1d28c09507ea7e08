#pragma once

#include <cstdint>
#include <string_view>

namespace magdb::tsql {

// The reserved words of T-SQL: never a name unless in brackets or quotes.
#define MAGDB_TSQL_RESERVED_WORDS(X)                                    \
    X(Add, "ADD")                                                       \
    X(All, "ALL")                                                       \
    X(Alter, "ALTER")                                                   \
    X(And, "AND")                                                       \
    X(Any, "ANY")                                                       \
    X(As, "AS")                                                         \
    X(Asc, "ASC")                                                       \
    X(Authorization, "AUTHORIZATION")                                   \
    X(Backup, "BACKUP")                                                 \
    X(Begin, "BEGIN")                                                   \
    X(Between, "BETWEEN")                                               \
    X(Break, "BREAK")                                                   \
    X(Browse, "BROWSE")                                                 \
    X(Bulk, "BULK")                                                     \
    X(By, "BY")                                                         \
    X(Cascade, "CASCADE")                                               \
    X(Case, "CASE")                                                     \
    X(Check, "CHECK")                                                   \
    X(Checkpoint, "CHECKPOINT")                                         \
    X(Close, "CLOSE")                                                   \
    X(Clustered, "CLUSTERED")                                           \
    X(Coalesce, "COALESCE")                                             \
    X(Collate, "COLLATE")                                               \
    X(Column, "COLUMN")                                                 \
    X(Commit, "COMMIT")                                                 \
    X(Compute, "COMPUTE")                                               \
    X(Constraint, "CONSTRAINT")                                         \
    X(Contains, "CONTAINS")                                             \
    X(Containstable, "CONTAINSTABLE")                                   \
    X(Continue, "CONTINUE")                                             \
    X(Convert, "CONVERT")                                               \
    X(Create, "CREATE")                                                 \
    X(Cross, "CROSS")                                                   \
    X(Current, "CURRENT")                                               \
    X(CurrentDate, "CURRENT_DATE")                                      \
    X(CurrentTime, "CURRENT_TIME")                                      \
    X(CurrentTimestamp, "CURRENT_TIMESTAMP")                            \
    X(CurrentUser, "CURRENT_USER")                                      \
    X(Cursor, "CURSOR")                                                 \
    X(Database, "DATABASE")                                             \
    X(Dbcc, "DBCC")                                                     \
    X(Deallocate, "DEALLOCATE")                                         \
    X(Declare, "DECLARE")                                               \
    X(Default, "DEFAULT")                                               \
    X(Delete, "DELETE")                                                 \
    X(Deny, "DENY")                                                     \
    X(Desc, "DESC")                                                     \
    X(Disk, "DISK")                                                     \
    X(Distinct, "DISTINCT")                                             \
    X(Distributed, "DISTRIBUTED")                                       \
    X(Double, "DOUBLE")                                                 \
    X(Drop, "DROP")                                                     \
    X(Dump, "DUMP")                                                     \
    X(Else, "ELSE")                                                     \
    X(End, "END")                                                       \
    X(Errlvl, "ERRLVL")                                                 \
    X(Escape, "ESCAPE")                                                 \
    X(Except, "EXCEPT")                                                 \
    X(Exec, "EXEC")                                                     \
    X(Execute, "EXECUTE")                                               \
    X(Exists, "EXISTS")                                                 \
    X(Exit, "EXIT")                                                     \
    X(External, "EXTERNAL")                                             \
    X(Fetch, "FETCH")                                                   \
    X(File, "FILE")                                                     \
    X(Fillfactor, "FILLFACTOR")                                         \
    X(For, "FOR")                                                       \
    X(Foreign, "FOREIGN")                                               \
    X(Freetext, "FREETEXT")                                             \
    X(Freetexttable, "FREETEXTTABLE")                                   \
    X(From, "FROM")                                                     \
    X(Full, "FULL")                                                     \
    X(Function, "FUNCTION")                                             \
    X(Goto, "GOTO")                                                     \
    X(Grant, "GRANT")                                                   \
    X(Group, "GROUP")                                                   \
    X(Having, "HAVING")                                                 \
    X(Holdlock, "HOLDLOCK")                                             \
    X(Identity, "IDENTITY")                                             \
    X(IdentityInsert, "IDENTITY_INSERT")                                \
    X(Identitycol, "IDENTITYCOL")                                       \
    X(If, "IF")                                                         \
    X(In, "IN")                                                         \
    X(Index, "INDEX")                                                   \
    X(Inner, "INNER")                                                   \
    X(Insert, "INSERT")                                                 \
    X(Intersect, "INTERSECT")                                           \
    X(Into, "INTO")                                                     \
    X(Is, "IS")                                                         \
    X(Join, "JOIN")                                                     \
    X(Key, "KEY")                                                       \
    X(Kill, "KILL")                                                     \
    X(Left, "LEFT")                                                     \
    X(Like, "LIKE")                                                     \
    X(Lineno, "LINENO")                                                 \
    X(Load, "LOAD")                                                     \
    X(Merge, "MERGE")                                                   \
    X(National, "NATIONAL")                                             \
    X(Nocheck, "NOCHECK")                                               \
    X(Nonclustered, "NONCLUSTERED")                                     \
    X(Not, "NOT")                                                       \
    X(Null, "NULL")                                                     \
    X(Nullif, "NULLIF")                                                 \
    X(Of, "OF")                                                         \
    X(Off, "OFF")                                                       \
    X(Offsets, "OFFSETS")                                               \
    X(On, "ON")                                                         \
    X(Open, "OPEN")                                                     \
    X(Opendatasource, "OPENDATASOURCE")                                 \
    X(Openquery, "OPENQUERY")                                           \
    X(Openrowset, "OPENROWSET")                                         \
    X(Openxml, "OPENXML")                                               \
    X(Option, "OPTION")                                                 \
    X(Or, "OR")                                                         \
    X(Order, "ORDER")                                                   \
    X(Outer, "OUTER")                                                   \
    X(Over, "OVER")                                                     \
    X(Percent, "PERCENT")                                               \
    X(Pivot, "PIVOT")                                                   \
    X(Plan, "PLAN")                                                     \
    X(Primary, "PRIMARY")                                               \
    X(Print, "PRINT")                                                   \
    X(Proc, "PROC")                                                     \
    X(Procedure, "PROCEDURE")                                           \
    X(Public, "PUBLIC")                                                 \
    X(Raiserror, "RAISERROR")                                           \
    X(Read, "READ")                                                     \
    X(Readtext, "READTEXT")                                             \
    X(Reconfigure, "RECONFIGURE")                                       \
    X(References, "REFERENCES")                                         \
    X(Replication, "REPLICATION")                                       \
    X(Restore, "RESTORE")                                               \
    X(Restrict, "RESTRICT")                                             \
    X(Return, "RETURN")                                                 \
    X(Revert, "REVERT")                                                 \
    X(Revoke, "REVOKE")                                                 \
    X(Right, "RIGHT")                                                   \
    X(Rollback, "ROLLBACK")                                             \
    X(Rowcount, "ROWCOUNT")                                             \
    X(Rowguidcol, "ROWGUIDCOL")                                         \
    X(Rule, "RULE")                                                     \
    X(Save, "SAVE")                                                     \
    X(Schema, "SCHEMA")                                                 \
    X(Securityaudit, "SECURITYAUDIT")                                   \
    X(Select, "SELECT")                                                 \
    X(Semantickeyphrasetable, "SEMANTICKEYPHRASETABLE")                 \
    X(Semanticsimilaritydetailstable, "SEMANTICSIMILARITYDETAILSTABLE") \
    X(Semanticsimilaritytable, "SEMANTICSIMILARITYTABLE")               \
    X(SessionUser, "SESSION_USER")                                      \
    X(Set, "SET")                                                       \
    X(Setuser, "SETUSER")                                               \
    X(Shutdown, "SHUTDOWN")                                             \
    X(Some, "SOME")                                                     \
    X(Statistics, "STATISTICS")                                         \
    X(SystemUser, "SYSTEM_USER")                                        \
    X(Table, "TABLE")                                                   \
    X(Tablesample, "TABLESAMPLE")                                       \
    X(Textsize, "TEXTSIZE")                                             \
    X(Then, "THEN")                                                     \
    X(To, "TO")                                                         \
    X(Top, "TOP")                                                       \
    X(Tran, "TRAN")                                                     \
    X(Transaction, "TRANSACTION")                                       \
    X(Trigger, "TRIGGER")                                               \
    X(Truncate, "TRUNCATE")                                             \
    X(TryConvert, "TRY_CONVERT")                                        \
    X(Tsequal, "TSEQUAL")                                               \
    X(Union, "UNION")                                                   \
    X(Unique, "UNIQUE")                                                 \
    X(Unpivot, "UNPIVOT")                                               \
    X(Update, "UPDATE")                                                 \
    X(Updatetext, "UPDATETEXT")                                         \
    X(Use, "USE")                                                       \
    X(User, "USER")                                                     \
    X(Values, "VALUES")                                                 \
    X(Varying, "VARYING")                                               \
    X(View, "VIEW")                                                     \
    X(Waitfor, "WAITFOR")                                               \
    X(When, "WHEN")                                                     \
    X(Where, "WHERE")                                                   \
    X(While, "WHILE")                                                   \
    X(With, "WITH")                                                     \
    X(Within, "WITHIN")                                                 \
    X(Writetext, "WRITETEXT")

// Words that mean something in one place and are ordinary names everywhere else.
#define MAGDB_TSQL_CONTEXT_WORDS(X) \
    X(Absolute, "ABSOLUTE")         \
    X(Action, "ACTION")             \
    X(Apply, "APPLY")               \
    X(At, "AT")                     \
    X(Cast, "CAST")                 \
    X(Catch, "CATCH")               \
    X(Character, "CHARACTER")       \
    X(Committed, "COMMITTED")       \
    X(Disable, "DISABLE")           \
    X(Enable, "ENABLE")             \
    X(First, "FIRST")               \
    X(Following, "FOLLOWING")       \
    X(Force, "FORCE")               \
    X(Go, "GO")                     \
    X(Hash, "HASH")                 \
    X(Include, "INCLUDE")           \
    X(Insensitive, "INSENSITIVE")   \
    X(Isolation, "ISOLATION")       \
    X(Language, "LANGUAGE")         \
    X(Last, "LAST")                 \
    X(Level, "LEVEL")               \
    X(Login, "LOGIN")               \
    X(Loop, "LOOP")                 \
    X(Max, "MAX")                   \
    X(Maxrecursion, "MAXRECURSION") \
    X(Member, "MEMBER")             \
    X(Next, "NEXT")                 \
    X(No, "NO")                     \
    X(Nowait, "NOWAIT")             \
    X(Offset, "OFFSET")             \
    X(Only, "ONLY")                 \
    X(Out, "OUT")                   \
    X(Output, "OUTPUT")             \
    X(Partition, "PARTITION")       \
    X(Password, "PASSWORD")         \
    X(Persisted, "PERSISTED")       \
    X(Precision, "PRECISION")       \
    X(Preceding, "PRECEDING")       \
    X(Prior, "PRIOR")               \
    X(Range, "RANGE")               \
    X(Readonly, "READONLY")         \
    X(Recompile, "RECOMPILE")       \
    X(Relative, "RELATIVE")         \
    X(Repeatable, "REPEATABLE")     \
    X(Returns, "RETURNS")           \
    X(Role, "ROLE")                 \
    X(Row, "ROW")                   \
    X(Rows, "ROWS")                 \
    X(Scroll, "SCROLL")             \
    X(Serializable, "SERIALIZABLE") \
    X(Seterror, "SETERROR")         \
    X(Sequence, "SEQUENCE")         \
    X(Snapshot, "SNAPSHOT")         \
    X(Synonym, "SYNONYM")           \
    X(Throw, "THROW")               \
    X(Ties, "TIES")                 \
    X(Try, "TRY")                   \
    X(TryCast, "TRY_CAST")          \
    X(Type, "TYPE")                 \
    X(Unbounded, "UNBOUNDED")       \
    X(Uncommitted, "UNCOMMITTED")   \
    X(Work, "WORK")                 \
    X(Zone, "ZONE")

/// A word that the grammar knows. Reserved words come first.
enum class Keyword : std::uint8_t {
    None,
#define MAGDB_TSQL_ENUMERATOR(name, text) name,
    MAGDB_TSQL_RESERVED_WORDS(MAGDB_TSQL_ENUMERATOR) MAGDB_TSQL_CONTEXT_WORDS(MAGDB_TSQL_ENUMERATOR)
#undef MAGDB_TSQL_ENUMERATOR
};

/// The keyword that a word is, whatever its case, or Keyword::None.
[[nodiscard]] Keyword findKeyword(std::string_view word);

[[nodiscard]] bool isReserved(Keyword keyword);

/// The keyword in upper case; empty for Keyword::None.
[[nodiscard]] std::string_view keywordText(Keyword keyword);

}  // namespace magdb::tsql
