#pragma once

#include <QList>
#include <QString>
#include <QtGlobal>

#include <functional>

namespace regalon {

/// Flags of a message box: one of the button sets, plus one icon, plus one default button, plus modality.
namespace MsgFlag {
inline constexpr qint32 OkOnly = 0;
inline constexpr qint32 OkCancel = 1;
inline constexpr qint32 AbortRetryIgnore = 2;
inline constexpr qint32 YesNoCancel = 3;
inline constexpr qint32 YesNo = 4;
inline constexpr qint32 RetryCancel = 5;
inline constexpr qint32 Critical = 16;
inline constexpr qint32 Question = 32;
inline constexpr qint32 Exclamation = 48;
inline constexpr qint32 Information = 64;
inline constexpr qint32 DefaultButton1 = 0;
inline constexpr qint32 DefaultButton2 = 256;
inline constexpr qint32 DefaultButton3 = 512;
inline constexpr qint32 SystemModal = 4096;
}  // namespace MsgFlag

namespace MsgResult {
inline constexpr int Ok = 1;
inline constexpr int Cancel = 2;
inline constexpr int Abort = 3;
inline constexpr int Retry = 4;
inline constexpr int Ignore = 5;
inline constexpr int Yes = 6;
inline constexpr int No = 7;
}  // namespace MsgResult

/// Shows a message and waits for the answer, one of MsgResult. An empty title becomes the program's name.
/// Escape and the close box answer Cancel where there is such a button and OK in a box with OK alone; in the
/// other boxes they do nothing. The widget is named "MsgBox", its buttons "MsgBox1" to "MsgBox7" after their
/// results. While a MsgBoxRecorder exists no window opens and the recorder answers.
int MsgBox(const QString& text, qint32 flags = MsgFlag::OkOnly, const QString& title = QString());

/// True while a message waits for its answer. Timers go on meanwhile: whoever would show messages of its own
/// asks here first, so that they do not pile up over an empty desk.
bool isMsgBoxOpen();

/// Records the messages that would be shown during its life and answers them. Recorders nest; the newest one
/// works.
class MsgBoxRecorder {
public:
    struct Message {
        QString Text;
        qint32 Flags = 0;
        QString Title;
    };

    MsgBoxRecorder();
    ~MsgBoxRecorder();
    MsgBoxRecorder(const MsgBoxRecorder&) = delete;
    MsgBoxRecorder& operator=(const MsgBoxRecorder&) = delete;

    /// Queues an answer (MsgResult) for a coming message. Messages without a queued answer get the one of
    /// their default button.
    void answer(int result);
    /// Called at each message before it is answered, for looking at the state of the program behind the box.
    void onMessage(std::function<void(const Message&)> look);

    const QList<Message>& messages() const { return m_messages; }
    int count() const { return static_cast<int>(m_messages.size()); }
    /// The newest message; an empty one if none came.
    Message last() const;
    void clear() { m_messages.clear(); }

private:
    friend int MsgBox(const QString& text, qint32 flags, const QString& title);
    int record(const Message& message);

    QList<Message> m_messages;
    QList<int> m_answers;
    std::function<void(const Message&)> m_look;
    MsgBoxRecorder* m_outer;
};

}  // namespace regalon
