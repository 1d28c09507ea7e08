// Reading values of the registry.
#include "common/modAPI_Registry.h"
#include "platform/MsgBox.h"
#include "platform/Registry.h"
#include "platform/RunTimeError.h"

#include <gtest/gtest.h>

namespace regalon {
namespace {

using namespace Qt::StringLiterals;

class RegistryModule : public ::testing::Test {
protected:
    RegistryModule() { Registry::clear(); }
    ~RegistryModule() override { Registry::clear(); }

    static void serve(const QByteArray& bytes, Registry::Key root = Registry::localMachine) {
        Registry::serve(root, u"SOFTWARE\\Site"_s, u"Value"_s, [bytes] { return bytes; });
    }
    /// The value, or the result in brackets when there is none.
    static QString read(qint32 type, const QString& path = u"HKEY_LOCAL_MACHINE\\SOFTWARE\\Site"_s) {
        QString value = u"untouched"_s;
        const qint32 result = RegValueRead(path, u"Value"_s, value, type);
        EXPECT_EQ(Registry::openKeys(), 0) << "every key is closed";
        if (result == 0) {
            return value;
        }
        EXPECT_EQ(value, u"untouched"_s);
        return u'(' + QString::number(result) + u')';
    }

    MsgBoxRecorder messages;
};

TEST_F(RegistryModule, OpensAKeyAndClosesThoseOnTheWay) {
    serve("x");
    const qint32 key = RegKeyOpen(u"HKEY_LOCAL_MACHINE\\SOFTWARE\\Site"_s);
    EXPECT_GT(key, 0);
    EXPECT_EQ(Registry::openKeys(), 1);
    EXPECT_EQ(RegKeyClose(key), 0);
    EXPECT_EQ(Registry::openKeys(), 0);
    EXPECT_EQ(RegKeyClose(key), 6) << "a number for a key that is not open";
    EXPECT_EQ(messages.count(), 0);
}

TEST_F(RegistryModule, TakesDoubledSeparatorsBlanksAroundAndAnyCase) {
    serve(Registry::textValue(u"x"_s));
    EXPECT_EQ(read(1, u"  hkey_local_machine\\\\software\\\\\\SITE\\ "_s), u"x"_s);
    EXPECT_EQ(read(1, u"  \\HKEY_Local_Machine\\software\\site  "_s), u"x"_s);
}

TEST_F(RegistryModule, OpensEveryRoot) {
    const std::pair<QString, Registry::Key> roots[] = {
        {u"HKEY_CLASSES_ROOT"_s, Registry::classesRoot},
        {u"HKEY_CURRENT_USER"_s, Registry::currentUser},
        {u"HKEY_LOCAL_MACHINE"_s, Registry::localMachine},
        {u"HKEY_USERS"_s, Registry::users},
        {u"HKEY_PERFORMANCE_DATA"_s, Registry::performanceData},
        {u"HKEY_CURRENT_CONFIG"_s, Registry::currentConfig},
        {u"HKEY_DYN_DATA"_s, Registry::dynData},
    };
    for (const auto& [name, root] : roots) {
        EXPECT_EQ(RegKeyOpen(name), root) << qPrintable(name);
        serve(Registry::textValue(name), root);
        EXPECT_EQ(read(1, name + u"\\SOFTWARE\\Site"_s), name);
    }
    EXPECT_EQ(Registry::localMachine, static_cast<qint32>(0x80000002U));
    EXPECT_EQ(Registry::dynData, static_cast<qint32>(0x80000006U));
}

TEST_F(RegistryModule, OpensNothingByABadPath) {
    serve("x");
    for (const QString& path :
         {QString(), u"\\\\"_s, u"HKEY_NONE\\SOFTWARE"_s, u"SOFTWARE\\Site"_s,
          u"HKEY_LOCAL_MACHINE\\SOFTWARE\\Site\\Deeper"_s, u"HKEY_LOCAL_MACHINE\\Nowhere\\Site"_s}) {
        EXPECT_EQ(RegKeyOpen(path), -1) << qPrintable(path);
        EXPECT_EQ(Registry::openKeys(), 0) << qPrintable(path);
    }
    EXPECT_EQ(messages.count(), 0);
}

TEST_F(RegistryModule, OpensThirtyTwoPartsAndNoMore) {
    QString path;
    for (int part = 2; part <= 33; ++part) {
        path += u'\\' + QString::number(part);
    }
    Registry::serve(Registry::currentUser, path, u"Value"_s, [] { return QByteArray(); });
    const QString root = u"HKEY_CURRENT_USER"_s;
    const qint32 key = RegKeyOpen(root + path.left(path.lastIndexOf(u'\\')));
    EXPECT_GT(key, 0);
    RegKeyClose(key);
    EXPECT_EQ(RegKeyOpen(root + path), -1);
}

TEST_F(RegistryModule, ReadsATextOfUpTo256Bytes) {
    serve(Registry::textValue(u"C:\\Dane źródeł"_s));
    EXPECT_EQ(read(1), u"C:\\Dane źródeł"_s);
    serve(Registry::textValue(QString(255, u'x')));
    EXPECT_EQ(read(1), QString(255, u'x'));
    serve(Registry::textValue(QString(256, u'x')));
    EXPECT_EQ(read(1), u"(-1)"_s);
    serve({});
    EXPECT_EQ(read(1), QString());
}

TEST_F(RegistryModule, ReadsFourBytesAsDecimalText) {
    serve(Registry::numberValue(70000));
    EXPECT_EQ(read(4), u"70000"_s);
    EXPECT_EQ(read(3), u"70000"_s);
    serve(Registry::numberValue(-2));
    EXPECT_EQ(read(4), u"-2"_s);
    serve("12345");
    EXPECT_EQ(read(4), u"(-1)"_s) << "five bytes";
}

TEST_F(RegistryModule, ReadsNothingOfAnotherTypeOrName) {
    serve(Registry::textValue(u"x"_s));
    EXPECT_EQ(read(2), u"(-1)"_s);
    QString value = u"untouched"_s;
    EXPECT_EQ(RegValueRead(u"HKEY_LOCAL_MACHINE\\SOFTWARE\\Site"_s, u"Other"_s, value, 1), -1);
    EXPECT_EQ(value, u"untouched"_s);
    EXPECT_EQ(read(1, u"HKEY_LOCAL_MACHINE\\Nowhere"_s), u"(-1)"_s);
    EXPECT_EQ(messages.count(), 0);
}

TEST_F(RegistryModule, TellsARunTimeFailureAndAnswersItsNumber) {
    Registry::serve(Registry::localMachine, u"SOFTWARE\\Site"_s, u"Value"_s, []() -> QByteArray {
        throw RunTimeError(RunTime::PathFileAccess, u"What happened"_s, u"Where"_s);
    });
    EXPECT_EQ(read(1), u"(75)"_s);
    ASSERT_EQ(messages.count(), 1);
    EXPECT_EQ(messages.last().Title, u"[modAPI_Registry] - RegValueRead"_s);
    EXPECT_EQ(messages.last().Text, u"Error: 75\r\nWhat happened\r\nSource: Where"_s);
    EXPECT_EQ(messages.last().Flags, 16);
}

}  // namespace
}  // namespace regalon
