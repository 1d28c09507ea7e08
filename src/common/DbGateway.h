#pragma once

// Everything that the system needs of its database platform. Numbers that a failing operation throws
// (RunTimeError) are in DbErrors.h.
#include "common/DbCommand.h"
#include "common/DbConnection.h"
#include "common/DbErrors.h"
#include "common/DbRecordset.h"
