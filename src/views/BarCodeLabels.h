#pragma once

#include <QString>
#include <QStringList>

namespace regalon {

class ListView;

/// What is known of the labels of packages, side by side. Each list starts with one empty element, which the
/// first value takes.
struct BarCodeLabels {
    QStringList valuesA{QString()};  ///< number of the order
    QStringList valuesB{QString()};  ///< its line
    QStringList numberCodes{QString()};
    QStringList barCodes{QString()};
    QStringList codeParts{QString()};  ///< second and third character of the barcode

    /// The ticked rows of a list whose last columns are barcode, one of any kind, value A, value B, running
    /// number and one more. Raises 13 for a text where a number stands, and 6 for a value B beyond 16 bits.
    static BarCodeLabels ofTickedRows(const ListView& list);

    /// One package without order and line. Raises 13 and 6 for a number that is none of 16 bits.
    static BarCodeLabels ofPackage(const QString& barCode, const QString& numberCode);

private:
    void add(const QString& valueA, const QString& valueB, const QString& numberCode, const QString& barCode);
};

}  // namespace regalon
