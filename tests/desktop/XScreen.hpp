#pragma once

#include "tests/desktop/XDesktop.hpp"

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace test {

/// What was on a screen, in pixels.
class ScreenPicture {
 public:
    ScreenPicture(int width, int height, std::vector<std::uint32_t> pixels)
        : width_(width), height_(height), pixels_(std::move(pixels)) {}

    int width() const { return width_; }
    int height() const { return height_; }
    /// Red, green and blue in the lowest bytes; 0 beyond the picture.
    std::uint32_t at(double x, double y) const;
    /// The smallest rectangle around everything that is another in the other one, of the same
    /// size; empty when nothing is.
    CGRect difference(const ScreenPicture& other) const;
    /// Where the pixels of one row that are nearly white have their middle, between two columns;
    /// -1 when there are none.
    double middleOfWhite(double y, double fromX, double toX) const;
    /// As evidence of what a test saw: NAME.png in the build's folder for that.
    void keep(const std::string& name) const;

 private:
    int width_;
    int height_;
    std::vector<std::uint32_t> pixels_;
};

/// The eyes in front of an X server.
class XScreen {
 public:
    explicit XScreen(const std::string& displayName);

    ScreenPicture picture() const;
    /// The windows that a program of that class shows, without a window manager around them.
    std::vector<CGRect> windowsOf(const std::string& windowClass) const;
    /// Asks for another size for all those windows, as a window manager does.
    void resize(const std::string& windowClass, const CGSize& size) const;
    /// A property of the first of those windows, as the server keeps it: numbers of 32 bits, or
    /// bytes. Empty where it is not set.
    std::vector<unsigned long> numbersOf(const std::string& windowClass, const char* name) const;
    std::string textOf(const std::string& windowClass, const char* name) const;

 private:
    struct Free {
        void operator()(unsigned char* bytes) const;
    };
    using Property = std::unique_ptr<unsigned char, Free>;

    std::vector<unsigned long> shownBy(const std::string& windowClass) const;
    /// Of so many bits a number; `count` becomes how many.
    Property propertyOf(const std::string& windowClass, const char* name, int bits,
                        unsigned long& count) const;

    XConnection display_;
};

}  // namespace test
