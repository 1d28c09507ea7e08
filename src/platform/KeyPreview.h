#pragma once

#include <QObject>
#include <QPair>
#include <QSet>

#include <functional>

class QWidget;

namespace regalon {

/// Keys pressed with a control key, as bits.
namespace ShiftMask {
inline constexpr int Shift = 1;
inline constexpr int Ctrl = 2;
inline constexpr int Alt = 4;
}  // namespace ShiftMask

/// Lets a window see the keys of all its controls before they do.
class KeyPreview : public QObject {
    Q_OBJECT

public:
    /// `keyDown` gets the key code (letters and digits: the code of the capital letter or digit) and the
    /// ShiftMask. The key then goes on to the control, unless the window is gone or claimed it. Owned by the
    /// window.
    KeyPreview(QWidget* window, std::function<void(int keyCode, int shift)> keyDown);

    /// Reserves a key for the window: no menu, toolbar letter or control gets it while the window has the
    /// focus.
    void claim(int code, int shift);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QWidget* m_window;
    std::function<void(int, int)> m_keyDown;
    QSet<QPair<int, int>> m_claimed;
    // Compared only, never followed.
    const void* m_lastEvent = nullptr;
    const void* m_lastParent = nullptr;
};

}  // namespace regalon
