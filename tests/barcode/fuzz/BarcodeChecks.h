#pragma once

#include <QByteArray>

namespace regalon::test {

/// Encodes any bytes, taken as UTF-8 text, in every symbology. Whatever they say, a string is either a whole
/// symbol or empty, and a failure is told where it should be. Throws std::logic_error otherwise.
void checkBarcode(const QByteArray& bytes);

}  // namespace regalon::test
