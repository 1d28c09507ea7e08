#pragma once

#include "platform/RunTimeError.h"

#include <QString>

namespace regalon {

struct AppContext;

/// Fills the settings from the connection file of the context. Silent in every failure: what cannot be read
/// stays as it was.
void ReadConnectionFile(AppContext& context);

/// Opens ConnMain and ConnClient. Returns 0, or the number of the failure, which `error` then tells in full;
/// both connections are null after a failure. Shows nothing.
qint32 OpenConnections(AppContext& context, const QString& Server, const QString& Baza, const QString& Login,
                       const QString& Haslo, ErrorRecord& error);

/// Closes both connections if open and releases them. True only if one of them could not be closed.
bool CloseConnections(AppContext& context);

/// The login: reads the connection file and opens the connections. After a failure it has told the user and
/// returns false.
bool TestConnection(AppContext& context);

}  // namespace regalon
