// The refresh by the timer: its panel, its counting and what the toolbars tell of it. The settings live as
// long as the window is open.

#include "common/ErrorTrap.h"
#include "platform/Convert.h"
#include "platform/DesignControls.h"
#include "platform/RunTimeError.h"
#include "platform/ToolBar.h"
#include "platform/Twips.h"
#include "views/frmMagWatch.h"

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QTimer>

#include <cmath>

namespace regalon {

namespace {

// The panel's place on the plan, twips.
constexpr int kPanelLeft = 5400;
constexpr int kPanelTop = 1200;
constexpr int kPanelWidth = 4200;
constexpr int kPanelHeight = 1950;

constexpr double kSecondsPerMinute = 60;

// Buttons by their numbers.
constexpr int kAutoRefresh = 4;
constexpr int kSecondsLeft = 1;

const QString kAtStart = QStringLiteral("Auto odświeżanie ");

}  // namespace

void frmMagWatch::createAutoRefreshPanel() {
    QGroupBox* frame =
        addFrame(surface(), "frmAutoRebulidCOnfig", QStringLiteral("Konfiguracja odświeżania magazynu"));
    place(frame, kPanelLeft, kPanelTop, kPanelWidth, kPanelHeight);
    // The panel lies on the plan, whose lines would run into it.
    auto* edge = new QFrame(frame);
    edge->setFrameStyle(QFrame::Box | QFrame::Plain);
    edge->setAttribute(Qt::WA_TransparentForMouseEvents);
    place(edge, 0, 0, kPanelWidth, kPanelHeight);
    frame->setAlignment(Qt::AlignHCenter);
    m_frmAutoRebulidCOnfig = frame;

    m_chkAutoRebulidOn = new QCheckBox(QStringLiteral("Włączone automatyczne odświeżanie"), frame);
    m_chkAutoRebulidOn->setObjectName(QStringLiteral("chkAutoRebulidOn"));
    place(m_chkAutoRebulidOn, 150, 345, 3900, 360);
    place(addLabel(frame, "lblTime", QStringLiteral("Czas odświeżania:")), 150, 810, 1740, 360);
    m_cmbTime = new QComboBox(frame);
    m_cmbTime->setObjectName(QStringLiteral("cmbTime"));
    m_cmbTime->setEditable(true);
    m_cmbTime->setInsertPolicy(QComboBox::NoInsert);
    // A typed "0" would grow into "0,5".
    m_cmbTime->setCompleter(nullptr);
    place(m_cmbTime, 1950, 810, 1050, 360);
    place(addLabel(frame, "lblTimeJed", QStringLiteral("[minuta]")), 3090, 810, 960, 360);

    auto* bar = new ToolBar(frame);
    bar->setObjectName(QStringLiteral("tlbSaveAutoRebulidParam"));
    bar->addButton(QStringLiteral("key_Save"), QStringLiteral("&Zapisz"), {},
                   programIcon(QStringLiteral("img_14.ico")));
    bar->addButton(QStringLiteral("key_Cancel"), QStringLiteral("&Anuluj"), {},
                   programIcon(QStringLiteral("close.ico")));
    place(bar, 105, 1335, 3990, 540);
    connect(bar, &ToolBar::buttonClick, this, &frmMagWatch::tlbSaveAutoRebulidParam_ButtonClick);
}

/// The state of a new window.
void frmMagWatch::resetAutoRefresh() {
    resetRefresh();
    m_chkAutoRebulidOn->setChecked(false);
    m_cmbTime->clear();
    m_tlbCmd->button(kAutoRefresh)->setText(kAtStart);
    m_tlbStatusRefresh->button(kSecondsLeft)->setText(QString());
}

void frmMagWatch::FillComboTime() {
    WindowTrap("frmMagWatch - FillComboTime", [&] {
        for (const char* minutes : {"0", "0,5", "1", "2", "3", "4", "5"})
            m_cmbTime->addItem(QString::fromLatin1(minutes));
        m_cmbTime->setCurrentText(QStringLiteral("0"));
    });
}

void frmMagWatch::AutoRebulidConfig() {
    WindowTrap("frmMagWatch - AutoRebulidConfig", [&] { m_frmAutoRebulidCOnfig->show(); });
}

void frmMagWatch::tlbSaveAutoRebulidParam_ButtonClick(const QString& key) {
    WindowTrap("frmMagWatch - tlbSaveAutoRebulidParam_ButtonClick", [&] {
        // A text that is no number closes the panel without a word and changes nothing.
        if (key == u"key_Save" && IsNumeric(m_cmbTime->currentText()))
            saveAutoRefresh(ToDouble(m_cmbTime->currentText()));
        if (key == u"key_Save" || key == u"key_Cancel")
            m_frmAutoRebulidCOnfig->hide();
    });
}

/// The counter goes on from where it is: with a period shorter than what was waited, the next tick rebuilds.
void frmMagWatch::saveAutoRefresh(double minutes) {
    const double interval = minutes * kSecondsPerMinute;
    if (!std::isfinite(interval))
        throw RunTimeError(RunTime::Overflow);
    setRefreshInterval(interval);
    const bool on = minutes > 0 && m_chkAutoRebulidOn->isChecked();
    // A running timer goes on: started anew it would lengthen the second that it is in.
    if (!on)
        timer().stop();
    else if (!timer().isActive())
        timer().start();
    m_tlbCmd->button(kAutoRefresh)
        ->setText(on ? QStringLiteral("Auto odświeżanie-ON") : QStringLiteral("Auto odświeżanie-OFF"));
    m_tlbStatusRefresh->setVisible(on);
}

void frmMagWatch::beforeTick() {
    m_tlbStatusRefresh->button(kSecondsLeft)->setText(NumberText(secondsLeft()));
}

}  // namespace regalon
