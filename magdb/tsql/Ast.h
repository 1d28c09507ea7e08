#pragma once

#include "tsql/AstExpr.h"
#include "tsql/AstQuery.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace magdb::tsql {

enum class StatementKind : std::uint8_t {
    Block,
    If,
    While,
    Break,
    Continue,
    Return,
    TryCatch,
    DeclareVariables,
    DeclareCursor,
    SetVariable,
    SetOption,
    Select,
    Insert,
    Update,
    Delete,
    Truncate,
    Execute,
    ExecuteText,
    Transaction,
    RaiseError,
    Throw,
    Print,
    OpenCursor,
    FetchCursor,
    CloseCursor,
    DeallocateCursor,
    Use,
    CreateTable,
    AlterTable,
    CreateIndex,
    DropIndex,
    DropObject,
    CreateView,
    CreateProcedure,
    CreateFunction,
    Principal,
    Permission,
};

struct Statement {
    const StatementKind kind;
    SourcePos pos;
    std::uint32_t end = 0;  ///< offset behind the last token, without the semicolon

    virtual ~Statement() = default;
    Statement(const Statement&) = delete;
    Statement& operator=(const Statement&) = delete;

protected:
    explicit Statement(StatementKind k) : kind(k) {}
};

/// BEGIN ... END
struct BlockStatement : Statement {
    BlockStatement() : Statement(StatementKind::Block) {}
    StatementList body;
};

struct IfStatement : Statement {
    IfStatement() : Statement(StatementKind::If) {}
    ExprPtr condition;
    StatementPtr then;
    StatementPtr otherwise;  ///< null without ELSE
};

struct WhileStatement : Statement {
    WhileStatement() : Statement(StatementKind::While) {}
    ExprPtr condition;
    StatementPtr body;
};

struct BreakStatement : Statement {
    BreakStatement() : Statement(StatementKind::Break) {}
};

struct ContinueStatement : Statement {
    ContinueStatement() : Statement(StatementKind::Continue) {}
};

struct ReturnStatement : Statement {
    ReturnStatement() : Statement(StatementKind::Return) {}
    ExprPtr value;  ///< may be null
};

struct TryCatchStatement : Statement {
    TryCatchStatement() : Statement(StatementKind::TryCatch) {}
    StatementList tryBody;
    StatementList catchBody;
};

struct ColumnDefinition;
struct TableConstraint;

/// Columns and constraints of a CREATE TABLE, a table variable or the result of a function.
struct TableDefinition {
    std::vector<ColumnDefinition> columns;
    std::vector<TableConstraint> constraints;
};

struct VariableDeclaration {
    std::string name;  ///< with @
    SourcePos pos;
    DataType type;                           ///< of a scalar
    ExprPtr value;                           ///< null without initial value
    std::unique_ptr<TableDefinition> table;  ///< set for a table variable
};

struct DeclareVariablesStatement : Statement {
    DeclareVariablesStatement() : Statement(StatementKind::DeclareVariables) {}
    std::vector<VariableDeclaration> variables;
    ~DeclareVariablesStatement() override;
};

struct DeclareCursorStatement : Statement {
    DeclareCursorStatement() : Statement(StatementKind::DeclareCursor) {}
    std::string name;
    std::vector<std::string> options;  ///< in upper case: LOCAL, FAST_FORWARD, STATIC, READ_ONLY...
    QueryPtr query;
};

struct SetVariableStatement : Statement {
    SetVariableStatement() : Statement(StatementKind::SetVariable) {}
    std::string variable;  ///< with @
    AssignOp op = AssignOp::Set;
    ExprPtr value;
};

/// SET of a session option.
struct SetOptionStatement : Statement {
    SetOptionStatement() : Statement(StatementKind::SetOption) {}
    /// In upper case: NOCOUNT, XACT_ABORT, ANSI_NULLS, TEXTSIZE, `TRANSACTION ISOLATION LEVEL`,
    /// IDENTITY_INSERT... Several for `SET ANSI_NULLS, ANSI_PADDING ON`.
    std::vector<std::string> names;
    std::optional<bool> on;  ///< for ON and OFF
    std::string value;       ///< a word in upper case: isolation level, language, date format
    ExprPtr number;  ///< literal or variable: TEXTSIZE, ROWCOUNT, LOCK_TIMEOUT, DATEFIRST, LANGUAGE 'x'
    std::optional<ObjectName> table;  ///< of IDENTITY_INSERT
};

struct SelectStatement : Statement {
    SelectStatement() : Statement(StatementKind::Select) {}
    QueryPtr query;
};

struct ExecuteStatement;

/// The table that INSERT, UPDATE or DELETE changes. UPDATE and DELETE may name an alias of their FROM.
struct TableTarget {
    ObjectName name;
    std::string variable;  ///< with @ for a table variable; then name is empty
    std::vector<std::string> hints;
    SourcePos pos;
};

struct InsertStatement : Statement {
    InsertStatement() : Statement(StatementKind::Insert) {}
    enum class Source : std::uint8_t { Values, Query, Execute, DefaultValues };
    std::vector<CommonTable> with;
    std::optional<TopClause> top;
    TableTarget target;
    std::vector<std::string> columns;  ///< empty when not written
    std::optional<OutputClause> output;
    Source source = Source::Values;
    std::vector<std::vector<ExprPtr>> rows;  ///< Values; DefaultExpr possible
    QueryPtr query;                          ///< Query
    StatementPtr execute;                    ///< Execute: an ExecuteStatement or ExecuteTextStatement
};

/// One element of UPDATE ... SET: `column op value`, `@v op value` or `@v = column op value`.
struct SetClause {
    SourcePos pos;
    std::vector<std::string> qualifier;  ///< `t` of t.column
    std::string column;                  ///< empty when only a variable is set
    std::string variable;                ///< with @; empty when only a column is set
    AssignOp op = AssignOp::Set;
    ExprPtr value;  ///< DefaultExpr possible
};

struct UpdateStatement : Statement {
    UpdateStatement() : Statement(StatementKind::Update) {}
    std::vector<CommonTable> with;
    std::optional<TopClause> top;
    TableTarget target;
    std::vector<SetClause> set;
    std::optional<OutputClause> output;
    std::vector<TableSourcePtr> from;
    ExprPtr where;
};

struct DeleteStatement : Statement {
    DeleteStatement() : Statement(StatementKind::Delete) {}
    std::vector<CommonTable> with;
    std::optional<TopClause> top;
    TableTarget target;
    std::optional<OutputClause> output;
    std::vector<TableSourcePtr> from;  ///< the second FROM
    ExprPtr where;
};

struct TruncateStatement : Statement {
    TruncateStatement() : Statement(StatementKind::Truncate) {}
    ObjectName table;
};

struct ExecuteArgument {
    std::string name;  ///< with @; empty when passed by position
    ExprPtr value;     ///< literal, variable, global variable, DefaultExpr; bare words are string literals
    bool output = false;
};

/// [EXEC] [@rc =] procedure arguments
struct ExecuteStatement : Statement {
    ExecuteStatement() : Statement(StatementKind::Execute) {}
    std::string returnVariable;     ///< with @; empty when not written
    ObjectName procedure;           ///< empty when the name is in a variable
    std::string procedureVariable;  ///< EXEC @name
    std::vector<ExecuteArgument> arguments;
};

/// EXEC (text)
struct ExecuteTextStatement : Statement {
    ExecuteTextStatement() : Statement(StatementKind::ExecuteText) {}
    ExprPtr text;
};

struct TransactionStatement : Statement {
    TransactionStatement() : Statement(StatementKind::Transaction) {}
    enum class Action : std::uint8_t { Begin, Commit, Rollback, Save };
    Action action = Action::Begin;
    std::string name;      ///< empty when not given
    std::string variable;  ///< with @ when the name is in a variable
};

struct RaiseErrorStatement : Statement {
    RaiseErrorStatement() : Statement(StatementKind::RaiseError) {}
    ExprPtr message;  ///< text or number
    ExprPtr severity;
    ExprPtr state;
    std::vector<ExprPtr> arguments;
    bool log = false;
    bool noWait = false;
    bool setError = false;
};

struct ThrowStatement : Statement {
    ThrowStatement() : Statement(StatementKind::Throw) {}
    ExprPtr number;  ///< null for the bare THROW of a CATCH block
    ExprPtr message;
    ExprPtr state;
};

struct PrintStatement : Statement {
    PrintStatement() : Statement(StatementKind::Print) {}
    ExprPtr value;
};

/// OPEN, CLOSE and DEALLOCATE name a cursor only.
struct CursorStatement : Statement {
    explicit CursorStatement(StatementKind k) : Statement(k) {}
    std::string name;
};

struct FetchCursorStatement : Statement {
    FetchCursorStatement() : Statement(StatementKind::FetchCursor) {}
    enum class Direction : std::uint8_t { Next, Prior, First, Last, Absolute, Relative };
    Direction direction = Direction::Next;
    ExprPtr position;  ///< Absolute and Relative
    std::string name;
    std::vector<std::string> into;  ///< variables with @; empty: the row is a result
};

struct UseStatement : Statement {
    UseStatement() : Statement(StatementKind::Use) {}
    std::string database;
};

// ----------------------------------------------------------------------------------------------- definitions

enum class ReferentialAction : std::uint8_t { NoAction, Cascade, SetNull, SetDefault };

struct IndexColumn {
    std::string name;
    bool descending = false;
};

/// PRIMARY KEY, UNIQUE, CHECK, FOREIGN KEY and (in ALTER TABLE) DEFAULT ... FOR column.
struct TableConstraint {
    enum class Kind : std::uint8_t { PrimaryKey, Unique, Check, ForeignKey, Default };
    Kind kind = Kind::Check;
    SourcePos pos;
    std::string name;               ///< empty when the server names it
    std::optional<bool> clustered;  ///< when written
    std::vector<IndexColumn>
        columns;            ///< keys; of an inline constraint the column itself; Default: the column
    ExprPtr expr;           ///< Check and Default
    TextRange exprText;     ///< the expression as written, with its parentheses
    ObjectName referenced;  ///< ForeignKey
    std::vector<std::string> referencedColumns;
    ReferentialAction onDelete = ReferentialAction::NoAction;
    ReferentialAction onUpdate = ReferentialAction::NoAction;
};

struct ColumnDefinition {
    std::string name;
    SourcePos pos;
    DataType type;                 ///< not for a computed column
    std::string collation;         ///< empty when not given
    std::optional<bool> nullable;  ///< when written
    bool identity = false;
    std::int64_t identitySeed = 1;
    std::int64_t identityIncrement = 1;
    bool rowGuid = false;
    ExprPtr defaultValue;           ///< null without DEFAULT
    std::string defaultConstraint;  ///< name of the DEFAULT constraint, when given
    TextRange defaultText;          ///< the default as written
    ExprPtr computed;               ///< AS expression; null for an ordinary column
    TextRange computedText;         ///< the expression as written
    bool persisted = false;
    bool withValues =
        false;  ///< WITH VALUES of ALTER TABLE ADD: existing rows take the default, nullable or not
    std::vector<TableConstraint> constraints;  ///< inline PRIMARY KEY, UNIQUE, CHECK, REFERENCES
};

struct CreateTableStatement : Statement {
    CreateTableStatement() : Statement(StatementKind::CreateTable) {}
    ObjectName name;
    TableDefinition table;
};

struct AlterTableStatement : Statement {
    AlterTableStatement() : Statement(StatementKind::AlterTable) {}
    enum class Action : std::uint8_t { Add, DropColumn, DropConstraint, AlterColumn };
    ObjectName name;
    Action action = Action::Add;
    TableDefinition added;             ///< Add; AlterColumn: the one column with its new type
    std::vector<std::string> dropped;  ///< DropColumn, DropConstraint
    bool ifExists = false;
};

struct CreateIndexStatement : Statement {
    CreateIndexStatement() : Statement(StatementKind::CreateIndex) {}
    std::string name;
    ObjectName table;
    bool unique = false;
    bool clustered = false;
    std::vector<IndexColumn> columns;
    std::vector<std::string> include;
    ExprPtr where;  ///< of a filtered index
};

struct DropIndexStatement : Statement {
    DropIndexStatement() : Statement(StatementKind::DropIndex) {}
    std::string name;
    ObjectName table;
    bool ifExists = false;
};

enum class ObjectType : std::uint8_t { Table, View, Procedure, Function };

struct DropObjectStatement : Statement {
    DropObjectStatement() : Statement(StatementKind::DropObject) {}
    ObjectType type = ObjectType::Table;
    bool ifExists = false;
    std::vector<ObjectName> names;
};

/// What CREATE and ALTER of views, procedures and functions share. The exact source of a module is the whole
/// text of its batch (Batch::source), comments in front included: lines of errors inside count from there.
struct CreateViewStatement : Statement {
    CreateViewStatement() : Statement(StatementKind::CreateView) {}
    bool alter = false;
    ObjectName name;
    std::vector<std::string> columns;
    bool schemaBinding = false;
    QueryPtr query;
};

struct Parameter {
    std::string name;  ///< with @
    SourcePos pos;
    DataType type;
    ExprPtr defaultValue;  ///< a literal, possibly with a sign; null without default
    bool output = false;
    bool readOnly = false;
};

struct CreateProcedureStatement : Statement {
    CreateProcedureStatement() : Statement(StatementKind::CreateProcedure) {}
    bool alter = false;
    ObjectName name;
    std::vector<Parameter> parameters;
    std::vector<std::string> options;  ///< in upper case: RECOMPILE, ENCRYPTION, `EXECUTE AS OWNER`...
    StatementList body;
    TextRange bodyText;
};

struct CreateFunctionStatement : Statement {
    CreateFunctionStatement() : Statement(StatementKind::CreateFunction) {}
    enum class Returns : std::uint8_t { Scalar, InlineTable, Table };
    bool alter = false;
    ObjectName name;
    std::vector<Parameter> parameters;
    Returns returns = Returns::Scalar;
    DataType returnType;               ///< Scalar
    std::string tableVariable;         ///< Table: the @name of RETURNS @name TABLE (...)
    TableDefinition table;             ///< Table
    std::vector<std::string> options;  ///< in upper case: SCHEMABINDING...
    QueryPtr query;                    ///< InlineTable: RETURN (query)
    StatementList body;                ///< Scalar and Table: what stands between BEGIN and END
    TextRange bodyText;
};

/// CREATE, ALTER or DROP of LOGIN, USER or ROLE.
struct PrincipalStatement : Statement {
    PrincipalStatement() : Statement(StatementKind::Principal) {}
    enum class Action : std::uint8_t { Create, Alter, Drop, AddMember, DropMember };
    enum class Type : std::uint8_t { Login, User, Role };
    Action action = Action::Create;
    Type type = Type::Login;
    bool ifExists = false;
    std::string name;
    std::optional<std::string> password;  ///< WITH PASSWORD = '...'
    std::string login;                    ///< FOR LOGIN x of a user
    std::string member;                   ///< ADD/DROP MEMBER x of a role
};

struct PermissionStatement : Statement {
    PermissionStatement() : Statement(StatementKind::Permission) {}
    enum class Action : std::uint8_t { Grant, Deny, Revoke };
    Action action = Action::Grant;
    std::vector<std::string> permissions;  ///< in upper case
    std::string securableClass;            ///< OBJECT, SCHEMA...; empty when not written
    std::optional<ObjectName> securable;
    std::vector<std::string> principals;
};

inline DeclareVariablesStatement::~DeclareVariablesStatement() = default;

/// A parsed batch.
struct Batch {
    std::string source;  ///< the text that offsets refer to
    StatementList statements;
};

[[nodiscard]] inline std::string_view textOf(const Batch& batch, TextRange range) {
    return std::string_view(batch.source).substr(range.begin, range.end - range.begin);
}

}  // namespace magdb::tsql
