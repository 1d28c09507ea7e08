#include "Palette.h"

#include <array>
#include <cmath>

namespace regalon::artwork {

namespace {

struct Stop {
    int percent;
    QRgb color;
};

constexpr std::array fillStops = {
    Stop{0, 0xffa9e0a6},  Stop{30, 0xff57c1a8},  Stop{55, 0xff2f93bd},
    Stop{80, 0xff2a5fa5}, Stop{100, 0xff15305f},
};
constexpr std::array grayStops = {
    Stop{0, 0xffd9dcdf},
    Stop{100, 0xff878e95},
};

int mix(int from, int to, double share) {
    return static_cast<int>(std::lround(from + (to - from) * share));
}

template <std::size_t N>
QColor between(const std::array<Stop, N>& stops, int percent) {
    for (std::size_t i = 1; i < N; ++i) {
        const Stop& low = stops[i - 1];
        const Stop& high = stops[i];
        if (percent <= high.percent) {
            const double share = double(percent - low.percent) / (high.percent - low.percent);
            return QColor(mix(qRed(low.color), qRed(high.color), share),
                          mix(qGreen(low.color), qGreen(high.color), share),
                          mix(qBlue(low.color), qBlue(high.color), share));
        }
    }
    return QColor(stops.back().color);
}

}  // namespace

QColor fillColor(int percent) {
    return between(fillStops, percent);
}

QColor grayColor(int percent) {
    return between(grayStops, percent);
}

}  // namespace regalon::artwork
