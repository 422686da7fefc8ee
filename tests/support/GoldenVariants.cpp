#include "tests/support/GoldenVariants.hpp"

#include "tests/support/Picture.hpp"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <regex>

namespace {

constexpr RasteriserRelease firstRelease{1, 16};

// Up to 1.16 a glyph stands on whole pixels, from 1.18 on on quarters of them: half a pixel and an
// eighth apart at most. A part of a picture that is somewhere else is a whole pixel away.
constexpr double farthestEdge = 5.0 / 8;     // of a pixel
constexpr double mostOfAPicture = 1.0 / 16;  // much text changes a thirtieth
constexpr int ignoredLevels = 2;             // of 255, as GoldenTolerance has it

struct Variant {
    std::string name;
    RasteriserRelease release;
};

std::optional<Variant> parsed(const std::string& file) {
    static const std::regex form(R"((.+)\.cairo-(\d{1,4})\.(\d{1,4})\.png)");
    std::smatch parts;
    if (!std::regex_match(file, parts, form)) return std::nullopt;
    return Variant{parts[1], {std::stoi(parts[2]), std::stoi(parts[3])}};
}

std::string fileOf(const Variant& variant) {
    return variant.name + ".cairo-" + std::to_string(variant.release.major) + "." +
           std::to_string(variant.release.minor) + ".png";
}

/// From the darkest to the brightest of what both pictures have around a place, per channel.
int contrastAround(const Picture& one, const Picture& other, int x, int y, int number) {
    int least = 255;
    int most = 0;
    for (int row = std::max(0, y - 1); row <= std::min(one.height - 1, y + 1); ++row) {
        for (int column = std::max(0, x - 1); column <= std::min(one.width - 1, x + 1); ++column) {
            for (const Picture* picture : {&one, &other}) {
                const int level = channel(picture->at(column, row), number);
                least = std::min(least, level);
                most = std::max(most, level);
            }
        }
    }
    return most - least;
}

/// How far an edge moved that makes this difference, in pixels: 1 for one that came or went.
double edgeMoved(const Picture& one, const Picture& other, int x, int y) {
    double farthest = 0;
    for (const int number : {0, 1, 2, 3}) {
        const int apart = std::abs(channel(one.at(x, y), number) - channel(other.at(x, y), number));
        if (apart <= ignoredLevels) continue;
        farthest = std::max(farthest, double(apart) / contrastAround(one, other, x, y, number));
    }
    return farthest;
}

testing::AssertionResult edgesAlone(const Picture& one, const Picture& other) {
    std::size_t differing = 0;
    for (int y = 0; y < one.height; ++y) {
        for (int x = 0; x < one.width; ++x) {
            if (levelsApart(one.at(x, y), other.at(x, y)) <= ignoredLevels) continue;
            ++differing;
            if (edgeMoved(one, other, x, y) > farthestEdge)
                return testing::AssertionFailure() << "something else than a glyph's edge differs "
                                                   << "at " << x << ", " << y;
        }
    }
    if (double(differing) > mostOfAPicture * double(one.pixels.size()))
        return testing::AssertionFailure() << differing << " pixels differ";
    return testing::AssertionSuccess();
}

}  // namespace

RasteriserRelease RasteriserRelease::ofVersion(int version) {
    const int minor = version / 100 % 100;
    return {version / 10000, minor + minor % 2};
}

GoldenVariants::GoldenVariants(std::string folder, RasteriserRelease release)
    : folder_(std::move(folder)), release_(release) {}

std::vector<std::string> GoldenVariants::variantsIn(const std::string& folder) {
    std::vector<std::string> found;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        std::string file = entry.path().filename().string();
        if (parsed(file)) found.push_back(std::move(file));
    }
    std::sort(found.begin(), found.end());
    return found;
}

std::string GoldenVariants::unmarked(const std::string& variant) {
    return parsed(variant)->name + ".png";
}

std::string GoldenVariants::newestBefore(const std::string& name, bool orOwn) const {
    std::optional<Variant> newest;
    for (const std::string& file : variantsIn(folder_)) {
        const auto variant = parsed(file);
        if (variant->name != name || variant->release > release_) continue;
        if (!orOwn && variant->release == release_) continue;
        if (!newest || variant->release > newest->release) newest = variant;
    }
    return folder_ + "/" + (newest ? fileOf(*newest) : name + ".png");
}

std::string GoldenVariants::reference(const std::string& name) const {
    return newestBefore(name, true);
}

std::string GoldenVariants::olderReference(const std::string& name) const {
    return newestBefore(name, false);
}

std::string GoldenVariants::ownReference(const std::string& name) const {
    const bool isFirst = release_ <= firstRelease;
    return folder_ + "/" + (isFirst ? name + ".png" : fileOf({name, release_}));
}

testing::AssertionResult differAtGlyphEdgesAlone(const std::string& one, const std::string& other) {
    const std::optional<Picture> first = Picture::read(one);
    const std::optional<Picture> second = Picture::read(other);
    if (!first || !second)
        return testing::AssertionFailure() << "no picture " << (first ? other : one);
    if (first->size() != second->size())
        return testing::AssertionFailure()
               << "sizes differ: " << first->size() << " pixels and " << second->size();
    return edgesAlone(*first, *second) << " between " << one << " and " << other;
}
