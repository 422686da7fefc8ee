#include "tests/support/HeadlessProcess.hpp"

#include <stdexcept>

namespace test {
namespace {

std::vector<std::string> commandLine(const std::vector<std::string>& arguments) {
    std::vector<std::string> words{TARNWICK_LAUNCHER TARNWICK_HEADLESS_PROGRAM};
    words.insert(words.end(), arguments.begin(), arguments.end());
    return words;
}

std::string textOf(const Json& value) {
    return value.is_string() ? value.get<std::string>() : value.dump();
}

std::string summaryOf(const Json& event) {
    const std::string kind = event.at("event");
    if (kind == "log") return "log " + textOf(event.at("line"));
    if (kind == "notification") return "post " + textOf(event.at("name"));
    if (kind == "set-volume")
        return "set " + textOf(event.at("category")) + " " + textOf(event.at("volume"));
    if (kind == "volume-notification")
        return "volume " + textOf(event.at("category")) + " " + textOf(event.at("volume"));
    if (kind != "host") return event.dump();
    const std::string message = "host " + textOf(event.at("selector"));
    if (!event.contains("width")) return message;
    return message + " " + textOf(event.at("width")) + " x " + textOf(event.at("height"));
}

}  // namespace

std::vector<std::string> Reply::happened() const {
    std::vector<std::string> summaries;
    for (const Json& event : events)
        summaries.push_back(summaryOf(event));
    return summaries;
}

HeadlessProcess::HeadlessProcess(const std::vector<std::string>& arguments)
    : RunningProgram(commandLine(arguments), {.input = Input::Pipe}) {}

Reply HeadlessProcess::send(std::string_view command) {
    write(std::string(command) + "\n");
    return readReply();
}

Reply HeadlessProcess::readReply() {
    Reply reply;
    for (;;) {
        const auto text = nextLine();
        if (!text) throw std::runtime_error("ended without a result; it said: " + complaints());
        reply.line = Json::parse(*text);
        if (reply.line.contains("ok")) return reply;
        reply.events.push_back(std::move(reply.line));
    }
}

}  // namespace test
