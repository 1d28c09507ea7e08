#pragma once

class QString;

namespace regalon {

/// Tells the user something that is no failure of the program.
void showNotice(const QString& text);

/// Tells why a change was refused. Nothing for an empty reason: then a failure has been reported already.
void showRefusal(const QString& reason);

}  // namespace regalon
