#include "magdb/tsql/ParserTest.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <vector>

namespace {

using namespace magdb::tsql;

std::vector<std::string> seeds() {
    std::vector<std::string> texts;
    for (const auto& entry :
         std::filesystem::directory_iterator(REGALON_SOURCE_DIR "/tests/magdb/tsql/corpus")) {
        std::ifstream file(entry.path(), std::ios::binary);
        texts.emplace_back(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
    }
    return texts;
}

/// True when the text has a tree, false when it has an error with a line of the text.
bool survives(const std::string& text) {
    try {
        const auto batch = parseBatch(text);
        (void)print(*batch);
        for (const StatementPtr& statement : batch->statements) {
            EXPECT_LE(statement->pos.offset, statement->end);
            EXPECT_LE(statement->end, text.size());
        }
        return true;
    } catch (const SyntaxError& error) {
        const auto lines = std::count(text.begin(), text.end(), '\n') + 1;
        EXPECT_GE(error.line, 1U);
        EXPECT_LE(error.line, static_cast<std::uint32_t>(lines));
        EXPECT_STRNE(error.what(), "");
        return false;
    }
}

/// Swaps, drops, doubles and overwrites bytes and pieces.
std::string mutate(std::string text, const std::vector<std::string>& all, std::mt19937& random) {
    const auto below = [&random](std::size_t limit) { return limit == 0 ? 0 : random() % limit; };
    for (std::size_t i = 0; i <= below(4); ++i) {
        const std::size_t at = below(text.size() + 1);
        const std::size_t length = below(20);
        switch (below(5)) {
            case 0:
                text.erase(at, length);
                break;
            case 1:
                text.insert(at, text.substr(below(text.size() + 1), length));
                break;
            case 2:
                if (at < text.size())
                    text[at] = static_cast<char>(below(256));
                break;
            case 3: {
                const std::string& other = all[below(all.size())];
                text.insert(at, other.substr(below(other.size() + 1), length));
                break;
            }
            default:
                text.resize(at);
        }
    }
    return text;
}

TEST(HostileText, EverySeedOfTheCorpusParses) {
    const auto all = seeds();
    ASSERT_GE(all.size(), 10U);
    for (const std::string& text : all)
        EXPECT_TRUE(survives(text)) << text << "\n" << parsed(text);
}

TEST(HostileText, EveryPrefixOfASeedIsSurvived) {
    for (const std::string& text : seeds()) {
        for (std::size_t length = 0; length < text.size(); ++length)
            survives(text.substr(0, length));
    }
}

TEST(HostileText, MutatedSeedsAreSurvived) {
    const auto all = seeds();
    std::mt19937 random(20240613);  // fixed, so that a failure can be repeated
    int refused = 0;
    for (int i = 0; i < 20000; ++i)
        refused += survives(mutate(all[random() % all.size()], all, random)) ? 0 : 1;
    EXPECT_GT(refused, 1000);
}

TEST(HostileText, RandomBytesAreSurvived) {
    std::mt19937 random(7);
    for (int i = 0; i < 5000; ++i) {
        std::string text(random() % 200, '\0');
        for (char& c : text)
            c = static_cast<char>(random() % 256);
        survives(text);
    }
}

}  // namespace
