#include "common/modAPI_Registry.h"

#include "platform/CodePage.h"
#include "platform/Convert.h"
#include "platform/MsgBox.h"
#include "platform/Registry.h"
#include "platform/RunTimeError.h"

#include <QStringList>

#include <optional>

namespace regalon {

using namespace Qt::StringLiterals;

namespace {

constexpr qint32 noKey = -1;
constexpr qint32 failed = -1;
constexpr qsizetype mostParts = 32;

// Types of values.
constexpr qint32 typeText = 1;
constexpr qint32 typeBinary = 3;
constexpr qint32 typeNumber = 4;

constexpr qsizetype textBytes = 256;
constexpr qsizetype numberBytes = 4;

std::optional<Registry::Key> rootOf(const QString& name) {
    const struct {
        QString name;
        Registry::Key key;
    } roots[] = {
        {u"HKEY_CLASSES_ROOT"_s, Registry::classesRoot},
        {u"HKEY_CURRENT_USER"_s, Registry::currentUser},
        {u"HKEY_LOCAL_MACHINE"_s, Registry::localMachine},
        {u"HKEY_USERS"_s, Registry::users},
        {u"HKEY_PERFORMANCE_DATA"_s, Registry::performanceData},
        {u"HKEY_CURRENT_CONFIG"_s, Registry::currentConfig},
        {u"HKEY_DYN_DATA"_s, Registry::dynData},
    };
    for (const auto& root : roots) {
        if (root.name == name.toUpper()) {
            return root.key;
        }
    }
    return std::nullopt;
}

/// Most users may only read, and that is enough here.
bool openBelow(Registry::Key parent, const QString& part, Registry::Key& opened) {
    qint32 result = Registry::openKey(parent, part, Registry::allAccess, opened);
    if (result == Registry::Result::accessDenied) {
        result = Registry::openKey(parent, part, Registry::readAccess, opened);
    }
    return result == Registry::Result::success;
}

QString textOf(QByteArray bytes) {
    if (bytes.endsWith('\0')) {
        bytes.chop(1);
    }
    return CodePage::toText(bytes);
}

/// The lowest byte comes first; bytes that are not there are 0.
QString numberOf(const QByteArray& bytes) {
    quint32 number = 0;
    for (qsizetype i = 0; i < bytes.size(); ++i) {
        number |= static_cast<quint32>(static_cast<unsigned char>(bytes[i])) << (8 * i);
    }
    return QString::number(static_cast<qint32>(number));
}

qint32 readOpen(Registry::Key key, const QString& name, QString& value, qint32 type) {
    const bool text = type == typeText;
    if (!text && type != typeBinary && type != typeNumber) {
        return failed;
    }
    QByteArray bytes;
    if (Registry::queryValue(key, name, text ? textBytes : numberBytes, bytes) != Registry::Result::success) {
        return failed;
    }
    value = text ? textOf(bytes) : numberOf(bytes);
    return 0;
}

/// The module's own handler: tells a run-time failure and answers its number.
template <class Body>
qint32 guarded(const QString& routine, Body&& body) {
    try {
        return body();
    } catch (...) {
        const ErrorRecord error = currentError();
        MsgBox(u"Error: "_s + QString::number(error.Number) + u"\r\n"_s + error.Description +
                   u"\r\nSource: "_s + error.Source,
               MsgFlag::Critical, u"[modAPI_Registry] - "_s + routine);
        return error.Number;
    }
}

/// Closes a key whatever becomes of reading it.
class KeyCloser {
public:
    explicit KeyCloser(qint32 key) : m_key(key) {}
    ~KeyCloser() { RegKeyClose(m_key); }
    KeyCloser(const KeyCloser&) = delete;
    KeyCloser& operator=(const KeyCloser&) = delete;

private:
    qint32 m_key;
};

}  // namespace

qint32 RegKeyOpen(const QString& path) {
    const QStringList parts = TrimBlanks(path).split(u'\\', Qt::SkipEmptyParts);
    if (parts.isEmpty() || parts.size() > mostParts) {
        return noKey;
    }
    const std::optional<Registry::Key> root = rootOf(parts.first());
    if (!root) {
        return noKey;
    }
    Registry::Key key = *root;
    for (const QString& part : parts.mid(1)) {
        Registry::Key below = noKey;
        const bool opened = openBelow(key, part, below);
        // A root stays open by itself.
        RegKeyClose(key);
        if (!opened) {
            return noKey;
        }
        key = below;
    }
    return key;
}

qint32 RegValueRead(const QString& path, const QString& name, QString& value, qint32 type) {
    return guarded(u"RegValueRead"_s, [&] {
        const qint32 key = RegKeyOpen(path);
        if (key == noKey) {
            return failed;
        }
        const KeyCloser closer(key);
        return readOpen(key, name, value, type);
    });
}

qint32 RegKeyClose(qint32 key) {
    return guarded(u"RegKeyClose"_s, [key] { return Registry::closeKey(key); });
}

}  // namespace regalon
