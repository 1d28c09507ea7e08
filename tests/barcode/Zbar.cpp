#include "barcode/Zbar.h"

#include <QProcess>
#include <QXmlStreamReader>

#include <gtest/gtest.h>

namespace regalon::test {
namespace {

using namespace Qt::StringLiterals;

constexpr int readerTime = 60000;
/// The reader's own word for pictures without a symbol among those that it was given.
constexpr int nothingFound = 4;

}  // namespace

QHash<QString, QStringList> readByZbar(const QStringList& files) {
    QProcess reader;
    const QStringList symbologies = {u"-Sdisable"_s, u"-Scode128.enable"_s, u"-Sean13.enable"_s};
    reader.start(u"zbarimg"_s, QStringList{u"-q"_s, u"--xml"_s, u"--nodbus"_s} + symbologies + files);
    if (!reader.waitForFinished(readerTime) ||
        (reader.exitCode() != 0 && reader.exitCode() != nothingFound)) {
        ADD_FAILURE() << "zbarimg: " << qPrintable(reader.errorString()) << reader.exitCode() << " "
                      << reader.readAllStandardError().constData();
        return {};
    }
    QHash<QString, QStringList> found;
    QXmlStreamReader xml(reader.readAllStandardOutput());
    QString file;
    QString type;
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement)
            continue;
        if (xml.name() == u"source")
            file = xml.attributes().value(u"href"_s).toString();
        else if (xml.name() == u"symbol")
            type = xml.attributes().value(u"type"_s).toString();
        else if (xml.name() == u"data")
            found[file].append(type + u':' + xml.readElementText());
    }
    EXPECT_FALSE(xml.hasError()) << qPrintable(xml.errorString());
    return found;
}

}  // namespace regalon::test
