#include "shells/headless/Session.hpp"
#include "shells/headless/TreeReport.hpp"

namespace headless {
namespace {

constexpr double greatestScale = 8;  // Pixels a point.

std::optional<Answer> tree(Session& session, Arguments) {
    session.stage().window().layoutIfNeeded();
    return Answer::result(treeFrom(session.stage().window()));
}

std::optional<Answer> paint(Session& session, Arguments arguments) {
    const auto scale = arguments.size() > 1 ? numberFrom(arguments[1]) : 1.0;
    if (!scale) return std::nullopt;
    if (*scale <= 0 || *scale > greatestScale)
        return Answer::failed("the scale must lie above 0 and not above 8");
    auto [damage, failure] =
        session.painter().paint(session.stage().window(), arguments[0].text, *scale);
    if (failure) return Answer::failed(*failure);
    Json rectangles = Json::array();
    for (const CGRect& rectangle : damage)
        rectangles.push_back(jsonRectangle(rectangle));
    return Answer::done().with("damage", std::move(rectangles));
}

}  // namespace

std::span<const Command> reportCommands() {
    static constexpr Command commands[] = {
        {"tree", "", 0, 0, tree},
        {"paint", "FILE [SCALE]", 1, 2, paint},
    };
    return commands;
}

}  // namespace headless
