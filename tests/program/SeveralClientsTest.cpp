// Many copies of the program work on one database at once.
#include "program/ProgramTest.h"

namespace regalon::test {
namespace {

class SeveralClients : public ProgramTest {
protected:
    SeveralClients() : ProgramTest(QSize(2300, 900)) {}
};

TEST_F(SeveralClients, EachShowsThePlanAndTheOtherGoesOnWhenOneEnds) {
    const Spot spot = spotWhere(warehouse, QStringLiteral("A.StatLocation_cmb = N'1'"));
    ASSERT_NO_FATAL_FAILURE(startClient());
    ASSERT_NO_FATAL_FAILURE(openPlan());
    std::unique_ptr<Client> first = std::move(client);
    client = newClient();
    ASSERT_NO_FATAL_FAILURE(startClient());
    EXPECT_EQ(sessions(), 4);
    ASSERT_NO_FATAL_FAILURE(openPlan());
    EXPECT_EQ(leave(), 0);
    EXPECT_TRUE(eventually([this] { return sessions() == 2; }));

    client = std::move(first);
    display.activate(client->mainWindow());
    const std::optional<Plan> found = findPlan(display.settledPicture());
    ASSERT_TRUE(found.has_value());
    plan = *found;
    warehouse.clearTrace();
    click(spot);
    EXPECT_TRUE(traced(materialStatement(spot)));
    EXPECT_EQ(leave(), 0);
}

}  // namespace
}  // namespace regalon::test
