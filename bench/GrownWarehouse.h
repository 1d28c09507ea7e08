#pragma once

#include "common/AppContext.h"
#include "support/LocalWarehouse.h"

#include <QString>

namespace bench {

/// Throws with the text unless the condition holds.
void require(bool condition, const QString& what);

/// A generated warehouse of ten locations a stand, its server, and a client's context on it.
class GrownWarehouse {
public:
    /// `more` is a script that runs behind the one that makes the warehouse.
    explicit GrownWarehouse(int stands, const QString& more = {});

    int locations() const { return m_stands * 10; }
    regalon::test::LocalWarehouse& local() { return m_local; }
    regalon::AppContext& context() { return m_context; }
    /// Makes this warehouse's drive C the client's.
    void enter();

private:
    int m_stands;
    regalon::test::LocalWarehouse m_local;
    regalon::AppContext m_context;
};

}  // namespace bench
