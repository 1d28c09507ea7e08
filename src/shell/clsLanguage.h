#pragma once

#include <QString>

namespace regalon {

/// Texts of message boxes in the user's language. The literals of the code are the texts wherever no language
/// file has its own; no language file comes with the program.
class clsLanguage {
public:
    /// Base name of the language file, such as "Polish"; empty until a language is chosen.
    QString FileName() const { return m_fileName; }
    void setFileName(const QString& name) { m_fileName = name; }

    QString GetMsgBoxText(const QString& strFormName, const QString& strMsgBoxName,
                          const QString& strAlternativeText) const;
    QString GetMsgBoxTitle(const QString& strFormName, const QString& strMsgBoxName,
                           const QString& strAlternativeTitle) const;

private:
    QString m_fileName;
};

}  // namespace regalon
