#pragma once

#include <string>
#include <string_view>

namespace shell {

/// Prepares a program's process; not for plugins. `program` is the name that its messages begin
/// with. Call first in main(). Returns whether standard output was open; if not, writing to it
/// fails.
///
/// - Writing to a closed pipe fails instead of ending the program: a closed terminal must not end
///   the mixer with the next log line.
/// - The standard descriptors are opened, so that no connection gets the number of one that the
///   caller had closed and is written to instead.
/// - Variables for the user's folders that contain relative paths are removed, because libraries
///   would create those folders below the current one.
bool prepareProcess(std::string_view program);

/// The name that prepareProcess() was given; "tarnwick" in a process that belongs to another
/// program.
const std::string& programName();

/// Reports a message to the user as one line on standard error, "tarnwickctl: no sound server
/// answers", in which control characters are replaced.
void complain(std::string_view what);
/// The same for a function that ends with it: `return complain(exitMisuse, "no such category");`.
int complain(int status, std::string_view what);

/// Writes the whole text; returns 0 or the error number.
int writeToStandardOutput(std::string_view text);

/// What complain() says about such an error.
std::string outputComplaint(int error);

}  // namespace shell
