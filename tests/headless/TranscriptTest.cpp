#include "tests/support/HeadlessFixture.hpp"

#include <cctype>
#include <fstream>
#include <sstream>

namespace test {
namespace {

// Runs the transcripts of a folder against tarnwick-headless. A file holds several, each of which
// begins with its title. The lines above the first title are run at the beginning of each:
//
//     % start --parent-width 320
//     > create
//
//     = A category follows its volume.
//     > volume Ringtone 0.376
//     {"event":"volume-notification","category":"Ringtone","volume":0.376}
//     ? 2000/value 37.6
//
//     > COMMAND   sends a command. The lines below it are all of its events, in order, and its
//                 result, which is left out where it is {"ok":true}, or a null result for "call".
//                 The text "*" matches every text that is not empty.
//     ? TAG/KEY   looks up a value in the tree: the tag of a view (none for the window), a JSON
//                 pointer into it, and the expected value. A missing view is null.
//     % start OPTIONS              starts the program
//     % show OPTIONS               starts it, creates the controller and loads its view
//     % categories NAME=LABEL, ... writes the category file; "!" before a name hides its row
//     % rows NUMBER                writes a category file with that many rows
//     % category-file BYTES        writes these bytes as the category file
//     % settings ENTRIES           writes the settings: the entries of the dictionary, as XML
//     % expect [no] category-file  checks whether the category file exists
//     # a comment

struct Line {
    int number;
    std::string text;
};

struct Transcript {
    std::filesystem::path file;
    std::string title;
    std::vector<Line> lines;

    friend void PrintTo(const Transcript& tested, std::ostream* out) { *out << tested.title; }
};

std::vector<Transcript> transcriptsOf(const std::filesystem::path& file) {
    std::ifstream stream(file);
    std::vector<Line> beginning;
    std::vector<Transcript> transcripts;
    std::string text;
    for (int number = 1; std::getline(stream, text); ++number) {
        if (text.empty() || text[0] == '#') continue;
        if (text[0] == '=')
            transcripts.push_back({file, text.substr(2), beginning});
        else
            (transcripts.empty() ? beginning : transcripts.back().lines).push_back({number, text});
    }
    return transcripts;
}

std::vector<Transcript> everyTranscript() {
    std::vector<std::filesystem::path> files;
    for (const auto& entry : std::filesystem::directory_iterator(TARNWICK_TRANSCRIPTS))
        files.push_back(entry.path());
    std::sort(files.begin(), files.end());
    std::vector<Transcript> every;
    for (const auto& file : files)
        for (Transcript& each : transcriptsOf(file))
            every.push_back(std::move(each));
    return every;
}

/// The file's name and the title in camel case, for a test's name.
std::string nameOf(const testing::TestParamInfo<Transcript>& tested) {
    std::string name;
    bool isFirstLetter = true;
    for (const char each : tested.param.file.stem().string() + " " + tested.param.title) {
        const bool isLetter = std::isalnum(static_cast<unsigned char>(each)) != 0;
        if (isLetter)
            name += isFirstLetter
                        ? static_cast<char>(std::toupper(static_cast<unsigned char>(each)))
                        : each;
        isFirstLetter = !isLetter;
    }
    return name;
}

// On 32-bit processors coordinates have single precision and are written with fewer digits.
bool areSame(const Json& expected, const Json& answered) {
    if (expected.is_structured() && expected.type() == answered.type()) {
        auto other = answered.begin();
        for (auto each = expected.begin(); each != expected.end(); ++each, ++other)
            if (other == answered.end() || (expected.is_object() && each.key() != other.key()) ||
                !areSame(*each, *other))
                return false;
        return other == answered.end();
    }
    if (expected == "*") return answered.is_string() && answered != "";
    if (sizeof(void*) == 4 && expected.is_number_float() && answered.is_number())
        return expected.get<float>() == answered.get<float>();
    return expected == answered;
}

class HeadlessTranscript : public HeadlessFixture, public testing::WithParamInterface<Transcript> {
 protected:
    void run(const std::vector<Line>& lines) {
        for (auto line = lines.begin(); line != lines.end() && !HasFailure();) {
            const Line& step = *line++;
            SCOPED_TRACE(GetParam().file.filename().string() + ":" + std::to_string(step.number) +
                         ": " + step.text);
            const auto answer = line;
            while (line != lines.end() && line->text[0] == '{')
                ++line;
            if (step.text[0] == '>')
                command(step.text.substr(std::min<std::size_t>(2, step.text.size())),
                        {answer, line});
            else if (step.text[0] == '?')
                look(step.text.substr(2));
            else
                prepare(step.text);
        }
    }

 private:
    void command(const std::string& text, std::vector<Line> expected) {
        Reply reply = send(text);
        reply.events.push_back(std::move(reply.line));
        if (expected.empty() || !expected.back().text.starts_with("{\"ok\":"))
            expected.push_back(
                {0, text.starts_with("call ") ? R"({"ok":true,"result":null})" : R"({"ok":true})"});
        std::string answered;
        for (const Json& each : reply.events)
            answered += each.dump() + "\n";
        for (std::size_t i = 0; i < std::max(expected.size(), reply.events.size()); ++i) {
            const Json answer = i < reply.events.size() ? reply.events[i] : Json();
            const Json wanted = i < expected.size() ? Json::parse(expected[i].text) : Json();
            ASSERT_TRUE(areSame(wanted, answer))
                << "Expected: " << wanted.dump() << "\nAnswered: " << answer.dump()
                << "\nAll that was answered:\n"
                << answered;
        }
    }
    void look(const std::string& text) {
        const std::string where = text.substr(0, text.find(' '));
        const auto slash = std::min(where.find('/'), where.size());
        const Json view = slash == 0 ? resultOf("tree") : viewWithTag(std::stoi(where));
        const Json::json_pointer key(where.substr(slash));
        ASSERT_TRUE(view.contains(key)) << view.dump();
        EXPECT_TRUE(areSame(Json::parse(text.substr(where.size() + 1)), view.at(key)))
            << "Answered: " << view.at(key).dump();
    }
    void prepare(const std::string& text) {
        std::istringstream words(text);
        std::string percent;
        std::string name;
        words >> percent >> name >> std::ws;
        std::string rest;
        std::getline(words, rest);
        if (name == "start")
            startWith(rest);
        else if (name == "show")
            show(rest);
        else if (name == "categories")
            writeCategories(rest);
        else if (name == "rows")
            files.writeShownCategories(std::stoi(rest));
        else if (name == "category-file")
            MixerFiles::write(files.categoryFile(), rest);
        else if (name == "settings")
            files.writeSettings(rest);
        else if (text == "% expect category-file" || text == "% expect no category-file")
            EXPECT_EQ(std::filesystem::exists(files.categoryFile()), rest == "category-file");
        else
            FAIL() << "no such step";
    }
    void startWith(const std::string& options) {
        std::istringstream stream(options);
        std::vector<std::string> words;
        for (std::string word; stream >> word;)
            words.push_back(word);
        start(words);
    }
    void show(const std::string& options) {
        startWith(options);
        EXPECT_EQ(expectOk("create"), Happened{});
        const Happened happened = expectOk("call view");
        for (const std::string& each : happened)
            EXPECT_TRUE(&each == &happened.back() ? each == visible : each.starts_with("log TW: "))
                << each;
    }
    void writeCategories(const std::string& text) {
        std::istringstream stream(text);
        std::vector<CategoryEntry> entries;
        for (std::string entry; std::getline(stream >> std::ws, entry, ',');) {
            const bool isHidden = entry[0] == '!';
            const auto equals = entry.find('=');
            entries.push_back({entry.substr(isHidden ? 1 : 0, equals - (isHidden ? 1 : 0)),
                               entry.substr(equals + 1), isHidden ? Row::Hidden : Row::Shown});
        }
        files.writeCategories(entries);
    }
};

TEST_P(HeadlessTranscript, IsWhatTheProgramAnswers) {
    run(GetParam().lines);
    EXPECT_EQ(program->finish(), 0);
    EXPECT_EQ(program->nextLine(), std::nullopt);
    EXPECT_EQ(program->complaints(), "");
}

INSTANTIATE_TEST_SUITE_P(Of, HeadlessTranscript, testing::ValuesIn(everyTranscript()), nameOf);

}  // namespace
}  // namespace test
