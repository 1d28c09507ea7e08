#pragma once

#include <QImage>
#include <QPoint>
#include <QProcess>
#include <QSize>
#include <QString>
#include <QStringList>

#include <functional>

namespace regalon::test {

/// A display of its own without a screen, with a window manager and a Polish keyboard, and the hands and eyes
/// of a person on it.
/// Windows are named by the titles that the program gives them. Coordinates are pixels of the display.
class Display {
public:
    explicit Display(QSize size = {1280, 1024}) : m_size(size) {}
    ~Display();
    Display(const Display&) = delete;
    Display& operator=(const Display&) = delete;

    /// Starts both servers and waits for them. False, with why() telling, if one does not come up.
    bool start();
    QString why() const { return m_why; }
    /// ":7", for DISPLAY.
    QString name() const { return m_name; }

    /// The numbers of the visible windows of a process that have this title; every title if it is empty.
    QStringList windows(qint64 process, const QString& title = {}) const;
    QStringList titles(qint64 process) const;
    /// Where a window's content lies.
    QRect geometry(const QString& window) const;
    /// What xprop tells of a window's property.
    QString property(const QString& window, const QString& name) const;
    void askForSize(const QString& window, QSize size) const;
    /// The number of the window that keys go to, once window manager and display agree on it; else empty.
    QString keyboardOwner() const;
    /// Asks the window manager to raise a window and to send keys to it.
    void askFor(const QString& window) const;
    /// The same, until they go there.
    bool activate(const QString& window) const;

    // Events of mouse and keyboard. Each waits until every program that this one started rests again, as a
    // person looks at what his hand has done.

    void moveTo(QPoint at) const;
    void click(QPoint at) const;
    void drag(QPoint from, QPoint to) const;
    /// A key with its modifiers, "alt+a", "Return".
    void key(const QString& keys, int times = 1) const;
    void type(const QString& text) const;

    /// Everything on the display, now.
    QImage picture() const;
    /// Waits until everything that was asked for is done: two pictures in a row are the same, and every
    /// program that this one started rests meanwhile.
    QImage settledPicture() const;
    /// Waits until a part of the display differs from what it was, and then until it stays. A null picture if
    /// it never does.
    QImage changedPicture(const QImage& before, const QRect& part) const;

private:
    QByteArray run(const QString& program, const QStringList& arguments) const;
    void act(const QStringList& event) const;

    QSize m_size;
    QProcess m_server;
    QProcess m_manager;
    QString m_name;
    QString m_why;
};

/// Looks at the condition again and again until it holds; false if it does not within a minute, which a
/// loaded machine may take.
bool eventually(const std::function<bool()>& condition);

}  // namespace regalon::test
