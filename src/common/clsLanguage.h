#pragma once

#include <QString>

namespace regalon {

/// Texts of message boxes in the user's language, from the .ini file of the language; the literals of the
/// code stand in for what no file has. Captions of windows and menus are not translated.
///
/// The file of a language lies in "Languages" in the program's folder, where a site puts its own, or beside
/// the program, where those lie that come with it. The first of the two that is there counts.
class clsLanguage {
public:
    /// Base name of the language file, such as "Polish"; empty until a language is chosen.
    QString FileName() const { return m_fileName; }
    void setFileName(const QString& name) { m_fileName = name; }

    /// Text and title of a message box of a window. The alternative, without any message, where file, section
    /// or key is missing or the value is empty. At most 3071 bytes of a value are taken.
    QString GetMsgBoxText(const QString& strFormName, const QString& strMsgBoxName,
                          const QString& strAlternativeText) const;
    QString GetMsgBoxTitle(const QString& strFormName, const QString& strMsgBoxName,
                           const QString& strAlternativeTitle) const;

private:
    QString read(const QString& strFormName, const QString& key, const QString& alternative) const;
    QString file() const;

    QString m_fileName;
};

}  // namespace regalon
