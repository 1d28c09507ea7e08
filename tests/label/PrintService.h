#pragma once

#include <QProcess>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

namespace regalon::test {

/// A print service of its own for a test: CUPS on a socket in a temporary folder, with two printers that keep
/// what is printed, "Etykiety" and "Biuro", the default one. Everything of this process that prints goes
/// there.
class PrintService {
public:
    PrintService();
    ~PrintService();
    PrintService(const PrintService&) = delete;
    PrintService& operator=(const PrintService&) = delete;

    /// False, with why() telling, if it does not start.
    bool start();
    void stop();
    QString why() const { return m_why; }

    /// Waits until a printer has printed this many documents; their files, oldest first.
    QStringList printed(const QString& printer, int count = 1) const;
    /// What lies in a printer's tray now.
    int count(const QString& printer) const;

private:
    bool configure();
    QString file(const QString& name) const { return m_folder.filePath(name); }

    QTemporaryDir m_folder;
    QProcess m_service;
    QString m_why;
};

/// The text of a PDF file, line ends and columns as they look.
QString textOf(const QString& pdf);
/// What a scanner reads of its first page, as "CODE-128:digits".
QString scanned(const QString& pdf);

}  // namespace regalon::test
