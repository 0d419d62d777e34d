#pragma once

#include "toolkit/view.h"

#include <memory>
#include <vector>

namespace toolkit {

/// A window of a panel's own, or the dialog's key window. Hidden until it is run or shown.
class CV_TOOLKIT_EXPORT Window : public View {
public:
    explicit Window(std::string name) : View(std::move(name)) { setHidden(true); } ///< hidden
    ~Window() override;

    [[nodiscard]] const std::string& title() const { return title_; }      ///< as it is shown
    void setTitle(std::string title) { change(title_, std::move(title)); } ///< observers hear a new one
    /// What stands in it, in the description's order. Borrowed from the description that made the window.
    [[nodiscard]] const std::vector<View*>& content() const { return content_; }
    void addContent(View& view) { content_.push_back(&view); } ///< borrowed
    /// Shows again what changed.
    void display() { notifyObservers(); }

private:
    std::string title_;
    std::vector<View*> content_;
};

} // namespace toolkit
