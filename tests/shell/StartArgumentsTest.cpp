#include "shell/StartArguments.h"

#include <gtest/gtest.h>

namespace regalon {
namespace {

struct Result {
    bool found;
    QString path;
    int user;
};

Result read(const QString& line) {
    StartArguments arguments;
    const bool found = StartArguments::read(line, arguments);
    return {found, arguments.ConnectionFilePath, arguments.UserSign};
}

void expectFound(const QString& line, const QString& path, int user) {
    const Result result = read(line);
    EXPECT_TRUE(result.found) << qPrintable(line);
    EXPECT_EQ(result.path, path);
    EXPECT_EQ(result.user, user);
}

void expectNothing(const QString& line) {
    const Result result = read(line);
    EXPECT_FALSE(result.found) << qPrintable(line);
    EXPECT_TRUE(result.path.isEmpty());
    EXPECT_EQ(result.user, 0);
}

TEST(CommandLine, GivesFileAndUserNumber) {
    expectFound(QStringLiteral("-x -5"), QStringLiteral("x"), 5);
    expectFound(QStringLiteral("-c:\\path\\connect.txt -7"), QStringLiteral("c:\\path\\connect.txt"), 7);
}

TEST(CommandLine, KeepsBlanksInsideAPath) {
    expectFound(QStringLiteral("-c:\\moje pliki\\connect.txt -7"),
                QStringLiteral("c:\\moje pliki\\connect.txt"), 7);
    expectFound(QStringLiteral("-x  -7"), QStringLiteral("x "), 7);
}

TEST(CommandLine, IgnoresFurtherValues) {
    expectFound(QStringLiteral("-x -5 -z -9"), QStringLiteral("x"), 5);
}

TEST(CommandLine, WithoutTheUserNumberGivesNothing) {
    expectNothing(QStringLiteral("-x"));
}

TEST(CommandLine, WhoseFirstValueHasNoDashTakesTheSecondForThePathAndFails) {
    expectNothing(QStringLiteral("x -5"));
    expectFound(QStringLiteral("x -y -5"), QStringLiteral("y"), 5);
}

TEST(CommandLine, ThatIsEmptyGivesNothing) {
    expectNothing({});
    expectNothing(QStringLiteral(" "));
    expectNothing(QStringLiteral("-"));
    expectNothing(QStringLiteral("x"));
}

TEST(CommandLine, WhoseUserNumberIsNoWholeNumberOf16BitsGivesNothing) {
    expectNothing(QStringLiteral("-x -abc"));
    expectNothing(QStringLiteral("-x -32768"));
    expectNothing(QStringLiteral("-x -"));
    expectFound(QStringLiteral("-x -32767"), QStringLiteral("x"), 32767);
    expectFound(QStringLiteral("-x --3"), QStringLiteral("x"), -3);
}

}  // namespace
}  // namespace regalon
