#include "tds/ByteWriter.h"

#include "tds/Encoding.h"

namespace magdb::tds {

namespace {

/// Cuts what follows the length field at the most units it can tell and fills the length in.
void closeText(std::vector<std::uint8_t>& bytes, std::size_t start, std::size_t mostUnits) {
    if (bytes.size() - start > 2 * mostUnits) {
        bytes.resize(start + 2 * mostUnits);
    }
}

}  // namespace

void ByteWriter::text(std::string_view utf8) {
    appendUtf16(utf8, bytes_);
}

void ByteWriter::shortText(std::string_view utf8) {
    const std::size_t at = size();
    u8(0);
    text(utf8);
    closeText(bytes_, at + 1, 0xFF);
    patch(at, (size() - at - 1) / 2, 1);
}

void ByteWriter::longText(std::string_view utf8) {
    const std::size_t at = size();
    u16(0);
    text(utf8);
    closeText(bytes_, at + 2, 0xFFFF);
    patch(at, (size() - at - 2) / 2, 2);
}

}  // namespace magdb::tds
