#pragma once

#include <QObject>
#include <QString>

namespace regalon {

/// Takes the reports of the error service in a program without windows: prints and counts them.
class ErrorSink : public QObject {
    Q_OBJECT
public:
    /// What the error service calls in the place of a message box.
    Q_INVOKABLE void show(const QString& text, int flags, const QString& title);
    int count() const { return m_count; }

private:
    int m_count = 0;
};

}  // namespace regalon
