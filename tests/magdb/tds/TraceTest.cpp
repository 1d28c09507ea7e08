#include "tds/Trace.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>
#include <thread>

namespace magdb::tds {
namespace {

class TraceTest : public ::testing::Test {
protected:
    void TearDown() override { std::filesystem::remove(path); }
    [[nodiscard]] std::string content() const {
        std::ostringstream text;
        text << std::ifstream(path).rdbuf();
        return text.str();
    }
    const std::string path = ::testing::TempDir() + "trace-" + std::to_string(::getpid()) + ".txt";
};

CallParameter parameter(const std::string& name, Value value) {
    CallParameter result;
    result.name = name;
    result.value = std::move(value);
    return result;
}

TEST_F(TraceTest, WritesABatchExactlyWithItsLineEndsEscaped) {
    const Trace trace(path);
    trace.batch(53, "select 'ł'\r\n\tfrom [a\\b]  ");
    EXPECT_EQ(content(), "53\tBATCH\tselect 'ł'\\r\\n\\tfrom [a\\\\b]  \n");
}

TEST_F(TraceTest, WritesACallWithItsParameters) {
    const Trace trace(path);
    CallParameter defaulted = parameter("@d", {});
    defaulted.useDefault = true;
    trace.call(51, "p",
               {parameter("@a", std::int64_t{-5}), parameter("", std::string("x\ty")), parameter("@n", {}),
                defaulted, parameter("@m", DecimalValue{-5, 2}), parameter("@i", DecimalValue{120, 0}),
                parameter("@b", Bytes{0, 0xAB}), parameter("@t", DateTimeValue{45349, 300 * 3661 + 1}),
                parameter("@f", 0.1)});
    EXPECT_EQ(content(),
              "51\tRPC\tp\t@a=-5\t?=x\\ty\t@n=NULL\t@d=DEFAULT\t@m=-0.05\t@i=120\t@b=0x00AB\t"
              "@t=2024-02-29 01:01:01.003\t@f=0.1\n");
}

TEST_F(TraceTest, KeepsLinesOfSeveralThreadsWhole) {
    const Trace trace(path);
    const std::string text(5000, 'x');
    std::vector<std::thread> threads;
    for (int i = 0; i < 8; ++i) {
        threads.emplace_back([&, i] {
            for (int n = 0; n < 100; ++n) {
                trace.batch(static_cast<std::int16_t>(i), text);
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    std::istringstream lines(content());
    int count = 0;
    for (std::string line; std::getline(lines, line); ++count) {
        ASSERT_EQ(line.substr(2), "BATCH\t" + text);
    }
    EXPECT_EQ(count, 800);
}

TEST_F(TraceTest, SaysWhenItsFileCannotBeOpened) {
    EXPECT_THROW(Trace("/no/such/folder/trace"), std::system_error);
}

}  // namespace
}  // namespace magdb::tds
