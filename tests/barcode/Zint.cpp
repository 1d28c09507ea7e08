#include "barcode/Zint.h"

#include <zint.h>

namespace regalon::test {
namespace {

int numberOf(Zint::Symbology symbology) {
    switch (symbology) {
        case Zint::Symbology::Code128:
            return BARCODE_CODE128;
        case Zint::Symbology::Code128B:
            return BARCODE_CODE128B;
        case Zint::Symbology::Ean13:
            return BARCODE_EANX;
    }
    return 0;
}

}  // namespace

void Zint::Delete::operator()(zint_symbol* symbol) const {
    ZBarcode_Delete(symbol);
}

Zint::Zint(Symbology symbology) : m_symbology(numberOf(symbology)), m_symbol(ZBarcode_Create()) {}

Zint::~Zint() = default;

bool Zint::encode(const QByteArray& data) {
    ZBarcode_Clear(m_symbol.get());
    m_symbol->symbology = m_symbology;
    const auto* const bytes = reinterpret_cast<const unsigned char*>(data.constData());
    return ZBarcode_Encode(m_symbol.get(), bytes, static_cast<int>(data.size())) < ZINT_ERROR;
}

QString Zint::modules() const {
    QString modules;
    for (int i = 0; i < m_symbol->width; ++i) {
        const bool bar = (m_symbol->encoded_data[0][i / 8] >> (i % 8) & 1) != 0;
        modules += bar ? u'1' : u'0';
    }
    return modules;
}

QString Zint::why() const {
    return QString::fromUtf8(m_symbol->errtxt);
}

QString widthsOf(const QString& modules) {
    QString widths;
    for (qsizetype from = 0; from < modules.size();) {
        qsizetype to = from;
        while (to < modules.size() && modules[to] == modules[from])
            ++to;
        widths += QString::number(to - from);
        from = to;
    }
    return widths;
}

}  // namespace regalon::test
