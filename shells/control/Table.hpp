#pragma once

#include <array>
#include <cstddef>
#include <span>
#include <string>

namespace control {

inline constexpr std::size_t columnCount = 5;
using Row = std::array<std::string, columnCount>;

/// Rows as lines of text. Each row is one line whatever its texts hold: what comes from a file or
/// a server may be any bytes, control characters among them.
class Table {
 public:
    enum class Style {
        Aligned,       ///< For eyes: columns under each other, with a heading.
        TabSeparated,  ///< For programs: the fields and a tab between them.
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
