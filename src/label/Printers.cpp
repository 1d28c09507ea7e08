#include "label/Printers.h"

#include "label/Office.h"

#include <QFile>

#include <cups/cups.h>

#include <memory>

namespace regalon::label {

namespace {

struct FreeDestination {
    void operator()(cups_dest_t* destination) const { cupsFreeDests(1, destination); }
};
using Destination = std::unique_ptr<cups_dest_t, FreeDestination>;

/// A printer by its name, "queue" or "queue/instance"; the user's default one for an empty name. Null when
/// CUPS knows none such.
Destination find(const QString& name) {
    const QByteArray queue = name.section(u'/', 0, 0).toUtf8();
    const QByteArray instance = name.section(u'/', 1).toUtf8();
    return Destination(cupsGetNamedDest(CUPS_HTTP_DEFAULT, queue.isEmpty() ? nullptr : queue.constData(),
                                        instance.isEmpty() ? nullptr : instance.constData()));
}

QString nameOf(const cups_dest_t& destination) {
    const QString name = QString::fromUtf8(destination.name);
    return destination.instance ? name + u'/' + QString::fromUtf8(destination.instance) : name;
}

QString reason() {
    return QString::fromUtf8(cupsLastErrorString());
}

}  // namespace

Printers::Printers() {
    if (const Destination destination = find(QString()))
        m_active = nameOf(*destination);
}

void Printers::setActive(const QString& name) {
    if (!name.isEmpty() && !find(name)) {
        throw Failure{AutomationError, QStringLiteral("Nie ma drukarki \"") + name +
                                           QStringLiteral("\" (CUPS: ") + reason() + QStringLiteral("). ")};
    }
    m_active = name;
}

void Printers::print(const QString& file, const QString& title) const {
    if (m_active.isEmpty()) {
        throw Failure{AutomationError,
                      QStringLiteral("Nie wskazano drukarki etykiet i nie ma drukarki domyślnej. ")};
    }
    const Destination destination = find(m_active);
    const int job = destination ? cupsPrintFile(destination->name, QFile::encodeName(file).constData(),
                                                title.toUtf8().constData(), destination->num_options,
                                                destination->options)
                                : 0;
    if (job == 0) {
        throw Failure{AutomationError, QStringLiteral("Wydruk na drukarce \"") + m_active +
                                           QStringLiteral("\" nie udał się (CUPS: ") + reason() +
                                           QStringLiteral("). ")};
    }
}

}  // namespace regalon::label
