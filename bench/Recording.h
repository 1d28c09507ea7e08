#pragma once

#include "BareOdbc.h"
#include "Measure.h"
#include "support/LocalWarehouse.h"

#include <functional>
#include <string>
#include <vector>

namespace bench {

/// Connection string of the yardstick to the server of a local warehouse.
std::string odbcString(const regalon::test::LocalWarehouse& warehouse);

/// What the server received since its trace was cleared.
std::vector<Statement> recorded(const regalon::test::LocalWarehouse& warehouse);

/// What the server receives for an act. It is done twice: the first use of a procedure also asks for its
/// parameters, once a connection.
std::vector<Statement> recorded(regalon::test::LocalWarehouse& warehouse, const std::function<void()>& act);

/// Measures an act of the client over a bare ODBC loop that sends the same statements.
void compareWithBareLoop(const std::string& measure, int rounds, const Side& client,
                         const regalon::test::LocalWarehouse& warehouse,
                         const std::vector<Statement>& statements);

}  // namespace bench
