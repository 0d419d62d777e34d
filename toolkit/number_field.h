#pragma once

#include "toolkit/view.h"

namespace toolkit {

/// A control that edits one number: a field with digits, or a slider.
class CV_TOOLKIT_EXPORT NumberField : public BoundControl {
public:
    using BoundControl::BoundControl;
    ~NumberField() override;

    [[nodiscard]] double value() const { return value_; }                          ///< as entered
    [[nodiscard]] float singleValue() const { return static_cast<float>(value_); } ///< rounded to single precision
    [[nodiscard]] std::int64_t integerValue() const { return Value(value_).integerReading(); } ///< cut toward zero
    [[nodiscard]] double minimum() const { return minimum_; }         ///< of what a user can enter
    [[nodiscard]] double maximum() const { return maximum_; }         ///< of what a user can enter
    void setLimits(double minimum, double maximum);                   ///< for the user, not for a program
    [[nodiscard]] TextColor textColor() const { return textColor_; }  ///< its meaning, no shade
    void setTextColor(TextColor color) { change(textColor_, color); } ///< observers hear another one

    /// By program: neither the binding writes nor the action runs. Not limited.
    void setValue(double value) { change(value_, value); }
    /// Sets the value and lets the binding write it; the action does not run.
    void setValueThroughBinding(double value);
    /// By the user: the change, the binding, then the action, once.
    void userSetValue(double value);

private:
    double value_ = 0, minimum_ = 0, maximum_ = 0;
    TextColor textColor_ = TextColor::Enabled;
};

} // namespace toolkit
