#include "shells/control/Outputs.hpp"

#include "platform/celestial/RoleOutputs.hpp"
#include "platform/foundation/PrintableText.hpp"
#include "shells/common/Process.hpp"
#include "shells/common/Translation.hpp"
#include "shells/control/Categories.hpp"

#include <algorithm>
#include <cstdlib>
#include <functional>
#include <string>
#include <vector>

namespace control {
namespace {

using shell::filled;
using shell::translatable;
using shell::translated;
using shell::translatedCount;

using OutputsState = RoleOutputs::State;
using Choice = RoleOutputs::Choice;

// A switch takes some hundred milliseconds, and a busy session manager some more.
constexpr double patienceSeconds = 10;

struct StateText {
    OutputsState state;
    const char* word;
    const char* sentence;
};
constexpr StateText stateTexts[] = {
    {OutputsState::Unknown, "unknown", translatable("there is no real output at the moment")},
    {OutputsState::Shared, "shared",
     translatable("everything goes to one output, and shares its volume")},
    {OutputsState::Changing, "changing", translatable("the outputs are being switched on or off")},
    {OutputsState::Apart, "apart",
     translatable("each kind of sound has an output and a volume of its own")},
    {OutputsState::Foreign, "foreign",
     translatable("this session has outputs for roles of its own, which are left alone")},
    {OutputsState::Unsettled, "unsettled", translatable("the last change could not be finished")},
};

const StateText& textOf(OutputsState state) {
    return *std::ranges::find(stateTexts, state, &StateText::state);
}

std::string lineOf(const RoleOutputs::Stray& stray) {
    return filled(translated("past its output: {program} plays on {sink} instead of {role}, as "
                             "{reason}"),
                  {{"program", stray.program},
                   {"sink", stray.sink},
                   {"role", stray.role},
                   {"reason", stray.reason}});
}

std::string volumeOf(const std::string& sink, AVSystemController& volumes) {
    const auto level = volumes.levelOf("sink:" + sink);
    return level ? std::to_string(std::lround(level->heard() * 100)) + "%" : "unknown";
}

std::string statusText(const RoleOutputs& outputs, AVSystemController& volumes) {
    const StateText& state = textOf(outputs.state());
    // The word stays, for scripts.
    std::string text = std::string(state.word) + ": " + translated(state.sentence) + "\n";
    if (const NSString failure = outputs.failure())
        text += filled(translated("problem: {reason}"), {{"reason", *failure}}) + "\n";
    for (const RoleOutputs::Output& each : outputs.outputs()) {
        // TRANSLATORS: {role} is "media", {output} a name such as "Media", {real} that of a device.
        const char* line = each.real.empty()
                               ? translated("{role}: {output}, {volume}, plays on nothing")
                               : translated("{role}: {output}, {volume}, plays on {real}");
        text += printableLine(filled(line, {{"role", each.role},
                                            {"output", each.description},
                                            {"volume", volumeOf(each.name, volumes)},
                                            {"real", each.real}})) +
                "\n";
    }
    for (const RoleOutputs::Stray& each : outputs.strays())
        text += printableLine(lineOf(each)) + "\n";
    if (outputs.isPermanent()) {
        text += translated("PipeWire makes the outputs itself at each log-in");
        text += "\n";
    }
    return text;
}

shell::Json statusJson(const RoleOutputs& outputs, AVSystemController& volumes) {
    shell::Json all = shell::Json::array();
    for (const RoleOutputs::Output& each : outputs.outputs()) {
        const auto level = volumes.levelOf("sink:" + each.name);
        all.push_back(
            {{"role", each.role},
             {"description", each.description},
             {"sink", each.name},
             {"volume", level ? shell::jsonNumber(level->heard()) : shell::Json(nullptr)},
             {"real", each.real.empty() ? shell::Json(nullptr) : shell::Json(each.real)}});
    }
    shell::Json strays = shell::Json::array();
    for (const RoleOutputs::Stray& each : outputs.strays())
        strays.push_back({{"program", each.program},
                          {"role", each.role},
                          {"sink", each.sink},
                          {"reason", each.reason}});
    return {{"state", textOf(outputs.state()).word},
            {"problem", shell::jsonText(outputs.failure())},
            {"outputs", all},
            {"strays", strays},
            {"permanent", outputs.isPermanent()}};
}

bool isConnected(Service& service) {
    return service.volumes().state() == SoundServer::State::Ready;
}

/// Waits until the condition holds on a server that answers; complains if it does not come to that.
bool waitFor(const std::function<bool()>& condition, Service& service, const Request& request) {
    Service::waitUntil([&] { return !isConnected(service) || condition(); },
                       std::max(patienceSeconds, request.timeoutSeconds));
    if (!isConnected(service)) {
        shell::complain(
            translated("the sound server is gone; the next mixer that runs finishes the change"));
        return false;
    }
    const bool isDone = condition();
    if (!isDone) shell::complain(translated("the sound server did not confirm the outputs"));
    return isDone;
}

int complainOfState(const RoleOutputs& outputs) {
    if (const NSString failure = outputs.failure()) return shell::complain(exitCannot, *failure);
    std::string names;
    if (outputs.state() == OutputsState::Foreign)
        for (const RoleOutputs::Output& each : outputs.outputs())
            names += (names.empty() ? "" : ", ") + each.name;
    const std::string sentence = translated(textOf(outputs.state()).sentence);
    if (names.empty()) return shell::complain(exitCannot, sentence);
    // TRANSLATORS: "this session has outputs for roles of its own", and which they are.
    return shell::complain(exitCannot, filled(translated("{sentence}: {outputs}"),
                                              {{"sentence", sentence}, {"outputs", names}}));
}

/// What is ours is taken back even in a session that has outputs of its own.
int choose(RoleOutputs& outputs, Service& service, const Request& request) {
    const bool isOn = request.outputs == OutputsAction::On;
    if (isOn && outputs.state() == OutputsState::Foreign) return complainOfState(outputs);
    const NSString problem = request.isPermanent ? outputs.makePermanent() : std::nullopt;
    if (problem) return shell::complain(exitCannot, *problem);
    outputs.choose(isOn ? Choice::Apart : Choice::Shared);
    if (!waitFor([&] { return !outputs.isBusy(); }, service, request)) return exitCannot;
    const OutputsState state = outputs.state();
    const bool isDone = isOn ? state == OutputsState::Apart
                             : state == OutputsState::Shared || state == OutputsState::Unknown;
    return isDone ? EXIT_SUCCESS : complainOfState(outputs);
}

int adopt(RoleOutputs& outputs, Service& service, const Request& request, Output& output) {
    if (outputs.state() != OutputsState::Apart) return complainOfState(outputs);
    const std::size_t before = outputs.strays().size();
    outputs.adopt();
    if (!waitFor([&] { return !outputs.isBusy(); }, service, request)) return exitCannot;
    const std::vector<RoleOutputs::Stray> left = outputs.strays();
    if (left.size() < before) {
        const std::size_t moved = before - left.size();
        const char* text = translatedCount("{count} stream moved", "{count} streams moved", moved);
        output.write(filled(text, {{"count", std::to_string(moved)}}) + "\n");
    }
    for (const RoleOutputs::Stray& each : left)
        shell::complain(lineOf(each));
    return left.empty() ? EXIT_SUCCESS : exitCannot;
}

}  // namespace

int executeOutputs(const Request& request, Service& service, Output& output) {
    RoleOutputs* const outputs = service.volumes().roleOutputs();
    if (!outputs)
        return shell::complain(exitCannot,
                               translated("this sound server has no outputs for roles"));
    switch (request.outputs) {
        case OutputsAction::On:
        case OutputsAction::Off:
            return choose(*outputs, service, request);
        case OutputsAction::Adopt:
            return adopt(*outputs, service, request, output);
        case OutputsAction::Status:
            break;
    }
    output.write(request.form == Form::Json
                     ? shell::lineFrom(statusJson(*outputs, service.volumes())) + "\n"
                     : statusText(*outputs, service.volumes()));
    return EXIT_SUCCESS;
}

}  // namespace control
