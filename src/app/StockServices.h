#pragma once

#include "stock/clsMagSurContent.h"
#include "stock/clsMagSurImput.h"
#include "stock/clsMagSurImputProd.h"
#include "stock/clsMagSurInputBarCode.h"
#include "stock/clsMagSurOutput.h"

namespace regalon {

/// One instance of each service, on one connection.
struct StockServices {
    explicit StockServices(AppContext& context)
        : Imput(context), InputBarCode(context), Output(context), ImputProd(context), Content(context) {}

    clsMagSurImput Imput;
    clsMagSurInputBarCode InputBarCode;
    clsMagSurOutput Output;
    clsMagSurImputProd ImputProd;
    clsMagSurContent Content;
};

}  // namespace regalon
