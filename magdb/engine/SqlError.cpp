#include "engine/SqlError.h"

#include <array>

namespace magdb {

namespace {

struct KnownMessage {
    int number;
    int severity;
    int state;
    std::string_view text;
};

// Texts and severities are those that T-SQL programs and drivers compare with.
constexpr std::array kMessages = {
    KnownMessage{102, 15, 1, "Incorrect syntax near '%1'."},
    KnownMessage{105, 15, 1, "Unclosed quotation mark after the character string '%1'."},
    KnownMessage{107, 15, 1,
                 "The column prefix '%1' does not match with a table name or alias name used in the query."},
    KnownMessage{
        108, 16, 1,
        "The ORDER BY position number %1 is out of range of the number of items in the select list."},
    KnownMessage{
        109, 15, 1,
        "There are more columns in the INSERT statement than values specified in the VALUES clause. "
        "The number of values in the VALUES clause must match the number of columns specified in the "
        "INSERT statement."},
    KnownMessage{
        110, 15, 1,
        "There are fewer columns in the INSERT statement than values specified in the VALUES clause. "
        "The number of values in the VALUES clause must match the number of columns specified in the "
        "INSERT statement."},
    KnownMessage{111, 15, 1, "'%1' must be the first statement in a query batch."},
    KnownMessage{
        116, 16, 1,
        "Only one expression can be specified in the select list when the subquery is not introduced "
        "with EXISTS."},
    KnownMessage{119, 15, 2, "Must pass parameter number %1 and subsequent parameters as '@name = value'."},
    KnownMessage{120, 15, 1,
                 "The select list for the INSERT statement contains fewer items than the insert list. The "
                 "number of SELECT values must match the number of INSERT columns."},
    KnownMessage{121, 15, 1,
                 "The select list for the INSERT statement contains more items than the insert list. The "
                 "number of SELECT values must match the number of INSERT columns."},
    KnownMessage{
        130, 15, 1,
        "Cannot perform an aggregate function on an expression containing an aggregate or a subquery."},
    KnownMessage{
        131, 15, 1,
        "The size (%1) given to the type '%2' exceeds the maximum allowed for any data type (8000)."},
    KnownMessage{134, 15, 2,
                 "The variable name '%1' has already been declared. Variable names must be unique within a "
                 "query batch or stored procedure."},
    KnownMessage{135, 15, 1, "Cannot use a BREAK statement outside the scope of a WHILE statement."},
    KnownMessage{136, 15, 1, "Cannot use a CONTINUE statement outside the scope of a WHILE statement."},
    KnownMessage{137, 15, 2, "Must declare the scalar variable \"%1\"."},
    KnownMessage{141, 15, 1,
                 "A SELECT statement that assigns a value to a variable must not be combined with "
                 "data-retrieval operations."},
    KnownMessage{145, 15, 1,
                 "ORDER BY items must appear in the select list if SELECT DISTINCT is specified."},
    KnownMessage{147, 15, 1,
                 "An aggregate may not appear in the WHERE clause unless it is in a subquery contained in a "
                 "HAVING clause or a select list, and the column being aggregated is an outer reference."},
    KnownMessage{155, 15, 10, "'%1' is not a recognized %2 option."},
    KnownMessage{156, 15, 1, "Incorrect syntax near the keyword '%1'."},
    KnownMessage{157, 15, 1, "An aggregate may not appear in the set list of an UPDATE statement."},
    KnownMessage{164, 15, 1,
                 "Each GROUP BY expression must contain at least one column that is not an outer reference."},
    KnownMessage{174, 15, 1, "The %1 function requires %2 argument(s)."},
    KnownMessage{178, 15, 1, "A RETURN statement with a return value cannot be used in this context."},
    KnownMessage{189, 15, 1, "The %1 function requires %2 to %3 arguments."},
    KnownMessage{195, 15, 10, "'%1' is not a recognized built-in function name."},
    KnownMessage{201, 16, 4, "Procedure or function '%1' expects parameter '%2', which was not supplied."},
    KnownMessage{205, 16, 1,
                 "All queries combined using a UNION, INTERSECT or EXCEPT operator must have an equal number "
                 "of expressions in their target lists."},
    KnownMessage{206, 16, 2, "Operand type clash: %1 is incompatible with %2"},
    KnownMessage{207, 16, 1, "Invalid column name '%1'."},
    KnownMessage{208, 16, 1, "Invalid object name '%1'."},
    KnownMessage{209, 16, 1, "Ambiguous column name '%1'."},
    KnownMessage{213, 16, 1, "Column name or number of supplied values does not match table definition."},
    KnownMessage{214, 16, 2, "Procedure expects parameter '%1' of type '%2'."},
    KnownMessage{215, 16, 1, "Parameters supplied for object '%1' which is not a function."},
    KnownMessage{217, 16, 1,
                 "Maximum stored procedure, function, trigger, or view nesting level exceeded (limit 32)."},
    KnownMessage{220, 16, 2, "Arithmetic overflow error for data type %1, value = %2."},
    KnownMessage{229, 14, 5, "The %1 permission was denied on the object '%2', database '%3', schema 'dbo'."},
    KnownMessage{232, 16, 3, "Arithmetic overflow error for type %1, value = %2."},
    KnownMessage{235, 16, 0, "Cannot convert a char value to money. The char value has incorrect syntax."},
    KnownMessage{241, 16, 1, "Conversion failed when converting date and/or time from character string."},
    KnownMessage{242, 16, 3,
                 "The conversion of a %1 data type to a %2 data type resulted in an out-of-range value."},
    KnownMessage{243, 16, 1, "Type %1 is not a defined system type."},
    KnownMessage{244, 16, 1,
                 "The conversion of the %1 value '%2' overflowed an %3 column. Use a larger integer column."},
    KnownMessage{245, 16, 1, "Conversion failed when converting the %1 value '%2' to data type %3."},
    KnownMessage{248, 16, 1, "The conversion of the %1 value '%2' overflowed an int column."},
    KnownMessage{
        257, 16, 3,
        "Implicit conversion from data type %1 to %2 is not allowed. Use the CONVERT function to run "
        "this query."},
    KnownMessage{263, 16, 1, "Must specify table to select from."},
    KnownMessage{264, 16, 1,
                 "The column name '%1' is specified more than once in the SET clause or column list of an "
                 "INSERT. A column cannot be assigned more than one value in the same clause. Modify the "
                 "clause to make sure that a column is updated only once."},
    KnownMessage{266, 16, 2,
                 "Transaction count after EXECUTE indicates a mismatching number of BEGIN and COMMIT "
                 "statements. Previous count = %1, current count = %2."},
    KnownMessage{270, 16, 1, "Object '%1' cannot be modified."},
    KnownMessage{
        271, 16, 1,
        "The column \"%1\" cannot be modified because it is either a computed column or is the result "
        "of a UNION operator."},
    KnownMessage{281, 16, 1, "%1 is not a valid style number when converting from %2 to a character string."},
    KnownMessage{289, 16, 1,
                 "Cannot construct data type date, some of the arguments have values which are not valid."},
    KnownMessage{306, 16, 2,
                 "The text, ntext, and image data types cannot be compared or sorted, except when using IS "
                 "NULL or LIKE operator."},
    KnownMessage{313, 16, 3,
                 "An insufficient number of arguments were supplied for the procedure or function %1."},
    KnownMessage{
        319, 15, 1,
        "Incorrect syntax near the keyword 'with'. If this statement is a common table expression, "
        "an xmlnamespaces clause or a change tracking context clause, the previous statement must be "
        "terminated with a semicolon."},
    KnownMessage{
        334, 16, 1,
        "The target table '%1' of the DML statement cannot have any enabled triggers if the statement "
        "contains an OUTPUT clause without INTO clause."},
    KnownMessage{402, 16, 1, "The data types %1 and %2 are incompatible in the %3 operator."},
    KnownMessage{421, 16, 1, "The %1 data type cannot be selected as DISTINCT because it is not comparable."},
    KnownMessage{444, 16, 1, "Select statements included within a function cannot return data to a client."},
    KnownMessage{447, 16, 1, "Expression type %1 is invalid for COLLATE clause."},
    KnownMessage{506, 16, 1, "The invalid escape character \"%1\" was specified in a LIKE predicate."},
    KnownMessage{
        512, 16, 1,
        "Subquery returned more than 1 value. This is not permitted when the subquery follows =, !=, "
        "<, <= , >, >= or when the subquery is used as an expression."},
    KnownMessage{515, 16, 2,
                 "Cannot insert the value NULL into column '%1', table '%2'; column does not allow nulls. %3 "
                 "fails."},
    KnownMessage{517, 16, 1, "Adding a value to a '%1' column caused an overflow."},
    KnownMessage{529, 16, 2, "Explicit conversion from data type %1 to %2 is not allowed."},
    KnownMessage{
        530, 16, 1,
        "The statement terminated. The maximum recursion %1 has been exhausted before statement completion."},
    KnownMessage{535, 16, 0,
                 "The datediff function resulted in an overflow. The number of dateparts separating two "
                 "date/time instances is too large. Try to use datediff with a less precise datepart."},
    KnownMessage{536, 16, 1, "Invalid length parameter passed to the %1 function."},
    KnownMessage{537, 16, 3, "Invalid length parameter passed to the LEFT or SUBSTRING function."},
    KnownMessage{
        544, 16, 1,
        "Cannot insert explicit value for identity column in table '%1' when IDENTITY_INSERT is set to "
        "OFF."},
    KnownMessage{545, 16, 1,
                 "Explicit value must be specified for identity column in table '%1' either when "
                 "IDENTITY_INSERT is set to ON or when a replication user is inserting into a NOT FOR "
                 "REPLICATION identity column."},
    KnownMessage{
        547, 16, 0,
        "The %1 statement conflicted with the %2 constraint \"%3\". The conflict occurred in database "
        "\"%4\", table \"%5\"%6."},
    KnownMessage{628, 16, 1, "Cannot issue SAVE TRANSACTION when there is no active transaction."},
    KnownMessage{911, 16, 1, "Database '%1' does not exist. Make sure that the name is entered correctly."},
    KnownMessage{1013, 16, 1,
                 "The objects \"%1\" and \"%2\" in the FROM clause have the same exposed names. Use "
                 "correlation names to distinguish them."},
    KnownMessage{1038, 15, 2,
                 "An object or column name is missing or empty. For SELECT INTO statements, verify each "
                 "column has a name. For other statements, look for empty alias names. Aliases defined as "
                 "\"\" or [] are not allowed. Change the alias to a valid name."},
    KnownMessage{1087, 15, 2, "Must declare the table variable \"%1\"."},
    KnownMessage{1205, 13, 51,
                 "Transaction (Process ID %1) was deadlocked on lock resources with another process and has "
                 "been chosen as the deadlock victim. Rerun the transaction."},
    KnownMessage{1222, 16, 51, "Lock request time out period exceeded."},
    KnownMessage{1505, 16, 1,
                 "The CREATE UNIQUE INDEX statement terminated because a duplicate key was found for the "
                 "object name '%1' and the index name '%2'. The duplicate key value is (%3)."},
    KnownMessage{1750, 16, 1, "Could not create constraint or index. See previous errors."},
    KnownMessage{1767, 16, 0, "Foreign key '%1' references invalid table '%2'."},
    KnownMessage{1776, 16, 0,
                 "There are no primary or candidate keys in the referenced table '%1' that match the "
                 "referencing column list in the foreign key '%2'."},
    KnownMessage{1779, 16, 0, "Table '%1' already has a primary key defined on it."},
    KnownMessage{1911, 16, 1, "Column name '%1' does not exist in the target table or view."},
    KnownMessage{1913, 16, 1,
                 "The operation failed because an index or statistics with name '%1' already exists on table "
                 "'%2'."},
    KnownMessage{2601, 14, 1,
                 "Cannot insert duplicate key row in object '%1' with unique index '%2'. The duplicate key "
                 "value is (%3)."},
    KnownMessage{2627, 14, 1,
                 "Violation of %1 constraint '%2'. Cannot insert duplicate key in object '%3'. The duplicate "
                 "key value is (%4)."},
    KnownMessage{
        2628, 16, 1,
        "String or binary data would be truncated in table '%1', column '%2'. Truncated value: '%3'."},
    KnownMessage{
        2705, 16, 3,
        "Column names in each table must be unique. Column name '%1' in table '%2' is specified more "
        "than once."},
    KnownMessage{2714, 16, 6, "There is already an object named '%1' in the database."},
    KnownMessage{2715, 16, 6, "Column, parameter, or variable #%1: Cannot find data type %2."},
    KnownMessage{2716, 16, 1,
                 "Column, parameter, or variable #%1: Cannot specify a column width on data type %2."},
    KnownMessage{2726, 16, 1, "Partition function '%1' uses %2 columns."},
    KnownMessage{
        2732, 16, 1,
        "Error number %1 is invalid. The number must be from 13000 through 2147483647 and it cannot be "
        "50000."},
    KnownMessage{2744, 16, 2,
                 "Multiple identity columns specified for table '%1'. Only one identity column per table is "
                 "allowed."},
    KnownMessage{2748, 16, 1, "Cannot specify %1 data type (parameter %2) as a substitution parameter."},
    KnownMessage{2749, 16, 2,
                 "Identity column '%1' must be of data type int, bigint, smallint, tinyint, or decimal or "
                 "numeric with a scale of 0, unencrypted, and constrained to be nonnullable."},
    KnownMessage{2786, 16, 1,
                 "The data type of substitution parameter %1 does not match the expected type of the format "
                 "specification."},
    KnownMessage{2787, 16, 1, "Invalid format specification: '%1'."},
    KnownMessage{2812, 16, 62, "Could not find stored procedure '%1'."},
    KnownMessage{3609, 16, 1, "The transaction ended in the trigger. The batch has been aborted."},
    KnownMessage{3616, 16, 1,
                 "An error was raised during trigger execution. The batch has been aborted and the user "
                 "transaction, if any, has been rolled back."},
    KnownMessage{3701, 11, 5,
                 "Cannot drop the %1 '%2', because it does not exist or you do not have permission."},
    KnownMessage{3705, 16, 1, "Cannot use DROP %1 with '%2' because '%2' is a %3. Use DROP %4."},
    KnownMessage{3726, 16, 1,
                 "Could not drop object '%1' because it is referenced by a FOREIGN KEY constraint."},
    KnownMessage{3728, 16, 1, "'%1' is not a constraint."},
    KnownMessage{3902, 16, 1, "The COMMIT TRANSACTION request has no corresponding BEGIN TRANSACTION."},
    KnownMessage{3903, 16, 1, "The ROLLBACK TRANSACTION request has no corresponding BEGIN TRANSACTION."},
    KnownMessage{
        3930, 16, 1,
        "The current transaction cannot be committed and cannot support operations that write to the "
        "log file. Roll back the transaction."},
    KnownMessage{3998, 16, 1,
                 "Uncommittable transaction is detected at the end of the batch. The transaction is rolled "
                 "back."},
    KnownMessage{4060, 11, 1, "Cannot open database \"%1\" requested by the login. The login failed."},
    KnownMessage{4104, 16, 1, "The multi-part identifier \"%1\" could not be bound."},
    KnownMessage{4108, 15, 10, "Windowed functions can only appear in the SELECT or ORDER BY clauses."},
    KnownMessage{4121, 16, 1,
                 "Cannot find either column \"%1\" or the user-defined function or aggregate \"%2\", or the "
                 "name is ambiguous."},
    KnownMessage{
        4127, 16, 1,
        "At least one of the arguments to COALESCE must be an expression that is not the NULL constant."},
    KnownMessage{
        4145, 15, 1,
        "An expression of non-boolean type specified in a context where a condition is expected, near "
        "'%1'."},
    KnownMessage{4151, 16, 1,
                 "The type of the first argument to NULLIF cannot be the NULL constant because the type of "
                 "the first argument has to be known."},
    KnownMessage{4405, 16, 1,
                 "View or function '%1' is not updatable because the modification affects multiple base "
                 "tables."},
    KnownMessage{4406, 16, 1,
                 "Update or insert of view or function '%1' failed because it contains a derived or constant "
                 "field."},
    KnownMessage{4502, 16, 1, "View or function '%1' has more column names specified than columns defined."},
    KnownMessage{4511, 16, 1,
                 "Create View or Function failed because no column name was specified for column %1."},
    KnownMessage{4712, 16, 1,
                 "Cannot truncate table '%1' because it is being referenced by a FOREIGN KEY constraint."},
    KnownMessage{4901, 16, 1,
                 "ALTER TABLE only allows columns to be added that can contain nulls, or have a DEFAULT "
                 "definition specified, or the column being added is an identity or timestamp column, or "
                 "alternatively if none of the previous conditions are satisfied the table must be empty to "
                 "allow addition of this column. Column '%1' cannot be added to non-empty table '%2' because "
                 "it does not satisfy these conditions."},
    KnownMessage{4902, 16, 1,
                 "Cannot find the object \"%1\" because it does not exist or you do not have permissions."},
    KnownMessage{4924, 16, 1, "%1 failed because column '%2' does not exist in table '%3'."},
    KnownMessage{5074, 16, 1, "The %1 '%2' is dependent on column '%3'."},
    KnownMessage{5701, 10, 2, "Changed database context to '%1'."},
    KnownMessage{6401, 16, 1, "Cannot roll back %1. No transaction or savepoint of that name was found."},
    KnownMessage{
        8101, 16, 1,
        "An explicit value for the identity column in table '%1' can only be specified when a column "
        "list is used and IDENTITY_INSERT is ON."},
    KnownMessage{8102, 16, 1, "Cannot update identity column '%1'."},
    KnownMessage{8106, 16, 1,
                 "Table '%1' does not have the identity property. Cannot perform SET operation."},
    KnownMessage{
        8107, 16, 1,
        "IDENTITY_INSERT is already ON for table '%1'. Cannot perform SET operation for table '%2'."},
    KnownMessage{8111, 16, 1, "Cannot define PRIMARY KEY constraint on nullable column in table '%1'."},
    KnownMessage{8114, 16, 5, "Error converting data type %1 to %2."},
    KnownMessage{8115, 16, 2, "Arithmetic overflow error converting %1 to data type %2."},
    KnownMessage{8116, 16, 1, "Argument data type %1 is invalid for argument %2 of %3 function."},
    KnownMessage{8117, 16, 1, "Operand data type %1 is invalid for %2 operator."},
    KnownMessage{
        8120, 16, 1,
        "Column '%1' is invalid in the select list because it is not contained in either an aggregate "
        "function or the GROUP BY clause."},
    KnownMessage{8121, 16, 1,
                 "Column '%1' is invalid in the HAVING clause because it is not contained in either an "
                 "aggregate function or the GROUP BY clause."},
    KnownMessage{8127, 16, 1,
                 "Column \"%1\" is invalid in the ORDER BY clause because it is not contained in either an "
                 "aggregate function or the GROUP BY clause."},
    KnownMessage{8133, 16, 1,
                 "At least one of the result expressions in a CASE specification must be an expression other "
                 "than the NULL constant."},
    KnownMessage{8134, 16, 1, "Divide by zero error encountered."},
    KnownMessage{8143, 16, 1, "Parameter '%1' was supplied multiple times."},
    KnownMessage{8144, 16, 2, "Procedure or function %1 has too many arguments specified."},
    KnownMessage{8145, 16, 2, "%1 is not a parameter for procedure %2."},
    KnownMessage{8146, 16, 2, "Procedure %1 has no parameters and arguments were supplied."},
    KnownMessage{8152, 16, 13, "String or binary data would be truncated."},
    KnownMessage{8154, 16, 1, "The table '%1' is ambiguous."},
    KnownMessage{8155, 16, 2, "No column name was specified for column %1 of '%2'."},
    KnownMessage{8156, 16, 1, "The column '%1' was specified multiple times for '%2'."},
    KnownMessage{8158, 16, 1, "'%1' has more columns than were specified in the column list."},
    KnownMessage{8159, 16, 1, "'%1' has fewer columns than were specified in the column list."},
    KnownMessage{
        8162, 16, 2,
        "The formal parameter \"%1\" was not declared as an OUTPUT parameter, but the actual parameter "
        "passed in requested output."},
    KnownMessage{8169, 16, 2,
                 "Conversion failed when converting from a character string to uniqueidentifier."},
    KnownMessage{8170, 16, 2, "Insufficient result space to convert uniqueidentifier value to char."},
    KnownMessage{8178, 16, 1,
                 "The parameterized query '%1' expects the parameter '%2', which was not supplied."},
    KnownMessage{8179, 16, 1, "Could not find prepared statement with handle %1."},
    KnownMessage{8180, 16, 1, "Statement(s) could not be prepared."},
    KnownMessage{
        8623, 16, 1,
        "The query processor ran out of internal resources and could not produce a query plan. This is "
        "a rare event and only expected for extremely complex queries or queries that reference a very "
        "large number of tables or partitions. Please simplify the query."},
    KnownMessage{9810, 16, 1, "The datepart is not supported by date function dateadd for data type date."},
    KnownMessage{9828, 16, 1,
                 "The second and third arguments of the TRANSLATE built-in function must contain an equal "
                 "number of characters."},
    KnownMessage{10700, 16, 1, "The table-valued parameter \"%1\" is READONLY and cannot be modified."},
    KnownMessage{10704, 16, 1,
                 "To rethrow an error, a THROW statement must be used inside a CATCH block. Insert the THROW "
                 "statement inside a CATCH block, or add error parameters to the THROW statement."},
    KnownMessage{10753, 15, 10, "The function '%1' must have an OVER clause."},
    KnownMessage{14274, 16, 1, "%1"},
    KnownMessage{15009, 11, 1,
                 "The object '%1' does not exist in database '%2' or is invalid for this operation."},
    KnownMessage{15197, 16, 1, "There is no text for object '%1'."},
    KnownMessage{16901, 16, 1, "%1: This feature has not been implemented yet."},
    KnownMessage{16902, 16, 1, "%1: The value of the parameter %2 is invalid."},
    KnownMessage{16905, 16, 1, "The cursor is already open."},
    KnownMessage{16911, 16, 1, "%1: The fetch type %2 cannot be used with forward only cursors."},
    KnownMessage{16915, 16, 1, "A cursor with the name '%1' already exists."},
    KnownMessage{16916, 16, 1, "A cursor with the name '%1' does not exist."},
    KnownMessage{16917, 16, 1, "Cursor is not open."},
    KnownMessage{16924, 16, 1,
                 "Cursorfetch: The number of variables declared in the INTO list must match that of selected "
                 "columns."},
    KnownMessage{16950, 16, 2, "The variable '%1' does not currently have a cursor allocated to it."},
    KnownMessage{18456, 14, 1, "Login failed for user '%1'."},
    KnownMessage{35100, 16, 1,
                 "Error number %1 in the THROW statement is outside the valid range. Specify an error number "
                 "in the valid range of 50000 to 2147483647."},
    // Numbers of this server alone, above those that RAISERROR and THROW use for programs.
    KnownMessage{40517, 16, 1, "This server does not support %1."},
    KnownMessage{40001, 16, 1, "The database file reported a failure: %1."},
};

std::string fillIn(std::string_view format, std::initializer_list<std::string_view> arguments) {
    std::string text;
    for (std::size_t i = 0; i < format.size(); ++i) {
        if (format[i] == '%' && i + 1 < format.size() && format[i + 1] >= '1' && format[i + 1] <= '9') {
            const auto index = static_cast<std::size_t>(format[i + 1] - '1');
            if (index < arguments.size()) {
                text += *(arguments.begin() + index);
            }
            ++i;
        } else {
            text += format[i];
        }
    }
    return text;
}

}  // namespace

ServerMessage serverMessage(int number, std::initializer_list<std::string_view> arguments) {
    for (const KnownMessage& known : kMessages) {
        if (known.number == number) {
            ServerMessage message;
            message.number = number;
            message.severity = known.severity;
            message.state = known.state;
            message.text = fillIn(known.text, arguments);
            return message;
        }
    }
    throw std::logic_error("no text for server message " + std::to_string(number));
}

void raise(int number, std::initializer_list<std::string_view> arguments) {
    throw SqlError(serverMessage(number, arguments));
}

void refuse(std::string_view construct) {
    raise(40517, {construct});
}

}  // namespace magdb
