#pragma once

#include <QString>

namespace regalon {

/// Small values of one user, kept by application, section and key in
/// $XDG_CONFIG_HOME/Kolvestra/<application>.ini. Raises 75 if the value cannot be stored.
void SaveSetting(const QString& application, const QString& section, const QString& key,
                 const QString& value);
QString GetSetting(const QString& application, const QString& section, const QString& key,
                   const QString& defaultValue = QString());

}  // namespace regalon
