#pragma once

#include <QByteArray>

namespace regalon::test {

/// Reads any bytes as a settings file and, behind a first zero byte, as a connection string (without one, as
/// both). Whatever they say, the settings in use are usable, and no value of the connection string becomes
/// another key of the text that the driver gets. Throws std::logic_error otherwise.
void checkConnection(const QByteArray& bytes);

}  // namespace regalon::test
