#pragma once

#include "tds/Protocol.h"

#include <bit>
#include <cstdint>
#include <cstring>
#include <span>

namespace magdb::tds {

/// Reads little-endian fields from a message that somebody else wrote. Every read checks what is left and
/// throws RequestError when the message ends too early. The bytes must outlive the reader.
class ByteReader {
public:
    explicit ByteReader(std::span<const std::uint8_t> bytes) : bytes_(bytes) {}

    [[nodiscard]] std::size_t remaining() const { return bytes_.size() - position_; }
    [[nodiscard]] std::size_t position() const { return position_; }
    [[nodiscard]] bool atEnd() const { return remaining() == 0; }

    std::uint8_t u8() { return number<std::uint8_t>(); }
    std::uint16_t u16() { return number<std::uint16_t>(); }
    std::uint32_t u32() { return number<std::uint32_t>(); }
    std::uint64_t u64() { return number<std::uint64_t>(); }
    std::int16_t i16() { return number<std::int16_t>(); }
    std::int32_t i32() { return number<std::int32_t>(); }
    std::int64_t i64() { return number<std::int64_t>(); }
    float f32() { return std::bit_cast<float>(u32()); }
    double f64() { return std::bit_cast<double>(u64()); }

    std::span<const std::uint8_t> take(std::size_t count) {
        if (count > remaining()) {
            throw RequestError(streamEndedNumber,
                               "The incoming tabular data stream (TDS) protocol stream is incorrect. The "
                               "stream ended unexpectedly.");
        }
        const auto part = bytes_.subspan(position_, count);
        position_ += count;
        return part;
    }
    std::span<const std::uint8_t> rest() { return take(remaining()); }

    [[nodiscard]] std::uint8_t peek() const { return bytes_[position_]; }

private:
    template <typename T>
    T number() {
        static_assert(std::endian::native == std::endian::little);
        T value;
        std::memcpy(&value, take(sizeof value).data(), sizeof value);
        return value;
    }

    std::span<const std::uint8_t> bytes_;
    std::size_t position_ = 0;
};

}  // namespace magdb::tds
