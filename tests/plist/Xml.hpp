#pragma once

#include "backends/plist/PlistCodec.hpp"

#include <string>

inline std::string documentOf(const std::string& body) {
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
           "<!DOCTYPE plist PUBLIC \"-//X//DTD PLIST 1.0//EN\" \"http://x/PropertyList-1.0.dtd\">\n"
           "<plist version=\"1.0\">\n" +
           body + "\n</plist>\n";
}

inline std::optional<PropertyValue> decoded(const std::string& bytes) {
    const DecodedPropertyList result = PlistCodec().decode(bytes);
    return result ? std::optional(*result) : std::nullopt;
}

inline std::optional<PropertyValue> decodedBody(const std::string& body) {
    return decoded(documentOf(body));
}

inline std::string repeated(const std::string& text, int times) {
    std::string all;
    for (int i = 0; i < times; ++i)
        all += text;
    return all;
}

/// That many arrays in each other.
inline std::string nestedArrays(int depth) {
    return repeated("<array>", depth) + repeated("</array>", depth);
}
