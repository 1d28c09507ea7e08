#include "Measure.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>

namespace bench {

double Samples::quantile(double q) const {
    if (values_.empty())
        return 0;
    std::vector<double> sorted = values_;
    std::sort(sorted.begin(), sorted.end());
    const double place = q * static_cast<double>(sorted.size() - 1);
    const auto below = static_cast<std::size_t>(std::floor(place));
    const auto above = std::min(below + 1, sorted.size() - 1);
    return sorted[below] + (sorted[above] - sorted[below]) * (place - std::floor(place));
}

double timed(const std::function<void()>& call) {
    const auto start = std::chrono::steady_clock::now();
    call();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

void report(const std::string& name, const Samples& samples, const char* unit) {
    std::printf("%-28s median %9.3f %s, quartiles %.3f to %.3f, range %.3f to %.3f, n=%zu\n", name.c_str(),
                samples.median(), unit, samples.quantile(0.25), samples.quantile(0.75), samples.quantile(0),
                samples.quantile(1), samples.count());
}

void printRatio(const std::string& name, double ratio) {
    std::printf("%s ratio %.3f\n", name.c_str(), ratio);
}

}  // namespace bench
