// What stands for the registry, and the settings behind it.
#include "Failing.h"
#include "platform/Registry.h"
#include "platform/Settings.h"

#include <gtest/gtest.h>

using namespace regalon;
using namespace Qt::StringLiterals;
using Registry::Key;

namespace {

class RegistryTest : public ::testing::Test {
protected:
    void SetUp() override {
        Registry::clear();
        Registry::serve(Registry::currentUser, u"Software\\Kolvestra"_s, u"Name"_s,
                        [] { return Registry::textValue(u"żółw"_s); });
        Registry::serve(Registry::localMachine, u"SOFTWARE\\ODBC"_s, u"Number"_s,
                        [] { return Registry::numberValue(-2); });
    }
    void TearDown() override { Registry::clear(); }

    static Key opened(Key parent, const QString& part, quint32 access = Registry::readAccess) {
        Key key = 0;
        EXPECT_EQ(Registry::openKey(parent, part, access, key), 0) << qPrintable(part);
        return key;
    }
};

TEST_F(RegistryTest, HasTheKeysAboveAServedOne) {
    const Key software = opened(Registry::currentUser, u"SOFTWARE"_s, Registry::allAccess);
    const Key kolvestra = opened(software, u"kolvestra"_s, Registry::allAccess);
    EXPECT_EQ(Registry::openKeys(), 2);
    Key none = 0;
    EXPECT_EQ(Registry::openKey(software, u"Inne"_s, Registry::readAccess, none), 2);
    EXPECT_EQ(Registry::openKey(Registry::users, u"Software"_s, Registry::readAccess, none), 2);
    QByteArray bytes;
    EXPECT_EQ(Registry::queryValue(kolvestra, u"NAME"_s, 256, bytes), 0);
    EXPECT_EQ(bytes, QByteArray("\xBF\xF3\xB3w\0", 5));
    EXPECT_EQ(Registry::queryValue(software, u"Name"_s, 256, bytes), 2);
}

TEST_F(RegistryTest, GivesFullAccessToTheMachineToNobody) {
    Key none = 0;
    EXPECT_EQ(Registry::openKey(Registry::localMachine, u"SOFTWARE"_s, Registry::allAccess, none), 5);
    EXPECT_EQ(Registry::openKeys(), 0);
    opened(Registry::localMachine, u"SOFTWARE"_s, Registry::readAccess);
}

TEST_F(RegistryTest, GivesNoValueThatIsLargerThanTheBuffer) {
    const Key software = opened(Registry::localMachine, u"SOFTWARE"_s);
    const Key odbc = opened(software, u"ODBC"_s);
    QByteArray bytes("kept");
    EXPECT_EQ(Registry::queryValue(odbc, u"Number"_s, 3, bytes), 234);
    EXPECT_EQ(bytes, "kept");
    EXPECT_EQ(Registry::queryValue(odbc, u"Number"_s, 4, bytes), 0);
    EXPECT_EQ(bytes, "\xFE\xFF\xFF\xFF");
}

TEST_F(RegistryTest, KnowsAClosedKeyNoMore) {
    const Key software = opened(Registry::currentUser, u"Software"_s);
    EXPECT_EQ(Registry::closeKey(software), 0);
    EXPECT_EQ(Registry::closeKey(software), 6);
    QByteArray bytes;
    Key none = 0;
    EXPECT_EQ(Registry::queryValue(software, u"Name"_s, 256, bytes), 6);
    EXPECT_EQ(Registry::openKey(software, u"Kolvestra"_s, Registry::readAccess, none), 6);
    EXPECT_EQ(Registry::closeKey(Registry::localMachine), 0);
    EXPECT_EQ(Registry::closeKey(-1), 6);
}

TEST_F(RegistryTest, RaisesWhatTheSourceOfAValueRaises) {
    Registry::serve(Registry::currentUser, u"Software"_s, u"Broken"_s,
                    []() -> QByteArray { throw RunTimeError(RunTime::PathFileAccess); });
    const Key software = opened(Registry::currentUser, u"Software"_s);
    QByteArray bytes;
    EXPECT_EQ(test::failureOf([&] { Registry::queryValue(software, u"Broken"_s, 256, bytes); }),
              RunTime::PathFileAccess);
}

TEST_F(RegistryTest, HoldsTheFolderOfDataSourceFilesOfTheSettings) {
    const auto folder = [] {
        Key key = Registry::localMachine;
        for (const QString& part : {u"Software"_s, u"ODBC"_s, u"ODBC.INI"_s, u"ODBC File DSN"_s}) {
            if (Registry::openKey(key, part, Registry::readAccess, key) != 0) {
                return QByteArray("(no key)");
            }
        }
        QByteArray bytes;
        Registry::queryValue(key, u"DefaultDSNDir"_s, 256, bytes);
        return bytes;
    };
    Settings::fromText(u"[Files]\nDsnFolder=C:\\Dane źródeł\n"_s).apply();
    EXPECT_EQ(folder(), QByteArray("C:\\Dane \x9Fr\xF3"
                                   "de\xB3\0",
                                   15));
    Settings::fromText({}).apply();
    EXPECT_EQ(folder(), "(no key)");
}

}  // namespace
