#include "shells/control/Request.hpp"

#include "shells/common/Translation.hpp"

#include <algorithm>
#include <charconv>

namespace control {
namespace {

constexpr double percentOfAll = 100;

/// Digits with at most one point among them, and nothing else.
std::optional<double> plainDecimal(std::string_view text) {
    if (text.find_first_not_of("0123456789.") != std::string_view::npos) return std::nullopt;
    const char* const end = text.data() + text.size();
    double number = 0;
    const auto [stop, error] = std::from_chars(text.data(), end, number, std::chars_format::fixed);
    if (error != std::errc() || stop != end) return std::nullopt;
    return number;
}

std::optional<double> fractionFrom(std::string_view text) {
    if (text.ends_with('%')) {
        const auto percent = plainDecimal(text.substr(0, text.size() - 1));
        return percent ? std::optional(*percent / percentOfAll) : std::nullopt;
    }
    if (text.find('.') == std::string_view::npos) return std::nullopt;
    // A number above 1 was meant as a percentage: "40.0" must not mean full volume.
    const auto fraction = plainDecimal(text);
    return fraction && *fraction <= 1 ? fraction : std::nullopt;
}

using Words = std::span<const std::string>;
using shell::filled;
using shell::Problem;
using shell::translatable;
using shell::translated;

constexpr double longestWait = 3600;  // Seconds.

struct Syntax {
    std::string_view name;
    Verb verb;
    std::string_view parameters;
    std::size_t operands;
    const char* help;  ///< In lines that have room beside the command.
};
// TRANSLATORS: The commands' explanations, up to "an output for each kind of sound", stand behind
// 26 other letters; break longer ones into lines as here. Commands, options and what is written in
// capitals stay as they are.
constexpr Syntax commands[] = {
    {"list", Verb::List, "", 0,
     translatable("every category: its caption, volume, route, and whether the volume\n"
                  "can be read")},
    {"get", Verb::Get, " CATEGORY", 1, translatable("the volume")},
    {"set", Verb::Set, " CATEGORY VOLUME", 2,
     translatable("40% or 0.4; with a sign a step from where it stands: +5%, -5%")},
    {"mute", Verb::Mute, " CATEGORY", 1, translatable("silences it and keeps its volume")},
    {"unmute", Verb::Unmute, " CATEGORY", 1,
     translatable("makes it audible again, at the volume that it kept")},
    {"toggle", Verb::Toggle, " CATEGORY", 1,
     translatable("mutes it, or unmutes it if it is muted")},
    {"watch", Verb::Watch, "", 0,
     translatable("the list, then a line for each change, until it is interrupted")},
    {"check", Verb::Check, "", 0,
     translatable("what is wrong with the mixer's two files, and in which line")},
    {"outputs", Verb::Outputs, " on|off|status|adopt", 1,
     translatable("an output for each kind of sound, so that their volumes are apart:\n"
                  "on, off, status, or adopt for streams that play past them")},
};

/// "  get CATEGORY            the volume".
std::string helpLine(const Syntax& command) {
    constexpr std::size_t helpColumn = 26;
    // What an action may be is said in its explanation.
    const std::string_view parameters =
        command.verb == Verb::Outputs ? std::string_view(" ACTION") : command.parameters;
    std::string line = "  " + std::string(command.name) + std::string(parameters);
    line.resize(helpColumn, ' ');
    for (const char letter : std::string_view(translated(command.help))) {
        line += letter;
        if (letter == '\n') line.append(helpColumn, ' ');
    }
    return line + "\n";
}

std::string usage() {
    std::string text = "tarnwickctl [OPTION ...] COMMAND\n";
    text += translated("Shows and sets the volumes of the mixer's categories, without a display.");
    text += "\n\n";
    for (const Syntax& command : commands)
        text += helpLine(command);
    text += "\n";
    text +=
        translated("A CATEGORY is a name of the list, or a caption that only one category has.");
    return text;
}

struct Action {
    std::string_view name;
    OutputsAction action;
};
constexpr Action actions[] = {{"on", OutputsAction::On},
                              {"off", OutputsAction::Off},
                              {"status", OutputsAction::Status},
                              {"adopt", OutputsAction::Adopt}};

Problem takeSeconds(double& seconds, const std::string& value) {
    const char* const end = value.data() + value.size();
    const auto [stop, error] = std::from_chars(value.data(), end, seconds);
    const bool isInRange = seconds >= 0 && seconds <= longestWait;  // Not so for no number.
    if (error != std::errc() || stop != end || !isInRange)
        return translated("SECONDS is a number from 0 to 3600");
    return std::nullopt;
}

std::vector<shell::Option> optionsOf(Request& request) {
    std::vector<shell::Option> options = {
        {"--json", "", translatable("JSON instead of text"),
         [&request](const std::string&) -> Problem {
             request.form = Form::Json;
             return std::nullopt;
         }},
        {"--server", "ADDRESS", translatable("the sound server, as PULSE_SERVER names it"),
         [&request](const std::string& value) -> Problem {
             if (value.empty()) return translated("the value is empty");
             request.server = value;
             return std::nullopt;
         }},
        {"--timeout", "SECONDS", translatable("how long a server may take to answer (2)"),
         [&request](const std::string& value) {
             return takeSeconds(request.timeoutSeconds, value);
         }},
        {"--wait", "SECONDS", translatable("how long to wait for a server to appear (0)"),
         [&request](const std::string& value) { return takeSeconds(request.waitSeconds, value); }},
        {"--permanent", "", translatable("outputs on: PipeWire makes them itself at each log-in"),
         [&request](const std::string&) -> Problem {
             request.isPermanent = true;
             return std::nullopt;
         }},
        {"--changes-only", "", translatable("watch does not begin with the list"),
         [&request](const std::string&) -> Problem {
             request.changesOnly = true;
             return std::nullopt;
         }},
    };
    for (shell::Option& option : shell::commonOptions(request.common))
        if (option.name != "--bundle") options.push_back(std::move(option));
    return options;
}

std::string misused(const std::string& syntax) {
    return filled(translated("usage: {usage}"), {{"usage", "tarnwickctl " + syntax}});
}

Problem readAction(Request& request, const std::string& word) {
    const auto* action = std::ranges::find(actions, word, &Action::name);
    if (action == std::end(actions)) return misused("outputs on|off|status|adopt");
    request.outputs = action->action;
    return std::nullopt;
}

Problem readCommand(Request& request, Words words) {
    if (words.empty()) return translated("no command was given");
    const auto command = std::ranges::find(commands, words[0], &Syntax::name);
    if (command == std::end(commands))
        return filled(translated("unknown command '{command}'"), {{"command", words[0]}});
    const Words operands = words.subspan(1);
    if (operands.size() != command->operands)
        return misused(words[0] + std::string(command->parameters));
    request.verb = command->verb;
    if (request.changesOnly && request.verb != Verb::Watch)
        return translated("--changes-only goes with watch alone");
    if (request.verb == Verb::Outputs)
        if (const Problem problem = readAction(request, operands[0])) return problem;
    const bool isOn = request.verb == Verb::Outputs && request.outputs == OutputsAction::On;
    if (request.isPermanent && !isOn) return translated("--permanent goes with outputs on alone");
    if (!operands.empty()) request.category = operands[0];
    if (request.verb != Verb::Set) return std::nullopt;
    request.change = VolumeChange::from(operands[1]);
    if (request.change) return std::nullopt;
    return filled(
        translated("'{volume}' is no volume: give 40%, 0.4, or a step such as +5% or -5%"),
        {{"volume", operands[1]}});
}

}  // namespace

std::optional<VolumeChange> VolumeChange::from(std::string_view text) {
    const bool isSigned = text.starts_with('+') || text.starts_with('-');
    const double direction = text.starts_with('-') ? -1 : 1;
    const auto fraction = fractionFrom(text.substr(isSigned ? 1 : 0));
    if (!fraction) return std::nullopt;
    return VolumeChange(isSigned ? Kind::Step : Kind::Volume, direction * *fraction);
}

Problem readRequest(Request& request, std::span<const char* const> arguments) {
    const auto words = shell::readOptionsAndOperands(optionsOf(request), arguments);
    if (!words) return words.error();
    if (request.common.help || request.common.version) return std::nullopt;
    return readCommand(request, *words);
}

std::optional<int> answerQuestions(Request& request) {
    return shell::answerQuestions(request.common, usage(), optionsOf(request));
}

}  // namespace control
