#include "platform/MsgBox.h"

#include <QApplication>
#include <QGridLayout>
#include <QMessageBox>
#include <QPushButton>
#include <QScreen>

#include <algorithm>
#include <utility>

namespace regalon {
namespace {

MsgBoxRecorder*& newestRecorder() {
    static MsgBoxRecorder* recorder = nullptr;
    return recorder;
}

/// Messages that wait for their answers, one above the other.
int& openMessages() {
    static int count = 0;
    return count;
}

class OpenMessage {
public:
    OpenMessage() { ++openMessages(); }
    ~OpenMessage() { --openMessages(); }
    OpenMessage(const OpenMessage&) = delete;
    OpenMessage& operator=(const OpenMessage&) = delete;
};

QString caption(int result) {
    switch (result) {
        case MsgResult::Cancel:
            return QStringLiteral("Anuluj");
        case MsgResult::Abort:
            return QStringLiteral("&Przerwij");
        case MsgResult::Retry:
            return QStringLiteral("P&onów");
        case MsgResult::Ignore:
            return QStringLiteral("&Ignoruj");
        case MsgResult::Yes:
            return QStringLiteral("&Tak");
        case MsgResult::No:
            return QStringLiteral("&Nie");
        default:
            return QStringLiteral("OK");
    }
}

QList<int> results(qint32 flags) {
    switch (flags & 15) {
        case MsgFlag::OkCancel:
            return {MsgResult::Ok, MsgResult::Cancel};
        case MsgFlag::AbortRetryIgnore:
            return {MsgResult::Abort, MsgResult::Retry, MsgResult::Ignore};
        case MsgFlag::YesNoCancel:
            return {MsgResult::Yes, MsgResult::No, MsgResult::Cancel};
        case MsgFlag::YesNo:
            return {MsgResult::Yes, MsgResult::No};
        case MsgFlag::RetryCancel:
            return {MsgResult::Retry, MsgResult::Cancel};
        default:
            return {MsgResult::Ok};
    }
}

int defaultResult(qint32 flags) {
    const QList<int> all = results(flags);
    return all.value((flags >> 8) & 3, all.first());
}

/// 0 where Escape must do nothing.
int escapeResult(qint32 flags) {
    const QList<int> all = results(flags);
    if (all.contains(MsgResult::Cancel))
        return MsgResult::Cancel;
    return all.size() == 1 ? all.first() : 0;
}

QMessageBox::Icon icon(qint32 flags) {
    switch (flags & 0xF0) {
        case MsgFlag::Critical:
            return QMessageBox::Critical;
        case MsgFlag::Question:
            return QMessageBox::Question;
        case MsgFlag::Exclamation:
            return QMessageBox::Warning;
        case MsgFlag::Information:
            return QMessageBox::Information;
        default:
            return QMessageBox::NoIcon;
    }
}

QString shownText(QString text) {
    return text.replace(QStringLiteral("\r\n"), QStringLiteral("\n")).replace(u'\r', u'\n');
}

void addButtons(QMessageBox& box, qint32 flags) {
    for (const int result : results(flags)) {
        // Every button has the same role: the box then keeps their order and takes none of them for the
        // Escape key by itself.
        QPushButton* button = box.addButton(caption(result), QMessageBox::ActionRole);
        button->setObjectName(QStringLiteral("MsgBox%1").arg(result));
        button->setProperty("result", result);
        if (result == defaultResult(flags))
            box.setDefaultButton(button);
        if (result == escapeResult(flags))
            box.setEscapeButton(button);
    }
}

/// A box is as wide as its text; the titles of reports are often longer and name the place of the failure.
void makeRoomForTitle(QMessageBox& box) {
    constexpr int frameButtons = 140;  // logical pixels beside the title
    auto* grid = qobject_cast<QGridLayout*>(box.layout());
    if (grid == nullptr)
        return;
    const int width = box.fontMetrics().horizontalAdvance(box.windowTitle()) + frameButtons;
    const int most = QGuiApplication::primaryScreen()->availableSize().width() * 3 / 4;
    grid->addItem(new QSpacerItem(std::min(width, most), 0), grid->rowCount(), 0, 1, grid->columnCount());
}

}  // namespace

int MsgBox(const QString& text, qint32 flags, const QString& title) {
    const OpenMessage open;
    const QString shownTitle = title.isEmpty() ? QStringLiteral("Regalon") : title;
    if (MsgBoxRecorder* recorder = newestRecorder())
        return recorder->record({text, flags, shownTitle});

    QMessageBox box(icon(flags), shownTitle, shownText(text), QMessageBox::NoButton,
                    QApplication::activeWindow());
    box.setObjectName(QStringLiteral("MsgBox"));
    box.setTextFormat(Qt::PlainText);
    box.setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    box.setWindowModality(Qt::ApplicationModal);
    if ((flags & MsgFlag::SystemModal) != 0)
        box.setWindowFlag(Qt::WindowStaysOnTopHint);
    addButtons(box, flags);
    makeRoomForTitle(box);
    box.exec();
    const QAbstractButton* clicked = box.clickedButton();
    return clicked != nullptr ? clicked->property("result").toInt() : defaultResult(flags);
}

bool isMsgBoxOpen() {
    return openMessages() > 0;
}

MsgBoxRecorder::MsgBoxRecorder() : m_outer(std::exchange(newestRecorder(), this)) {}

MsgBoxRecorder::~MsgBoxRecorder() {
    newestRecorder() = m_outer;
}

void MsgBoxRecorder::answer(int result) {
    m_answers.append(result);
}

void MsgBoxRecorder::onMessage(std::function<void(const Message&)> look) {
    m_look = std::move(look);
}

MsgBoxRecorder::Message MsgBoxRecorder::last() const {
    return m_messages.isEmpty() ? Message() : m_messages.last();
}

int MsgBoxRecorder::record(const Message& message) {
    m_messages.append(message);
    if (m_look)
        m_look(message);
    return m_answers.isEmpty() ? defaultResult(message.Flags) : m_answers.takeFirst();
}

}  // namespace regalon
