#include "label/Commands.h"

#include "platform/WordProtocol.h"

#include <QJsonValue>

namespace regalon::label {

QJsonArray answerOf(const Failure& failure) {
    return {WordProtocol::error, failure.number, failure.description};
}

QJsonArray Commands::answer(const QJsonArray& message) {
    QStringList words;
    for (const QJsonValue& word : message)
        words.append(word.toString());
    try {
        return {WordProtocol::ok, execute(words.value(0), words.mid(1))};
    } catch (const Failure& failure) {
        return answerOf(failure);
    }
}

QString Commands::execute(const QString& command, const QStringList& arguments) {
    if (command == WordProtocol::open)
        m_office.open(arguments.value(0));
    else if (command == WordProtocol::run)
        m_office.run(arguments.value(0), arguments.mid(1));
    else if (command == WordProtocol::activePrinter)
        return m_printers.active();
    else if (command == WordProtocol::setActivePrinter)
        m_printers.setActive(arguments.value(0));
    else if (command == WordProtocol::print)
        m_printers.print(m_office.pages(), m_office.documentName());
    else if (command == WordProtocol::close)
        m_office.close();
    else if (command == WordProtocol::quit)
        m_ended = true;
    else
        throw Failure{AutomationError,
                      QStringLiteral("Nieznane polecenie \"") + command + QStringLiteral("\". ")};
    return {};
}

}  // namespace regalon::label
