#include "platform/foundation/MachineModel.hpp"
#include "shells/headless/Events.hpp"
#include "shells/headless/Session.hpp"

#include <algorithm>
#include <limits>

namespace headless {
namespace {

constexpr std::size_t anyNumber = std::numeric_limits<std::size_t>::max();

std::optional<Answer> create(Session& session, Arguments arguments) {
    const auto name = arguments.empty() ? std::nullopt : std::optional(arguments[0].text);
    return Answer::from(session.stage().create(name));
}

std::optional<PropertyValue> propertyPointFrom(const Word& first, const Word& second) {
    const auto x = numberFrom(first);
    const auto y = numberFrom(second);
    if (!x || !y) return std::nullopt;
    return PropertyValue(
        PropertyValue::Dictionary{{"x", PropertyValue(*x)}, {"y", PropertyValue(*y)}});
}

/// "X,Y" as a point; nullopt for any other text.
std::optional<PropertyValue> propertyPointFrom(const std::string& text) {
    const std::size_t comma = text.find(',');
    if (comma == std::string::npos) return std::nullopt;
    return propertyPointFrom({text.substr(0, comma)}, {text.substr(comma + 1)});
}

/// An unquoted number, point, yes, no or nil has its own type; everything else is a text.
PropertyValue argumentFrom(const Word& word) {
    if (word.quoted) return PropertyValue(word.text);
    if (word.text == "nil") return {};
    if (const auto truth = yesNoFrom(word)) return PropertyValue(*truth == YesNo::Yes);
    if (const auto number = numberFrom(word)) return PropertyValue(*number);
    if (auto point = propertyPointFrom(word.text)) return *std::move(point);
    return PropertyValue(word.text);
}

/// Two bare numbers for the one argument of a selector are a point too.
std::vector<PropertyValue> argumentsFrom(std::string_view selector, Arguments words) {
    if (std::ranges::count(selector, ':') == 1 && words.size() == 2)
        if (auto point = propertyPointFrom(words[0], words[1])) return {*std::move(point)};
    std::vector<PropertyValue> values;
    for (const Word& word : words)
        values.push_back(argumentFrom(word));
    return values;
}

std::optional<Answer> call(Session& session, Arguments arguments) {
    const std::shared_ptr<NSObject> controller = session.stage().controller();
    if (!controller) return Answer::failed("there is no controller");
    const std::string& selector = arguments[0].text;
    if (!controller->respondsToSelector(selector))
        return Answer::failed("the controller does not respond to '" + selector + "'");
    const TouchReport report(session.events());
    const auto result =
        controller->performSelector(selector, argumentsFrom(selector, arguments.subspan(1)));
    if (!result) return Answer::failed("'" + selector + "' does not take these arguments");
    if (selector == "view") session.stage().takeLegacyView();
    session.stage().followRows();
    return Answer::result(jsonValue(*result));
}

std::optional<Answer> release(Session& session, Arguments) {
    return Answer::from(session.stage().release());
}

std::optional<Answer> parent(Session& session, Arguments arguments) {
    if (arguments[0].isBare("none")) {
        session.stage().setParentWidth(std::nullopt);
        return Answer::done();
    }
    const auto width = parentWidthFrom(arguments[0]);
    if (!width) return std::nullopt;
    session.stage().setParentWidth(width);
    return Answer::done();
}

std::optional<Answer> host(Session& session, Arguments arguments) {
    const auto responds = yesNoFrom(arguments[1]);
    if (!responds) return std::nullopt;
    const std::string& selector = arguments[0].text;
    if (!session.stage().host().setResponds(selector, *responds))
        return Answer::failed("neither the host nor its delegate knows '" + selector + "'");
    return Answer::done();
}

std::optional<Answer> model(Session&, Arguments arguments) {
    setMachineModel(arguments[0].text);
    return Answer::done();
}

std::optional<Answer> quit(Session& session, Arguments) {
    session.quit();
    return Answer::done();
}

}  // namespace

std::span<const Command> controllerCommands() {
    static constexpr Command commands[] = {
        {"create", "[NAME]", 0, 1, create},
        {"call", "METHOD [ARG ...]", 1, anyNumber, call},
        {"release", "", 0, 0, release},
        {"parent", "WIDTH|none", 1, 1, parent},
        {"host", "SELECTOR yes|no", 2, 2, host},
        {"model", "NAME", 1, 1, model},
        {"quit", "", 0, 0, quit},
    };
    return commands;
}

}  // namespace headless
