#pragma once

#include "stock/DocumentService.h"

namespace regalon {

/// The service of goods-in: stages the packages of a purchase order, has locations proposed for them, books
/// them into the buffer and puts them on locations. It reports as "clsMagSurInput".
class clsMagSurImput : public DocumentService {
public:
    explicit clsMagSurImput(AppContext& context);

    /// Stages a package of an order's line or takes it out again.
    bool AddBarCodeOnTemp(const OrderPackage& package);
};

}  // namespace regalon
