#include "map/ChosenNumber.h"

#include "platform/Convert.h"
#include "platform/DataCombo.h"

namespace regalon {

qint16 chosenNumber(const DataCombo& list) {
    const QString key = list.boundText();
    return IsNumeric(key) ? ToInt16(key) : qint16{0};
}

}  // namespace regalon
