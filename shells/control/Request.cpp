#include "shells/control/Request.hpp"

#include <algorithm>
#include <charconv>

namespace control {
namespace {

using Words = std::span<const std::string>;
using Problem = std::optional<std::string>;

constexpr double longestWait = 3600;  // Seconds.

constexpr const char* usage =
    "tarnwickctl [OPTION ...] COMMAND\n"
    "Shows and sets the volumes of the mixer's categories, without a display.\n"
    "\n"
    "  list                    every category: its caption, volume, route, and whether the volume\n"
    "                          can be read\n"
    "  get CATEGORY            the volume\n"
    "  set CATEGORY VOLUME     40% or 0.4; with a sign a step from where it stands: +5%, -5%\n"
    "  mute CATEGORY           silences it and keeps its volume\n"
    "  unmute CATEGORY         lets it be heard again, at the volume that it kept\n"
    "  toggle CATEGORY         the one or the other\n"
    "  watch                   the list, then a line for each change, until it is interrupted\n"
    "  check                   what is wrong with the mixer's two files, and in which line\n"
    "\n"
    "A CATEGORY is a name of the list, or a caption that only one category has.";

struct Syntax {
    std::string_view name;
    Verb verb;
    std::string_view parameters;
    std::size_t operands;
};
constexpr Syntax commands[] = {
    {"list", Verb::List, "", 0},
    {"get", Verb::Get, " CATEGORY", 1},
    {"set", Verb::Set, " CATEGORY VOLUME", 2},
    {"mute", Verb::Mute, " CATEGORY", 1},
    {"unmute", Verb::Unmute, " CATEGORY", 1},
    {"toggle", Verb::Toggle, " CATEGORY", 1},
    {"watch", Verb::Watch, "", 0},
    {"check", Verb::Check, "", 0},
};

Problem takeSeconds(double& seconds, const std::string& value) {
    const char* const end = value.data() + value.size();
    const auto [stop, error] = std::from_chars(value.data(), end, seconds);
    const bool isInRange = seconds >= 0 && seconds <= longestWait;  // Not so for no number.
    if (error != std::errc() || stop != end || !isInRange)
        return "SECONDS is a number from 0 to 3600";
    return std::nullopt;
}

std::vector<shell::Option> optionsOf(Request& request) {
    std::vector<shell::Option> options = {
        {"--json", "", "JSON instead of text",
         [&request](const std::string&) -> Problem {
             request.form = Form::Json;
             return std::nullopt;
         }},
        {"--server", "ADDRESS", "the sound server, as PULSE_SERVER names it",
         [&request](const std::string& value) -> Problem {
             if (value.empty()) return "the value is empty";
             request.server = value;
             return std::nullopt;
         }},
        {"--timeout", "SECONDS", "how long a server may take to answer (2)",
         [&request](const std::string& value) {
             return takeSeconds(request.timeoutSeconds, value);
         }},
        {"--wait", "SECONDS", "how long to wait where no server is there (0)",
         [&request](const std::string& value) { return takeSeconds(request.waitSeconds, value); }},
        {"--changes-only", "", "watch does not begin with the list",
         [&request](const std::string&) -> Problem {
             request.changesOnly = true;
             return std::nullopt;
         }},
    };
    for (shell::Option& option : shell::commonOptions(request.common))
        if (option.name != "--bundle") options.push_back(std::move(option));
    return options;
}

Problem readCommand(Request& request, Words words) {
    if (words.empty()) return "no command was given";
    const auto command = std::ranges::find(commands, words[0], &Syntax::name);
    if (command == std::end(commands)) return "unknown command '" + words[0] + "'";
    const Words operands = words.subspan(1);
    if (operands.size() != command->operands)
        return "usage: tarnwickctl " + words[0] + std::string(command->parameters);
    request.verb = command->verb;
    if (request.changesOnly && request.verb != Verb::Watch)
        return "--changes-only goes with watch alone";
    if (!operands.empty()) request.category = operands[0];
    if (request.verb != Verb::Set) return std::nullopt;
    request.change = VolumeChange::from(operands[1]);
    if (request.change) return std::nullopt;
    return "'" + operands[1] + "' is no volume: give 40%, 0.4, or a step such as +5% or -5%";
}

}  // namespace

Problem readRequest(Request& request, std::span<const char* const> arguments) {
    const auto [words, error] = shell::readOptionsAndOperands(optionsOf(request), arguments);
    if (error) return error;
    if (request.common.help || request.common.version) return std::nullopt;
    return readCommand(request, words);
}

std::optional<int> answerQuestions(Request& request, std::string_view program) {
    return shell::answerQuestions(request.common, program, usage, optionsOf(request));
}

}  // namespace control
