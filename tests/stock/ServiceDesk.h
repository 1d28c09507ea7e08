#pragma once

#include "map/MapWarehouse.h"
#include "platform/MsgBox.h"

#include <QStringList>

#include <gtest/gtest.h>

#include <functional>

namespace regalon::test {

/// What a procedure of the document services takes, as "@Name type", in the order in which the calls set it,
/// and the outputs that stand behind it.
struct Contract {
    QString procedure;
    QStringList inputs;
    QStringList outputs = {QStringLiteral("@ErrDesc nvarchar(250)")};
};

/// A warehouse without rows, whose procedures a test may replace by its own, to see what is sent to them and
/// what becomes of answers that the real ones never give.
class ServiceDesk : public testing::Test {
protected:
    explicit ServiceDesk(LocalWarehouse::Content content = LocalWarehouse::Content::Empty)
        : warehouse(content) {}

    void SetUp() override;
    /// No message came that the test has not expected.
    void TearDown() override;

    void run(const QString& statement);
    /// Puts a procedure in the place of the real one. It declares its inputs in the reverse of their order,
    /// so that each value arrives only if it is sent by its name.
    void answer(const Contract& contract, int returnValue, const QString& body = QString());
    /// The same with a reason in the last output.
    void refuse(const Contract& contract, int returnValue, const QString& reason);
    /// Makes a call whose procedure never ends, and kills the server while it runs.
    void expectDeathInside(const Contract& contract, const std::function<void()>& call);
    /// What the only call of the procedure carried, as "@Name=value", in the order of the contract.
    QStringList sent(const Contract& contract) const;

    QStringList titles() const;
    /// "Error - CLASS [ROUTINE]" for each routine.
    static QStringList reports(const QString& className, const QStringList& routines);

    MapWarehouse warehouse;
    MsgBoxRecorder messages;
    int expectedMessages = 0;
    QString message = QStringLiteral("before");
};

}  // namespace regalon::test
