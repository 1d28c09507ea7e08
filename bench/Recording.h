#pragma once

#include "BareOdbc.h"
#include "support/LocalWarehouse.h"

#include <string>
#include <vector>

namespace bench {

/// Connection string of the yardstick to the server of a local warehouse.
std::string odbcString(const regalon::test::LocalWarehouse& warehouse);

/// What the server received since its trace was cleared.
std::vector<Statement> recorded(const regalon::test::LocalWarehouse& warehouse);

}  // namespace bench
