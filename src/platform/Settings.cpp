#include "platform/Settings.h"

#include "platform/CodePage.h"
#include "platform/Registry.h"
#include "platform/WordApplication.h"

#include <QDir>
#include <QFile>
#include <QList>
#include <QStandardPaths>

#include <functional>
#include <utility>

namespace regalon {
namespace {

/// A settings file is a page of text; more than this is not one.
constexpr qint64 MaxFileBytes = 1 << 20;

/// What a reader of the registry's value takes, in bytes of the code page; it is given nothing of a longer
/// one.
constexpr qsizetype MaxDsnFolder = 255;

struct Entry {
    QString section;
    QString key;
    QString value;

    bool is(QLatin1String wantedSection, QLatin1String wantedKey) const {
        return section.compare(wantedSection, Qt::CaseInsensitive) == 0 &&
               key.compare(wantedKey, Qt::CaseInsensitive) == 0;
    }
    bool in(QLatin1String wantedSection) const {
        return section.compare(wantedSection, Qt::CaseInsensitive) == 0;
    }
    QString name() const { return u'[' + section + QStringLiteral("] ") + key; }
};

QString unquoted(const QString& value) {
    if (value.size() >= 2 && value.front() == u'"' && value.back() == u'"')
        return value.mid(1, value.size() - 2);
    return value;
}

QString nameOf(Settings::ServerPort rule) {
    return rule == Settings::ServerPort::Split ? QStringLiteral("split") : QStringLiteral("keep");
}

/// A drive's letter, a share, drive C alone, or a path of this machine; all else would be sought in the
/// current folder, which is another at each start.
bool isAbsolute(const QString& path) {
    return path.startsWith(u'/') || path.startsWith(u'\\') ||
           (path.size() >= 2 && path[1] == u':' && path[0].isLetter() && path[0].unicode() < 128);
}

class Reader {
public:
    explicit Reader(Settings& settings) : m_settings(settings) {}

    void read(const QString& text) {
        QString section;
        int number = 0;
        for (const QString& raw : text.split(u'\n')) {
            ++number;
            const QString line = raw.trimmed();
            if (line.isEmpty() || line.front() == u';' || line.front() == u'#')
                continue;
            const qsizetype sign = line.indexOf(u'=');
            if (line.front() == u'[' && line.back() == u']')
                section = line.mid(1, line.size() - 2).trimmed();
            else if (sign > 0)
                take({section, line.left(sign).trimmed(), unquoted(line.mid(sign + 1).trimmed())});
            else
                problem(
                    QStringLiteral("wiersz %1: niezrozumiały wpis \"%2\", pominięty.").arg(number).arg(line));
        }
        settleDriverDefaults();
        settleDsnFolder();
        tellBadValues();
    }

    void problem(const QString& text) { m_settings.Problems.append(text); }

private:
    void take(const Entry& entry) {
        if (entry.in(QLatin1String("Odbc")))
            takeOdbc(entry);
        else if (entry.in(QLatin1String("Text")))
            takeText(entry);
        else if (entry.in(QLatin1String("Drives")))
            takeDrive(entry);
        else if (entry.in(QLatin1String("Shares")))
            takeShare(entry);
        else if (entry.is(QLatin1String("Files"), QLatin1String("DsnFolder")))
            m_dsnFolders.append(entry);
        else if (entry.in(QLatin1String("Labels")))
            takeLabels(entry);
        else
            unknown(entry);
    }

    void takeOdbc(const Entry& entry) {
        const QLatin1String odbc("Odbc");
        if (entry.is(odbc, QLatin1String("Driver")))
            takeNonEmpty(entry, m_settings.OdbcDriver);
        else if (entry.is(odbc, QLatin1String("Keywords")))
            takeKeywords(entry);
        else if (entry.is(odbc, QLatin1String("ServerPort")))
            takeServerPort(entry);
        else if (entry.is(odbc, QLatin1String("DefaultPort")))
            takeDefaultPort(entry);
        else
            unknown(entry);
    }

    void takeText(const Entry& entry) {
        const QLatin1String text("Text");
        if (entry.is(text, QLatin1String("CodePage"))) {
            if (CodePage::isKnown(entry.value))
                m_settings.CodePageName = entry.value;
            else
                bad(entry, [this] { return m_settings.CodePageName; });
        } else if (entry.is(text, QLatin1String("RegionalFormat"))) {
            if (!RegionalFormat::fromLocale(entry.value, m_settings.Regional))
                bad(entry, [this] { return m_settings.Regional.Locale; });
        } else {
            unknown(entry);
        }
    }

    void takeDrive(const Entry& entry) {
        QString letter = entry.key.toUpper();
        if (letter.endsWith(u':'))
            letter.chop(1);
        const bool isDrive = letter.size() == 1 && letter[0] >= u'A' && letter[0] <= u'Z';
        if (!isDrive)
            unknown(entry);
        else if (!QDir::isAbsolutePath(entry.value))
            bad(entry, [this, letter] { return folderInUse(letter[0]); });
        else if (letter == QLatin1String("C"))
            m_settings.PathMapping.DriveC = entry.value;
        else
            m_settings.PathMapping.Drives.insert(letter[0], entry.value);
    }

    void takeShare(const Entry& entry) {
        QString share = entry.key.toLower();
        const QStringList names = share.replace(u'/', u'\\').split(u'\\', Qt::SkipEmptyParts);
        if (names.size() != 2)
            unknown(entry);
        else if (!QDir::isAbsolutePath(entry.value))
            bad(entry, [this, names] { return m_settings.PathMapping.Shares.value(names.join(u'\\')); });
        else
            m_settings.PathMapping.Shares.insert(names.join(u'\\'), entry.value);
    }

    QString folderInUse(QChar drive) const {
        if (drive != u'C')
            return m_settings.PathMapping.Drives.value(drive);
        return m_settings.PathMapping.DriveC.isEmpty() ? Paths::driveC() : m_settings.PathMapping.DriveC;
    }

    void takeNonEmpty(const Entry& entry, QString& target) {
        if (entry.value.isEmpty())
            bad(entry, [&target] { return target; });
        else
            target = entry.value;
    }

    void takeKeywords(const Entry& entry) {
        for (const QString& piece : entry.value.split(u';', Qt::SkipEmptyParts)) {
            if (piece.indexOf(u'=') < 1) {
                bad(entry, [this] { return m_settings.OdbcKeywords; });
                return;
            }
        }
        m_settings.OdbcKeywords = entry.value;
        m_keywordsGiven = true;
    }

    void takeServerPort(const Entry& entry) {
        const bool split = entry.value.compare(QLatin1String("split"), Qt::CaseInsensitive) == 0;
        const bool keep = entry.value.compare(QLatin1String("keep"), Qt::CaseInsensitive) == 0;
        if (!split && !keep) {
            bad(entry, [this] { return nameOf(m_settings.OdbcServerPort); });
            return;
        }
        m_settings.OdbcServerPort = split ? Settings::ServerPort::Split : Settings::ServerPort::Keep;
        m_serverPortGiven = true;
    }

    void takeDefaultPort(const Entry& entry) {
        bool isNumber = false;
        const int port = entry.value.toInt(&isNumber);
        if (isNumber && port >= 0 && port <= 65535)
            m_settings.OdbcDefaultPort = port;
        else
            bad(entry, [this] { return QString::number(m_settings.OdbcDefaultPort); });
    }

    void takeLabels(const Entry& entry) {
        const QLatin1String labels("Labels");
        if (entry.is(labels, QLatin1String("LibreOffice")))
            takeOfficeFolder(entry);
        else if (entry.is(labels, QLatin1String("TimeLimit")))
            takeTimeLimit(entry);
        else
            unknown(entry);
    }

    void takeOfficeFolder(const Entry& entry) {
        if (entry.value.isEmpty() || QDir::isAbsolutePath(entry.value))
            m_settings.LabelPrinter.OfficeFolder = entry.value;
        else
            bad(entry, [this] { return m_settings.LabelPrinter.OfficeFolder; });
    }

    void takeTimeLimit(const Entry& entry) {
        bool isNumber = false;
        const int seconds = entry.value.toInt(&isNumber);
        if (isNumber && seconds >= 1 && seconds <= 3600)
            m_settings.LabelPrinter.TimeLimit = seconds;
        else
            bad(entry, [this] { return QString::number(m_settings.LabelPrinter.TimeLimit); });
    }

    /// The other defaults of [Odbc] are those of FreeTDS; another driver would not know its keywords.
    void settleDriverDefaults() {
        if (m_settings.OdbcDriver.contains(QLatin1String("tds"), Qt::CaseInsensitive))
            return;
        if (!m_keywordsGiven)
            m_settings.OdbcKeywords.clear();
        if (!m_serverPortGiven)
            m_settings.OdbcServerPort = Settings::ServerPort::Keep;
    }

    /// Whether its letters have codes is known once the code page is.
    void settleDsnFolder() {
        for (const Entry& entry : std::as_const(m_dsnFolders)) {
            const QString& folder = entry.value;
            const bool usable = isAbsolute(folder) && folder.size() <= MaxDsnFolder &&
                                CodePage::holds(m_settings.CodePageName, folder);
            if (usable || folder.isEmpty())
                m_settings.DsnFolder = folder;
            else
                bad(entry, [this] { return m_settings.DsnFolder; });
        }
    }

    /// What is in use instead is known once the whole file is read: other lines may set the key, and the
    /// driver decides about defaults. Until then an empty text keeps the place among the problems.
    void bad(const Entry& entry, std::function<QString()> inUse) {
        m_bad.append({m_settings.Problems.size(), entry, std::move(inUse)});
        problem(QString());
    }

    void tellBadValues() {
        for (const BadValue& one : std::as_const(m_bad)) {
            const QString inUse = one.inUse();
            m_settings.Problems[one.place] =
                one.entry.name() + QStringLiteral(": niepoprawna wartość \"") + one.entry.value + u'"' +
                (inUse.isEmpty() ? QStringLiteral(", wpis pominięty.")
                                 : QStringLiteral(", w użyciu jest \"") + inUse + QStringLiteral("\"."));
        }
    }

    void unknown(const Entry& entry) {
        problem(entry.name() + QStringLiteral(": nieznany klucz, pominięty."));
    }

    struct BadValue {
        qsizetype place;
        Entry entry;
        std::function<QString()> inUse;
    };

    Settings& m_settings;
    QList<BadValue> m_bad;
    QList<Entry> m_dsnFolders;
    bool m_keywordsGiven = false;
    bool m_serverPortGiven = false;
};

/// Where programs look for it. An empty setting is no value there.
void serveDsnFolder(const QString& folder) {
    Registry::clear();
    if (!folder.isEmpty()) {
        Registry::serve(Registry::localMachine, QStringLiteral("SOFTWARE\\ODBC\\ODBC.INI\\ODBC File DSN"),
                        QStringLiteral("DefaultDSNDir"), [folder] { return Registry::textValue(folder); });
    }
}

}  // namespace

QString Settings::defaultFile() {
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
           QStringLiteral("/Kolvestra/Regalon.conf");
}

Settings Settings::fromText(const QString& text) {
    Settings settings;
    Reader(settings).read(text);
    return settings;
}

Settings Settings::load(const QString& file) {
    Settings settings;
    Reader reader(settings);
    QFile source(file);
    if (!source.exists())
        return settings;
    if (!source.open(QIODevice::ReadOnly)) {
        reader.problem(file + QStringLiteral(": ") + source.errorString());
        return settings;
    }
    const QByteArray bytes = source.read(MaxFileBytes + 1);
    if (bytes.size() > MaxFileBytes)
        reader.problem(file + QStringLiteral(": plik jest za duży, pominięty."));
    else
        reader.read(QString::fromUtf8(bytes));
    return settings;
}

void Settings::apply() const {
    setRegionalFormat(Regional);
    CodePage::set(CodePageName);
    Paths::setMapping(PathMapping);
    WordApplication::setSetup(LabelPrinter);
    serveDsnFolder(DsnFolder);
}

}  // namespace regalon
