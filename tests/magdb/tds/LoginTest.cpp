#include "magdb/tds/ClientBytes.h"
#include "tds/Login.h"

#include <gtest/gtest.h>

namespace magdb::tds {
namespace {

using client::Bytes;

TEST(PreLogin, TellsWhatEncryptionTheClientWants) {
    const PreLogin read = readPreLogin(client::preLogin(3));
    EXPECT_TRUE(read.hasEncryption);
    EXPECT_EQ(read.encryption, 3);
}

TEST(PreLogin, IsAnsweredWithoutEncryption) {
    ByteWriter out;
    writePreLoginAnswer(out);
    // The answer has the form of a request, so the reader shows that its table is sound.
    EXPECT_EQ(readPreLogin(out.data()).encryption, 2);
}

TEST(PreLogin, RefusesATableThatPointsOutside) {
    const Bytes broken[] = {{}, {1, 0, 50, 0, 1, 0xFF}, {1, 0, 6, 0, 9, 0xFF, 0}, {0, 0, 6}};
    for (const Bytes& bytes : broken) {
        EXPECT_THROW(static_cast<void>(readPreLogin(bytes)), RequestError);
    }
}

TEST(Login, ReadsEveryFieldInEveryVersion) {
    const std::pair<std::uint32_t, Version> versions[] = {
        {client::tds71, Version::Tds71}, {0x71000000, Version::Tds71},    {client::tds72, Version::Tds72},
        {0x730A0003, Version::Tds73},    {client::tds73, Version::Tds73}, {client::tds74, Version::Tds74}};
    for (const auto& [number, version] : versions) {
        client::LoginFields fields;
        fields.version = number;
        fields.user = u"żółw";
        fields.password = u"Tajne-ŁÓŚĆ";
        fields.database = u"MAGAZYN";
        const Login login = readLogin(client::loginRecord(fields));
        EXPECT_EQ(login.version, version);
        EXPECT_EQ(login.request.user, "żółw");
        EXPECT_EQ(login.request.password, "Tajne-ŁÓŚĆ");
        EXPECT_EQ(login.request.hostName, "stanowisko");
        EXPECT_EQ(login.request.applicationName, "test");
        EXPECT_EQ(login.request.database, "MAGAZYN");
        EXPECT_FALSE(login.integratedSecurity);
        EXPECT_FALSE(login.changesPassword);
    }
}

TEST(Login, KeepsThePacketSizeInBounds) {
    const std::pair<std::uint32_t, std::size_t> sizes[] = {
        {0, 4096}, {1, 512}, {512, 512}, {8000, 8000}, {0xFFFFFFFF, 32767}};
    for (const auto& [wanted, given] : sizes) {
        client::LoginFields fields;
        fields.packetSize = wanted;
        EXPECT_EQ(readLogin(client::loginRecord(fields)).packetSize, given);
    }
}

TEST(Login, TellsTheKindsThatAreNotServed) {
    client::LoginFields fields;
    fields.flags2 = 0x80;
    EXPECT_TRUE(readLogin(client::loginRecord(fields)).integratedSecurity);
    fields.flags2 = 0;
    fields.flags3 = 0x01;
    EXPECT_TRUE(readLogin(client::loginRecord(fields)).changesPassword);
}

TEST(Login, RefusesOlderProtocols) {
    client::LoginFields fields;
    fields.version = 0x70000000;
    EXPECT_THROW(static_cast<void>(readLogin(client::loginRecord(fields))), RequestError);
}

TEST(Login, RefusesARecordThatIsCutAnywhere) {
    const Bytes whole = client::loginRecord({});
    for (std::size_t size = 0; size < whole.size(); ++size) {
        EXPECT_THROW(static_cast<void>(readLogin(std::span(whole).first(size))), RequestError) << size;
    }
}

TEST(Login, RefusesNamesThatPointOutsideOrAreTooLong) {
    Bytes record = client::loginRecord({});
    record[36] = 0xFF;  // offset of the host name
    record[37] = 0xFF;
    EXPECT_THROW(static_cast<void>(readLogin(record)), RequestError);
    client::LoginFields fields;
    fields.user = std::u16string(129, u'x');
    EXPECT_THROW(static_cast<void>(readLogin(client::loginRecord(fields))), RequestError);
}

}  // namespace
}  // namespace magdb::tds
