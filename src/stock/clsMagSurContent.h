#pragma once

#include "common/DataClass.h"

namespace regalon {

/// A data class with nothing but EcexProcedure.
class clsMagSurContent : public DataClass {
public:
    explicit clsMagSurContent(AppContext& context) : DataClass(context, QStringLiteral("clsMagSurContent")) {}

private:
    using DataClass::EcexProcedureParam;  // not among the operations of this class
};

}  // namespace regalon
