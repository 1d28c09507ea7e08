// The rows of kolv_RightsName and kolv_user, read with the statements of the client and joined by its rule.

#include "database/Warehouse.h"

#include <gtest/gtest.h>

#include <sstream>

namespace regalon::test {
namespace {

std::vector<std::string> divided(const std::string& text) {
    std::vector<std::string> parts;
    std::istringstream stream(text);
    for (std::string part; std::getline(stream, part, ',');)
        parts.push_back(part);
    return parts;
}

std::string rights(OdbcConnection& connection, const std::string& form, int user) {
    const Rows names = connection.run("select LpShow from kolv_RightsName where FormName  = N'" + form + "'");
    const Rows lists = connection.run("select RightsNumber,RightsUser  from kolv_user where UserID = " +
                                      std::to_string(user));
    if (lists.size() == 0)
        return "";
    const auto numbers = divided(lists.text(0, 0));
    const auto values = divided(lists.text(0, 1));
    EXPECT_EQ(numbers.size(), values.size()) << "user " << user;
    std::string result;
    for (std::size_t i = 0; i < names.size(); ++i)
        for (std::size_t k = 0; k < numbers.size(); ++k)
            if (numbers[k] == names.text(i))
                result += values[k];
    return result;
}

}  // namespace

TEST(Rights, UsersOfTheDemoShowDifferentCases) {
    const Warehouse warehouse;
    auto connection = warehouse.connect();
    EXPECT_EQ(rights(connection, "MagSur", 1), "11111111");
    EXPECT_EQ(rights(connection, "MagSur", 2), "10111111");
    EXPECT_EQ(rights(connection, "MagSur", 3), "10111000");
    EXPECT_EQ(rights(connection, "MagSur", 4), "10000000");
    EXPECT_EQ(rights(connection, "frmMagCreate", 1), "111");
    EXPECT_EQ(rights(connection, "frmMagCreate", 2), "000");
    EXPECT_EQ(rights(connection, "frmMagWatch", 3), "10");
    for (int user = 1; user <= 4; ++user)
        EXPECT_EQ(rights(connection, "frmSlownikGrupa", user), "1") << user;
    EXPECT_EQ(rights(connection, "frmSlownikGrupa", 5), "");
    EXPECT_EQ(rights(connection, "frmSlownikGrupa", 6), "");
}

TEST(Rights, RightsOfAWindowComeInTheOrderOfTheirNumbers) {
    const Warehouse warehouse;
    auto connection = warehouse.connect();
    connection.run("DELETE FROM kolv_RightsName WHERE FormName = N'MagSur'");
    connection.run(
        "INSERT INTO kolv_RightsName (FormName, LpShow) VALUES (N'MagSur', 7), (N'MagSur', 1), (N'MagSur', "
        "5), "
        "(N'MagSur', 2)");
    const Rows names = connection.run("select LpShow from kolv_RightsName where FormName  = N'MagSur'");
    ASSERT_EQ(names.size(), 4U);
    EXPECT_EQ(names.text(0) + names.text(1) + names.text(2) + names.text(3), "1257");
}

TEST(Rights, NoNumberServesTwoWindows) {
    const Warehouse warehouse;
    auto connection = warehouse.connect();
    EXPECT_EQ(connection
                  .run("SELECT COUNT(*) FROM (SELECT LpShow FROM kolv_RightsName GROUP BY LpShow HAVING "
                       "COUNT(*) > 1) "
                       "AS X")
                  .whole(0),
              0);
}

}  // namespace regalon::test
