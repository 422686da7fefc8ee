#pragma once

#include <clocale>
#include <cstdlib>
#include <string>

/// The language that the user prefers to that of the locale, for as long as this lives; in a
/// CommaLocale alone.
class PreferredLanguage {
 public:
    explicit PreferredLanguage(const char* language) { setenv("LANGUAGE", language, 1); }
    ~PreferredLanguage() { unsetenv("LANGUAGE"); }
    PreferredLanguage(const PreferredLanguage&) = delete;
    PreferredLanguage& operator=(const PreferredLanguage&) = delete;
};

/// Runs the program in a locale whose decimal point is a comma, for as long as this lives.
class CommaLocale {
 public:
    CommaLocale() : previous_(std::setlocale(LC_ALL, nullptr)) {
        setenv("LOCPATH", TARNWICK_TEST_LOCALES, 1);
        std::setlocale(LC_ALL, "de_DE.UTF-8");
        unsetenv("LOCPATH");
    }
    ~CommaLocale() { std::setlocale(LC_ALL, previous_.c_str()); }
    CommaLocale(const CommaLocale&) = delete;
    CommaLocale& operator=(const CommaLocale&) = delete;

    bool isActive() const { return *std::localeconv()->decimal_point == ','; }

 private:
    std::string previous_;
};
