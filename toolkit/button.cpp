#include "toolkit/button.h"

namespace toolkit {

Button::~Button() = default;
PushButton::~PushButton() = default;
CheckBox::~CheckBox() = default;

void CheckBox::setOnThroughBinding(bool on) {
    setOn(on);
    writeThroughBinding(on);
}

void CheckBox::userSetOn(bool on) {
    setOnThroughBinding(on);
    runAction();
}

} // namespace toolkit
