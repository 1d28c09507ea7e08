#pragma once

#include <QString>

namespace regalon::test {

/// Writes a template with a module of this source in its library; false if that fails.
bool writeTemplate(const QString& path, const QString& source,
                   const QString& library = QStringLiteral("Standard"),
                   const QString& module = QStringLiteral("Label"));

/// A macro "Generate" with seven arguments and this body.
QString generate(const QString& body);

}  // namespace regalon::test
