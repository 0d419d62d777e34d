#include "toolkit/view.h"

#include <algorithm>

namespace toolkit {

View::~View() = default;

void View::addObserver(ViewObserver& observer) {
    observers_.push_back(&observer);
}

void View::removeObserver(ViewObserver& observer) {
    std::erase(observers_, &observer);
}

void View::notifyObservers() {
    for (ViewObserver* observer : std::vector(observers_)) // a copy: any of them may leave meanwhile
        if (std::ranges::find(observers_, observer) != observers_.end())
            observer->viewDidChange(*this);
}

void Control::runAction() {
    if (const Action action = action_) // a copy: the action may end this control's panel
        action(*this);
}

void BoundControl::writeThroughBinding(const Value& value) const {
    if (valueWriter_)
        valueWriter_(value);
}

} // namespace toolkit
