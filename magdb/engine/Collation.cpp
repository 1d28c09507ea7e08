#include "engine/Collation.h"

#include "engine/Text.h"

#include <sqlite3.h>
#include <unicode/ucol.h>

#include <array>
#include <cstdint>
#include <stdexcept>
#include <string>

namespace magdb {

namespace {

/// An ICU collator and, from it, the rank of each printable ASCII character. Most texts are ASCII, and for
/// them one table look-up a character gives ICU's answer (Polish joins no ASCII letters to units).
class Collator {
public:
    explicit Collator(UCollationStrength strength) {
        UErrorCode status = U_ZERO_ERROR;
        m_collator = ucol_open("pl", &status);
        if (U_FAILURE(status)) {
            throw std::runtime_error("no collation rules: " + std::string(u_errorName(status)));
        }
        ucol_setStrength(m_collator, strength);
        if (strength == UCOL_SECONDARY) {
            rankAscii();
        }
    }
    ~Collator() { ucol_close(m_collator); }
    Collator(const Collator&) = delete;
    Collator& operator=(const Collator&) = delete;

    [[nodiscard]] int compare(std::string_view left, std::string_view right) const {
        const std::size_t common = std::min(left.size(), right.size());
        for (std::size_t i = 0; i < common; ++i) {
            const std::uint8_t a = m_rank[static_cast<unsigned char>(left[i])];
            const std::uint8_t b = m_rank[static_cast<unsigned char>(right[i])];
            if (a == 0 || b == 0) {
                return full(left, right);
            }
            if (a != b) {
                // Letters further on may still join to these (a combining mark), so look once.
                return isPlain(left.substr(i + 1)) && isPlain(right.substr(i + 1)) ? (a < b ? -1 : 1)
                                                                                   : full(left, right);
            }
        }
        if (left.size() == right.size()) {
            return 0;
        }
        return isPlain(left.substr(common)) && isPlain(right.substr(common))
                   ? (left.size() < right.size() ? -1 : 1)
                   : full(left, right);
    }

    [[nodiscard]] int full(std::string_view left, std::string_view right) const {
        UErrorCode status = U_ZERO_ERROR;
        return ucol_strcollUTF8(m_collator, left.data(), static_cast<std::int32_t>(left.size()), right.data(),
                                static_cast<std::int32_t>(right.size()), &status);
    }

private:
    void rankAscii() {
        std::string order;
        for (char c = ' '; c < 0x7F; ++c) {
            order += c;
        }
        for (const char c : order) {
            std::uint8_t rank = 1;
            for (const char other : order) {
                // Counts each group of equal characters once, by its first member.
                const bool first = !(other >= 'a' && other <= 'z');
                if (first && full(std::string_view(&other, 1), std::string_view(&c, 1)) < 0) {
                    ++rank;
                }
            }
            m_rank[static_cast<unsigned char>(c)] = rank;
        }
    }

    [[nodiscard]] bool isPlain(std::string_view text) const {
        for (const char c : text) {
            if (m_rank[static_cast<unsigned char>(c)] == 0) {
                return false;
            }
        }
        return true;
    }

    UCollator* m_collator = nullptr;
    std::array<std::uint8_t, 256> m_rank{};  ///< 0: ask ICU
};

template <int (*Compare)(std::string_view, std::string_view)>
int callback(void* /*context*/, int leftSize, const void* left, int rightSize, const void* right) {
    return Compare(std::string_view(static_cast<const char*>(left), static_cast<std::size_t>(leftSize)),
                   std::string_view(static_cast<const char*>(right), static_cast<std::size_t>(rightSize)));
}

}  // namespace

int collate(std::string_view left, std::string_view right) {
    static const Collator collator(UCOL_SECONDARY);
    return collator.compare(trimRight(left), trimRight(right));
}

int collateCase(std::string_view left, std::string_view right) {
    static const Collator collator(UCOL_TERTIARY);
    return collator.full(trimRight(left), trimRight(right));
}

int collateBinary(std::string_view left, std::string_view right) {
    const int order = trimRight(left).compare(trimRight(right));
    return order < 0 ? -1 : (order > 0 ? 1 : 0);
}

void registerCollations(sqlite3* connection) {
    sqlite3_create_collation_v2(connection, "T", SQLITE_UTF8, nullptr, callback<collate>, nullptr);
    sqlite3_create_collation_v2(connection, "TCS", SQLITE_UTF8, nullptr, callback<collateCase>, nullptr);
    sqlite3_create_collation_v2(connection, "TBIN", SQLITE_UTF8, nullptr, callback<collateBinary>, nullptr);
}

}  // namespace magdb
