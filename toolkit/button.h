#pragma once

#include "toolkit/localized_text.h"
#include "toolkit/view.h"

namespace toolkit {

/// A button with a title. Its title may know the key that it was looked up by.
class CV_TOOLKIT_EXPORT Button : public BoundControl {
public:
    using BoundControl::BoundControl;
    ~Button() override;

    [[nodiscard]] const std::string& title() const { return title_.text; } ///< as it is shown
    /// Empty where the title is no looked-up text.
    [[nodiscard]] const std::string& titleKey() const { return title_.key; }
    void setTitle(LocalizedText title) { change(title_, std::move(title)); }                           ///< with its key
    void setTitle(std::string title) { setTitle(LocalizedText{.key = {}, .text = std::move(title)}); } ///< no key

private:
    LocalizedText title_;
};

/// A button that the user presses: it holds no state.
class CV_TOOLKIT_EXPORT PushButton : public Button {
public:
    using Button::Button;
    ~PushButton() override;

    void userPressed() { runAction(); } ///< runs the action

    /// Whether it is its window's default button.
    [[nodiscard]] bool isDefault() const { return default_; }
    void setDefault(bool isDefault) { default_ = isDefault; } ///< Return presses it

private:
    bool default_ = false;
};

/// A check box, or a disclosure button: on or off.
class CV_TOOLKIT_EXPORT CheckBox : public Button {
public:
    using Button::Button;
    ~CheckBox() override;

    /// 1 is on, 0 is off.
    [[nodiscard]] int state() const { return state_; }
    [[nodiscard]] bool isOn() const { return state_ == 1; } ///< the state is 1
    /// By program: neither the binding writes nor the action runs.
    void setOn(bool on) { change(state_, on ? 1 : 0); }
    /// Sets the state and lets the binding write it; the action does not run.
    void setOnThroughBinding(bool on);
    /// By the user: the change, the binding, then the action, once.
    void userSetOn(bool on);

private:
    int state_ = 0;
};

} // namespace toolkit
