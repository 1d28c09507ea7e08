// The profile of a user: what of a file is taken over, and what comes back.
#include "common/modINIModule.h"
#include "platform/MsgBox.h"
#include "platform/Paths.h"
#include "platform/RunTimeError.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <sys/stat.h>

namespace regalon {
namespace {

using namespace Qt::StringLiterals;

const QByteArray wellFormed =
    "[Forms]\r\nfrmMagWatch=0,-15,15450,11400\r\nfrm \xAF\xF3\xB3w=1,2,3,4\r\n"
    "[Grids]\r\nlstItems=3-12:010050002003000\r\nlstNegative=-1--2:\r\n"
    "[MSFlex]\r\ngrdOld=01005000200300\r\ngrdOdd==[;=\r\n"
    "[ExtraFilter]\r\nfltItem=2:a:b#c =#\r\nfltHalf=1,5:#\r\n";

/// The machine's temporary folder is one of the test's own.
class Profile : public ::testing::Test {
protected:
    Profile() { qputenv("TMPDIR", m_folder.path().toUtf8()); }
    ~Profile() override { qputenv("TMPDIR", m_before); }

    QString path(const QString& name) const { return m_folder.filePath(name); }
    void put(const QByteArray& bytes, const QString& name = u"sa.ini"_s) const {
        QFile file(path(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_EQ(file.write(bytes), bytes.size());
    }
    QByteArray content(const QString& name = u"sa.ini"_s) const {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(none)");
    }
    /// What comes back of a file that is loaded and saved under one name.
    QByteArray carriedOver(const QByteArray& bytes) {
        put(bytes);
        EXPECT_EQ(profile.LoadUserProfile(u"sa"_s), 0);
        profile.SaveUserProfile(u"sa"_s);
        return content();
    }
    QStringList files() const { return QDir(m_folder.path()).entryList(QDir::Files | QDir::Hidden); }

    modINIModule profile;
    MsgBoxRecorder messages;

private:
    const QByteArray m_before = qgetenv("TMPDIR");
    QTemporaryDir m_folder;
};

TEST_F(Profile, WithoutAFileLoadsNothingAndSaysNothing) {
    EXPECT_EQ(profile.ProfileExists(u"sa"_s), RunTime::FileNotFound);
    EXPECT_EQ(profile.LoadUserProfile(u"sa"_s), RunTime::FileNotFound);
    EXPECT_TRUE(profile.Forms().isEmpty());
    EXPECT_EQ(files(), QStringList());
    EXPECT_EQ(messages.count(), 0);
}

TEST_F(Profile, ComesBackByteForByte) {
    EXPECT_EQ(carriedOver(wellFormed), wellFormed);
    QByteArray everyByte("[MSFlex]\r\ngrd=");
    for (int byte = 1; byte < 256; ++byte) {
        if (byte != '\r' && byte != '\n') {
            everyByte += static_cast<char>(byte);
        }
    }
    everyByte += "\r\n";
    EXPECT_TRUE(carriedOver(everyByte).startsWith(everyByte));
}

TEST_F(Profile, KeepsWhatStandsOutsideOfItsSections) {
    const QByteArray file = ";mine\r\n[Other]\r\nx=1\r\n\r\n" + wellFormed + "\r\n[Last]\r\ny";
    EXPECT_EQ(carriedOver(file), file);
}

TEST_F(Profile, TakesTheFourSectionsIntoTheirTables) {
    put(wellFormed);
    profile.ProfileLoad(u"sa"_s);
    ASSERT_EQ(profile.Forms().size(), 2);
    EXPECT_EQ(profile.Forms()[0].name, u"frmMagWatch"_s);
    EXPECT_EQ(profile.Forms()[0].numbers, (std::array{u"0"_s, u"-15"_s, u"15450"_s, u"11400"_s}));
    EXPECT_EQ(profile.Forms()[1].name, u"frm Żółw"_s);
    ASSERT_EQ(profile.Grids().size(), 2);
    EXPECT_EQ(profile.Grids()[0].numbers, (std::array{u"3"_s, u"12"_s}));
    EXPECT_EQ(profile.Grids()[0].list, u"010050002003000"_s);
    EXPECT_EQ(profile.Grids()[1].numbers, (std::array{u"-1"_s, u"-2"_s}));
    ASSERT_EQ(profile.MSFlex().size(), 2);
    EXPECT_EQ(profile.MSFlex()[1].list, u"=[;="_s);
    ASSERT_EQ(profile.ExtraFilter().size(), 2);
    EXPECT_EQ(profile.ExtraFilter()[0].number, u"2"_s);
    EXPECT_EQ(profile.ExtraFilter()[0].text, u"a:b#c ="_s);
}

TEST_F(Profile, LosesABadLineAlone) {
    const QByteArray loaded = carriedOver(
        "[Forms]\r\nA=1,2,3,4\r\nno "
        "sign\r\nB=1,2,3\r\nC=1,2,3,4,5\r\nD=1,x,3,4\r\nE=1,2,3,99999999999\r\nF=\r\n"
        "G=5,6,7,8\r\n"
        "[Grids]\r\nA=1-2:x\r\nB=1:x\r\nC=1-2\r\nD=x-2:y\r\nE=-:\r\nG=3-4:y\r\n"
        "[MSFlex]\r\nA=1\r\nhalf\r\nG=2\r\n"
        "[ExtraFilter]\r\nA=1:x#\r\nB=1:x\r\nC=x#\r\nD=x:y#\r\nE=1:\r\nG=2:y#\r\nH=1:ha");
    EXPECT_EQ(loaded,
              "[Forms]\r\nA=1,2,3,4\r\nG=5,6,7,8\r\n[Grids]\r\nA=1-2:x\r\nG=3-4:y\r\n"
              "[MSFlex]\r\nA=1\r\nG=2\r\n[ExtraFilter]\r\nA=1:x#\r\nG=2:y#\r\n");
    EXPECT_EQ(messages.count(), 0);
}

TEST_F(Profile, EndsALineAtANulInTheFile) {
    EXPECT_EQ(carriedOver(QByteArray("[Forms]\r\nA=1,2\0,3,4\r\nB=1,2,3,4\0C=5,6,7,8\r\n", 42)),
              "[Forms]\r\nB=1,2,3,4\r\nC=5,6,7,8\r\n[Grids]\r\n[MSFlex]\r\n[ExtraFilter]\r\n");
    EXPECT_EQ(carriedOver(QByteArray(2000, '\0')).right(43).simplified(),
              "[Forms] [Grids] [MSFlex] [ExtraFilter]");
}

TEST_F(Profile, IsFoundByASecondStartUnderTheNameThatItWasSavedUnder) {
    put(wellFormed);
    profile.LoadUserProfile(u"sa"_s);
    profile.SaveUserProfile(u"manager"_s);
    EXPECT_EQ(content(u"manager.ini"_s), wellFormed);
    EXPECT_EQ(content(), wellFormed);
    modINIModule next;
    EXPECT_EQ(next.LoadUserProfile(u"manager"_s), 0);
    EXPECT_EQ(next.Forms().size(), 2);
    EXPECT_EQ(next.LoadUserProfile(u"nobody"_s), RunTime::FileNotFound);
}

TEST_F(Profile, ThatIsEmptyMakesAFileThatTheNextStartFinds) {
    profile.SaveUserProfile(u"sa"_s);
    EXPECT_EQ(content(), "[Forms]\r\n[Grids]\r\n[MSFlex]\r\n[ExtraFilter]\r\n");
    EXPECT_EQ(profile.LoadUserProfile(u"sa"_s), 0);
    EXPECT_EQ(files(), QStringList(u"sa.ini"_s));
}

TEST_F(Profile, ReplacesWhatAnotherRunHasSavedWholly) {
    put("[Forms]\r\nold=1,1,1,1\r\n", u"manager.ini"_s);
    put("[Forms]\r\nnew=2,2,2,2\r\n");
    profile.LoadUserProfile(u"sa"_s);
    profile.SaveUserProfile(u"manager"_s);
    EXPECT_TRUE(content(u"manager.ini"_s).startsWith("[Forms]\r\nnew=2,2,2,2\r\n[Grids]"));
}

TEST_F(Profile, HasEndingAndFolderPutToItsName) {
    EXPECT_EQ(modINIModule::fileOf(u"sa"_s), path(u"sa.ini"_s));
    EXPECT_EQ(modINIModule::fileOf(u"sa.ini"_s), path(u"sa.ini"_s));
    EXPECT_EQ(modINIModule::fileOf({}), path(u".ini"_s));
}

TEST_F(Profile, HasNoFileOutsideOfTheTemporaryFolder) {
    for (const QString& name : {u"../outside"_s, u"..\\outside"_s, u"DOMAIN\\user"_s, u"/etc/x"_s}) {
        EXPECT_NE(profile.LoadUserProfile(name), 0) << qPrintable(name);
        profile.SaveUserProfile(name);
        EXPECT_EQ(files(), QStringList()) << qPrintable(name);
    }
    EXPECT_FALSE(QFileInfo::exists(path(u"../outside.ini"_s)));
}

TEST_F(Profile, LiesInTheMachinesOwnFolderWhereTheNamedOneIsNotThere) {
    qputenv("TMPDIR", path(u"nowhere"_s).toUtf8());
    EXPECT_EQ(modINIModule::fileOf(u"sa"_s), u"/tmp/sa.ini"_s);
    // A name of the current folder.
    qputenv("TMPDIR", "nowhere");
    EXPECT_EQ(modINIModule::fileOf(u"sa"_s), u"/tmp/sa.ini"_s);
}

TEST_F(Profile, IsNoneAsAFolderOrAPipe) {
    ASSERT_TRUE(QDir().mkdir(path(u"sa.ini"_s)));
    EXPECT_EQ(profile.LoadUserProfile(u"sa"_s), RunTime::PathFileAccess);
    ASSERT_TRUE(QDir().rmdir(path(u"sa.ini"_s)));
    ASSERT_EQ(mkfifo(QFile::encodeName(path(u"sa.ini"_s)).constData(), 0600), 0);
    EXPECT_EQ(profile.LoadUserProfile(u"sa"_s), RunTime::PathFileAccess);
    profile.SaveUserProfile(u"sa"_s);
    EXPECT_FALSE(QFileInfo(path(u"sa.ini"_s)).isFile());
    EXPECT_EQ(messages.count(), 0);
}

TEST_F(Profile, LeavesTheFileThatWasLookedForOpen) {
    put(wellFormed);
    ASSERT_EQ(profile.ProfileExists(u"sa"_s), 0);
    const QDir open(u"/proc/self/fd"_s);
    int found = 0;
    for (const QFileInfo& entry :
         open.entryInfoList(QDir::NoDotAndDotDot | QDir::AllEntries | QDir::System)) {
        found += entry.symLinkTarget() == path(u"sa.ini"_s) ? 1 : 0;
    }
    EXPECT_EQ(found, 1);
}

TEST_F(Profile, IsLoadedInPlaceOfTheOneBefore) {
    put("[Forms]\r\nA=1,2,3,4\r\n");
    profile.LoadUserProfile(u"sa"_s);
    profile.LoadUserProfile(u"sa"_s);
    EXPECT_EQ(profile.Forms().size(), 1);
}

}  // namespace
}  // namespace regalon
