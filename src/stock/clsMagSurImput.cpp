#include "stock/clsMagSurImput.h"

namespace regalon {

// The name under which it reports is not its own; support knows its failures by it.
clsMagSurImput::clsMagSurImput(AppContext& context)
    : DocumentService(context, QStringLiteral("clsMagSurInput")) {}

bool clsMagSurImput::AddBarCodeOnTemp(const OrderPackage& package) {
    return stagePackage("AddBarCodeOnTemp", QStringLiteral("Kolv_mag_BarCode_Add_Temp"), package);
}

}  // namespace regalon
