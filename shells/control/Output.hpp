#pragma once

#include <string>

namespace control {

/// Standard output, every text at once. After a failure nothing more is written.
class Output {
 public:
    /// False when this text, or one before it, could not be written.
    bool write(const std::string& text);
    /// 0, or what went wrong (an errno).
    int error() const { return error_; }
    /// Whether a person reads it.
    static bool isTerminal();

 private:
    int error_ = 0;
};

}  // namespace control
