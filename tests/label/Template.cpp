#include "label/Template.h"

#include <QFile>

namespace regalon::test {

namespace {

// One file of text instead of a package.
constexpr const char* kDocument = R"(<?xml version="1.0" encoding="UTF-8"?>
<office:document
 xmlns:office="urn:oasis:names:tc:opendocument:xmlns:office:1.0"
 xmlns:text="urn:oasis:names:tc:opendocument:xmlns:text:1.0"
 xmlns:script="urn:oasis:names:tc:opendocument:xmlns:script:1.0"
 xmlns:ooo="http://openoffice.org/2004/office"
 office:version="1.2" office:mimetype="application/vnd.oasis.opendocument.text">
<office:scripts><office:script script:language="ooo:Basic"><ooo:libraries>
<ooo:library-embedded ooo:name="@LIBRARY@"><ooo:module ooo:name="@MODULE@">
<ooo:source-code>@SOURCE@</ooo:source-code></ooo:module></ooo:library-embedded>
</ooo:libraries></office:script></office:scripts>
<office:body><office:text><text:p>pusty szablon</text:p></office:text></office:body>
</office:document>
)";

}  // namespace

bool writeTemplate(const QString& path, const QString& source, const QString& library,
                   const QString& module) {
    QString document = QString::fromLatin1(kDocument);
    document.replace(QStringLiteral("@LIBRARY@"), library);
    document.replace(QStringLiteral("@MODULE@"), module);
    document.replace(QStringLiteral("@SOURCE@"), source.toHtmlEscaped());
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(document.toUtf8()) > 0;
}

QString generate(const QString& body) {
    return QStringLiteral("Sub Generate(sRaport, sRank, sStand, sShelf, sLocation, sCode, sUser)\n") + body +
           QStringLiteral("\nEnd Sub\n");
}

}  // namespace regalon::test
