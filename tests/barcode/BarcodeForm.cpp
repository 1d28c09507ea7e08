#include "barcode/BarcodeForm.h"

namespace regalon::test {
namespace {

bool isBlack(const QImage& image, int x, int y) {
    return image.pixelColor(x, y) == QColor(Qt::black);
}

}  // namespace

BarcodeForm::BarcodeForm() {
    picBarCode.setObjectName(QStringLiteral("picBarCode"));
    picBarCode.hide();
    txtSumaKontrolana.setObjectName(QStringLiteral("txtSumaKontrolana"));
}

QList<BarcodeForm::Printed> BarcodeForm::printed() const {
    QList<Printed> printed;
    for (const PictureMark& mark : picBarCode.marks()) {
        if (!mark.Text.isEmpty())
            printed.append({mark.Text, mark.Area.topLeft()});
    }
    return printed;
}

QList<QRect> BarcodeForm::bars() const {
    QList<QRect> bars;
    for (const PictureMark& mark : picBarCode.marks()) {
        if (mark.Text.isEmpty())
            bars.append(mark.Area);
    }
    return bars;
}

QImage BarcodeForm::image() const {
    QImage image = const_cast<PictureBox&>(picBarCode).grab().toImage().convertToFormat(QImage::Format_RGB32);
    image.setDevicePixelRatio(1);
    return image;
}

QString modulesInRow(const QImage& image, int y, int pixelsOfModule) {
    int begin = 0;
    while (begin < image.width() && !isBlack(image, begin, y))
        ++begin;
    int end = image.width();
    while (end > begin && !isBlack(image, end - 1, y))
        --end;
    QString modules;
    for (int x = begin; x < end; x += pixelsOfModule) {
        // A module is of one colour: half a bar counts as neither.
        bool whole = true;
        for (int i = 1; i < pixelsOfModule; ++i)
            whole = whole && x + i < end && isBlack(image, x + i, y) == isBlack(image, x, y);
        if (!whole)
            modules += u'?';
        else
            modules += isBlack(image, x, y) ? u'1' : u'0';
    }
    return modules;
}

QString modulesOf(const QString& widths) {
    QString modules;
    for (qsizetype i = 0; i < widths.size(); ++i)
        modules += QString(widths[i].digitValue(), i % 2 == 0 ? u'1' : u'0');
    return modules;
}

QList<BarcodeForm::Printed> spread(const QString& text, double first, double step, int y) {
    QList<BarcodeForm::Printed> printed;
    for (int k = 1; k <= text.size(); ++k)
        printed.append({text.mid(k - 1, 1), QPoint(static_cast<int>(first + step * k), y)});
    return printed;
}

}  // namespace regalon::test
