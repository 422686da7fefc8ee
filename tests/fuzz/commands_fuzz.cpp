#include "platform/foundation/MachineModel.hpp"
#include "platform/foundation/PreferencesDirectory.hpp"
#include "shells/common/WidgetBundle.hpp"
#include "shells/headless/InputLoop.hpp"
#include "shells/headless/Session.hpp"
#include "tests/support/MixerFiles.hpp"

#include <cstdint>
#include <cstdlib>
#include <filesystem>

namespace {

using namespace headless;

/// Every line of the output must be JSON, and every line of the input must have one result.
class OutputCheck {
 public:
    void write(const std::string& line) {
        const Json read = Json::parse(line, nullptr, false);
        if (!read.is_object() || read.contains("ok") == read.contains("event")) std::abort();
        results_ += read.contains("ok") ? 1 : 0;
    }
    void expectResults(int expected) const {
        if (results_ != expected) std::abort();
    }

 private:
    int results_ = 0;
};

const test::MixerFiles& preferences() {
    static const test::MixerFiles files;
    return files;
}

void forgetEarlierInputs() {
    static const bool once = [] {
        shell::installBackends();
        setPreferencesDirectory(preferences().folder().string());
        return true;
    }();
    (void)once;
    std::filesystem::remove(preferences().categoryFile());
    setMachineModel("iPhone6,1");
}

/// What follows "#settings " in the first line are the entries of the settings file.
void writeSettingsOf(std::string_view input) {
    constexpr std::string_view introduction = "#settings ";
    const std::string_view line = input.substr(0, input.find('\n'));
    preferences().writeSettings(line.starts_with(introduction) ? line.substr(introduction.size())
                                                               : std::string_view());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    forgetEarlierInputs();
    const std::string_view input(reinterpret_cast<const char*>(data), size);
    writeSettingsOf(input);
    OutputCheck output;
    SessionOptions options;
    options.bundlePath = TARNWICK_BUNDLE;
    options.parentWidth = 320;
    options.paintFiles = PaintFiles::Discarded;
    Session session(options, Device::simulated(),
                    [&output](const std::string& line) { output.write(line); });

    LineReader lines;
    lines.append(input);
    lines.endOfInput();
    int sent = 0;
    while (!session.hasQuit()) {
        const auto line = lines.next();
        if (!line) break;
        session.execute(line->text);
        output.expectResults(++sent);
    }
    return 0;
}
