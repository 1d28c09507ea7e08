#include "magdb/tds/Readers.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <vector>

namespace {

using Data = std::vector<std::uint8_t>;

std::vector<Data> corpus() {
    std::vector<Data> seeds;
    for (const auto& entry :
         std::filesystem::directory_iterator(REGALON_SOURCE_DIR "/tests/magdb/tds/corpus")) {
        std::ifstream in(entry.path(), std::ios::binary);
        seeds.emplace_back(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
    }
    return seeds;
}

/// One small change of the kind that finds mistakes in length fields.
void mutate(Data& bytes, std::mt19937& random) {
    const auto below = [&](std::size_t limit) { return random() % limit; };
    if (bytes.empty()) {
        return;
    }
    const std::size_t at = below(bytes.size());
    static constexpr std::uint8_t telling[] = {0, 1, 2, 0x7F, 0x80, 0xFE, 0xFF};
    switch (below(5)) {
        case 0:
            bytes[at] = static_cast<std::uint8_t>(random());
            break;
        case 1:
            bytes[at] = telling[below(std::size(telling))];
            break;
        case 2:
            bytes.resize(at);
            break;
        case 3:
            bytes.insert(bytes.begin() + static_cast<std::ptrdiff_t>(at),
                         static_cast<std::uint8_t>(random()));
            break;
        default:
            bytes.erase(bytes.begin() + static_cast<std::ptrdiff_t>(at));
    }
}

TEST(Readers, TakeTheRequestsOfRealClients) {
    const auto seeds = corpus();
    ASSERT_GE(seeds.size(), 5U);
    for (const Data& seed : seeds) {
        EXPECT_NO_THROW(readEverything(seed));
    }
}

TEST(Readers, SurviveChangedRequests) {
    std::mt19937 random(20240131);
    for (const Data& seed : corpus()) {
        for (int round = 0; round < 4000; ++round) {
            Data bytes = seed;
            for (std::size_t changes = 1 + random() % 6; changes > 0; --changes) {
                mutate(bytes, random);
            }
            EXPECT_NO_THROW(readEverything(bytes));
        }
    }
}

TEST(Readers, SurviveRandomBytes) {
    std::mt19937 random(7);
    for (int round = 0; round < 20'000; ++round) {
        Data bytes(random() % 600);
        for (std::uint8_t& byte : bytes) {
            byte = static_cast<std::uint8_t>(random());
        }
        // A sound header lets most of them reach the readers behind the packets.
        if (bytes.size() >= 8) {
            static constexpr std::uint8_t types[] = {0x01, 0x03, 0x0E, 0x10, 0x12};
            bytes[0] = types[random() % std::size(types)];
            bytes[1] = 1;
            bytes[2] = static_cast<std::uint8_t>(bytes.size() >> 8);
            bytes[3] = static_cast<std::uint8_t>(bytes.size());
        }
        EXPECT_NO_THROW(readEverything(bytes));
    }
}

}  // namespace
