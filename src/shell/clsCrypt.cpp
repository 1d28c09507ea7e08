#include "shell/clsCrypt.h"

#include "platform/CodePage.h"

#include <random>

namespace regalon {

namespace {

constexpr qsizetype prefixLength = 3;
constexpr qsizetype shortestScrambled = 4;
constexpr qsizetype longestRead = 256;
constexpr qsizetype shiftedByOne = 50;

/// How far the character at a position (from 0) is shifted.
int shiftAt(qsizetype position) {
    return position < shiftedByOne ? 1 : 2;
}

/// From 0 up to, not including, 1. Not seeded: every run draws the same sequence.
double randomShare() {
    static std::mt19937 generator;
    return static_cast<double>(generator()) / (static_cast<double>(std::mt19937::max()) + 1);
}

QString paddingOfEmptyText() {
    const QChar first = CodePage::charOf(static_cast<int>(randomShare() * 70 + 1));
    const QChar second = CodePage::charOf(static_cast<int>(randomShare() * 70 + 5));
    return QString(first) + second;
}

}  // namespace

QString clsCrypt::DecryptString(const QString& strString) {
    QString scrambled;
    if (strString.isEmpty()) {
        scrambled = paddingOfEmptyText();
    } else {
        for (qsizetype i = 0; i < strString.size(); ++i) {
            scrambled += CodePage::charOf(CodePage::codeOf(strString[i]) + shiftAt(i));
        }
        const QChar picked =
            strString[static_cast<qsizetype>(randomShare() * static_cast<double>(strString.size()))];
        scrambled = picked + scrambled + CodePage::charOf(CodePage::codeOf(picked) + 1);
    }
    return QStringLiteral("QX") + scrambled;
}

QString clsCrypt::EncryptString(const QString& strString) {
    if (strString.size() < shortestScrambled) {
        return {};
    }
    const QString scrambled = strString.size() >= longestRead
                                  ? strString.mid(prefixLength, longestRead)
                                  : strString.mid(prefixLength, strString.size() - prefixLength - 1);
    QString plain;
    for (qsizetype i = 0; i < scrambled.size(); ++i) {
        plain += CodePage::charOf(CodePage::codeOf(scrambled[i]) - shiftAt(i));
    }
    return plain;
}

}  // namespace regalon
