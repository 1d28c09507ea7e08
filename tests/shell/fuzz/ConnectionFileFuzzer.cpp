// Any bytes in the place of a connection file: reading never fails, and what was read can be written and read
// again.
#include "common/AppContext.h"
#include "platform/RunTimeError.h"
#include "shell/ConnectionFile.h"
#include "shell/clsCrypt.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace regalon;
    ConnectionSettings settings;
    ConnectionFile::readBytes(QByteArray(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size)),
                              settings);

    const QString plain = ConnectionFile::compose(settings);
    ConnectionSettings parsed;
    ConnectionFile::parse(plain, parsed);
    if (ConnectionFile::compose(parsed) != plain) {
        std::abort();
    }
    try {
        const QString scrambled = clsCrypt().DecryptString(plain);
        if (scrambled.size() < 256 && clsCrypt().EncryptString(scrambled) != plain) {
            std::abort();
        }
    } catch (const RunTimeError&) {
        // A character at the end of the code page cannot be shifted.
    }
    return 0;
}
