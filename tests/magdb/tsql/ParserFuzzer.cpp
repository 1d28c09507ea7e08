#include "tsql/Parser.h"
#include "tsql/Print.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

/// Any text either gives a tree that can be walked or a SyntaxError.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    try {
        (void)magdb::tsql::print(*magdb::tsql::parseBatch(text));
    } catch (const magdb::tsql::SyntaxError&) {
    }
    return 0;
}
