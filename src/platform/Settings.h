#pragma once

#include "platform/Convert.h"
#include "platform/Paths.h"
#include "platform/WordSetup.h"

#include <QString>
#include <QStringList>

namespace regalon {

/// Settings of the platform under the system, which has none of its own: where drives lie, which driver talks
/// to the server, how texts and numbers look. Kept in $XDG_CONFIG_HOME/Kolvestra/Regalon.conf;
/// docs/settings.md tells every key.
struct Settings {
    /// How a server name with a port ("host,1433") goes to the driver.
    enum class ServerPort {
        Split,  ///< as SERVER=host;PORT=1433 (FreeTDS)
        Keep    ///< as SERVER=host,1433 (Microsoft's driver)
    };

    /// [Odbc] Driver: a name of odbcinst.ini or the path of a driver library.
    QString OdbcDriver = QStringLiteral("FreeTDS");
    /// [Odbc] Keywords: further "key=value;" pieces of every connection string.
    QString OdbcKeywords = QStringLiteral("TDS_Version=7.4;ClientCharset=UTF-8");
    /// [Odbc] ServerPort
    ServerPort OdbcServerPort = ServerPort::Split;
    /// [Odbc] DefaultPort: TCP port of a server name without one; 0 leaves it to the driver.
    int OdbcDefaultPort = 1433;
    /// [Text] CodePage
    QString CodePageName = QStringLiteral("windows-1250");
    /// [Text] RegionalFormat
    RegionalFormat Regional;
    /// [Drives] and [Shares]
    Paths::Mapping PathMapping;
    /// [Files] DsnFolder: folder of data source files, as a path of the system or of this machine; empty for
    /// none. Served as the value of the registry that it is.
    QString DsnFolder;

    /// [Labels]
    WordSetup LabelPrinter;

    /// One text for each bad key or line, naming the key; its default is in use. For showing to the user
    /// once.
    QStringList Problems;

    /// Path of the settings file of this user; the file need not exist.
    static QString defaultFile();
    /// Reads a file; a missing file gives the defaults without a problem. Never fails.
    static Settings load(const QString& file = defaultFile());
    /// The same for a file's text.
    static Settings fromText(const QString& text);
    /// Puts regional format, code page, path mapping and the values of the registry into use for the whole
    /// program.
    void apply() const;
};

}  // namespace regalon
