#pragma once

#include <QByteArray>
#include <QString>
#include <QtGlobal>

#include <functional>

namespace regalon {

/// What stands for the registry of Windows: a few keys, served by the settings. Names are compared without
/// regard to case. The keys of LocalMachine are the administrator's: nobody else opens them with full access.
namespace Registry {

/// An open key, or one of the roots, which are open always.
using Key = qint32;

inline constexpr Key classesRoot = static_cast<Key>(0x80000000U);
inline constexpr Key currentUser = static_cast<Key>(0x80000001U);
inline constexpr Key localMachine = static_cast<Key>(0x80000002U);
inline constexpr Key users = static_cast<Key>(0x80000003U);
inline constexpr Key performanceData = static_cast<Key>(0x80000004U);
inline constexpr Key currentConfig = static_cast<Key>(0x80000005U);
inline constexpr Key dynData = static_cast<Key>(0x80000006U);

inline constexpr quint32 allAccess = 0xF003F;
inline constexpr quint32 readAccess = 0x20019;

/// What the operations answer.
namespace Result {
inline constexpr qint32 success = 0;
inline constexpr qint32 fileNotFound = 2;
inline constexpr qint32 accessDenied = 5;
inline constexpr qint32 invalidHandle = 6;
inline constexpr qint32 moreData = 234;
}  // namespace Result

/// Gives the bytes of a value at the moment when it is read. What it raises, the read raises.
using Source = std::function<QByteArray()>;

/// Serves a value of a key, which is there with all keys above it from then on. A value of the same name is
/// replaced. `path` is the way below the root, its parts divided by "\".
void serve(Key root, const QString& path, const QString& name, Source source);
/// The bytes of a text: in the 8-bit code page, with the NUL that ends it.
QByteArray textValue(const QString& text);
/// The four bytes of a number.
QByteArray numberValue(qint32 number);
/// Forgets every value and closes every key.
void clear();

/// Opens one part below a key; 2 if it is not there, 5 if the access is not given, 6 if `parent` is not open.
qint32 openKey(Key parent, const QString& part, quint32 access, Key& opened);
/// The bytes of a value; 2 without such a value, 234 if there are more than `size`, 6 if the key is not open.
qint32 queryValue(Key key, const QString& name, qsizetype size, QByteArray& bytes);
/// 6 if the key is not open; a root stays open.
qint32 closeKey(Key key);

/// How many keys are open, roots aside.
int openKeys();

}  // namespace Registry
}  // namespace regalon
