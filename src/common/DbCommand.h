#pragma once

#include <QAnyStringView>
#include <QString>
#include <QVariant>

#include <vector>

namespace regalon {

class DbConnection;
class DbCommand;

/// What the server declares of one parameter.
struct DbParameterInfo {
    QString name;  ///< with the leading "@"
    int type = 0;  ///< DbType
    int size = 0;  ///< characters or digits; 0 when the server names none
    int scale = 0;
    bool output = false;  ///< output parameters also take a value in
};

/// One parameter of a stored procedure.
class DbParameter {
public:
    explicit DbParameter(DbParameterInfo info) : m_info(std::move(info)) {}

    const DbParameterInfo& info() const { return m_info; }
    QString Name() const { return m_info.name; }
    int Type() const { return m_info.type; }
    QVariant Value() const { return m_value; }
    /// A parameter that is never set goes to the server as NULL. Numbers may be given as text with a decimal
    /// point; what the declared type cannot hold fails Execute with WrongValueType.
    void setValue(const QVariant& value) { m_value = value; }

private:
    DbParameterInfo m_info;
    QVariant m_value;
};

/// The parameters of a command: the return value at 0, then the declared ones in their order.
class DbParameters {
public:
    explicit DbParameters(DbCommand& command) : m_command(command) {}

    /// Takes the list from the server, all values unset. The list is kept for each procedure and connection,
    /// so that only the first call of a procedure costs a round trip more, and dropped when a call fails.
    /// Throws Statement when the server knows no such procedure.
    void Refresh();
    int Count() const { return static_cast<int>(m_items.size()); }
    /// By position, 0 being the return value. Throws ItemNotFound.
    DbParameter& Item(int position);
    /// By name with its "@", letter case aside. Throws ItemNotFound.
    DbParameter& Item(QAnyStringView name);

private:
    friend class DbCommand;
    DbCommand& m_command;
    std::vector<DbParameter> m_items;
};

/// A stored procedure call. Reused from call to call: bind it, Parameters().Refresh(), set values, Execute.
class DbCommand {
public:
    static constexpr int storedProcedure = 4;  ///< the one command type

    DbCommand() : m_parameters(*this) {}
    DbCommand(const DbCommand&) = delete;
    DbCommand& operator=(const DbCommand&) = delete;

    /// The connection is not owned and must outlive the calls.
    void setActiveConnection(DbConnection& connection) { m_connection = &connection; }
    void setCommandType(int type) { m_commandType = type; }
    int CommandType() const { return m_commandType; }
    /// The procedure's name, with or without its schema. Forgets the parameters.
    void setCommandText(const QString& name);
    QString CommandText() const { return m_commandText; }
    DbParameters& Parameters() { return m_parameters; }

    /// Runs the call in one round trip, drains its rows, and fills the return value and the outputs.
    /// Throws the server's error, InvalidConnection or WrongValueType.
    void Execute(int options = -1);

private:
    friend class DbParameters;
    DbConnection& connection() const;

    DbConnection* m_connection = nullptr;
    int m_commandType = storedProcedure;
    QString m_commandText;
    DbParameters m_parameters;
};

}  // namespace regalon
