#include "bench/comparison/ScreenReader.hpp"

#include "tests/rigs/Waiting.hpp"

#include <fstream>
#include <stdexcept>

namespace comparison {
namespace {

// Ten times what it needs to react.
constexpr double silenceSeconds = 1.2;

// Read by Orca when it starts: logs what it says, and turns off the announcement of pressed keys.
constexpr const char* customization = R"(import logging
import os
import orca.settings
orca.settings.enableKeyEcho = False
words = logging.getLogger("speech")
words.setLevel(logging.INFO)
words.addHandler(logging.FileHandler(os.path.expanduser("~/words")))
)";

/// SPEECH OUTPUT: 'word' {...}
std::string wordsIn(const std::string& line) {
    const std::size_t begin = line.find('\'');
    const std::size_t end = line.find('\'', begin + 1);
    return end == std::string::npos ? "" : line.substr(begin + 1, end - begin - 1);
}

}  // namespace

ScreenReader::ScreenReader(const test::UserSession& session)
    : words_(session.folder.path() / "words") {
    session.folder.write("data/orca/orca-customizations.py", customization);
    test::Environment environment = session.environment();
    // Its voice would appear as a stream in the mixers.
    environment["PULSE_SERVER"] = "unix:/nonexistent";
    process_ = test::ChildProcess({"orca", "--replace"},
                                  {.environment = environment, .log = session.folder.log()});
    if (!rigs::waitUntil([this] { return !allWords().empty(); }))
        throw std::runtime_error("no screen reader: " + session.logged());
    said();
}

std::vector<std::string> ScreenReader::said() {
    std::size_t count = 0;
    do {
        count = allWords().size();
        rigs::runFor(silenceSeconds);
    } while (allWords().size() != count);
    const std::vector<std::string> all = allWords();
    const std::vector<std::string> news(all.begin() + static_cast<std::ptrdiff_t>(heard_),
                                        all.end());
    heard_ = all.size();
    return news;
}

std::vector<std::string> ScreenReader::allWords() const {
    std::vector<std::string> words;
    std::ifstream file(words_);
    for (std::string line; std::getline(file, line);)
        if (line.starts_with("SPEECH OUTPUT")) words.push_back(wordsIn(line));
    return words;
}

}  // namespace comparison
