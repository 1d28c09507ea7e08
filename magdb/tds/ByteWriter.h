#pragma once

#include <bit>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace magdb::tds {

/// Grows a message of little-endian fields.
class ByteWriter {
public:
    void u8(std::uint8_t value) { bytes_.push_back(value); }
    void u16(std::uint16_t value) { number(value); }
    void u32(std::uint32_t value) { number(value); }
    void u64(std::uint64_t value) { number(value); }
    void i32(std::int32_t value) { number(static_cast<std::uint32_t>(value)); }
    void f32(float value) { number(std::bit_cast<std::uint32_t>(value)); }
    void f64(double value) { number(std::bit_cast<std::uint64_t>(value)); }
    void bytes(std::span<const std::uint8_t> values) {
        bytes_.insert(bytes_.end(), values.begin(), values.end());
    }
    void fill(std::uint8_t value, std::size_t count) { bytes_.insert(bytes_.end(), count, value); }
    /// UTF-8 text as UTF-16LE without a length.
    void text(std::string_view utf8);
    /// Text behind its length in UTF-16 units, one byte; cut to 255 units (B_VARCHAR).
    void shortText(std::string_view utf8);
    /// Text behind its length in UTF-16 units, two bytes; cut to 65535 units (US_VARCHAR).
    void longText(std::string_view utf8);

    [[nodiscard]] std::size_t size() const { return bytes_.size(); }
    [[nodiscard]] const std::vector<std::uint8_t>& data() const { return bytes_; }
    void clear() { bytes_.clear(); }
    /// Drops everything from this size on.
    void truncate(std::size_t size) { bytes_.resize(size); }
    /// Drops the first bytes; the rest moves to the front.
    void dropFront(std::size_t count) {
        bytes_.erase(bytes_.begin(), bytes_.begin() + static_cast<std::ptrdiff_t>(count));
    }
    /// Overwrites bytes already written; used for lengths known only later.
    void patch(std::size_t position, std::uint64_t value, std::size_t width) {
        for (std::size_t i = 0; i < width; ++i) {
            bytes_[position + i] = static_cast<std::uint8_t>(value >> (8 * i));
        }
    }

private:
    template <typename T>
    void number(T value) {
        const std::size_t at = bytes_.size();
        bytes_.resize(at + sizeof value);
        patch(at, value, sizeof value);
    }

    std::vector<std::uint8_t> bytes_;
};

/// Leaves room for a length of type T and fills it in on destruction with the bytes written since. Nests.
template <typename T>
class LengthAhead {
public:
    explicit LengthAhead(ByteWriter& writer) : writer_(writer), at_(writer.size()) {
        writer.fill(0, sizeof(T));
    }
    ~LengthAhead() { writer_.patch(at_, writer_.size() - at_ - sizeof(T), sizeof(T)); }
    LengthAhead(const LengthAhead&) = delete;
    LengthAhead& operator=(const LengthAhead&) = delete;

private:
    ByteWriter& writer_;
    std::size_t at_;
};

}  // namespace magdb::tds
