#pragma once

#include <QByteArray>

namespace regalon::test {

/// Reads any bytes as an icon file, entry by entry and as a whole: each gives a picture that can be drawn at
/// every scale, or is refused as no picture. Throws std::logic_error otherwise.
void checkIcon(const QByteArray& bytes);

}  // namespace regalon::test
