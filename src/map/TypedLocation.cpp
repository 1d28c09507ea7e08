#include "map/TypedLocation.h"

#include "platform/Convert.h"

#include <array>

namespace regalon {

std::optional<LocationAddress> typedLocation(const QString& rank, const QString& stand, const QString& shelf,
                                             const QString& location) {
    const std::array<const QString*, 4> texts = {&rank, &stand, &shelf, &location};
    for (const QString* text : texts) {
        if (!IsNumeric(*text))
            return std::nullopt;
    }
    std::array<qint16, 4> numbers{};
    for (std::size_t text = 0; text < texts.size(); ++text) {
        numbers[text] = ToInt16(*texts[text]);
        if (numbers[text] < 1)
            return std::nullopt;
    }
    return LocationAddress{numbers[0], numbers[1], numbers[2], numbers[3]};
}

}  // namespace regalon
