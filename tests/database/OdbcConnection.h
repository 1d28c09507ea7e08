#pragma once

#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace regalon::test {

/// One diagnostic of the driver: the server's own number and text.
class SqlFailure : public std::runtime_error {
public:
    SqlFailure(int number, const std::string& text) : std::runtime_error(text), number_(number) {}
    [[nodiscard]] int number() const { return number_; }

private:
    int number_;
};

/// The first result set of a statement, every value as UTF-8 text.
struct Rows {
    struct Column {
        std::string name;
        int odbcType = 0;  ///< SQL_WVARCHAR and so on
    };
    std::vector<Column> columns;
    std::vector<std::vector<std::optional<std::string>>> values;

    [[nodiscard]] std::size_t size() const { return values.size(); }
    /// "<NULL>" for NULL, so that a message of a failed test tells it from an empty text.
    [[nodiscard]] std::string text(std::size_t row, std::size_t column = 0) const;
    /// Throws for NULL and for text that is no number.
    [[nodiscard]] double number(std::size_t row, std::size_t column = 0) const;
    [[nodiscard]] long whole(std::size_t row, std::size_t column = 0) const;
};

/// A connection through the FreeTDS driver. Texts are UTF-8 here and UTF-16 on the way.
class OdbcConnection {
public:
    explicit OdbcConnection(const std::string& connectionString);
    ~OdbcConnection();
    OdbcConnection(OdbcConnection&&) noexcept;
    OdbcConnection& operator=(OdbcConnection&&) = delete;

    /// Runs a batch to its end. Throws SqlFailure for the first error, wherever in the batch it comes.
    Rows run(std::string_view sql);

private:
    struct Handles;
    std::unique_ptr<Handles> handles_;
};

}  // namespace regalon::test
