#include "stock/clsMagSurImputProd.h"

#include "common/modSQL.h"
#include "platform/Convert.h"

namespace regalon {

// The name under which it reports is not its own; support knows its failures by it.
clsMagSurImputProd::clsMagSurImputProd(AppContext& context)
    : DocumentService(context, QStringLiteral("clsMagSurInputProd")) {}

bool clsMagSurImputProd::AddBarCodeOnTempInputProd(const OrderPackage& package) {
    return stagePackage("AddBarCodeOnTempInputProd", QStringLiteral("Kolv_mag_BarCode_Input_Kolv_Temp"),
                        package);
}

// Here the message stands before the other output; in the give-out it stands behind it.
bool clsMagSurImputProd::ConfirmQuantityBarCodeComBackProcuction(const ReturnedPackage& package,
                                                                 QString& Message,
                                                                 double& ConfirmedQuantity) {
    bool accepted = false;
    trap("ConfirmQuantityBarCodeComBackProcuction", [&] {
        const ProcedureOutcome answer = callProcedure(QStringLiteral("kolv_mag_Confirm_Quantity_Input_Prod"),
                                                      {{"@GiveOutDocNum", package.GiveOutDocNum},
                                                       {"@GiveOutLineNum", int{package.GiveOutLineNum}},
                                                       {"@BarCode", package.BarCode},
                                                       {"@ItemCode", package.ItemCode},
                                                       {"@Quantity", package.Quantity},
                                                       {"@Aplication", package.Aplication},
                                                       {"@Operation", package.Operation}});
        Message = ToText(NullToValue(parameterFromEnd(2)));
        ConfirmedQuantity = ToDouble(NullToValue(parameterFromEnd(1), 0));
        accepted = answer.accepted();
    });
    return accepted;
}

}  // namespace regalon
