#include "map/TypedLocation.h"

#include "platform/Convert.h"

#include <algorithm>
#include <array>
#include <limits>

namespace regalon {

namespace {

using Texts = std::array<const QString*, 4>;

std::optional<LocationAddress> locationOf(const Texts& texts, qint16 least) {
    for (const QString* text : texts) {
        if (!IsNumeric(*text))
            return std::nullopt;
    }
    std::array<qint16, 4> numbers{};
    std::transform(texts.begin(), texts.end(), numbers.begin(),
                   [](const QString* text) { return ToInt16(*text); });
    if (std::any_of(numbers.begin(), numbers.end(), [least](qint16 number) { return number < least; }))
        return std::nullopt;
    return LocationAddress{numbers[0], numbers[1], numbers[2], numbers[3]};
}

}  // namespace

std::optional<LocationAddress> numericLocation(const QString& rank, const QString& stand,
                                               const QString& shelf, const QString& location) {
    return locationOf({&rank, &stand, &shelf, &location}, std::numeric_limits<qint16>::min());
}

std::optional<LocationAddress> typedLocation(const QString& rank, const QString& stand, const QString& shelf,
                                             const QString& location) {
    return locationOf({&rank, &stand, &shelf, &location}, 1);
}

}  // namespace regalon
