#pragma once

#include "toolkit/view.h"

namespace toolkit {

/// What shows a title: a label, or the border of a titled box.
class CV_TOOLKIT_EXPORT Label : public View {
public:
    using View::View; ///< with its name in the view description
    ~Label() override;

    [[nodiscard]] const std::string& text() const { return text_; }    ///< as it is shown
    void setText(std::string text) { change(text_, std::move(text)); } ///< observers hear a new one
    [[nodiscard]] TextColor textColor() const { return textColor_; }   ///< its meaning, no shade
    void setTextColor(TextColor color) { change(textColor_, color); }  ///< observers hear another one

private:
    std::string text_;
    TextColor textColor_ = TextColor::Enabled;
};

/// A box around other controls, with a title that keeps its colour.
class CV_TOOLKIT_EXPORT TitledBox : public View {
public:
    using View::View; ///< with its name in the view description
    ~TitledBox() override;

    [[nodiscard]] const std::string& title() const { return title_; }      ///< as it is shown
    void setTitle(std::string title) { change(title_, std::move(title)); } ///< observers hear a new one

private:
    std::string title_;
};

} // namespace toolkit
