#pragma once

#include <QHash>
#include <QString>
#include <QStringList>

namespace regalon::test {

/// What `zbarimg`, a reader of barcodes, found in pictures: "TYPE:code" by file. One call reads all files.
/// A file without a symbol has no entry. Empty, with the failure of the test added, when the reader failed.
QHash<QString, QStringList> readByZbar(const QStringList& files);

}  // namespace regalon::test
