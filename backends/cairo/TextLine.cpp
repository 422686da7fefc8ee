#include "backends/cairo/TextLine.hpp"

#include "platform/foundation/PrintableText.hpp"

std::string displayableLine(std::string_view text, std::size_t characters) {
    constexpr std::size_t longestCharacter = 4;  // bytes in UTF-8
    const std::string_view head = text.substr(0, characters * longestCharacter);
    std::string line = printableLine(head);
    std::string_view rest = line;
    for (std::size_t count = 0; !rest.empty() && count < characters; ++count)
        rest.remove_prefix(firstCharacter(rest).bytes);
    const bool isCut = !rest.empty() || head.size() < text.size();
    line.resize(line.size() - rest.size());
    if (isCut) line += "…";
    return line;
}
