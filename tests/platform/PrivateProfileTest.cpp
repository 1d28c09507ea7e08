// The .ini files of programs: what is read of any bytes, and what writing leaves of them.
#include "fuzz/ProfileChecks.h"
#include "platform/CodePage.h"
#include "platform/Paths.h"
#include "platform/PrivateProfile.h"
#include "support/HostileBytes.h"
#include "support/OrdinaryUser.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <sys/stat.h>

using namespace regalon;
using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype buffer = 3072;

QString value(const QByteArray& file, const QString& key = u"Key"_s) {
    return PrivateProfile::stringIn(file, u"Section"_s, key, u"(none)"_s, buffer);
}

QString valueOfLine(const QByteArray& line) {
    return value("[Section]\r\n" + line + "\r\n");
}

QByteArray sectionOf(const QByteArray& file) {
    return PrivateProfile::sectionIn(file, u"Section"_s);
}

QByteArray written(const QByteArray& file, const QByteArray& lines) {
    return PrivateProfile::withSection(file, u"Section"_s, lines);
}

TEST(PrivateProfileString, IsWhatStandsBehindTheFirstSign) {
    EXPECT_EQ(valueOfLine("Key=a=b"), u"a=b"_s);
    EXPECT_EQ(value("[Section]\nKey=no line end"), u"no line end"_s);
}

TEST(PrivateProfileString, ComparesNamesWithoutRegardToCase) {
    EXPECT_EQ(value("[SECTION]\r\nkEY=x\r\n"), u"x"_s);
    EXPECT_EQ(PrivateProfile::stringIn("[Żółw]\nłapa=4\n", u"ŻÓŁW"_s, u"ŁAPA"_s, {}, buffer), u"4"_s);
}

TEST(PrivateProfileString, LosesTheBlanksAtItsEnds) {
    EXPECT_EQ(valueOfLine(" \tKey \t= \t two  words \t "), u"two  words"_s);
    EXPECT_EQ(value("  [ Section ]  \r\nKey=x\r\n"), u"x"_s);
}

TEST(PrivateProfileString, LosesOnePairOfQuotesAroundItAll) {
    EXPECT_EQ(valueOfLine("Key=\"  kept  \""), u"  kept  "_s);
    EXPECT_EQ(valueOfLine("Key='single'"), u"single"_s);
    EXPECT_EQ(valueOfLine("Key=\"\"twice\"\""), u"\"twice\""_s);
    EXPECT_EQ(valueOfLine("Key=\"unlike'"), u"\"unlike'"_s);
    EXPECT_EQ(valueOfLine("Key=\""), u"\""_s);
    EXPECT_EQ(valueOfLine("Key=say \"yes\""), u"say \"yes\""_s);
}

TEST(PrivateProfileString, GoesToTheEndOfTheLineWithWhateverStandsThere) {
    EXPECT_EQ(valueOfLine("Key=a ; b # c [d]"), u"a ; b # c [d]"_s);
}

TEST(PrivateProfileString, IsThatOfTheFirstKeyInTheFirstSectionOfTheName) {
    EXPECT_EQ(value("[Section]\nKey=1\nKey=2\n[Section]\nKey=3\nOther=4\n"), u"1"_s);
    EXPECT_EQ(value("[Section]\nKey=1\n[Section]\nOther=4\n", u"Other"_s), u"(none)"_s);
}

TEST(PrivateProfileString, IsNotFoundInCommentsAndOtherSections) {
    EXPECT_EQ(valueOfLine(";Key=x"), u"(none)"_s);
    EXPECT_EQ(valueOfLine("Key"), u"(none)"_s);
    EXPECT_EQ(value("Key=x\n[Section\nKey=y\n[Other]\nKey=z\n"), u"(none)"_s);
    EXPECT_EQ(value(""), u"(none)"_s);
    EXPECT_EQ(valueOfLine("Key="), QString()) << "an empty value is a value";
}

TEST(PrivateProfileString, IsCutToTheBufferWithoutItsLastByte) {
    EXPECT_EQ(valueOfLine("Key=" + QByteArray(5000, 'x')), QString(3071, u'x'));
    EXPECT_EQ(valueOfLine("Key=" + QByteArray(3071, 'x')), QString(3071, u'x'));
    // Polish letters are two bytes in UTF-8, and the cut goes through one of them.
    EXPECT_EQ(valueOfLine("Key=" + QString(2000, u'ż').toUtf8()), QString(1535, u'ż'));
    EXPECT_EQ(valueOfLine("Key=" + QByteArray(4000, '\xBF')), QString(3071, u'ż'));
    EXPECT_EQ(PrivateProfile::stringIn("[Section]\nKey=abc\n", u"Section"_s, u"Key"_s, {}, 0), QString());
}

TEST(PrivateProfileString, EndsAtANul) {
    EXPECT_EQ(valueOfLine(QByteArray("Key=ab\0cd", 9)), u"ab"_s);
}

TEST(PrivateProfileString, IsUtf8WhereTheWholeFileIsAndElseInTheCodePage) {
    EXPECT_EQ(value(u"[Section]\r\nKey=Zażółć Möchten\r\n"_s.toUtf8()), u"Zażółć Möchten"_s);
    EXPECT_EQ(value("\xEF\xBB\xBF[Section]\r\nKey=\xC5\xBC\r\n"), u"ż"_s);
    EXPECT_EQ(value(CodePage::fromText(u"[Section]\r\nKey=Zażółć Möchten\r\n"_s)), u"Zażółć Möchten"_s);
    // One byte that UTF-8 does not know, at the very end of the file.
    EXPECT_EQ(value("[Section]\nKey=x\xC5\xBC\n;\xC5"), CodePage::toText("x\xC5\xBC"));
}

TEST(PrivateProfileString, IsNotFoundInAFileOfAWrongEncoding) {
    const QString text = u"[Section]\r\nKey=x\r\n"_s;
    const QByteArray wide(reinterpret_cast<const char*>(text.utf16()), text.size() * 2);
    EXPECT_EQ(value("\xFF\xFE" + wide), u"(none)"_s);
}

TEST(PrivateProfileSection, IsItsLinesAsTheyStand) {
    EXPECT_EQ(sectionOf("[A]\nx=1\n[Section]\r\nb = 2 \r\nno sign\n\xFF=\xFE\n[C]\ny=3\n"),
              QByteArray("b = 2 \0no sign\0\xFF=\xFE", 18));
    EXPECT_EQ(sectionOf("[Section]\n;comment\n\n  \t\na=1"), "a=1");
    EXPECT_EQ(sectionOf("[Section]\n[B]\n"), "");
    EXPECT_EQ(sectionOf("[B]\n"), "");
}

TEST(PrivateProfileSection, EndsALineAtANul) {
    EXPECT_EQ(sectionOf(QByteArray("[Section]\na=1\0;b=2\0[C]=3\0\0d=4\0", 30)), QByteArray("a=1\0d=4", 7));
}

TEST(PrivateProfileWriting, ReplacesTheLinesOfASectionAndKeepsTheOthers) {
    EXPECT_EQ(written(";top\r\n[A]\r\nx=1\r\n\r\n[section]\r\nold=1\r\n;gone\r\n\r\n[C]\r\ny=3\r\n",
                      QByteArray("b=2\0c=3", 7)),
              ";top\r\n[A]\r\nx=1\r\n\r\n[section]\r\nb=2\r\nc=3\r\n\r\n[C]\r\ny=3\r\n");
    EXPECT_EQ(written("[Section]\r\na=1\r\n[B]\r\n", ""), "[Section]\r\n[B]\r\n");
}

TEST(PrivateProfileWriting, MakesASectionThatIsNotThere) {
    EXPECT_EQ(written("", "a=1"), "[Section]\r\na=1\r\n");
    EXPECT_EQ(written("[B]\r\nx=1", "a=1"), "[B]\r\nx=1\r\n[Section]\r\na=1\r\n");
    EXPECT_EQ(written("[Section]", "a=1"), "[Section]\r\na=1\r\n");
}

TEST(PrivateProfileWriting, EndsLinesAsTheFileDoes) {
    EXPECT_EQ(written("[A]\nx=1\n[Section]\nold=1\n", "a=1"), "[A]\nx=1\n[Section]\na=1\n");
}

TEST(PrivateProfileWriting, ChangesNothingWithTheLinesThatWereRead) {
    for (const QByteArray& file :
         {QByteArray("[Section]\r\nb = 2 \r\n\r\n\r\n[B]\r\nx"), QByteArray("\xEF\xBB\xBF[Section]\na=1\n"),
          QByteArray("[B]\nx=1\n\n[Section]\n\xFF=\xFE\n")}) {
        EXPECT_EQ(written(file, sectionOf(file)), file);
    }
}

TEST(PrivateProfile, LivesThroughAnyBytes) {
    EXPECT_TRUE(test::survivesChangedSeeds(u"tests/platform/fuzz/profile_seeds"_s, 2000, test::checkProfile));
}

class PrivateProfileFile : public ::testing::Test {
protected:
    void put(const QByteArray& bytes) const {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_EQ(file.write(bytes), bytes.size());
    }
    QByteArray content() const {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(none)");
    }
    QString read() const { return PrivateProfile::string(path, u"Section"_s, u"Key"_s, u"(none)"_s, buffer); }
    bool write(const QByteArray& lines) const {
        return PrivateProfile::writeSection(path, u"Section"_s, lines);
    }

    QTemporaryDir folder;
    QString path = folder.filePath(u"user.ini"_s);
};

TEST_F(PrivateProfileFile, IsMadeByTheFirstWriting) {
    EXPECT_EQ(read(), u"(none)"_s);
    EXPECT_EQ(PrivateProfile::section(path, u"Section"_s), QByteArray());
    EXPECT_TRUE(write("Key=x"));
    EXPECT_EQ(content(), "[Section]\r\nKey=x\r\n");
    EXPECT_EQ(read(), u"x"_s);
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files).size(), 1) << "no other file stays behind";
    EXPECT_EQ(QFileInfo(path).permissions() & (QFile::ReadGroup | QFile::ReadOther), QFile::Permissions());
}

TEST_F(PrivateProfileFile, IsNoneAsAFolderAPipeOrAHugeFile) {
    ASSERT_TRUE(QDir().mkdir(path));
    EXPECT_EQ(read(), u"(none)"_s);
    EXPECT_FALSE(write("Key=x"));
    ASSERT_TRUE(QDir().rmdir(path));
    ASSERT_EQ(mkfifo(path.toUtf8().constData(), 0600), 0);
    EXPECT_EQ(read(), u"(none)"_s);
    EXPECT_FALSE(write("Key=x"));
    ASSERT_TRUE(QFile::remove(path));
    const QByteArray huge = "[Section]\nKey=x\n" + QByteArray(1 << 20, ';');
    put(huge);
    EXPECT_EQ(read(), u"(none)"_s);
    EXPECT_FALSE(write("Key=y"));
    EXPECT_EQ(content(), huge);
    EXPECT_FALSE(PrivateProfile::writeSection({}, u"Section"_s, "Key=x"));
    EXPECT_EQ(PrivateProfile::string({}, u"Section"_s, u"Key"_s, u"(none)"_s, buffer), u"(none)"_s);
}

TEST_F(PrivateProfileFile, IsWrittenInThePlaceOfALinkAndNotThroughIt) {
    const QString other = folder.filePath(u"other.ini"_s);
    {
        QFile file(other);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_GT(file.write("[A]\r\n"), 0);
    }
    ASSERT_TRUE(QFile::link(other, path));
    EXPECT_TRUE(write("Key=x"));
    EXPECT_FALSE(QFileInfo(path).isSymLink());
    QFile file(other);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), "[A]\r\n");
    ASSERT_TRUE(QFile::remove(path));
    ASSERT_TRUE(QFile::link(folder.filePath(u"nowhere"_s), path));
    EXPECT_FALSE(write("Key=x")) << "a link to nothing is no file to be read first";
}

TEST_F(PrivateProfileFile, StaysAsItIsWhereItsFolderIsReadOnly) {
    put("[Section]\r\nKey=old\r\n");
    ASSERT_TRUE(QFile::setPermissions(path, QFile::Permissions(0x4444)));
    ASSERT_TRUE(QFile::setPermissions(folder.path(), QFile::Permissions(0x5555)));
    {
        const test::OrdinaryUser user;
        EXPECT_FALSE(write("Key=new"));
        EXPECT_EQ(read(), u"old"_s);
    }
    QFile::setPermissions(folder.path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

}  // namespace
