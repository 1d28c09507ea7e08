#include "platform/Registry.h"

#include "platform/CodePage.h"

#include <QHash>
#include <QMap>

#include <utility>

namespace regalon::Registry {
namespace {

/// A key by its root and its way below it, in lower case; "" is the root itself.
struct Address {
    Key root = 0;
    QString path;

    bool operator<(const Address& other) const {
        return std::pair(root, path) < std::pair(other.root, other.path);
    }
    Address below(const QString& part) const {
        const QString name = part.toLower();
        return {root, path.isEmpty() ? name : path + u'\\' + name};
    }
};

struct Store {
    QMap<Address, QHash<QString, Source>> keys;
    QHash<Key, Address> open;
    Key last = 0;
};

Store& store() {
    static Store one;
    return one;
}

bool isRoot(Key key) {
    return key >= classesRoot && key <= dynData;
}

/// Where an open key leads; false if it is not open.
bool find(Key key, Address& address) {
    if (isRoot(key)) {
        address = {key, {}};
        return true;
    }
    const auto found = store().open.constFind(key);
    if (found == store().open.constEnd()) {
        return false;
    }
    address = *found;
    return true;
}

}  // namespace

void serve(Key root, const QString& path, const QString& name, Source source) {
    Address address{root, {}};
    for (const QString& part : path.split(u'\\', Qt::SkipEmptyParts)) {
        address = address.below(part);
        store().keys[address];
    }
    store().keys[address].insert(name.toLower(), std::move(source));
}

QByteArray textValue(const QString& text) {
    return CodePage::fromText(text) + '\0';
}

QByteArray numberValue(qint32 number) {
    QByteArray bytes;
    for (int shift = 0; shift < 32; shift += 8) {
        bytes.append(static_cast<char>((static_cast<quint32>(number) >> shift) & 0xFFU));
    }
    return bytes;
}

void clear() {
    store() = Store();
}

qint32 openKey(Key parent, const QString& part, quint32 access, Key& opened) {
    Address address;
    if (!find(parent, address)) {
        return Result::invalidHandle;
    }
    const Address below = address.below(part);
    if (!store().keys.contains(below)) {
        return Result::fileNotFound;
    }
    if (below.root == localMachine && (access & ~readAccess) != 0) {
        return Result::accessDenied;
    }
    opened = ++store().last;
    store().open.insert(opened, below);
    return Result::success;
}

qint32 queryValue(Key key, const QString& name, qsizetype size, QByteArray& bytes) {
    Address address;
    if (!find(key, address)) {
        return Result::invalidHandle;
    }
    const QHash<QString, Source> values = store().keys.value(address);
    const auto value = values.constFind(name.toLower());
    if (value == values.constEnd()) {
        return Result::fileNotFound;
    }
    const QByteArray all = (*value)();
    if (all.size() > size) {
        return Result::moreData;
    }
    bytes = all;
    return Result::success;
}

qint32 closeKey(Key key) {
    if (isRoot(key)) {
        return Result::success;
    }
    return store().open.remove(key) > 0 ? Result::success : Result::invalidHandle;
}

int openKeys() {
    return static_cast<int>(store().open.size());
}

}  // namespace regalon::Registry
