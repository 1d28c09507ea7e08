#include "common/clsLanguage.h"

#include "common/ProgramFolder.h"
#include "platform/Paths.h"
#include "platform/PrivateProfile.h"

#include <QCoreApplication>

namespace regalon {

namespace {

/// Bytes, the closing NUL of the platform's call among them.
constexpr qsizetype bufferSize = 3072;

}  // namespace

QString clsLanguage::GetMsgBoxText(const QString& strFormName, const QString& strMsgBoxName,
                                   const QString& strAlternativeText) const {
    return read(strFormName, strMsgBoxName + QStringLiteral("Text"), strAlternativeText);
}

QString clsLanguage::GetMsgBoxTitle(const QString& strFormName, const QString& strMsgBoxName,
                                    const QString& strAlternativeTitle) const {
    return read(strFormName, strMsgBoxName + QStringLiteral("Title"), strAlternativeTitle);
}

QString clsLanguage::read(const QString& strFormName, const QString& key, const QString& alternative) const {
    // Nobody has chosen a language. A file ".ini" is that of none.
    if (m_fileName.isEmpty()) {
        return alternative;
    }
    try {
        const QString text = PrivateProfile::string(file(), strFormName + QStringLiteral("MsgBox"), key,
                                                    QString(), bufferSize);
        return text.isEmpty() ? alternative : text;
    } catch (const std::exception&) {
        return alternative;
    }
}

QString clsLanguage::file() const {
    const QString name = QStringLiteral("\\Languages\\") + m_fileName + QStringLiteral(".ini");
    const QString ofSite = programFolder() + name;
    return Paths::fileExists(ofSite) ? ofSite : QCoreApplication::applicationDirPath() + name;
}

}  // namespace regalon
