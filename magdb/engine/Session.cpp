#include "engine/Session.h"

#include "engine/Catalog.h"
#include "engine/Core.h"
#include "engine/EngineState.h"
#include "engine/Text.h"

#include <stdexcept>

namespace magdb {

class Engine::Private {
public:
    explicit Private(std::string file) : state(std::move(file)) {}
    EngineState state;
};

class Session::Private {
public:
    Private(EngineState& engine, std::string login, std::string host, std::string application,
            std::string database)
        : core(engine, std::move(login), std::move(host), std::move(application), std::move(database)) {}
    Core core;
};

Engine::Engine(std::string file) {
    try {
        d = std::make_unique<Private>(std::move(file));
    } catch (const SqliteError& error) {
        throw std::runtime_error(error.what());
    }
}

Engine::~Engine() = default;

const std::string& Engine::databaseName() const {
    return d->state.name;
}

void Engine::setLogin(std::string_view name, std::string_view password) {
    try {
        SqliteConnection connection(d->state.file);
        catalog::setLogin(connection, name, password);
    } catch (const SqliteError& error) {
        throw std::runtime_error(error.what());
    }
}

std::unique_ptr<Session> Engine::connect(const LoginRequest& login, ServerMessage& error) {
    SqliteConnection connection(d->state.file);
    if (!catalog::checkLogin(connection, login.user, login.password)) {
        error = serverMessage(18456, {login.user});
        return nullptr;
    }
    std::string database = login.database.empty() ? databaseName() : std::string();
    for (const std::string& known : {databaseName(), std::string("master"), std::string("tempdb")}) {
        if (sameName(known, login.database)) {
            database = known;
        }
    }
    if (database.empty()) {
        error = serverMessage(4060, {login.database});
        return nullptr;
    }
    return std::unique_ptr<Session>(new Session(std::make_unique<Session::Private>(
        d->state, login.user, login.hostName, login.applicationName, database)));
}

std::unique_ptr<Session> Engine::connectAsOwner() {
    return std::unique_ptr<Session>(new Session(
        std::make_unique<Session::Private>(d->state, "sa", "localhost", "magdb", databaseName())));
}

Session::Session(std::unique_ptr<Private> state) : d(std::move(state)) {}
Session::~Session() = default;

std::int16_t Session::spid() const {
    return d->core.spid();
}
const std::string& Session::database() const {
    return d->core.currentDatabase();
}
bool Session::isWriting() const {
    return d->core.isWriting();
}

bool Session::executeBatch(std::string_view text, ResultSink& sink) {
    return d->core.runBatch(text, sink);
}

CallOutcome Session::executeProcedure(std::string_view name, std::vector<CallParameter> parameters,
                                      ResultSink& sink) {
    return d->core.runProcedure(name, std::move(parameters), sink);
}

void Session::cancel() {
    d->core.cancel();
}
void Session::reset() {
    d->core.reset();
}

}  // namespace magdb
