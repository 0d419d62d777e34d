#pragma once

#include "toolkit/export.h"
#include "toolkit/object.h"
#include "toolkit/value.h"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace toolkit {

class View;

/// A frame in points, origin at the bottom left of the surrounding view.
struct Rect {
    double x = 0, y = 0, width = 0, height = 0;                 ///< points
    friend bool operator==(const Rect&, const Rect&) = default; ///< the same in every member
};

struct Size {
    double width = 0, height = 0;                               ///< points
    friend bool operator==(const Size&, const Size&) = default; ///< the same in every member
};

/// The platform's two control-text colours, by their meaning.
enum class TextColor { Enabled, Disabled };

/// Hears of every change of a model it observes.
class CV_TOOLKIT_EXPORT ViewObserver {
public:
    virtual void viewDidChange(View& view) = 0; ///< after the change

protected:
    ~ViewObserver() = default;
};

/// A model of something on screen. It draws nothing and knows no widget: it holds what a widget would show and tells
/// its observers what changed.
class CV_TOOLKIT_EXPORT View : public Object {
public:
    explicit View(std::string name) : name_(std::move(name)) {} ///< as in the description
    ~View() override;

    /// The name in the view description: the field's name in the panel.
    [[nodiscard]] const std::string& name() const { return name_; }

    [[nodiscard]] const Rect& frame() const { return frame_; }  ///< in its surroundings
    void setFrame(const Rect& frame) { change(frame_, frame); } ///< observers hear another one
    [[nodiscard]] bool isHidden() const { return hidden_; }     ///< by itself
    void setHidden(bool hidden) { change(hidden_, hidden); }    ///< observers hear a change

    /// Observers are borrowed: who adds one removes it. Safe while a change is being told.
    void addObserver(ViewObserver& observer);
    void removeObserver(ViewObserver& observer); ///< nothing where it is none

protected:
    /// Sets a member and tells the observers, if the value is another one.
    template <typename Member, typename New>
    void change(Member& member, New&& value) {
        if (member == value)
            return;
        member = std::forward<New>(value);
        notifyObservers();
    }
    void notifyObservers(); ///< of this view

private:
    std::string name_;
    Rect frame_;
    bool hidden_ = false;
    std::vector<ViewObserver*> observers_;
};

/// A model that can be enabled and whose use by the user runs an action.
class CV_TOOLKIT_EXPORT Control : public View {
public:
    using Action = std::function<void(Control& sender)>; ///< what a user's action runs

    using View::View; ///< with its name in the view description

    [[nodiscard]] bool isEnabled() const { return enabled_; }    ///< whether a user can use it
    void setEnabled(bool enabled) { change(enabled_, enabled); } ///< observers hear a change
    [[nodiscard]] std::int64_t tag() const { return tag_; }      ///< tells controls apart
    void setTag(std::int64_t tag) { tag_ = tag; }                ///< as in the description

    /// The message that the view description names for this control; empty where it names none.
    [[nodiscard]] const std::string& actionMessage() const { return actionMessage_; }
    void setActionMessage(std::string message) { actionMessage_ = std::move(message); } ///< as in the description
    /// What a user's action runs. Set once, by the panel that owns the control.
    void setAction(Action action) { action_ = std::move(action); }

protected:
    /// Runs the action, once. What changed by program never does.
    void runAction();

private:
    bool enabled_ = true;
    std::int64_t tag_ = 0;
    std::string actionMessage_;
    Action action_;
};

/// A control whose value a binding carries into the key-value store when the user changes it.
class CV_TOOLKIT_EXPORT BoundControl : public Control {
public:
    using Control::Control;

    /// Set by the binding; null where the control is bound to nothing.
    void setValueWriter(std::function<void(const Value&)> writer) { valueWriter_ = std::move(writer); }

protected:
    void writeThroughBinding(const Value& value) const; ///< nothing where it is not bound

private:
    std::function<void(const Value&)> valueWriter_;
};

} // namespace toolkit
