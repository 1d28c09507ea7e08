#include "stock/Staging.h"

#include "map/MapDataClass.h"
#include "stock/DocumentNumbers.h"

namespace regalon {

template <class Base>
bool Staging<Base>::ClearBarCodeOnTemp(qint16 UserSign, qint16 Param, const QString& Aplication,
                                       const QString& Operation) {
    return this->callProcedure("ClearBarCodeOnTemp", QStringLiteral("Kolv_mag_BarCode_Clear_Temp"),
                               {{"@UserSign", int{UserSign}},
                                {"@Param", int{Param}},
                                {"@Aplication", Aplication},
                                {"@Operation", Operation}});
}

template <class Base>
bool Staging<Base>::ConfirmPropozytionLocation(qint16 UserSign, const QString& Aplication,
                                               const QString& Operation, QString& Message) {
    return this->callProcedure(
        "ConfirmPropozytionLocation", QStringLiteral("Kolv_mag_Watch_Prop_Location_Confirm"),
        {{"@UserSign", int{UserSign}}, {"@Aplication", Aplication}, {"@Operation", Operation}}, Message);
}

template class Staging<DocumentNumbers>;
template class Staging<MapDataClass>;

}  // namespace regalon
