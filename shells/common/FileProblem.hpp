#pragma once

#include "platform/foundation/NSPropertyList.hpp"

#include <string>
#include <vector>

namespace shell {

/// Something in one of the mixer's two files that does not do what its user wants.
struct FileProblem {
    std::string what;                ///< Is wrong.
    std::string instead;             ///< Comes of it: what stands in its place, what was kept.
    std::vector<std::string> brief;  ///< The same for a panel, in lines of about fifty letters.
    PropertyListPath path = {};      ///< Of the value in question.
    TextPlace place = {};            ///< Of that value in the file, where it can be told.
    std::string file = {};           ///< Where it really lies.
};

/// "FILE:LINE:COLUMN: WHAT; INSTEAD", in one line.
std::string lineOf(const FileProblem& problem);

/// What is wrong with the settings as they stand in the file, in the order of the file.
std::vector<FileProblem> problemsOfSettings();
/// The same of the list of categories, and of its last replacement.
std::vector<FileProblem> problemsOfCategories();

/// Of both files: what cannot be read, could not be written, or means nothing; first what concerns
/// a file as a whole. Reads them anew and changes nothing. Main thread.
std::vector<FileProblem> problemsOfFiles();

}  // namespace shell
