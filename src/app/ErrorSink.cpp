#include "app/ErrorSink.h"

#include <cstdio>

namespace regalon {

void ErrorSink::show(const QString& text, int, const QString& title) {
    ++m_count;
    QString line = title + QStringLiteral(": ") + text;
    line.replace(QStringLiteral("\r\n"), QStringLiteral(" "));
    std::fputs((line + u'\n').toUtf8().constData(), stderr);
}

}  // namespace regalon
