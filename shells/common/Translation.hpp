#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

namespace shell {

// The texts of the shells in the user's language, from the catalogs that are made of po/*.po.
//
//     complain(filled(translated("cannot write {path}"), {{"path", path}}));
//
// A text is marked as a whole sentence, as a literal in the call, with its variable parts named in
// braces: languages order them differently. A remark above the call that begins with
// "TRANSLATORS:" is shown to those who translate. docs/translating.md says which texts are marked.
//
// A program that does not begin with beginTranslations() speaks English. Main thread, except where
// noted; the returned texts live as long as the program.

/// For programs, first in main(): takes the language of the user's environment and finds the
/// catalogs relative to the program's file. Numbers keep their decimal point: only the categories
/// LC_CTYPE and LC_MESSAGES of the locale change.
void beginTranslations();

/// For a module in another program, which has chosen the locale: finds the catalogs relative to the
/// folder of the project's programs. Changes nothing else in the process.
void findTranslations(const std::string& programFolder);

/// From here on everything is said in English, also by the system's libraries: for output that
/// programs read.
void speakEnglish();

/// Marks a text that is translated later: translated(variable).
constexpr const char* translatable(const char* text) {
    return text;
}

/// The same for translatedIn(context, variable).
constexpr const char* translatableIn(const char* /*context*/, const char* text) {
    return text;
}

/// The text in the user's language; itself where there is no translation. Any thread.
const char* translated(const char* text);

/// The same for a text whose meaning depends on where it stands: translatedIn("colour", "orange").
/// Any thread.
const char* translatedIn(const char* context, const char* text);

/// One of the plural forms for that count. Any thread.
const char* translatedCount(const char* one, const char* many, unsigned long count);

/// What stands in a text for "{name}".
struct Filling {
    std::string_view name;
    std::string_view value;
};

/// The text with each "{name}" replaced by the value of that name. A name that has no value stays
/// as it is, and a value whose name does not occur is left out, so that no translation can do harm;
/// braces in values mean nothing.
std::string filled(std::string_view text, std::initializer_list<Filling> fillings);

/// The direction in which the user's language is written, if there is a translation into it.
enum class WritingDirection { LeftToRight, RightToLeft };
WritingDirection writingDirection();

}  // namespace shell
