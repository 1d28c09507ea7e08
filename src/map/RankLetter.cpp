#include "map/RankLetter.h"

namespace regalon {

namespace {

constexpr QStringView kRankLetters = u"ABCDEF";

}  // namespace

QString RankLetter(qint16 rank) {
    if (rank < 1 || rank > kRankLetters.size())
        return {};
    return kRankLetters.sliced(rank - 1, 1).toString();
}

qint16 RankNumber(const QString& letter) {
    if (letter.size() != 1)
        return 0;
    return static_cast<qint16>(kRankLetters.indexOf(letter.front()) + 1);
}

}  // namespace regalon
