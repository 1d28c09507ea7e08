#pragma once

#include <QString>

#include <ostream>

/// Found by GoogleTest, which would print the bytes of a text that failed a test.
inline void PrintTo(const QString& text, std::ostream* out) {
    *out << '"' << text.toStdString() << '"';
}
