#include "shells/common/Json.hpp"

#include "platform/foundation/PrintableText.hpp"

#include <charconv>
#include <cmath>

namespace shell {
namespace {

constexpr double largestExactInteger = 9007199254740992.0;  // 2 to the 53rd.

template <class... Cases>
struct Overloaded : Cases... {
    using Cases::operator()...;
};
template <class... Cases>
Overloaded(Cases...) -> Overloaded<Cases...>;  // Clang 14 does not deduce it.

Json arrayOf(const PropertyValue::Array& values) {
    Json array = Json::array();
    for (const PropertyValue& value : values)
        array.push_back(jsonValue(value));
    return array;
}

Json objectOf(const PropertyValue::Dictionary& entries) {
    Json object = Json::object();
    for (const auto& [key, value] : entries)
        object[key] = jsonValue(value);
    return object;
}

}  // namespace

Json jsonNumber(float number) {
    if (!std::isfinite(number)) return nullptr;
    char text[64];
    const auto written = std::to_chars(std::begin(text), std::end(text), number);
    double shortest = 0;
    std::from_chars(text, written.ptr, shortest);
    return jsonNumber(shortest);
}

Json jsonNumber(double number) {
    if (!std::isfinite(number)) return nullptr;
    if (number == std::trunc(number) && std::abs(number) <= largestExactInteger)
        return static_cast<std::int64_t>(number);
    return number;
}

Json jsonText(const NSString& text) {
    return text ? Json(*text) : Json(nullptr);
}

Json jsonValue(const PropertyValue& value) {
    return std::visit(
        Overloaded{
            [](std::monostate) { return Json(nullptr); },
            [](bool truth) { return Json(truth); },
            [](std::int64_t number) { return Json(number); },
            [](std::uint64_t number) { return Json(number); },
            [](double number) { return jsonNumber(number); },
            [](const std::string& text) { return Json(text); },
            [](const PropertyValue::Date& date) {
                return jsonNumber(date.secondsSinceReferenceDate);
            },
            [](const std::shared_ptr<const PropertyValue::Data>&) { return Json(nullptr); },
            [](const std::shared_ptr<const PropertyValue::Array>& array) {
                return arrayOf(*array);
            },
            [](const std::shared_ptr<const PropertyValue::Dictionary>& dictionary) {
                return objectOf(*dictionary);
            },
        },
        value.storage());
}

std::string lineFrom(const Json& object) {
    return escapedJson(object.dump(-1, ' ', false, Json::error_handler_t::replace));
}

}  // namespace shell
