#include "magdb/tds/Readers.h"

#include <cstddef>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    readEverything({data, size});
    return 0;
}
