#include "shells/common/Translation.hpp"

#include "shells/common/Installation.hpp"

#include <libintl.h>

#include <algorithm>
#include <clocale>

namespace shell {
namespace {

constexpr const char* textDomain = "tarnwick";

}  // namespace

void beginTranslations() {
    std::setlocale(LC_CTYPE, "");
    std::setlocale(LC_MESSAGES, "");
    findTranslations(programDirectory());
}

void findTranslations(const std::string& programFolder) {
    bindtextdomain(textDomain, catalogFolder(programFolder).c_str());
    // Also where the locale has another encoding: texts are painted, and sent to other programs.
    bind_textdomain_codeset(textDomain, "UTF-8");
}

void speakEnglish() {
    std::setlocale(LC_MESSAGES, "C");
}

const char* translated(const char* text) {
    return *text == '\0' ? text
                         : dgettext(textDomain, text);  // That of "" is the catalog's header.
}

const char* translatedIn(const char* context, const char* text) {
    const std::string key = std::string(context) + '\004' + text;  // As catalogs have them.
    const char* found = dgettext(textDomain, key.c_str());
    return found == key.c_str() ? text : found;
}

const char* translatedCount(const char* one, const char* many, unsigned long count) {
    return dngettext(textDomain, one, many, count);
}

std::string filled(std::string_view text, std::initializer_list<Filling> fillings) {
    std::string result;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t open = std::min(text.find('{', at), text.size());
        result += text.substr(at, open - at);
        at = open;
        if (at == text.size()) break;
        const std::size_t close = text.find('}', open);
        const std::string_view name = close == std::string_view::npos
                                          ? std::string_view()
                                          : text.substr(open + 1, close - open - 1);
        const auto* filling = std::ranges::find(fillings, name, &Filling::name);
        const bool isKnown = !name.empty() && filling != fillings.end();
        result += isKnown ? filling->value : text.substr(open, 1);
        at = isKnown ? close + 1 : open + 1;
    }
    return result;
}

WritingDirection writingDirection() {
    // TRANSLATORS: Not shown. Answer "rtl" if your language is written from right to left, as
    // Arabic and Hebrew are; else "ltr".
    const std::string_view answer = translatedIn("direction of writing", "ltr");
    return answer == "rtl" ? WritingDirection::RightToLeft : WritingDirection::LeftToRight;
}

}  // namespace shell
