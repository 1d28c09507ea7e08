#include "tsql/Keywords.h"

#include <array>
#include <cstddef>

namespace magdb::tsql {

namespace {

constexpr std::array kTexts = {
    std::string_view{},
#define MAGDB_TSQL_TEXT(name, text) std::string_view{text},
    MAGDB_TSQL_RESERVED_WORDS(MAGDB_TSQL_TEXT) MAGDB_TSQL_CONTEXT_WORDS(MAGDB_TSQL_TEXT)
#undef MAGDB_TSQL_TEXT
};

constexpr Keyword kLastReserved = Keyword::Writetext;
constexpr std::size_t kSlots = 1024;  // about a quarter full, so that most words need one comparison

constexpr char upper(char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

constexpr std::size_t slotOf(std::string_view word) {
    std::uint32_t hash = 2166136261U;
    for (const char c : word)
        hash = (hash ^ static_cast<unsigned char>(upper(c))) * 16777619U;
    return (hash ^ (hash >> 15U)) % kSlots;
}

constexpr std::array<Keyword, kSlots> makeTable() {
    std::array<Keyword, kSlots> table{};
    for (std::size_t i = 1; i < kTexts.size(); ++i) {
        std::size_t slot = slotOf(kTexts[i]);
        while (table[slot] != Keyword::None)
            slot = (slot + 1) % kSlots;
        table[slot] = static_cast<Keyword>(i);
    }
    return table;
}

constexpr std::array<Keyword, kSlots> kTable = makeTable();
static_assert(kTexts.size() < 256, "Keyword is one byte");

bool same(std::string_view word, std::string_view upperText) {
    if (word.size() != upperText.size())
        return false;
    for (std::size_t i = 0; i < word.size(); ++i) {
        if (upper(word[i]) != upperText[i])
            return false;
    }
    return true;
}

}  // namespace

Keyword findKeyword(std::string_view word) {
    std::size_t slot = slotOf(word);
    while (kTable[slot] != Keyword::None) {
        if (same(word, keywordText(kTable[slot])))
            return kTable[slot];
        slot = (slot + 1) % kSlots;
    }
    return Keyword::None;
}

bool isReserved(Keyword keyword) {
    return keyword != Keyword::None && keyword <= kLastReserved;
}

std::string_view keywordText(Keyword keyword) {
    return kTexts[static_cast<std::size_t>(keyword)];
}

}  // namespace magdb::tsql
