#pragma once

#include "shells/common/CommonOptions.hpp"
#include "shells/control/VolumeChange.hpp"

#include <optional>
#include <span>
#include <string>

namespace control {

enum class Verb { List, Get, Set, Mute, Unmute, Toggle, Watch, Check };
enum class Form { Text, Json };

/// What the user asks of the program.
struct Request {
    shell::CommonOptions common;
    std::optional<std::string> server;  ///< As libpulse takes it; nullopt: where it finds one.
    double timeoutSeconds = 2;          ///< For the server to answer, and to confirm.
    double waitSeconds = 0;             ///< For a server that is not there to come.
    Form form = Form::Text;
    Verb verb = Verb::List;
    bool changesOnly = false;            ///< Watch does not begin with what is.
    std::string category;                ///< Of Get and Set, as the user calls it.
    std::optional<VolumeChange> change;  ///< Of Set.
};

/// Fills the request from the program's arguments, its name not among them; answers a line for the
/// user about what does not fit. --help and --version need no command beside them.
std::optional<std::string> readRequest(Request& request, std::span<const char* const> arguments);

/// Answers --help and --version, where they were given, and with which status the program leaves.
std::optional<int> answerQuestions(Request& request, std::string_view program);

}  // namespace control
