#pragma once

#include <functional>
#include <string>

/// Writes one line to the system log and to standard error. Line breaks and other control
/// characters inside it are written as blanks, so a line stays one line.
void NSLog(const std::string& line);

/// Sends every line to `sink` instead, until an empty one is set: for tests and for a shell with a
/// log of its own.
void setLogSink(std::function<void(const std::string& line)> sink);
