#pragma once

#include <functional>
#include <string>
#include <string_view>

/// Writes one line to the system log and to standard error, as printableLine() has it.
void NSLog(const std::string& line);

/// Sends every line to `sink` instead, until an empty one is set: for tests and for a shell with a
/// log of its own.
void setLogSink(std::function<void(const std::string& line)> sink);

/// Tells the user of a program something, in a line on standard error alone: "program: what", as
/// printableLine() has it.
void complain(std::string_view program, std::string_view what);
