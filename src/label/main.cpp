// regalon-label WORKSPACE [PROGRAM_FOLDER]
//
// Prints labels for the client, which starts it, says what to do on its standard input and reads its answers
// (see platform/WordProtocol.h). It ends with its input.
#include "label/Commands.h"
#include "platform/WordProtocol.h"

#include <QFile>

#include <unistd.h>

#include <iostream>
#include <optional>
#include <string>

namespace {

using namespace regalon;

/// The way back to the client. LibreOffice, and macros, may write to standard output as well; that goes where
/// their complaints go.
class Answers {
public:
    Answers() : m_channel(dup(STDOUT_FILENO)) { dup2(STDERR_FILENO, STDOUT_FILENO); }

    /// False once nobody listens.
    bool send(const QJsonArray& answer) const {
        const QByteArray line = WordProtocol::line(answer);
        for (qsizetype done = 0; done < line.size();) {
            const ssize_t written =
                write(m_channel, line.constData() + done, static_cast<size_t>(line.size() - done));
            if (written < 0)
                return false;
            done += written;
        }
        return true;
    }

private:
    int m_channel;
};

void serve(label::Commands& commands, const Answers& answers) {
    for (std::string line; !commands.ended() && std::getline(std::cin, line);) {
        if (!answers.send(commands.answer(WordProtocol::message(QByteArray::fromStdString(line)))))
            return;
    }
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 2) {
        std::cerr << "usage: regalon-label WORKSPACE [PROGRAM_FOLDER]\n";
        return 2;
    }
    const Answers answers;
    try {
        label::Commands commands(QFile::decodeName(argc > 2 ? argv[2] : ""), QFile::decodeName(argv[1]));
        if (answers.send({WordProtocol::ok, QString()}))
            serve(commands, answers);
    } catch (const label::Failure& failure) {
        answers.send(label::answerOf(failure));
    }
    // Not by return: LibreOffice's threads and static objects are in no state to be taken apart, and all that
    // counts has been answered.
    std::cout.flush();
    _exit(0);
}
