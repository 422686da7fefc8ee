#pragma once

#include "shells/common/Options.hpp"

#include <algorithm>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace control {

/// The argument of "set": a volume, or a step from the current one.
class VolumeChange {
 public:
    /// Reads "40%", or "0.4" as a fraction; with a sign a step, "+5%" or "-0.05". nullopt for any
    /// other text, including the ambiguous "40", "1" and "40.0".
    static std::optional<VolumeChange> from(std::string_view text);

    /// The volume, 0 to 1; of a step how far, -1 to 1.
    double fraction() const { return fraction_; }
    bool isStep() const { return kind_ == Kind::Step; }

 private:
    enum class Kind { Volume, Step };
    VolumeChange(Kind kind, double fraction)
        : kind_(kind), fraction_(std::clamp(fraction, -1.0, 1.0)) {}

    Kind kind_;
    double fraction_;
};

enum class Verb { List, Get, Set, Mute, Unmute, Toggle, Watch, Check, Outputs };
enum class OutputsAction { On, Off, Status, Adopt };
enum class Form { Text, Json };

/// The request on the command line.
struct Request {
    shell::CommonOptions common;
    std::optional<std::string> server;  ///< An address for libpulse; nullopt for the default.
    double timeoutSeconds = 2;          ///< For the server to answer, and to confirm.
    double waitSeconds = 0;             ///< For a server to appear.
    Form form = Form::Text;
    Verb verb = Verb::List;
    bool changesOnly = false;            ///< Watch does not start with the list.
    std::string category;                ///< As the user calls it; for the commands that take one.
    std::optional<VolumeChange> change;  ///< For Set.
    OutputsAction outputs = OutputsAction::Status;
    bool isPermanent = false;  ///< For OutputsAction::On.
};

/// Fills the request from the program's arguments (without its name); returns the error as a line
/// for the user. --help and --version need no command.
shell::Problem readRequest(Request& request, std::span<const char* const> arguments);

/// Answers --help and --version; returns the exit status if one of them was given.
std::optional<int> answerQuestions(Request& request);

}  // namespace control
