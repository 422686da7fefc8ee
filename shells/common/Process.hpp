#pragma once

#include <string>
#include <string_view>

namespace shell {

/// What a program does first; a plugin leaves its process as it is. Answers whether standard output
/// was open; where it was not, writing to it fails.
/// - A write to a reader that has gone fails instead of ending the program: a closed terminal must
///   not take the mixer with it at the next line of the log.
/// - The standard descriptors are taken, so that no connection is given the number of one that the
///   caller had closed, and is written to in its place.
/// - Variables that should name the user's folders and hold a relative path mean nothing; they are
///   removed, or libraries would make those folders below the current one.
bool prepareProcess();

/// Writes all of the text, at once; 0, or the error's number.
int writeToStandardOutput(std::string_view text);

/// A line for the user about such an error.
std::string outputComplaint(int error);

}  // namespace shell
