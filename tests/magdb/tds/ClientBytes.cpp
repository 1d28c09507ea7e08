#include "magdb/tds/ClientBytes.h"

#include <algorithm>

namespace client {

Bytes packet(std::uint8_t type, std::uint8_t status, std::span<const std::uint8_t> content) {
    const std::size_t length = content.size() + 8;
    Build build;
    build.raw({type, status, static_cast<std::uint8_t>(length >> 8), static_cast<std::uint8_t>(length), 0, 0,
               1, 0});
    return build.raw(content).bytes();
}

Bytes message(std::uint8_t type, std::span<const std::uint8_t> content, std::size_t packetSize) {
    Build build;
    do {
        const std::size_t part = std::min(packetSize - 8, content.size());
        build.raw(packet(type, part == content.size() ? 1 : 0, content.first(part)));
        content = content.subspan(part);
    } while (!content.empty());
    return build.bytes();
}

Bytes loginRecord(const LoginFields& fields) {
    const bool wide = (fields.version >> 24) >= 0x72;
    const std::size_t fixed = wide ? 94 : 86;
    Build rest;
    Build table;
    const auto add = [&](std::u16string_view text, bool hidden = false) {
        table.u16(static_cast<unsigned>(fixed + rest.bytes().size())).u16(static_cast<unsigned>(text.size()));
        Build encoded;
        encoded.text(text);
        for (std::uint8_t byte : encoded.bytes()) {
            if (hidden) {
                byte = static_cast<std::uint8_t>((byte << 4 | byte >> 4) ^ 0xA5);
            }
            rest.u8(byte);
        }
    };
    add(fields.host);
    add(fields.user);
    add(fields.password, true);
    add(fields.application);
    add(u"127.0.0.1");
    add(u"");
    add(u"library");
    add(u"");
    add(fields.database);
    table.raw({2, 0, 0, 0, 0, 1});
    add(u"");
    add(u"");
    if (wide) {
        add(u"");
        table.u32(0);
    }
    Build head;
    head.u32(fixed + rest.bytes().size()).u32(fields.version).u32(fields.packetSize);
    head.u32(7).u32(4711).u32(0).u8(0xE0).u8(fields.flags2).u8(0).u8(fields.flags3).u32(0).u32(0x0415);
    return head.raw(table.bytes()).raw(rest.bytes()).bytes();
}

Bytes preLogin(std::uint8_t encryption) {
    Build build;
    build.raw({0, 0, 11, 0, 6});
    build.raw({1, 0, 17, 0, 1});
    build.raw({0xFF});
    build.raw({9, 0, 0, 0, 0, 0, encryption});
    return build.bytes();
}

Bytes headers() {
    Build build;
    return build.u32(22).u32(18).u16(2).u64(0).u32(1).bytes();
}

Bytes batch(std::u16string_view text) {
    Build build;
    return build.raw(headers()).text(text).bytes();
}

Bytes call(std::u16string_view name, std::initializer_list<Bytes> parameters) {
    Build build;
    build.raw(headers()).u16(static_cast<unsigned>(name.size())).text(name).u16(0);
    for (const Bytes& parameter : parameters) {
        build.raw(parameter);
    }
    return build.bytes();
}

Bytes parameter(std::u16string_view name, std::uint8_t status,
                std::initializer_list<std::uint8_t> typeAndValue) {
    Build build;
    return build.u8(static_cast<unsigned>(name.size())).text(name).u8(status).raw(typeAndValue).bytes();
}

}  // namespace client
