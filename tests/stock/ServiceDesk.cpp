#include "stock/ServiceDesk.h"

#include <QtTest/QTest>

#include <algorithm>
#include <thread>

namespace regalon::test {

using namespace Qt::StringLiterals;

void ServiceDesk::SetUp() {
    ASSERT_TRUE(warehouse.start()) << qPrintable(warehouse.why());
}

void ServiceDesk::TearDown() {
    EXPECT_EQ(messages.count(), expectedMessages) << qPrintable(messages.last().Text);
}

void ServiceDesk::run(const QString& statement) {
    ASSERT_TRUE(warehouse.run({statement})) << qPrintable(warehouse.why());
}

void ServiceDesk::answer(const Contract& contract, int returnValue, const QString& body) {
    QStringList declared = contract.inputs;
    std::reverse(declared.begin(), declared.end());
    for (const QString& output : contract.outputs)
        declared.append(output + u" output"_s);
    run(u"drop procedure if exists "_s + contract.procedure);
    run(u"create procedure %1 %2 as begin %3 return %4; end"_s
            .arg(contract.procedure, declared.join(u','), body)
            .arg(returnValue));
}

void ServiceDesk::refuse(const Contract& contract, int returnValue, const QString& reason) {
    const QString last = contract.outputs.last().section(u' ', 0, 0);
    answer(contract, returnValue, u"set %1 = N'%2';"_s.arg(last, reason));
}

void ServiceDesk::expectDeathInside(const Contract& contract, const std::function<void()>& call) {
    answer(contract, 0, u"declare @i int = 0; while @i >= 0 set @i = (@i + 1) % 1000;"_s);
    warehouse.server.clearTrace();
    std::thread caller(call);
    const QString first = contract.inputs.first().section(u' ', 0, 0) + u'=';
    const bool inside = QTest::qWaitFor([&] { return sent(contract).first().startsWith(first); }, 30000);
    warehouse.server.kill();
    caller.join();
    EXPECT_TRUE(inside);
}

QStringList ServiceDesk::sent(const Contract& contract) const {
    const QList<QStringList> calls = warehouse.calls(contract.procedure);
    if (calls.size() != 1)
        return {u"%1 calls"_s.arg(calls.size())};
    QStringList values = calls.first().mid(0, contract.inputs.size());
    std::reverse(values.begin(), values.end());
    for (qsizetype i = 0; i < values.size(); ++i)
        values[i].prepend(contract.inputs.at(i).section(u' ', 0, 0) + u'=');
    return values;
}

QStringList ServiceDesk::titles() const {
    QStringList texts;
    for (const MsgBoxRecorder::Message& box : messages.messages())
        texts.append(box.Title);
    return texts;
}

QStringList ServiceDesk::reports(const QString& className, const QStringList& routines) {
    QStringList texts;
    for (const QString& routine : routines)
        texts.append(u"Error - %1 [%2]"_s.arg(className, routine));
    return texts;
}

}  // namespace regalon::test
