#pragma once

#include <functional>
#include <string>
#include <vector>

namespace bench {

/// Wall-clock times of one side of a measure, in milliseconds.
class Samples {
public:
    void add(double milliseconds) { values_.push_back(milliseconds); }
    [[nodiscard]] double median() const { return quantile(0.5); }
    /// Linear interpolation between the sorted samples; q from 0 to 1. 0 without samples.
    [[nodiscard]] double quantile(double q) const;
    [[nodiscard]] std::size_t count() const { return values_.size(); }

private:
    std::vector<double> values_;
};

/// Milliseconds that the call takes.
[[nodiscard]] double timed(const std::function<void()>& call);

/// Prints "name: median, quartiles, range, count" on standard output.
void report(const std::string& name, const Samples& samples, const char* unit = "ms");

/// One side of a measure.
struct Side {
    std::string name;
    std::function<void()> act;
    std::function<void()> prepare = [] {};  ///< comes before each act and is not timed
};

/// Times both sides in turn, reports both, and prints the last line of the measure: the first over the
/// second.
void compareInTurn(const std::string& measure, int rounds, const Side& first, const Side& second);

/// Runs a measure; what it throws is told on standard error. The program's exit code.
[[nodiscard]] int runMeasure(const std::string& program, const std::function<void()>& measure);

/// Prints the last line of a measure. The ratio is the median of those of single rounds: the load of the
/// machine changes between rounds, and weighs on both sides of one alike.
void printRatio(const std::string& name, double ratio);

}  // namespace bench
