#pragma once

#include <QByteArray>
#include <QJsonArray>
#include <QJsonDocument>
#include <QLatin1String>

namespace regalon {

/// What the client and the program that prints labels say to each other: one line a message, a JSON array.
/// The client sends a command with its arguments, all texts; the answer is ["ok", text], or ["error", number,
/// description] with a number of RunTime. The program says "ok" of itself once it is ready.
namespace WordProtocol {

inline constexpr QLatin1String ok("ok");
inline constexpr QLatin1String error("error");

inline constexpr QLatin1String open("open");                    ///< path: opens a document, with its macros
inline constexpr QLatin1String run("run");                      ///< macro, arguments...
inline constexpr QLatin1String activePrinter("activePrinter");  ///< answers a name, empty without one
inline constexpr QLatin1String setActivePrinter("setActivePrinter");  ///< name; empty for none
inline constexpr QLatin1String print("print");
inline constexpr QLatin1String close("close");
inline constexpr QLatin1String quit("quit");

inline QByteArray line(const QJsonArray& message) {
    return QJsonDocument(message).toJson(QJsonDocument::Compact) + '\n';
}
/// Empty for a line that is no message.
inline QJsonArray message(const QByteArray& line) {
    return QJsonDocument::fromJson(line).array();
}

}  // namespace WordProtocol
}  // namespace regalon
