#pragma once

/// Red, green, blue and alpha from 0 to 1, not premultiplied. A value; an absent colour is an
/// empty std::optional<UIColor>.
struct UIColor {
    double red = 0;
    double green = 0;
    double blue = 0;
    double alpha = 1;
    bool operator==(const UIColor&) const = default;

    static constexpr UIColor colorWithRed(double red, double green, double blue, double alpha) {
        return {red, green, blue, alpha};
    }
    static constexpr UIColor clearColor() { return {0, 0, 0, 0}; }
    static constexpr UIColor redColor() { return {1, 0, 0, 1}; }
    static constexpr UIColor blackColor() { return {0, 0, 0, 1}; }
    static constexpr UIColor grayColor() { return {0.5, 0.5, 0.5, 1}; }
    static constexpr UIColor whiteColor() { return {1, 1, 1, 1}; }
    static constexpr UIColor greenColor() { return {0, 1, 0, 1}; }
    static constexpr UIColor blueColor() { return {0, 0, 1, 1}; }
    static constexpr UIColor yellowColor() { return {1, 1, 0, 1}; }
    static constexpr UIColor orangeColor() { return {1, 0.5, 0, 1}; }
    static constexpr UIColor purpleColor() { return {0.5, 0, 0.5, 1}; }
    static constexpr UIColor brownColor() { return {0.6, 0.4, 0.2, 1}; }

    constexpr UIColor colorWithAlpha(double newAlpha) const { return {red, green, blue, newAlpha}; }
    /// The nearest colour with all components from 0 to 1; one that is not a number becomes 0.
    constexpr UIColor clamped() const {
        const auto within = [](double value) { return value > 0 ? (value < 1 ? value : 1) : 0; };
        return {within(red), within(green), within(blue), within(alpha)};
    }
};
