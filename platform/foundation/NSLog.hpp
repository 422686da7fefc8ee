#pragma once

#include <functional>
#include <string>
#include <string_view>

/// Writes one line to the system log and to standard error, as printableLine() has it.
void NSLog(const std::string& line);

/// Sends every line to `sink` instead, until an empty one is set: for tests and for a shell with a
/// log of its own.
void setLogSink(std::function<void(const std::string& line)> sink);

/// Reports a message to the user as a line on standard error only: "program: what", formatted by
/// printableLine().
void complain(std::string_view program, std::string_view what);

/// Writes a line for diagnosis to standard error only: "topic: what", formatted by printableLine().
/// Only if the environment variable TARNWICK_DEBUG contains the topic (one word, or several
/// separated by commas).
///
///     debug("sound", "connected to " + address);  // With TARNWICK_DEBUG=sound.
void debug(std::string_view topic, std::string_view what);
