#pragma once

#include <array>
#include <cstddef>
#include <span>
#include <string>

namespace control {

/// The exit status of a request that could not be carried out.
inline constexpr int exitCannot = 1;

/// Standard output, unbuffered. After a failure nothing more is written.
class Output {
 public:
    /// False when this text, or one before it, could not be written.
    bool write(const std::string& text);
    /// 0, or what went wrong (an errno).
    int error() const { return error_; }
    /// Whether a person reads it, on a terminal.
    static bool isTerminal();

 private:
    int error_ = 0;
};

inline constexpr std::size_t columnCount = 5;
using Row = std::array<std::string, columnCount>;

/// Prints rows as lines of text. Each row is one line whatever its texts contain: bytes from files
/// and servers may include control characters.
class Table {
 public:
    enum class Style {
        Aligned,       ///< For people: aligned columns with a heading.
        TabSeparated,  ///< For programs: the fields with a tab between them, and no heading.
    };

    explicit Table(Style style) : style_(style) {}

    /// Widens the columns to what these rows need.
    void makeRoomFor(std::span<const Row> rows);
    /// A heading's line, where the style has one; else nothing.
    std::string headingLine(const Row& heading);
    /// The row's line, with its end.
    std::string line(const Row& row) const;

 private:
    Style style_;
    std::array<std::size_t, columnCount> widths_{};  ///< Columns of a terminal.
};

}  // namespace control
