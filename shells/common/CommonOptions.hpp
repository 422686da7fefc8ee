#pragma once

#include "shells/common/Options.hpp"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace shell {

/// What every shell lets its user choose.
struct CommonOptions {
    std::optional<std::string> preferences;  ///< The folder of both files of the mixer.
    std::optional<std::string> model;        ///< The machine model, such as "iPad4,1".
    std::vector<std::string> bundles;        ///< The folders of widgets' bundles.
    bool help = false;
    bool version = false;
};

/// --preferences, --model, --bundle, --help (-h) and --version. They write into `target`, which
/// must outlive them. A program adds its own to them.
std::vector<Option> commonOptions(CommonOptions& target);

/// Tells the platform of the preferences and the model, where they were chosen.
void applyOptions(const CommonOptions& options);

/// Tells the user of a command line that makes no sense, and where help is.
void complainOfMisuse(std::string_view program, std::string_view error);

/// Where --help or --version was given: prints the answer to standard output, complains where it
/// can't be written, and answers the exit status with which the program then leaves.
std::optional<int> answerQuestions(const CommonOptions& chosen, std::string_view program,
                                   std::string_view usage, std::span<const Option> options);

}  // namespace shell
