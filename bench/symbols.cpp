// Encoded symbols a second over those of libzint for the same data. Both sides encode the same codes in turn,
// and their symbols are compared before anything is measured.
#include "Measure.h"
#include "barcode/Zint.h"
#include "barcode/clsEan128.h"
#include "barcode/clsEan13.h"

#include <QString>
#include <QStringBuilder>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <random>
#include <stdexcept>
#include <vector>

namespace {

using namespace Qt::StringLiterals;
using regalon::test::Zint;

constexpr std::size_t codeCount = 2000;
/// A round is so short that most rounds run without another program between their two sides.
constexpr std::size_t codesOfARound = 100;
constexpr int passes = 51;

/// The encoders have no state to set up; libzint's symbol is made once, too.
struct Side {
    std::function<QString(const QString&)> ours;
    Zint zint;
    std::vector<QString> codes;
    std::vector<QByteArray> bytes;

    Side(Zint::Symbology symbology, std::function<QString(const QString&)> encode)
        : ours(std::move(encode)), zint(symbology) {}

    void add(const QByteArray& code) {
        bytes.push_back(code);
        codes.push_back(QString::fromLatin1(code));
    }
};

class Codes {
public:
    QByteArray text(int length, char from, char to) {
        std::uniform_int_distribution<int> character(from, to);
        QByteArray text;
        while (text.size() < length)
            text += static_cast<char>(character(m_random));
        return text;
    }
    int number(int from, int to) { return std::uniform_int_distribution<int>(from, to)(m_random); }

private:
    std::mt19937 m_random{20261122};
};

/// True if both sides make the same symbol.
bool agree(Side& side, std::size_t i) {
    if (!side.zint.encode(side.bytes[i]))
        throw std::runtime_error("libzint refuses " + side.bytes[i].toStdString());
    const QString modules = side.zint.modules();
    const QString symbol = side.ours(side.codes[i]);
    return symbol == modules || symbol == regalon::test::widthsOf(modules);
}

/// Measures one symbology and answers the median ratio of its rounds.
double measure(const std::string& name, Side& side) {
    for (std::size_t i = 0; i < side.codes.size(); ++i) {
        if (!agree(side, i))
            throw std::runtime_error("another symbol than libzint's for " + side.bytes[i].toStdString());
    }
    bench::Samples ours;
    bench::Samples theirs;
    bench::Samples ratios;
    qsizetype sink = 0;
    for (int pass = 0; pass < passes; ++pass) {
        for (std::size_t first = 0; first < codeCount; first += codesOfARound) {
            const double us = bench::timed([&] {
                for (std::size_t i = first; i < first + codesOfARound; ++i)
                    sink += side.ours(side.codes[i]).size();
            });
            const double them = bench::timed([&] {
                for (std::size_t i = first; i < first + codesOfARound; ++i)
                    sink += side.zint.encode(side.bytes[i]) ? 1 : 0;
            });
            ours.add(codesOfARound / us);
            theirs.add(codesOfARound / them);
            ratios.add(them / us);
        }
    }
    std::printf("%s: %zu codes, %lld\n", name.c_str(), side.codes.size(), static_cast<long long>(sink));
    bench::report("  regalon", ours, "symbols/ms");
    bench::report("  libzint", theirs, "symbols/ms");
    bench::report("  ratio of each round", ratios, "");
    return ratios.median();
}

double code128InSetC(Codes& random) {
    const regalon::clsEan128 encoder;
    Side side(Zint::Symbology::Code128,
              [&encoder](const QString& code) { return encoder.GetCodeStringEAN128C(code); });
    for (std::size_t i = 0; i < codeCount; ++i)
        side.add(random.text(2 * random.number(2, 19), '0', '9'));
    return measure("Code 128, set C", side);
}

double code128InSetB(Codes& random) {
    const regalon::clsEan128 encoder;
    Side side(Zint::Symbology::Code128B,
              [&encoder](const QString& code) { return encoder.GetCodeStringEAN128B(code); });
    while (side.codes.size() < codeCount) {
        side.add("a" + random.text(random.number(3, 30), ' ', '~'));
        // A check value of 96 is printed otherwise here.
        if (!agree(side, side.codes.size() - 1)) {
            side.codes.pop_back();
            side.bytes.pop_back();
        }
    }
    return measure("Code 128, set B", side);
}

double ean13(Codes& random) {
    const regalon::clsEan13 encoder;
    Side side(Zint::Symbology::Ean13, [&encoder](const QString& code) {
        return encoder.GetCodeStringEAN13(code % QChar(u'0' + encoder.CalcPriceSumControl(code)));
    });
    for (std::size_t i = 0; i < codeCount; ++i)
        side.add((i % 2 == 0 ? "5" : "7") + random.text(11, '0', '9'));
    return measure("EAN-13 with its check digit", side);
}

void symbols() {
    Codes random;
    const double setC = code128InSetC(random);
    const double setB = code128InSetB(random);
    const double ean = ean13(random);
    bench::printRatio("symbols", std::min({setC, setB, ean}));
}

}  // namespace

int main() {
    return bench::runMeasure("bench-symbols", symbols);
}
