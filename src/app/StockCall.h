#pragma once

#include "app/StockOperation.h"
#include "app/StockServices.h"
#include "common/modSQL.h"

#include <tuple>
#include <type_traits>

namespace regalon {

/// The rows that a text left: its columns and then its rows.
struct TextRows {
    QList<QStringList> lines;
};

/// Makes operations of the command line out of the operations of the services: the signature of a method says
/// what goes in, what comes out, and what kind each argument has.
namespace StockCall {

// The fields of a parameter, in the order of the arguments.
template <class Value, class Visit>
void eachField(Value& value, Visit&& visit) {
    visit(value);
}

template <class Visit>
void eachField(OrderPackage& package, Visit&& visit) {
    visit(package.DocEntry), visit(package.DocNum), visit(package.LineNum), visit(package.BarCode);
    visit(package.Quantity), visit(package.UserSign), visit(package.NumberCode), visit(package.LineGrd);
    visit(package.DeleteLine), visit(package.ItemCode), visit(package.Aplication), visit(package.Operation);
}

template <class Visit>
void eachField(GivenOutPackage& package, Visit&& visit) {
    visit(package.DocNum), visit(package.ItemCode), visit(package.QuantityProp), visit(package.QuantityOut);
    visit(package.UserSign), visit(package.LineGrd), visit(package.PropOrOut), visit(package.DeleteLine);
    visit(package.Aplication), visit(package.Param), visit(package.BarCode);
}

template <class Visit>
void eachField(GiveOut& order, Visit&& visit) {
    visit(order.DocNumProd), visit(order.DocEntryProd), visit(order.LineNumProd), visit(order.UserSign);
    visit(order.UserSignGiveOut), visit(order.Aplication);
}

template <class Visit>
void eachField(ReturnedPackage& package, Visit&& visit) {
    visit(package.GiveOutDocNum), visit(package.GiveOutLineNum), visit(package.BarCode);
    visit(package.ItemCode), visit(package.Quantity), visit(package.Aplication), visit(package.Operation);
}

template <class Visit>
void eachField(ProposalLine& line, Visit&& visit) {
    visit(line.ItemCode), visit(line.ItemName), visit(line.BarCode), visit(line.Quantity);
    visit(line.QuantityAdd);
}

template <class Visit>
void eachField(PackingData& packing, Visit&& visit) {
    visit(packing.Blength1), visit(packing.Bwidth1), visit(packing.BHeight1), visit(packing.PurPackUn);
    visit(packing.PurPackMsr);
}

template <class Value>
constexpr ArgumentKind kindOf() {
    if constexpr (std::is_same_v<Value, qint16>)
        return ArgumentKind::Int16;
    else if constexpr (std::is_same_v<Value, qint32>)
        return ArgumentKind::Int32;
    else if constexpr (std::is_same_v<Value, double>)
        return ArgumentKind::Number;
    else
        return ArgumentKind::Text;
}

template <class Parameter>
inline constexpr bool isOutput =
    std::is_lvalue_reference_v<Parameter> && !std::is_const_v<std::remove_reference_t<Parameter>>;

/// Visits the fields of the inputs and those of the outputs, in the order of the parameters.
template <class... Parameters, class Input, class Output>
void eachParameter(std::tuple<std::decay_t<Parameters>...>& values, Input&& input, Output&& output) {
    std::apply(
        [&](auto&... value) {
            const auto visit = [&]<class Parameter>(auto& field, std::type_identity<Parameter>) {
                if constexpr (isOutput<Parameter>)
                    eachField(field, output);
                else
                    eachField(field, input);
            };
            (visit(value, std::type_identity<Parameters>{}), ...);
        },
        values);
}

inline void addLine(StockAnswer& answer, const QString& name, const QString& text) {
    if (name == u"Message")
        answer.reason = text;
    answer.lines.append({name, oneLine(text)});
}
inline void addLine(StockAnswer& answer, const QString& name, bool value) {
    answer.refused = !value;
    answer.lines.append({name, value ? QStringLiteral("True") : QStringLiteral("False")});
}
inline void addLine(StockAnswer& answer, const QString& name, const QStringList& array) {
    for (qsizetype i = 0; i < array.size(); ++i)
        answer.lines.append({QStringLiteral("%1(%2)").arg(name).arg(i), oneLine(array.at(i))});
}
inline void addLine(StockAnswer& answer, const QString&, const TextRows& rows) {
    for (const QStringList& cells : rows.lines) {
        QStringList printed;
        for (const QString& cell : cells)
            printed.append(oneLine(cell));
        const bool first = &cells == &rows.lines.first();
        answer.lines.append({first ? QStringLiteral("Columns") : QStringLiteral("Row"), printed.join(u'\t')});
    }
}
/// Numbers have a decimal point, whatever the regional format.
template <class Value>
requires(std::is_same_v<Value, qint16> || std::is_same_v<Value, qint32> ||
         std::is_same_v<Value, double>) void addLine(StockAnswer& answer, const QString& name, Value value) {
    answer.lines.append({name, SqlNumber(QVariant::fromValue(value))});
}

/// The array that a caller without elements of its own hands in.
template <class Value>
void prepare(Value& value) {
    if constexpr (std::is_same_v<Value, QStringList>)
        value.append(QString());
}

/// `names` are those of all fields, parted by blanks; `invoke` takes the service and the parameters.
template <class Result, class... Parameters, class Service, class Invoke>
StockOperation make(const QString& name, Service StockServices::*member, const char* names, Invoke invoke) {
    using Values = std::tuple<std::decay_t<Parameters>...>;
    StockOperation operation;
    operation.name = name;
    QStringList unused = QString::fromLatin1(names).split(u' ', Qt::SkipEmptyParts);
    Values sample;
    if constexpr (!std::is_void_v<Result>)
        operation.outputs.append(QStringLiteral("Result"));
    eachParameter<Parameters...>(
        sample,
        [&](auto& field) {
            operation.inputs.append({unused.takeFirst(), kindOf<std::decay_t<decltype(field)>>()});
        },
        [&](auto&) { operation.outputs.append(unused.takeFirst()); });
    Q_ASSERT(unused.isEmpty());
    operation.run = [invoke, member, outputs = operation.outputs](StockServices& services,
                                                                  const QVariantList& given) {
        Service& service = services.*member;
        Values values;
        qsizetype next = 0;
        eachParameter<Parameters...>(
            values, [&](auto& field) { field = given.at(next++).value<std::decay_t<decltype(field)>>(); },
            [](auto& field) { prepare(field); });
        StockAnswer answer;
        qsizetype output = 0;
        const auto call = [&](auto&... value) { return invoke(service, value...); };
        if constexpr (std::is_void_v<Result>)
            std::apply(call, values);
        else
            addLine(answer, outputs.at(output++), Result(std::apply(call, values)));
        eachParameter<Parameters...>(
            values, [](auto&) {}, [&](auto& field) { addLine(answer, outputs.at(output++), field); });
        const QString message = service.takeMessage();
        if (!outputs.contains(QStringLiteral("Message")))
            answer.reason = message;
        return answer;
    };
    return operation;
}

/// An operation that is a method of the service or of a class that it derives from.
template <class Service, class Owner, class Result, class... Parameters>
StockOperation method(const QString& name, Service StockServices::*service,
                      Result (Owner::*method)(Parameters...), const char* names) {
    return make<Result, Parameters...>(name, service, names, [method](Service& called, auto&... value) {
        return (called.*method)(value...);
    });
}

/// One that needs more around it than its arguments.
template <class Service, class Result, class... Parameters>
StockOperation function(const QString& name, Service StockServices::*service,
                        Result (*function)(Service&, Parameters...), const char* names) {
    return make<Result, Parameters...>(name, service, names, [function](Service& called, auto&... value) {
        return function(called, value...);
    });
}

}  // namespace StockCall
}  // namespace regalon
