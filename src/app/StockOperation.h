#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <functional>
#include <utility>

namespace regalon {

struct StockServices;

/// A text as it stands in one line of the output, and in one cell of it: line ends as \n, tabs as \t, a
/// backslash twice.
QString oneLine(QString text);

enum class ArgumentKind { Int16, Int32, Number, Text };

struct StockArgument {
    QString name;
    ArgumentKind kind;
};

/// What a run of an operation gave: its result first, if it has one, and then its outputs, each with its
/// name. An array or a result set has as many lines as elements. The texts are as they are printed.
struct StockAnswer {
    bool refused = false;  ///< the result was False
    QString reason;        ///< the message of the procedure, whether it is an output or not
    QList<std::pair<QString, QString>> lines;
};

/// An operation of a service as the command line calls it.
struct StockOperation {
    QString name;  ///< "class.operation"
    QList<StockArgument> inputs;
    QStringList outputs;
    /// The values stand in the order of the inputs and have their types.
    std::function<StockAnswer(StockServices&, const QVariantList&)> run;

    /// "name input:kind ... -> output ...".
    QString usage() const;

    /// Reads the words of a command line. False, with `error` telling which argument is wrong and why.
    bool parse(const QStringList& words, QVariantList& values, QString& error) const;
};

/// Every operation, class by class, in the order of its slots.
const QList<StockOperation>& stockOperations();

/// By name, letter case aside; null for an unknown one.
const StockOperation* findStockOperation(const QString& name);

}  // namespace regalon
