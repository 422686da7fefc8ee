#include "platform/foundation/NSNotificationCenter.hpp"
#include "shells/headless/Session.hpp"

#include <algorithm>
#include <limits>

namespace headless {
namespace {

/// A number as a volume. Volumes have single precision, whose greatest number limits it.
std::optional<float> volumeFrom(const Word& word) {
    constexpr double greatest = std::numeric_limits<float>::max();
    const auto number = numberFrom(word);
    if (!number) return std::nullopt;
    return static_cast<float>(std::clamp(*number, -greatest, greatest));
}

std::optional<Answer> volume(Session& session, Arguments arguments) {
    const auto fraction = volumeFrom(arguments[1]);
    if (!fraction) return std::nullopt;
    return Answer::from(session.device().changeVolume(arguments[0].text, *fraction));
}

bool isGiven(Arguments arguments, std::size_t index) {
    return index < arguments.size() && !arguments[index].isBare("-");
}

std::optional<Answer> notify(Session& session, Arguments arguments) {
    PropertyValue::Dictionary userInfo;
    if (isGiven(arguments, 0)) {
        session.device().nameCategory(arguments[0].text);
        userInfo.emplace_back(AVSystemController_EffectiveVolumeNotificationParameter_Category,
                              PropertyValue(arguments[0].text));
    }
    if (isGiven(arguments, 1)) {
        const auto fraction = volumeFrom(arguments[1]);
        if (!fraction) return std::nullopt;
        userInfo.emplace_back(AVSystemController_EffectiveVolumeNotificationParameter_Volume,
                              PropertyValue(static_cast<double>(*fraction)));
    }
    NSNotificationCenter::defaultCenter().postNotificationName(
        AVSystemController_EffectiveVolumeDidChangeNotification, nullptr,
        PropertyValue(std::move(userInfo)));
    return Answer::done();
}

std::optional<Answer> readable(Session& session, Arguments arguments) {
    const auto isReadable = yesNoFrom(arguments[1]);
    if (!isReadable) return std::nullopt;
    return Answer::from(session.device().setReadable(arguments[0].text, *isReadable));
}

std::optional<Answer> route(Session& session, Arguments arguments) {
    const NSString name = arguments[1].isBare("none") ? std::nullopt : NSString(arguments[1].text);
    return Answer::from(session.device().setRoute(arguments[0].text, name));
}

std::optional<Answer> service(Session& session, Arguments arguments) {
    const auto isThere = yesNoFrom(arguments[0]);
    if (!isThere) return std::nullopt;
    AVSystemController::setSharedAVSystemController(
        *isThere == YesNo::Yes ? session.device().shared() : nullptr);
    return Answer::done();
}

}  // namespace

std::span<const Command> deviceCommands() {
    static constexpr Command commands[] = {
        {"volume", "CATEGORY FRACTION", 2, 2, volume},
        {"notify", "[CATEGORY|- [FRACTION|-]]", 0, 2, notify},
        {"readable", "CATEGORY yes|no", 2, 2, readable},
        {"route", "CATEGORY NAME|none", 2, 2, route},
        {"service", "yes|no", 1, 1, service},
    };
    return commands;
}

}  // namespace headless
