#pragma once

#include <QByteArray>
#include <QString>

#include <memory>

struct zint_symbol;

namespace regalon::test {

/// The encoder of libzint.
class Zint {
public:
    enum class Symbology {
        Code128,   ///< with the sets that make the symbol shortest: set C alone for an even number of digits
        Code128B,  ///< without set C
        Ean13
    };

    explicit Zint(Symbology symbology);
    ~Zint();
    Zint(const Zint&) = delete;
    Zint& operator=(const Zint&) = delete;

    /// False for data that the symbology cannot hold, with why() telling. Twelve digits of EAN-13 get their
    /// check digit.
    bool encode(const QByteArray& data);
    /// The symbol of the last encode(), one character a module: 1 is a bar.
    QString modules() const;
    QString why() const;

private:
    struct Delete {
        void operator()(zint_symbol* symbol) const;
    };

    int m_symbology;
    std::unique_ptr<zint_symbol, Delete> m_symbol;
};

/// Width string of a module string: "110001" is "231".
QString widthsOf(const QString& modules);

}  // namespace regalon::test
