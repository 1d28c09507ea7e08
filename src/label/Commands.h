#pragma once

#include "label/Office.h"
#include "label/Printers.h"

#include <QJsonArray>
#include <QString>
#include <QStringList>

namespace regalon::label {

/// Carries out the client's commands.
class Commands {
public:
    Commands(const QString& programFolder, const QString& workspace) : m_office(programFolder, workspace) {}

    /// The answer to one message. Never throws; a message that is no command is answered with an error.
    QJsonArray answer(const QJsonArray& message);
    /// Whether the client has said that this was all.
    bool ended() const { return m_ended; }

private:
    QString execute(const QString& command, const QStringList& arguments);

    Office m_office;
    Printers m_printers;
    bool m_ended = false;
};

QJsonArray answerOf(const Failure& failure);

}  // namespace regalon::label
