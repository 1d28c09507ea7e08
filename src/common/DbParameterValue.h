#pragma once

// Private to the gateway.

#include "common/DbCommand.h"

namespace regalon::odbc {

/// Values on their way into a parameter, in the form that its declared type wants. Numbers in texts have the
/// form of SQL literals (decimal point), whatever the regional format is; whole types round halves to even.
/// All throw RunTimeError WrongValueType for what the type cannot hold.
qint64 wholeNumber(const QVariant& value, const DbParameterInfo& info);
double realNumber(const QVariant& value, const DbParameterInfo& info);
/// Digits of a decimal or money value.
QByteArray decimalText(const QVariant& value, const DbParameterInfo& info);
/// Text form; dates in the form that every server reads.
QString parameterText(const QVariant& value);

}  // namespace regalon::odbc
