#include "map/ParamEditor.h"

#include "platform/Paths.h"

#include <QBuffer>
#include <QFile>
#include <QImage>

namespace regalon::test {

QByteArray picture(const char* format) {
    QImage image(40, 20, QImage::Format_RGB32);
    image.fill(Qt::red);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, format);
    return bytes;
}

void ParamEditor::SetUp() {
    EmptyHallEditor::SetUp();
    addStand(1, 1, QStringLiteral("2"));
    ASSERT_TRUE(warehouse.run({QStringLiteral(
        "insert into kolv_mag_Location_Item (Rank,Stand,Shelf,Location,ItemCode,ItemName,GroupSur) "
        "values (1,1,1,1,N'SUR-1',N'Śruba',0)")}))
        << qPrintable(warehouse.why());
}

void ParamEditor::store(const QString& column, const QString& value) {
    ASSERT_TRUE(
        warehouse.run({QStringLiteral("update kolv_mag_Location_Item set %1 = N'%2'").arg(column, value)}))
        << qPrintable(warehouse.why());
}

QString ParamEditor::stored(const QString& column) {
    return warehouse.value(QStringLiteral("select %1 from kolv_mag_Location_Item").arg(column));
}

void ParamEditor::openOn(const QString& parameter) {
    open();
    clickLocation(QStringLiteral("1_1_1_1"));
    choose("dtcParamLocation", parameter);
    warehouse.server.clearTrace();
}

QString ParamEditor::chooseFile(const QString& name, const QByteArray& bytes) {
    const QString path = QStringLiteral("C:\\Regalon\\") + name;
    QFile file(Paths::toFile(path));
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("A test file could not be written.");
    file.close();
    pickFile(path);
    return path;
}

void ParamEditor::pickFile(const QString& path) {
    files.answer(path);
    clickButton("tlbPictureSur", "key_Path");
}

}  // namespace regalon::test
