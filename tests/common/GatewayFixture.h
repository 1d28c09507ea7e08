#pragma once

#include "common/AppContext.h"
#include "common/DbGateway.h"
#include "platform/MsgBox.h"
#include "support/LocalWarehouse.h"

#include <gtest/gtest.h>

namespace regalon {

/// An empty warehouse with the objects of gateway.sql, a context connected to it, and recorded message boxes.
class GatewayTest : public ::testing::Test {
protected:
    static QString sql(const char* text) { return QString::fromUtf8(text); }

    void SetUp() override;
    void TearDown() override;

    DbConnection& connection() { return *context.ConnMain; }

    /// Number, description and source of what the body throws; number 0 when it throws nothing.
    template <class Body>
    static ErrorRecord failureOf(Body&& body) {
        try {
            body();
        } catch (...) {
            return currentError();
        }
        return {};
    }

    /// What the server refuses in a text.
    ErrorRecord failureOfText(const QString& text) {
        return failureOf([&] {
            DbRecordset rs;
            rs.Open(text, connection());
        });
    }

    /// First value of the first row.
    QVariant scalar(const QString& text) {
        DbRecordset rs;
        rs.Open(text, connection());
        return rs.Value(0);
    }

    test::LocalWarehouse warehouse{test::LocalWarehouse::Content::Empty};
    AppContext context;
    MsgBoxRecorder boxes;
};

}  // namespace regalon
