#include "server/Script.h"

#include <algorithm>
#include <cctype>

namespace magdb::server {

namespace {

bool isBlank(char c) {
    return std::isspace(static_cast<unsigned char>(c)) != 0;
}

bool isGo(std::string_view line) {
    while (!line.empty() && isBlank(line.front())) {
        line.remove_prefix(1);
    }
    while (!line.empty() && isBlank(line.back())) {
        line.remove_suffix(1);
    }
    return line.size() == 2 && (line[0] == 'G' || line[0] == 'g') && (line[1] == 'O' || line[1] == 'o');
}

/// Prints the messages of a batch; rows are of no interest in a script.
class ScriptSink : public ResultSink {
public:
    ScriptSink(const std::string& name, int firstLine, std::ostream& out, std::ostream& err)
        : name_(name), firstLine_(firstLine), out_(out), err_(err) {}

    void columns(const std::vector<ResultColumn>& /*columns*/) override {}
    void row(std::span<const Value> /*values*/) override {}
    void statementDone(std::optional<std::int64_t> /*rowCount*/, bool /*hadResult*/,
                       bool /*inProcedure*/) override {}
    void databaseChanged(const std::string& /*from*/, const std::string& /*to*/) override {}

    void message(const ServerMessage& message) override {
        if (message.severity <= 10) {
            out_ << message.text << '\n';
            return;
        }
        failed_ = true;
        // Lines of a procedure count from its own text, which need not stand in this script: such an error is
        // shown at the batch that called it.
        const bool here = message.procedure.empty();
        err_ << name_ << ':' << firstLine_ + (here ? std::max(message.line, 1) - 1 : 0) << ": Msg "
             << message.number << ", Level " << message.severity << ", State " << message.state;
        if (!here) {
            err_ << ", Procedure " << message.procedure << ", Line " << message.line;
        }
        err_ << ": " << message.text << '\n';
    }

    [[nodiscard]] bool failed() const { return failed_; }

private:
    const std::string& name_;
    int firstLine_;
    std::ostream& out_;
    std::ostream& err_;
    bool failed_ = false;
};

}  // namespace

std::vector<ScriptBatch> splitScript(std::string_view script) {
    constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
    if (script.starts_with(byteOrderMark)) {
        script.remove_prefix(byteOrderMark.size());
    }
    std::vector<ScriptBatch> batches;
    ScriptBatch current;
    const auto close = [&](int nextLine) {
        if (!std::all_of(current.text.begin(), current.text.end(), isBlank)) {
            batches.push_back(std::move(current));
        }
        current = {std::string(), nextLine};
    };
    for (int number = 1; !script.empty(); ++number) {
        const std::size_t end = std::min(script.find('\n'), script.size() - 1) + 1;
        const std::string_view line = script.substr(0, end);
        script.remove_prefix(end);
        if (isGo(line)) {
            close(number + 1);
        } else {
            current.text += line;
        }
    }
    close(0);
    return batches;
}

bool runScript(Session& session, const std::string& name, std::string_view script, std::ostream& out,
               std::ostream& err) {
    for (const ScriptBatch& batch : splitScript(script)) {
        ScriptSink sink(name, batch.firstLine, out, err);
        const bool completed = session.executeBatch(batch.text, sink);
        if (!completed || sink.failed()) {
            return false;
        }
    }
    return true;
}

}  // namespace magdb::server
