#pragma once

#include <QString>
#include <QtGlobal>

namespace regalon {

/// Opens a key by its full path, "HKEY_LOCAL_MACHINE\SOFTWARE\...": with full access where that is given,
/// else for reading. Doubled "\" do no harm. The open key, or -1 for an unknown root, a path of more than 32
/// parts and a part that cannot be opened.
qint32 RegKeyOpen(const QString& path);

/// Reads a value of a key: a text of up to 256 bytes (type 1), or four bytes as decimal text (types 3 and 4).
/// 0; -1, with `value` as it was, when there is nothing to be read; or, after a message, the number of a
/// run-time failure.
qint32 RegValueRead(const QString& path, const QString& name, QString& value, qint32 type);

/// 0 or the number of the failure.
qint32 RegKeyClose(qint32 key);

}  // namespace regalon
