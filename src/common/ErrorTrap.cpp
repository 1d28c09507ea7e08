#include "common/ErrorTrap.h"

#include "common/AppContext.h"
#include "platform/MsgBox.h"
#include "platform/RunTimeError.h"

namespace regalon {

using namespace Qt::StringLiterals;

namespace {

const QString lineEnd = u"\r\n"_s;

}  // namespace

void reportFromClass(AppContext& context, QAnyStringView object, QAnyStringView routine) {
    const ErrorRecord error = currentError();
    if (!context.ErrorService) {
        throw RunTimeError(RunTime::ObjectNotSet);
    }
    context.ErrorService->ShowError(eErrType::Error, object.toString(), routine.toString(), error);
}

void reportFromWindow(QAnyStringView name) {
    const ErrorRecord error = currentError();
    MsgBox(QString::number(error.Number) + lineEnd + error.Description + error.Source,
           MsgFlag::Critical + MsgFlag::SystemModal, name.toString());
}

void reportUnhandled() {
    const ErrorRecord error = currentError();
    MsgBox(QString::number(error.Number) + lineEnd + error.Description, MsgFlag::Critical);
}

}  // namespace regalon
