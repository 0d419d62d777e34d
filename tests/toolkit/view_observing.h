#pragma once

#include "toolkit/view.h"

#include <functional>
#include <utility>

namespace toolkit_tests {

/// Counts what it is told of the changes of one view.
class ChangeCounter : public toolkit::ViewObserver {
public:
    explicit ChangeCounter(toolkit::View& view) : view_(view) { view_.addObserver(*this); }
    ChangeCounter(const ChangeCounter&) = delete;
    ChangeCounter& operator=(const ChangeCounter&) = delete;
    virtual ~ChangeCounter() { view_.removeObserver(*this); }

    void viewDidChange(toolkit::View& view) override {
        ++count_;
        if (meanwhile)
            meanwhile(view);
    }
    /// How many changes were told since the last call.
    int takeCount() { return std::exchange(count_, 0); }

    std::function<void(toolkit::View&)> meanwhile; ///< runs while a change is told

private:
    toolkit::View& view_;
    int count_ = 0;
};

/// Gives the control an action that counts its runs.
inline void countActions(toolkit::Control& control, int& runs) {
    control.setAction([&runs](toolkit::Control&) { ++runs; });
}

} // namespace toolkit_tests
