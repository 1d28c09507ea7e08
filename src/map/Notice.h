#pragma once

class QString;

namespace regalon {

/// Tells the user something that is no failure of the program, such as why the database refused a change.
/// Says nothing for an empty text: then a failure has been reported already.
void showNotice(const QString& text);

}  // namespace regalon
