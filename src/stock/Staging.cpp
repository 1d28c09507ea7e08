#include "stock/Staging.h"

#include "stock/clsMagWatchShiftLoc.h"

namespace regalon {

template <class Base>
bool Staging<Base>::ClearBarCodeOnTemp(qint16 UserSign, qint16 Param, const QString& Aplication,
                                       const QString& Operation) {
    bool accepted = false;
    this->trap("ClearBarCodeOnTemp", [&] {
        accepted =
            this->callProcedure(QStringLiteral("Kolv_mag_BarCode_Clear_Temp"), {{"@UserSign", int{UserSign}},
                                                                                {"@Param", int{Param}},
                                                                                {"@Aplication", Aplication},
                                                                                {"@Operation", Operation}})
                .accepted();
    });
    return accepted;
}

template <class Base>
bool Staging<Base>::ConfirmPropozytionLocation(qint16 UserSign, const QString& Aplication,
                                               const QString& Operation, QString& Message) {
    return this->callProcedure(
        "ConfirmPropozytionLocation", QStringLiteral("Kolv_mag_Watch_Prop_Location_Confirm"),
        {{"@UserSign", int{UserSign}}, {"@Aplication", Aplication}, {"@Operation", Operation}}, Message);
}

template class Staging<DataClass>;
template class Staging<MapDataClass>;

}  // namespace regalon
