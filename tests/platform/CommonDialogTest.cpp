#include "platform/CommonDialog.h"
#include "platform/Paths.h"
#include "support/Events.h"

#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QLineEdit>
#include <QTemporaryDir>
#include <QWidget>

#include <gtest/gtest.h>

using namespace regalon;
using namespace regalon::test;

namespace {

/// A drive C with two icons and a picture in the icon folder.
class CommonDialogTest : public ::testing::Test {
protected:
    CommonDialogTest() : dialog(&form) {
        Paths::Mapping mapping;
        mapping.DriveC = m_drive.path();
        Paths::setMapping(mapping);
        QDir(m_drive.path()).mkpath(QStringLiteral("Ikony"));
        for (const char* name : {"LA_1.ico", "LB_1.ico", "opis.txt"}) {
            QFile file(m_drive.filePath(QStringLiteral("Ikony/") + QString::fromLatin1(name)));
            EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        }
        dialog.setInitDir(QStringLiteral("C:\\Ikony"));
    }
    ~CommonDialogTest() override { Paths::setMapping({}); }

    /// Opens the dialog, takes a look at it, and presses a key in its box for the name.
    void open(Qt::Key end, const QString& typed, const std::function<void(QFileDialog*)>& look = {}) {
        whenModal([&](QWidget* modal) {
            auto* shown = qobject_cast<QFileDialog*>(modal);
            if (look)
                look(shown);
            auto* name = shown->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
            type(name, typed);
            key(name, end);
        });
        dialog.ShowOpen();
    }

    QTemporaryDir m_drive;
    QWidget form;
    CommonDialog dialog;
};

TEST_F(CommonDialogTest, IsOnItsFormByItsName) {
    EXPECT_EQ(form.findChild<CommonDialog*>(QStringLiteral("CommonDialog")), &dialog);
}

TEST_F(CommonDialogTest, OpensWithTitleFilterAndFolder) {
    dialog.setDialogTitle(QStringLiteral("Wybór pliku graficznego"));
    dialog.setFilter(QStringLiteral("Pliki graficzne|LA*;LB*|Inne|"));
    open(Qt::Key_Escape, {}, [this](QFileDialog* shown) {
        EXPECT_EQ(shown->windowTitle(), QStringLiteral("Wybór pliku graficznego"));
        EXPECT_EQ(shown->nameFilters(),
                  QStringList({QStringLiteral("Pliki graficzne (LA* LB*)"), QStringLiteral("Inne (*)")}));
        EXPECT_EQ(shown->directory().path(), m_drive.filePath(QStringLiteral("Ikony")));
    });
}

TEST_F(CommonDialogTest, AChosenFileIsNamedByItsPathInTheSystem) {
    open(Qt::Key_Return, QStringLiteral("LB_1.ico"));
    EXPECT_EQ(dialog.FileName(), QStringLiteral("C:\\Ikony\\LB_1.ico"));
}

TEST_F(CommonDialogTest, ATypedNameNeedNotExist) {
    open(Qt::Key_Return, QStringLiteral("brak.ico"));
    EXPECT_EQ(dialog.FileName(), QStringLiteral("C:\\Ikony\\brak.ico"));
}

TEST_F(CommonDialogTest, ACancelledDialogChoosesNothing) {
    open(Qt::Key_Escape, QStringLiteral("LB_1.ico"));
    EXPECT_EQ(dialog.FileName(), QString());
}

TEST_F(CommonDialogTest, TheFormerFileIsOfferedAndStaysAfterACancel) {
    dialog.setFileName(QStringLiteral("C:\\Ikony\\LA_1.ico"));
    open(Qt::Key_Escape, QStringLiteral("x"), [](QFileDialog* shown) {
        EXPECT_EQ(shown->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))->text(),
                  QStringLiteral("LA_1.ico"));
    });
    EXPECT_EQ(dialog.FileName(), QStringLiteral("C:\\Ikony\\LA_1.ico"));
}

TEST_F(CommonDialogTest, ARecorderAnswersInsteadOfAWindow) {
    FileDialogRecorder recorder;
    recorder.answer(QStringLiteral("C:\\Ikony\\LA_1.ico"));
    dialog.setDialogTitle(QStringLiteral("t"));
    dialog.setFilter(QStringLiteral("Pliki|*.ico"));
    dialog.ShowOpen();
    EXPECT_EQ(dialog.FileName(), QStringLiteral("C:\\Ikony\\LA_1.ico"));
    // Nothing is queued any more: the user cancels.
    dialog.ShowOpen();
    EXPECT_EQ(dialog.FileName(), QStringLiteral("C:\\Ikony\\LA_1.ico"));
    ASSERT_EQ(recorder.openings().size(), 2);
    EXPECT_EQ(recorder.openings().at(0).Title, QStringLiteral("t"));
    EXPECT_EQ(recorder.openings().at(0).Filter, QStringLiteral("Pliki|*.ico"));
    EXPECT_EQ(recorder.openings().at(0).InitDir, QStringLiteral("C:\\Ikony"));
    EXPECT_EQ(recorder.openings().at(0).FileName, QString());
    EXPECT_EQ(recorder.openings().at(1).FileName, QStringLiteral("C:\\Ikony\\LA_1.ico"));
}

TEST_F(CommonDialogTest, OfTwoRecordersTheNewestWorks) {
    FileDialogRecorder outer;
    {
        FileDialogRecorder inner;
        dialog.ShowOpen();
        EXPECT_EQ(inner.openings().size(), 1);
    }
    dialog.ShowOpen();
    EXPECT_EQ(outer.openings().size(), 1);
}

}  // namespace
