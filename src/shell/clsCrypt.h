#pragma once

#include <QString>

namespace regalon {

/// Scrambles the line of the connection file: a shift of 8-bit character codes with random padding and no
/// key. It hides the password from a passer-by, no more. The names of the two operations stand the other way
/// round from what they do; sites and support know them so.
class clsCrypt {
public:
    /// Plain text to scrambled form: 4 characters for an empty text, else the text's length plus 4. The
    /// padding differs from call to call but is the same in every run of the program. Raises 5 for a
    /// character whose shifted code exceeds 255. Characters without a code in the code page become "?".
    QString DecryptString(const QString& strString);

    /// Scrambled form to plain text; the padding is not checked. A text shorter than 4 characters gives an
    /// empty one. Of a text of 256 characters or more only 256 from position 4 on are read: what lies behind
    /// them is lost. Raises 5 for a character whose code shifts below 0.
    QString EncryptString(const QString& strString);
};

}  // namespace regalon
