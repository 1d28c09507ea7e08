#include "magdb/tds/Readers.h"

#include "tds/Login.h"
#include "tds/PacketReader.h"
#include "tds/Requests.h"

namespace {

using namespace magdb::tds;

void readContent(const Message& message, Version version) {
    try {
        switch (message.type) {
            case PacketType::SqlBatch:
                static_cast<void>(readBatch(message.content, version));
                break;
            case PacketType::Rpc:
                static_cast<void>(readCalls(message.content, version));
                break;
            case PacketType::TransactionManager:
                static_cast<void>(transactionStatements(readTransaction(message.content, version)));
                break;
            case PacketType::PreLogin:
                static_cast<void>(readPreLogin(message.content));
                break;
            case PacketType::Login7:
                static_cast<void>(readLogin(message.content));
                break;
            default:
                break;
        }
    } catch (const RequestError&) {
        // The answer to bad bytes.
    }
}

}  // namespace

void readEverything(std::span<const std::uint8_t> stream) {
    PacketReader reader;
    try {
        reader.feed(stream);
        while (const auto message = reader.next()) {
            for (const Version version : {Version::Tds71, Version::Tds72, Version::Tds73, Version::Tds74}) {
                readContent(*message, version);
            }
        }
    } catch (const FramingError&) {
        // As above.
    }
}
