#include "app/StockOperation.h"

#include <QLocale>

#include <algorithm>
#include <cmath>
#include <limits>

namespace regalon {

QString oneLine(QString text) {
    return text.replace(u'\\', QStringLiteral("\\\\"))
        .replace(u'\t', QStringLiteral("\\t"))
        .replace(QStringLiteral("\r\n"), QStringLiteral("\\n"))
        .replace(u'\n', QStringLiteral("\\n"))
        .replace(u'\r', QStringLiteral("\\n"));
}

namespace {

QString kindName(ArgumentKind kind) {
    switch (kind) {
        case ArgumentKind::Int16:
            return QStringLiteral("int16");
        case ArgumentKind::Int32:
            return QStringLiteral("int32");
        case ArgumentKind::Number:
            return QStringLiteral("number");
        case ArgumentKind::Text:
            break;
    }
    return QStringLiteral("text");
}

/// Point or comma, whatever the regional format: a script must mean the same on every machine.
bool readNumber(QString word, QVariant& value, QString& error) {
    QLocale locale = QLocale::c();
    locale.setNumberOptions(QLocale::RejectGroupSeparator);
    bool ok = false;
    const double number = locale.toDouble(word.replace(u',', u'.'), &ok);
    if (!ok || !std::isfinite(number)) {
        error = QStringLiteral("is not a number");
        return false;
    }
    value = number;
    return true;
}

template <class Whole>
bool readWhole(const QString& word, QVariant& value, QString& error) {
    if (!readNumber(word, value, error))
        return false;
    const double number = value.toDouble();
    if (number != std::trunc(number)) {
        error = QStringLiteral("is not a whole number");
        return false;
    }
    if (number < std::numeric_limits<Whole>::min() || number > std::numeric_limits<Whole>::max()) {
        error = QStringLiteral("is out of the range of %1 bits").arg(sizeof(Whole) * 8);
        return false;
    }
    value = QVariant::fromValue(static_cast<Whole>(number));
    return true;
}

bool readValue(ArgumentKind kind, const QString& word, QVariant& value, QString& error) {
    switch (kind) {
        case ArgumentKind::Int16:
            return readWhole<qint16>(word, value, error);
        case ArgumentKind::Int32:
            return readWhole<qint32>(word, value, error);
        case ArgumentKind::Number:
            return readNumber(word, value, error);
        case ArgumentKind::Text:
            value = word;
            break;
    }
    return true;
}

}  // namespace

QString StockOperation::usage() const {
    QString text = name;
    for (const StockArgument& argument : inputs)
        text += u' ' + argument.name + u':' + kindName(argument.kind);
    return outputs.isEmpty() ? text : text + QStringLiteral(" -> ") + outputs.join(u' ');
}

bool StockOperation::parse(const QStringList& words, QVariantList& values, QString& error) const {
    values.clear();
    if (words.size() != inputs.size()) {
        error = QStringLiteral("%1 takes %2 arguments, not %3: %4")
                    .arg(name)
                    .arg(inputs.size())
                    .arg(words.size())
                    .arg(usage());
        return false;
    }
    for (qsizetype i = 0; i < words.size(); ++i) {
        QVariant value;
        QString problem;
        if (!readValue(inputs.at(i).kind, words.at(i), value, problem)) {
            error = QStringLiteral("%1: %2 \"%3\" %4").arg(name, inputs.at(i).name, words.at(i), problem);
            return false;
        }
        values.append(value);
    }
    return true;
}

const StockOperation* findStockOperation(const QString& name) {
    const QList<StockOperation>& all = stockOperations();
    const auto found = std::find_if(all.begin(), all.end(), [&](const StockOperation& operation) {
        return operation.name.compare(name, Qt::CaseInsensitive) == 0;
    });
    return found == all.end() ? nullptr : &*found;
}

}  // namespace regalon
