// The static parameters of a location. How one is edited follows from the ending of its column's name, so
// that a new parameter needs a column and a row in the view of parameters, and nothing here.

#include "common/ErrorTrap.h"
#include "map/LocationPicture.h"
#include "map/Notice.h"
#include "map/frmMagCreate.h"
#include "platform/Base64File.h"
#include "platform/Convert.h"
#include "platform/DataCombo.h"
#include "platform/Paths.h"
#include "platform/PictureBox.h"
#include "platform/PictureFile.h"
#include "platform/RunTimeError.h"
#include "platform/ToolBar.h"
#include "platform/Twips.h"

#include <QAction>
#include <QComboBox>
#include <QGroupBox>
#include <QLineEdit>
#include <QTimer>

namespace regalon {

namespace {

const QString kNothingChosen = QStringLiteral("0");

// Width (twips) and longest text of the box, by the kind of the parameter.
constexpr int kTextWidth = 2760;
constexpr int kTextLimit = 250;
constexpr int kNumberWidth = 1000;
constexpr int kNumberLimit = 6;
constexpr int kNoLimit = 32767;

constexpr qint64 kPictureLimit = 3000000;  // bytes; a picture is smaller

// The save button of the parameters: its number, its images, and the ticks of a second for which it tells
// that it has saved.
constexpr int kSaveParam = 1;
constexpr int kImageOfSaved = 24;
constexpr int kImageOfSave = 25;
constexpr qint32 kLastTick = 1;

// Rows of the list of states.
constexpr int kMono = 0;
constexpr int kMulti = 1;

/// What stands behind the last "_" of a parameter's name; empty without one.
QString suffixOf(const QString& name) {
    const qsizetype mark = name.lastIndexOf(u'_');
    return mark < 0 ? QString() : name.mid(mark + 1);
}

/// Why a file cannot be stored; empty if it can. The text about the kinds names one more than is taken.
QString pictureFault(const QString& path) {
    if (!isPictureFile(path))
        return QStringLiteral(
            "Wybrany plik nie jest plikiem obrazka. Preferowane pliki to *.bmp , *.jpg , *.ico , *.tif !!");
    if (fileSize(path) >= kPictureLimit)
        return QStringLiteral(
            "Rozmiar wybranego pliku obrazka jest za duży. Preferowany rozmiar ponizej 3 MGB !!");
    return {};
}

}  // namespace

void frmMagCreate::dtcParamLocation_Change() {
    dtcParamLocation_Change_Object();
}

void frmMagCreate::dtcParamLocation_Change_Object() {
    WindowTrap("frmMagCreate - dtcParamLocation_Change_Object", [&] {
        const QString name = m_dtcParamLocation->boundText();
        if (name == kNothingChosen) {
            showNoParam();
            return;
        }
        const auto address = locationOnForm();
        if (!address)
            throw RunTimeError(RunTime::TypeMismatch);
        const QString suffix = suffixOf(name);
        // A missing row and an empty value look the same.
        QString value;
        m_data->GetParamLocalizationStatic(*address, name, value);
        if (suffix == u"pic")
            showPictureParam(*address, value);
        else if (suffix == u"char")
            showTextParam(value, kTextWidth, kTextLimit);
        else if (suffix == u"int")
            showTextParam(value, kNumberWidth, kNumberLimit);
        else if (suffix == u"cmb")
            showStatusParam(value);
    });
}

void frmMagCreate::showNoParam() {
    leavePicture();
    m_txtParamValueLocalization->clear();
    m_txtParamValueLocalization->hide();
    m_cmbStatusLocation->hide();
}

void frmMagCreate::leavePicture() {
    m_frmWathSurPicture->hide();
    m_impPictureSur->setPicture({});
}

/// A stored picture leaves the path of the file that was chosen last where it is: a save writes that file to
/// this location, too. The list of states goes with a stored picture only.
void frmMagCreate::showPictureParam(const LocationAddress& address, const QString& value) {
    m_frmWathSurPicture->show();
    // Out of sight it takes the name of a file, which the limit of the parameter before could cut.
    m_txtParamValueLocalization->hide();
    m_txtParamValueLocalization->setMaxLength(kNoLimit);
    m_impPictureSur->setPicture({});
    if (value.isEmpty()) {
        m_txtParamValueLocalization->clear();
        m_txtFrmPicture->clear();
        return;
    }
    m_cmbStatusLocation->hide();
    ShowPictureOnImageFields("frmMagCreate - ShowPictureOnImageFields", *m_impPictureSur, value,
                             temporaryPictureFile(address), true);
}

void frmMagCreate::showTextParam(const QString& value, int width, int limit) {
    leavePicture();
    m_cmbStatusLocation->hide();
    m_txtParamValueLocalization->resize(toPixels(width), m_txtParamValueLocalization->height());
    m_txtParamValueLocalization->setMaxLength(limit);
    m_txtParamValueLocalization->setText(value);
    // A text longer than the box is read from its beginning.
    m_txtParamValueLocalization->setCursorPosition(0);
    m_txtParamValueLocalization->show();
    m_txtParamValueLocalization->setFocus();
}

void frmMagCreate::showStatusParam(const QString& value) {
    leavePicture();
    m_txtParamValueLocalization->hide();
    m_txtFrmPicture->clear();
    if (value.isEmpty() || value == u"0")
        m_cmbStatusLocation->setCurrentIndex(kMono);
    else if (value == u"1")
        m_cmbStatusLocation->setCurrentIndex(kMulti);
    m_cmbStatusLocation->show();
    m_cmbStatusLocation->setFocus();
}

/// Any number may leave the box, one with a fraction too: whether it can be stored is the database's to say.
bool frmMagCreate::txtParamValueLocalization_Validate() {
    return suffixOf(m_dtcParamLocation->boundText()) != u"int" ||
           IsNumeric(m_txtParamValueLocalization->text());
}

void frmMagCreate::tlbPictureSur_ButtonClick(const QString& key) {
    WindowTrap("frmMagCreate - tlbPictureSur_ButtonClick", [&] {
        if (key != u"key_Path")
            return;
        const QString path = askForFile(QStringLiteral("Pliki graficzne|"));
        if (path.isEmpty())
            return;
        m_txtParamValueLocalization->setText(path.mid(path.lastIndexOf(u'\\') + 1));
        m_txtFrmPicture->setText(path);
        m_impPictureSur->setPicture({});
        if (Paths::fileExists(path))
            m_impPictureSur->setPicture(Picture::load(path));
    });
}

void frmMagCreate::tlbSaveParamLocalization_ButtonClick(const QString& key) {
    WindowTrap("frmMagCreate - tlbSaveParamLocalization_ButtonClick", [&] {
        if (key != u"key_Save")
            return;
        const auto address = locationOnForm();
        const QString name = m_dtcParamLocation->boundText();
        if (!address || name == kNothingChosen)
            return;
        const QString type = suffixOf(name);
        QString value;
        QString message;
        if (!readParamValue(type, value, message) ||
            !m_data->SaveLocationParamStatic(*address, name, value, type, message)) {
            showRefusal(message);
            return;
        }
        setSaveButton(QStringLiteral("Zapisano"), kImageOfSaved);
        m_tickCounter = 0;
        m_timer1->start();
    });
}

/// What the form holds for a parameter. False with the reason for a file that cannot be stored. A picture
/// without a file goes as the text of the box: an empty one removes the stored picture.
bool frmMagCreate::readParamValue(const QString& type, QString& value, QString& message) const {
    value = m_txtParamValueLocalization->text();
    if (type == u"cmb") {
        const QString state = m_cmbStatusLocation->currentText();
        if (state == m_cmbStatusLocation->itemText(kMono))
            value = QStringLiteral("0");
        else if (state == m_cmbStatusLocation->itemText(kMulti))
            value = QStringLiteral("1");
    } else if (type == u"pic" && Paths::fileExists(m_txtFrmPicture->text())) {
        message = pictureFault(m_txtFrmPicture->text());
        if (!message.isEmpty())
            return false;
        value = readBase64(m_txtFrmPicture->text());
    }
    return true;
}

void frmMagCreate::Timer1_Timer() {
    WindowTrap("frmMagCreate - Timer1_Timer", [&] {
        ++m_tickCounter;
        if (m_tickCounter <= kLastTick)
            return;
        m_timer1->stop();
        setSaveButton(QStringLiteral("Zapisz parametr"), kImageOfSave);
    });
}

void frmMagCreate::setSaveButton(const QString& caption, int image) {
    QAction* button = m_tlbSaveParamLocalization->button(kSaveParam);
    button->setText(caption);
    button->setIcon(imgSmall().icon(image));
}

}  // namespace regalon
