#include "shells/control/Output.hpp"

#include "platform/foundation/PrintableText.hpp"
#include "shells/common/Process.hpp"

#include <glib.h>
#include <unistd.h>

#include <algorithm>

namespace control {
namespace {

constexpr std::size_t gap = 2;  // Columns of a terminal.

/// How many columns of a terminal a printable text takes.
std::size_t widthOf(const std::string& text) {
    std::size_t width = 0;
    for (const char* at = text.c_str(); *at != '\0'; at = g_utf8_next_char(at)) {
        const gunichar character = g_utf8_get_char(at);
        if (g_unichar_iszerowidth(character) == FALSE)
            width += g_unichar_iswide(character) != FALSE ? 2 : 1;
    }
    return width;
}

}  // namespace

bool Output::write(const std::string& text) {
    if (error_ == 0) error_ = shell::writeToStandardOutput(text);
    return error_ == 0;
}

bool Output::isTerminal() {
    return isatty(STDOUT_FILENO) != 0;
}

void Table::makeRoomFor(std::span<const Row> rows) {
    for (const Row& row : rows)
        for (std::size_t i = 0; i < columnCount; ++i)
            widths_[i] = std::max(widths_[i], widthOf(printableLine(row[i])));
}

std::string Table::headingLine(const Row& heading) {
    if (style_ == Style::TabSeparated) return "";
    makeRoomFor({&heading, 1});
    return line(heading);
}

std::string Table::line(const Row& row) const {
    std::string text;
    for (std::size_t i = 0; i < columnCount; ++i) {
        const std::string field = printableLine(row[i]);
        text += field;
        if (i + 1 == columnCount) break;
        if (style_ == Style::TabSeparated)
            text += '\t';
        else
            text.append(std::max(widths_[i], widthOf(field)) + gap - widthOf(field), ' ');
    }
    return text + "\n";
}

}  // namespace control
