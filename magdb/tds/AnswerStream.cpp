#include "tds/AnswerStream.h"

namespace magdb::tds {

namespace {

constexpr std::uint16_t selectCommand = 0xC1;

}  // namespace

AnswerStream::AnswerStream(PacketWriter& packets, Version version, Kind kind)
    : packets_(packets), tokens_(packets.content(), version), kind_(kind) {}

TokenWriter& AnswerStream::tokens() {
    release(doneMore);
    return tokens_;
}

void AnswerStream::hold(const Done& done) {
    release(doneMore);
    held_ = done;
    packets_.flush();
}

void AnswerStream::release(std::uint16_t bits) {
    if (held_) {
        held_->status |= bits;
        tokens_.done(*held_);
        held_.reset();
    }
}

void AnswerStream::columns(const std::vector<ResultColumn>& columns) {
    columns_ = columns;
    tokens().columns(columns_);
}

void AnswerStream::row(std::span<const Value> values) {
    tokens().row(columns_, values);
    packets_.flush();
}

void AnswerStream::statementDone(std::optional<std::int64_t> rowCount, bool hadResult, bool inProcedure) {
    // Statements that tell nothing have no token, else drivers would show each as an empty result.
    if (!rowCount && !hadResult && !errorSinceDone_) {
        return;
    }
    Done done;
    done.kind = inProcedure || kind_ == Kind::Call ? DoneKind::InProcedure : DoneKind::Done;
    done.status = static_cast<std::uint16_t>((rowCount ? doneCount : 0) | (errorSinceDone_ ? doneError : 0));
    done.command = hadResult ? selectCommand : 0;
    done.count = static_cast<std::uint64_t>(rowCount.value_or(0));
    errorSinceDone_ = false;
    hold(done);
}

void AnswerStream::message(const ServerMessage& message) {
    tokens().message(message);
    errorSinceDone_ = errorSinceDone_ || message.severity > 10;
    packets_.flush();
}

void AnswerStream::databaseChanged(const std::string& from, const std::string& to) {
    tokens().databaseChange(to, from);
}

void AnswerStream::procedureDone(std::int32_t status) {
    tokens().returnStatus(status);
    hold({.kind = DoneKind::Procedure, .status = errorSinceDone_ ? doneError : std::uint16_t{0}});
    errorSinceDone_ = false;
}

void AnswerStream::endBatch() {
    // A second ending would be read as the answer to the next request.
    if (ended_) {
        return;
    }
    // A done token of a procedure's statement cannot be the last one of a message.
    if (held_ && held_->kind != DoneKind::InProcedure && !errorSinceDone_) {
        release(0);
        return;
    }
    tokens().done({.kind = DoneKind::Done, .status = errorSinceDone_ ? doneError : std::uint16_t{0}});
}

void AnswerStream::endCall(const CallOutcome& outcome, const std::vector<CallParameter>& parameters,
                           bool last) {
    if (!outcome.failed) {
        tokens().returnStatus(outcome.status);
        const std::vector<std::uint16_t> places = outputPlaces(parameters);
        for (std::size_t i = 0; i < outcome.outputs.size(); ++i) {
            tokens_.returnValue(i < places.size() ? places[i] : static_cast<std::uint16_t>(i),
                                outcome.outputs[i]);
        }
    }
    Done done{.kind = DoneKind::Procedure};
    done.status = static_cast<std::uint16_t>((outcome.failed || errorSinceDone_ ? doneError : 0) |
                                             (last ? 0 : doneMore));
    tokens().done(done);
    errorSinceDone_ = false;
    ended_ = last;
}

std::vector<std::uint16_t> outputPlaces(const std::vector<CallParameter>& parameters) {
    std::vector<std::uint16_t> places;
    for (std::size_t i = 0; i < parameters.size(); ++i) {
        if (parameters[i].output) {
            places.push_back(static_cast<std::uint16_t>(i));
        }
    }
    return places;
}

}  // namespace magdb::tds
