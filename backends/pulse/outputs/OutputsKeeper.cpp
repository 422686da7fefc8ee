#include "backends/pulse/outputs/OutputsKeeper.hpp"

#include "backends/pulse/categories/Roles.hpp"
#include "backends/pulse/outputs/DropIn.hpp"
#include "platform/foundation/NSLog.hpp"

#include <pulse/error.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <utility>

namespace pulse {
namespace {

using StoredChoice = OutputsJournal::Choice;
using Phase = OutputsJournal::Phase;

const std::vector<Part>& partsOfOutputs() {
    static const std::vector<Part> parts = {Part::Server, Part::Sinks, Part::SinkInputs,
                                            Part::RestoreEntries};
    return parts;
}

/// Whether the change fails without the step; the others make it smoother.
bool isEssential(const OutputStep& each) {
    return std::holds_alternative<step::Load>(each) ||
           std::holds_alternative<step::SetDefault>(each) ||
           std::holds_alternative<step::Unload>(each);
}

bool hasOurs(const ServerMirror& mirror) {
    return std::ranges::any_of(
        roleSinks, [&](const RoleSink& sink) { return deviceOf(sink, mirror) != nullptr; });
}

// The stored choice and PipeWire's files are those of this machine.
constexpr const char* remoteServer = "the sound server is on another machine";

double currentTime() {
    return NSRunLoop::mainRunLoop().currentTime();
}

}  // namespace

void OutputsKeeper::begin(ConnectedServer& server) {
    server_ = &server;
    isStuck_ = false;
    evaluate();
}

void OutputsKeeper::end() {
    server_ = nullptr;
    run_.reset();
    adoption_.reset();
    pretence_.cancel();
    timer_.cancel();
    memory_ = {.levels = std::move(memory_.levels)};
    if (file_) file_->unlock();
    tellIfChanged();
}

// A single part of the server's state may be ahead of the others, so nothing is decided by it.
void OutputsKeeper::mirrorChanged() {
    if (!server_ || (!follows_ && !isBusy())) return;
    // With another device, what failed may succeed.
    if (isStuck_ && realSinksOf(mirror_) != memory_.realSinks) {
        isStuck_ = false;
        failure_.reset();
    }
    evaluate();
}

void OutputsKeeper::open() {
    if (!file_) file_.emplace();
}

void OutputsKeeper::readJournal() {
    open();
    journal_ = file_->read();
}

void OutputsKeeper::follow() {
    if (std::exchange(follows_, true)) return;
    readJournal();
    watch_ = std::make_unique<glib::FileWatch>(file_->path(), [this] {
        if (file_->isLocked()) return;
        readJournal();
        evaluate();
    });
    evaluate();
}

void OutputsKeeper::choose(Choice choice) {
    request_ = choice == Choice::Apart ? StoredChoice::Apart : StoredChoice::Shared;
    evaluate();
}

NSString OutputsKeeper::makePermanent() {
    if (server_ && !server_->isLocal()) return remoteServer;
    if (!mirror_.server.pipeWire)
        return "only PipeWire can make the outputs itself; here a running mixer does";
    return installDropIn(mirror_);
}

bool OutputsKeeper::isPermanent() const {
    return hasDropIn();
}

void OutputsKeeper::decline() {
    request_ = StoredChoice::Declined;
    evaluate();
}

/// Otherwise it waits for another process, or fails.
bool OutputsKeeper::takeLock() {
    switch (file_->lock()) {
        case FileLock::State::Ours:
            return true;
        case FileLock::State::Taken:
            timer_.start(lockedSeconds, [this] { evaluate(); });
            return false;
        case FileLock::State::Unknown:
            break;
    }
    const std::string reason = std::strerror(errno);
    request_.reset();
    fail("the choice cannot be stored in " + file_->path().parent_path().string() + ": " + reason);
    return false;
}

/// False if it has to wait, or failed.
bool OutputsKeeper::storeRequest() {
    open();
    if (!takeLock()) return false;
    readJournal();
    journal_.choice = *std::exchange(request_, std::nullopt);
    const bool isUnknown = journal_.phase == Phase::Down && hasOurs(mirror_);
    if (journal_.choice == StoredChoice::Shared && isUnknown) journal_.phase = Phase::Up;
    failure_.reset();
    isStuck_ = false;
    memory_.givenUp.clear();
    NSString problem = file_->write(journal_);
    if (problem) problem = "the choice cannot be stored: " + *problem;
    if (!problem && journal_.choice == StoredChoice::Shared) problem = removeDropIn();
    if (problem) fail(*problem);
    return !problem;
}

void OutputsKeeper::evaluate() {
    if (run_ || !server_) return tellIfChanged();
    if (!server_->isLocal()) {
        if (std::exchange(request_, std::nullopt)) failure_ = remoteServer;
        return tellIfChanged();
    }
    if (request_ && !storeRequest()) return tellIfChanged();
    if (mayAct() && (follows_ || file_)) {
        const bool isDue = !nextSteps(mirror_, journal_, memory_).empty();
        if (!isDue) {
            observe(memory_, mirror_, journal_);
            if (file_) file_->unlock();
        } else if (takeLock()) {
            readJournal();
            run_ = Run{};
            look();
        }
    }
    tellIfChanged();
}

void OutputsKeeper::look() {
    server_->read(partsOfOutputs(), [this] {
        if (run_) judge();
    });
}

void OutputsKeeper::judge() {
    const OutputSteps next = nextSteps(mirror_, journal_, memory_);
    observe(memory_, mirror_, journal_);
    std::vector<std::size_t> missing;
    for (std::size_t i = 0; i < run_->sent.size(); ++i)
        for (const OutputStep& each : next)
            if (describe(each) == run_->sent[i].text) missing.push_back(i);
    if (!missing.empty()) return awaitEffect(missing);
    if (next.empty()) return finish();
    send(next);
}

void OutputsKeeper::send(const OutputSteps& steps) {
    run_ = Run{};
    run_->sentSeconds = currentTime();
    for (const OutputStep& each : steps)
        run_->sent.push_back({each, describe(each)});
    // One more than there are answers, so that none ends the run before all are sent.
    run_->answersMissing = static_cast<int>(steps.size()) + 1;
    for (std::size_t i = 0; i < steps.size(); ++i)
        take(i);
    if (run_ && --run_->answersMissing == 0) look();
}

void OutputsKeeper::take(std::size_t index) {
    const OutputStep taken = run_->sent[index].step;
    debug("sound", "outputs: " + run_->sent[index].text);
    const auto done = [this, index](int error) { answered(index, error); };
    if (const auto* remember = std::get_if<step::Remember>(&taken)) {
        journal_ = remember->journal;
        const NSString problem = file_->write(journal_);
        --run_->answersMissing;
        if (problem) fail("the state cannot be stored: " + *problem);
    } else if (const auto* load = std::get_if<step::Load>(&taken)) {
        server_->loadModule(roleSinkModule, moduleArguments(*load->sink, mirror_, load->real),
                            done);
    } else if (const auto* wake = std::get_if<step::Wake>(&taken)) {
        const Device* sink = mirror_.sinkNamed(wake->sink);
        server_->wake(wake->sink, [this, done, sinkIndex = sink ? sink->index : 0] {
            memory_.awake.insert(sinkIndex);
            done(PA_OK);
        });
    } else if (const auto* volume = std::get_if<step::SetVolume>(&taken)) {
        server_->setVolume(volume->target, volume->volume, done);
    } else if (const auto* mute = std::get_if<step::SetMute>(&taken)) {
        server_->setMute(mute->target, mute->mute, done);
    } else if (const auto* entry = std::get_if<step::WriteEntry>(&taken)) {
        server_->writeEntry(roleEntryName(entry->role), entry->entry, WritableServer::Apply::Later,
                            done);
    } else if (const auto* standard = std::get_if<step::SetDefault>(&taken)) {
        memory_.isSettled = false;
        server_->setDefaultSink(standard->sink, done);
    } else if (const auto* move = std::get_if<step::Move>(&taken)) {
        if (const Device* sink = mirror_.sinkNamed(move->sink))
            memory_.moved[move->sinkInputIndex] = sink->index;
        server_->moveSinkInput(move->sinkInputIndex, move->sink, done);
    } else if (std::holds_alternative<step::AskForRouting>(taken)) {
        server_->askForModule("module-intended-roles", [this, done](bool isLoaded) {
            memory_.isRouting = isLoaded;
            if (isLoaded) return done(PA_OK);
            fail(
                "PulseAudio sends no streams to outputs by their role: module-intended-roles is "
                "not loaded");
        });
    } else if (std::holds_alternative<step::Settle>(taken)) {
        timer_.start(step::Settle::seconds, [this, done] {
            memory_.isSettled = true;
            done(PA_OK);
        });
    } else if (const auto* unload = std::get_if<step::Unload>(&taken)) {
        server_->unloadModule(unload->module, done);
    }
}

void OutputsKeeper::answered(std::size_t index, int error) {
    if (!run_ || index >= run_->sent.size()) return;
    if (error != PA_OK) run_->sent[index].refusal = pa_strerror(error);
    if (--run_->answersMissing == 0) look();
}

void OutputsKeeper::awaitEffect(const std::vector<std::size_t>& missing) {
    const bool areRefused = std::ranges::all_of(missing, [this](std::size_t index) {
        const Sent& sent = run_->sent[index];
        return sent.refusal && !isEssential(sent.step);
    });
    if (areRefused) return giveUp(missing);
    if (currentTime() - run_->sentSeconds < patienceSeconds)
        return timer_.start(lookSeconds, [this] { look(); });
    if (++run_->tries > longestTries) return giveUp(missing);
    run_->sentSeconds = currentTime();
    run_->answersMissing = 1;
    for (const std::size_t index : missing) {
        // A module that was loaded without a visible sink must not be loaded twice.
        const bool isLoaded = std::holds_alternative<step::Load>(run_->sent[index].step) &&
                              !run_->sent[index].refusal;
        if (isLoaded) continue;
        run_->sent[index].refusal.reset();
        ++run_->answersMissing;
        take(index);
    }
    if (--run_->answersMissing == 0) look();
}

void OutputsKeeper::giveUp(const std::vector<std::size_t>& missing) {
    for (const std::size_t index : missing) {
        const Sent& sent = run_->sent[index];
        if (isEssential(sent.step))
            return fail("the server does not " + sent.text +
                        (sent.refusal ? ": " + *sent.refusal : ""));
        debug("sound", "outputs: given up: " + sent.text);
        memory_.givenUp.insert(sent.text);
    }
    judge();
}

/// A switch that cannot be finished is undone.
void OutputsKeeper::fail(const std::string& reason) {
    debug("sound", "outputs: " + reason);
    failure_ = reason;
    run_.reset();
    const bool isBegun = journal_.phase == Phase::GoingUp || journal_.phase == Phase::Down;
    const bool isUndone = isBegun && file_->isLocked();
    if (isUndone) journal_.choice = StoredChoice::Shared;
    if (isUndone && journal_.phase == Phase::GoingUp) journal_.phase = Phase::GoingDown;
    if (isUndone && !file_->write(journal_)) {
        run_ = Run{};
        return look();
    }
    isStuck_ = true;
    file_->unlock();
    tellIfChanged();
}

void OutputsKeeper::finish() {
    run_.reset();
    timer_.cancel();
    file_->unlock();
    evaluate();
}

void OutputsKeeper::adopt() {
    if (!server_ || adoption_) return;
    adoption_ = Adoption{};
    moveStrays();
}

/// Until no stream is left, or those that are left do not stay where they are moved. A session
/// manager that is busy with a stream may lose its move.
void OutputsKeeper::moveStrays() {
    const std::vector<StrayStream> strays = strayStreams(mirror_);
    if (strays.empty() || ++adoption_->tries > longestTries) {
        adoption_.reset();
        return tellIfChanged();
    }
    adoption_->answersMissing = strays.size();
    for (const StrayStream& stray : strays) {
        const std::uint32_t index = stray.stream->index;
        // An order that repeats the last one changes nothing and is not heard.
        if (adoption_->tries > 1)
            server_->moveSinkInput(index, mirror_.sinkOf(*stray.stream)->name, [](int) {});
        server_->moveSinkInput(index, stray.belongsTo->name(), [this](int) {
            if (adoption_ && --adoption_->answersMissing == 0) movesAnswered();
        });
    }
}

void OutputsKeeper::movesAnswered() {
    pretence_.start(mirror_.server.pipeWire ? pretendedSeconds : 0, [this] {
        server_->read({Part::SinkInputs}, [this] {
            if (adoption_) moveStrays();
        });
    });
}

RoleOutputs::State OutputsKeeper::state() const {
    if (!server_) return State::Unknown;
    if (run_ || request_) return State::Changing;
    if (failure_) return State::Unsettled;
    if (hasForeignRoleSinks(mirror_)) return State::Foreign;
    // Outputs that PipeWire itself made stay until the next log-in when they are switched off.
    const Device* standard = mirror_.defaultSink();
    const Device* media = deviceOf(mediaSink, mirror_);
    if (media && (media == standard || media->ownerModule != PA_INVALID_INDEX)) return State::Apart;
    return standard && !isVirtual(*standard) ? State::Shared : State::Unknown;
}

std::vector<RoleOutputs::Output> OutputsKeeper::outputs() const {
    std::vector<Output> all;
    for (const auto& [name, device] : mirror_.sinks) {
        if (!isRoleSink(device)) continue;
        const Device* real = realSinkBehind(mirror_, &device);
        Output output{name, name, name, real ? real->name : ""};
        for (const RoleSink& ours : roleSinks)
            if (deviceOf(ours, mirror_) == &device) {
                output.role = ours.role;
                output.description = ours.description;
            }
        all.push_back(std::move(output));
    }
    return all;
}

std::vector<RoleOutputs::Stray> OutputsKeeper::strays() const {
    std::vector<Stray> all;
    if (state() != State::Apart) return all;
    for (const StrayStream& stray : strayStreams(mirror_)) {
        const Device* sink = mirror_.sinkOf(*stray.stream);
        const std::string reason =
            isRoleSink(*sink) ? "it was moved there, or the server sends no streams by their role"
                              : "it names that output, or was moved there";
        all.push_back({stray.stream->applicationName, std::string(stray.belongsTo->role),
                       sink->name, reason});
    }
    return all;
}

bool OutputsKeeper::isOffered() const {
    return follows_ && mayAct() && journal_.choice == StoredChoice::Undecided &&
           state() == State::Shared;
}

std::string OutputsKeeper::tellable() const {
    return std::to_string(static_cast<int>(state())) + (isOffered() ? " offered " : " ") +
           failure_.value_or("") + (adoption_ ? " adopting" : "");
}

// Later, as the handler may destroy whoever calls this.
void OutputsKeeper::tellIfChanged() {
    if (tellable() == told_) return telling_.cancel();
    telling_.start(0, [this] {
        told_ = tellable();
        tellChange();
    });
}

}  // namespace pulse
