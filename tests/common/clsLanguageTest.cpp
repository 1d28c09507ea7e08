// Texts of message boxes from language files, those of a site and those beside the program.
#include "common/clsLanguage.h"
#include "platform/CodePage.h"
#include "platform/Paths.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace regalon {
namespace {

using namespace Qt::StringLiterals;

const QString window = u"mdiKolvestra"_s;
const QString polish = u"Czy na pewno chcesz zakończyć pracę z programem?"_s;

class Language : public ::testing::Test {
protected:
    Language() {
        Paths::Mapping mapping;
        mapping.DriveC = m_drive.path();
        Paths::setMapping(mapping);
        QDir(m_drive.path()).mkpath(u"Regalon/Languages"_s);
    }
    ~Language() override { Paths::setMapping({}); }

    /// A language file of the site.
    void put(const QString& name, const QByteArray& bytes) const {
        QFile file(m_drive.filePath(u"Regalon/Languages/"_s + name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_EQ(file.write(bytes), bytes.size());
    }
    void putText(const QByteArray& value) const {
        put(u"Site.ini"_s, "[mdiKolvestraMsgBox]\r\nExitText=" + value + "\r\n");
    }
    QString text(const QString& fileName) {
        language.setFileName(fileName);
        return language.GetMsgBoxText(window, u"Exit"_s, polish);
    }
    QString title(const QString& fileName) {
        language.setFileName(fileName);
        return language.GetMsgBoxTitle(window, u"Exit"_s, u"Info..."_s);
    }

    clsLanguage language;

private:
    QTemporaryDir m_drive;
};

TEST_F(Language, ThatWasNotChosenLeavesTheLiteralPolishTexts) {
    EXPECT_EQ(language.FileName(), QString());
    EXPECT_EQ(language.GetMsgBoxText(window, u"Exit"_s, polish), polish);
    EXPECT_EQ(language.GetMsgBoxTitle(window, u"Exit"_s, u"Info..."_s), u"Info..."_s);
}

TEST_F(Language, ThatWasNotChosenIsNotTheOneOfAFileWithoutAName) {
    put(u".ini"_s, "[mdiKolvestraMsgBox]\r\nExitText=Leave?\r\nExitTitle=Title\r\n");
    EXPECT_EQ(text({}), polish);
    EXPECT_EQ(title({}), u"Info..."_s);
}

TEST_F(Language, ComesWithTheProgramInPolishEnglishAndGerman) {
    EXPECT_EQ(text(u"Polish"_s), polish);
    EXPECT_EQ(text(u"English"_s), u"Do you really want to exit the program?"_s);
    EXPECT_EQ(text(u"Germany"_s), u"Möchten Sie das Programm wirklich beenden?"_s);
    // The two names that the program has for German.
    EXPECT_EQ(text(u"Niemiecki"_s), text(u"Germany"_s));
    for (const QString& name : {u"Polish"_s, u"English"_s, u"Germany"_s}) {
        language.setFileName(name);
        EXPECT_EQ(language.GetMsgBoxTitle(window, u"Exit"_s, u"alternative"_s), u"Info..."_s);
    }
}

TEST_F(Language, WithoutAFileASectionOrAKeyGivesTheAlternative) {
    EXPECT_EQ(text(u"Nowhere"_s), polish);
    put(u"Site.ini"_s, "");
    EXPECT_EQ(text(u"Site"_s), polish);
    put(u"Site.ini"_s, "ExitText=outside of any section\r\n[Other]\r\nExitText=x\r\n");
    EXPECT_EQ(text(u"Site"_s), polish);
    put(u"Site.ini"_s, "[mdiKolvestraMsgBox]\r\nExitTitle=Title\r\n");
    EXPECT_EQ(text(u"Site"_s), polish);
    EXPECT_EQ(title(u"Site"_s), u"Title"_s);
    putText("");
    EXPECT_EQ(text(u"Site"_s), polish);
    putText("\"\"");
    EXPECT_EQ(text(u"Site"_s), polish);
}

TEST_F(Language, TakesTheFileOfTheSiteBeforeTheOneBesideTheProgram) {
    put(u"ENGLISH.INI"_s, "[MDIKOLVESTRAMSGBOX]\r\nexittext=Leave?\r\n");
    EXPECT_EQ(text(u"English"_s), u"Leave?"_s);
}

TEST_F(Language, CutsAValueOfMoreThan3071Bytes) {
    putText(QByteArray(5000, 'a'));
    EXPECT_EQ(text(u"Site"_s), QString(3071, u'a'));
    putText(QString(5000, u'ł').toUtf8());
    EXPECT_EQ(text(u"Site"_s), QString(1535, u'ł'));
    putText(CodePage::fromText(QString(5000, u'ł')));
    EXPECT_EQ(text(u"Site"_s), QString(3071, u'ł'));
}

TEST_F(Language, TakesAValueToTheEndOfTheLineWithoutTheBlanksAtItsEnds) {
    putText("  Say \"yes\" ; or # not = leave  ");
    EXPECT_EQ(text(u"Site"_s), u"Say \"yes\" ; or # not = leave"_s);
    putText("\"In quotes\"");
    EXPECT_EQ(text(u"Site"_s), u"In quotes"_s);
}

TEST_F(Language, ReadsUtf8AndTheCodePage) {
    putText(u"Möchten Sie żółw?"_s.toUtf8());
    EXPECT_EQ(text(u"Site"_s), u"Möchten Sie żółw?"_s);
    putText(CodePage::fromText(u"Möchten Sie żółw?"_s));
    EXPECT_EQ(text(u"Site"_s), u"Möchten Sie żółw?"_s);
}

TEST_F(Language, InAWrongEncodingGivesTheAlternative) {
    const QString wide = u"[mdiKolvestraMsgBox]\r\nExitText=x\r\n"_s;
    put(u"Site.ini"_s, "\xFF\xFE" + QByteArray(reinterpret_cast<const char*>(wide.utf16()), wide.size() * 2));
    EXPECT_EQ(text(u"Site"_s), polish);
    put(u"Site.ini"_s, QByteArray(4096, '\0'));
    EXPECT_EQ(text(u"Site"_s), polish);
}

}  // namespace
}  // namespace regalon
