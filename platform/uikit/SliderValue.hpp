#pragma once

/// The value of a slider: a number within a range. No view, no painting. A range whose ends are
/// the wrong way round is its minimum alone; an end that is not finite is ignored; a value that is
/// not a number counts as the minimum.
class SliderValue {
 public:
    float minimum() const { return minimum_; }
    float maximum() const { return maximum_; }
    float value() const { return value_; }

    /// These answer whether the value has changed; it is kept within the range.
    bool setMinimum(float minimum);
    bool setMaximum(float maximum);
    bool setValue(float value);

    /// Where a value lies in the range, from 0 to 1; 0 in an empty range.
    double fraction(double value) const;
    double fraction() const { return fraction(value_); }
    /// The value at a fraction, which is kept within 0 to 1.
    float valueAtFraction(double fraction) const;

 private:
    float clamped(float value) const;

    float minimum_ = 0;
    float maximum_ = 1;
    float value_ = 0;
};
