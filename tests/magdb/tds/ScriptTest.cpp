#include "server/CommandLine.h"
#include "server/Script.h"

#include <gtest/gtest.h>

namespace magdb::server {
namespace {

std::vector<std::pair<int, std::string>> split(std::string_view script) {
    std::vector<std::pair<int, std::string>> result;
    for (const ScriptBatch& batch : splitScript(script)) {
        result.emplace_back(batch.firstLine, batch.text);
    }
    return result;
}

using Batches = std::vector<std::pair<int, std::string>>;

TEST(Script, DividesAtGoAloneOnALine) {
    EXPECT_EQ(split("a\nb\nGO\nc\n go \r\nd"), (Batches{{1, "a\nb\n"}, {4, "c\n"}, {6, "d"}}));
}

TEST(Script, LeavesGoInsideALineAlone) {
    EXPECT_EQ(split("GOTO x\nGO 5\n-- GO\nGOGO\n"), (Batches{{1, "GOTO x\nGO 5\n-- GO\nGOGO\n"}}));
}

TEST(Script, LeavesEmptyBatchesOut) {
    EXPECT_EQ(split(""), Batches{});
    EXPECT_EQ(split("GO\n\n \t\nGO\nGO\nx\nGO"), (Batches{{6, "x\n"}}));
}

TEST(Script, DropsAByteOrderMark) {
    EXPECT_EQ(split("\xEF\xBB\xBFselect 1"), (Batches{{1, "select 1"}}));
}

CommandLine read(std::initializer_list<std::string> words) {
    return readCommandLine(words);
}

TEST(CommandLine, ReadsEveryCommand) {
    const CommandLine serve =
        read({"serve", "--database", "a.db", "--port", "1433", "--port-file", "p", "--trace", "t"});
    EXPECT_EQ(serve.command, Command::Serve);
    EXPECT_EQ(serve.database, "a.db");
    EXPECT_EQ(serve.port, 1433);
    EXPECT_EQ(serve.portFile, "p");
    EXPECT_EQ(serve.traceFile, "t");
    EXPECT_EQ(read({"run", "x.sql", "--database", "a.db", "y.sql"}).scripts,
              (std::vector<std::string>{"x.sql", "y.sql"}));
    EXPECT_EQ(read({"add-login", "--database", "a.db", "regalon"}).login, "regalon");
    EXPECT_EQ(read({"--help"}).command, Command::Help);
    EXPECT_EQ(read({"serve", "--help"}).command, Command::Help);
    EXPECT_EQ(read({"--version"}).command, Command::Version);
}

TEST(CommandLine, RefusesWhatMakesNoSense) {
    const std::vector<std::string> wrong[] = {
        {},
        {"start"},
        {"serve"},
        {"serve", "--database"},
        {"serve", "--database", "a", "extra"},
        {"serve", "--database", "a", "--port", "70000"},
        {"serve", "--database", "a", "--port", "12x"},
        {"serve", "--database", "a", "--trace", ""},
        {"serve", "--database", "a", "--colour", "red"},
        {"run", "--database", "a"},
        {"run", "--database", "a", "--port", "1", "x.sql"},
        {"add-login", "--database", "a"},
        {"add-login", "--database", "a", "x", "y"},
    };
    for (const auto& words : wrong) {
        EXPECT_THROW(static_cast<void>(readCommandLine(words)), UsageError);
    }
}

}  // namespace
}  // namespace magdb::server
