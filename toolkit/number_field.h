#pragma once

#include "toolkit/view.h"

namespace toolkit {

/// A control that edits one number: a field with digits, or a slider.
class CV_TOOLKIT_EXPORT NumberField : public BoundControl {
public:
    using BoundControl::BoundControl;
    ~NumberField() override;

    [[nodiscard]] double value() const { return value_; }
    [[nodiscard]] float singleValue() const { return static_cast<float>(value_); }
    [[nodiscard]] std::int64_t integerValue() const { return Value(value_).integerReading(); }
    [[nodiscard]] double minimum() const { return minimum_; }
    [[nodiscard]] double maximum() const { return maximum_; }
    void setLimits(double minimum, double maximum);
    [[nodiscard]] TextColor textColor() const { return textColor_; }
    void setTextColor(TextColor color) { change(textColor_, color); }

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
