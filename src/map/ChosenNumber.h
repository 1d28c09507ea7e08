#pragma once

#include <QtGlobal>

namespace regalon {

class DataCombo;

/// The number that is the key of a list's choice. 0, which stands for "wybierz", for a key that is no number:
/// a text that is not in the list has none. Raises 6 for a number beyond 16 bits.
[[nodiscard]] qint16 chosenNumber(const DataCombo& list);

}  // namespace regalon
