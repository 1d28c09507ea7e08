#pragma once

#include <QByteArray>

namespace regalon::test {

/// Reads any bytes as an .ini file, and writes what was read back into it: nothing of the section is lost.
/// Throws std::logic_error otherwise.
void checkProfile(const QByteArray& bytes);

}  // namespace regalon::test
