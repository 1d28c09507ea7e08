#include "magdb/tds/WireClient.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <thread>

namespace {

namespace fs = std::filesystem;

/// The program in a folder of its own.
class ProgramTest : public ::testing::Test {
protected:
    void SetUp() override {
        std::string pattern = (fs::temp_directory_path() / "magdb-program-").string() + std::string(6, 'X');
        ASSERT_NE(::mkdtemp(pattern.data()), nullptr);
        folder = pattern;
        file = (folder / "MAGAZYN.db").string();
    }
    void TearDown() override { fs::remove_all(folder); }

    void write(const std::string& name, const std::string& text) const {
        std::ofstream(folder / name) << text;
    }
    [[nodiscard]] std::string read(const std::string& name) const {
        std::ostringstream text;
        text << std::ifstream(folder / name).rdbuf();
        return text.str();
    }

    /// Starts the program in the folder with its streams in the files in, out and err.
    [[nodiscard]] pid_t start(const std::vector<std::string>& arguments) const {
        const pid_t child = ::fork();
        if (child != 0) {
            return child;
        }
        std::vector<char*> words{const_cast<char*>("magdb")};
        for (const std::string& argument : arguments) {
            words.push_back(const_cast<char*>(argument.c_str()));
        }
        words.push_back(nullptr);
        const auto redirect = [&](const char* name, int flags, int to) {
            ::dup2(::open((folder / name).c_str(), flags | O_CLOEXEC, 0600), to);
        };
        redirect("in", O_RDONLY | O_CREAT, 0);
        redirect("out", O_WRONLY | O_CREAT | O_TRUNC, 1);
        redirect("err", O_WRONLY | O_CREAT | O_TRUNC, 2);
        if (::chdir(folder.c_str()) == 0) {
            ::execv(REGALON_BINARY_DIR "/bin/magdb", words.data());
        }
        ::_exit(127);
    }
    /// Exit code, or 1000 and the signal.
    [[nodiscard]] static int finish(pid_t child) {
        int status = 0;
        ::waitpid(child, &status, 0);
        return WIFEXITED(status) ? WEXITSTATUS(status) : 1000 + WTERMSIG(status);
    }
    [[nodiscard]] int execute(const std::vector<std::string>& arguments) const {
        return finish(start(arguments));
    }

    /// Waits for the port file of a server that was started.
    [[nodiscard]] std::uint16_t awaitPort() const {
        for (int i = 0; i < 1000; ++i) {
            if (fs::exists(folder / "port")) {
                return static_cast<std::uint16_t>(std::stoi(read("port")));
            }
            std::this_thread::sleep_for(std::chrono::milliseconds(10));  // wait: a file has no event here
        }
        throw std::runtime_error("the server does not start: " + read("err"));
    }

    fs::path folder;
    std::string file;
};

TEST_F(ProgramTest, HelpsAndTellsItsVersion) {
    EXPECT_EQ(execute({"--help"}), 0);
    EXPECT_NE(read("out").find("magdb serve --database FILE"), std::string::npos);
    EXPECT_EQ(execute({"--version"}), 0);
    EXPECT_EQ(read("out").rfind("magdb ", 0), 0U);
}

TEST_F(ProgramTest, ExitsWithTwoOnWrongUsage) {
    EXPECT_EQ(execute({}), 2);
    EXPECT_EQ(execute({"serve"}), 2);
    EXPECT_NE(read("err").find("--database is missing"), std::string::npos);
}

TEST_F(ProgramTest, RunsScriptsAndPrintsTheirMessages) {
    write("one.sql",
          "create table dbo.T (a int)\nGO\ninsert into dbo.T (a) values (1)\nprint 'zażółć'\ngo\n");
    write("two.sql", "insert into dbo.T (a) values (2)\n");
    EXPECT_EQ(execute({"run", "--database", file, "one.sql", "two.sql"}), 0) << read("err");
    EXPECT_EQ(read("out"), "zażółć\n");
    EXPECT_TRUE(fs::exists(file));
}

TEST_F(ProgramTest, StopsAScriptAtItsFirstErrorAndTellsTheLine) {
    write("bad.sql", "print 'a'\nGO\n\nprint 'b'\nselect * from dbo.Niema\nGO\nprint 'c'\n");
    EXPECT_EQ(execute({"run", "--database", file, "bad.sql"}), 1);
    EXPECT_EQ(read("out").find('c'), std::string::npos);
    EXPECT_EQ(read("err"), "bad.sql:5: Msg 208, Level 16, State 1: Invalid object name 'dbo.Niema'.\n");
}

TEST_F(ProgramTest, TellsAScriptOrDatabaseThatIsNotThere) {
    EXPECT_EQ(execute({"run", "--database", file, "none.sql"}), 1);
    EXPECT_NE(read("err").find("none.sql"), std::string::npos);
    EXPECT_EQ(execute({"serve", "--database", (folder / "none.db").string()}), 1);
    EXPECT_EQ(execute({"add-login", "--database", (folder / "none.db").string(), "x"}), 1);
    EXPECT_FALSE(fs::exists(folder / "none.db"));
}

TEST_F(ProgramTest, RefusesAFileThatIsNoDatabase) {
    write("text.db", std::string(5000, 'x'));
    EXPECT_EQ(execute({"serve", "--database", "text.db"}), 1);
    EXPECT_EQ(read("text.db"), std::string(5000, 'x'));
}

TEST_F(ProgramTest, ServesLoginsOfTheFileUntilASignal) {
    write("empty.sql", "print 'x'");
    ASSERT_EQ(execute({"run", "--database", file, "empty.sql"}), 0) << read("err");
    write("in", "Magazyn-2024\nnot this line\n");
    ASSERT_EQ(execute({"add-login", "--database", file, "regalon"}), 0) << read("err");
    for (const int signal : {SIGTERM, SIGINT}) {
        fs::remove(folder / "port");
        const pid_t server = start({"serve", "--database", file, "--port-file", "port"});
        const std::uint16_t port = awaitPort();
        EXPECT_EQ(read("out"), "magdb: listening on 127.0.0.1:" + std::to_string(port) + "\n");
        client::WireClient one(port);
        client::LoginFields fields;
        fields.database = u"MAGAZYN";
        EXPECT_TRUE(one.logIn(fields).loggedIn);
        ::kill(server, signal);
        EXPECT_EQ(finish(server), 0);
        EXPECT_TRUE(one.serverCloses());
    }
}

TEST_F(ProgramTest, RefusesAnEmptyPassword) {
    write("empty.sql", "print 'x'");
    ASSERT_EQ(execute({"run", "--database", file, "empty.sql"}), 0);
    write("in", "\n");
    EXPECT_EQ(execute({"add-login", "--database", file, "regalon"}), 1);
}

}  // namespace
