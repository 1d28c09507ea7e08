#include "platform/UserSettings.h"

#include "platform/RunTimeError.h"

#include <QSettings>
#include <QStandardPaths>

namespace regalon {
namespace {

QString fileOf(const QString& application) {
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
           QStringLiteral("/Kolvestra/") + application + QStringLiteral(".ini");
}

}  // namespace

void SaveSetting(const QString& application, const QString& section, const QString& key,
                 const QString& value) {
    QSettings store(fileOf(application), QSettings::IniFormat);
    store.setValue(section + u'/' + key, value);
    store.sync();
    if (store.status() != QSettings::NoError)
        throw RunTimeError(RunTime::PathFileAccess);
}

QString GetSetting(const QString& application, const QString& section, const QString& key,
                   const QString& defaultValue) {
    const QSettings store(fileOf(application), QSettings::IniFormat);
    return store.value(section + u'/' + key, defaultValue).toString();
}

}  // namespace regalon
