#include "Measure.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <exception>

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

void compareInTurn(const std::string& measure, int rounds, const Side& first, const Side& second) {
    Samples firstTimes;
    Samples secondTimes;
    Samples ratios;
    for (int round = 0; round < rounds; ++round) {
        first.prepare();
        const double one = timed(first.act);
        second.prepare();
        const double other = timed(second.act);
        firstTimes.add(one);
        secondTimes.add(other);
        ratios.add(one / other);
    }
    report(first.name, firstTimes);
    report(second.name, secondTimes);
    report("ratio of each round", ratios, "");
    printRatio(measure, ratios.median());
}

int runMeasure(const std::string& program, const std::function<void()>& measure) {
    try {
        measure();
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s: %s\n", program.c_str(), error.what());
        return 1;
    }
    return 0;
}

void printRatio(const std::string& name, double ratio) {
    std::printf("%s ratio %.3f\n", name.c_str(), ratio);
}

}  // namespace bench
