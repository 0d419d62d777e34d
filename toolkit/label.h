#pragma once

#include "toolkit/view.h"

namespace toolkit {

/// What shows a title: a label, or the border of a titled box.
class CV_TOOLKIT_EXPORT Label : public View {
public:
    using View::View;
    ~Label() override;

    [[nodiscard]] const std::string& text() const { return text_; }
    void setText(std::string text) { change(text_, std::move(text)); }
    [[nodiscard]] TextColor textColor() const { return textColor_; }
    void setTextColor(TextColor color) { change(textColor_, color); }

private:
    std::string text_;
    TextColor textColor_ = TextColor::Enabled;
};

/// A box around other controls, with a title that keeps its colour.
class CV_TOOLKIT_EXPORT TitledBox : public View {
public:
    using View::View;
    ~TitledBox() override;

    [[nodiscard]] const std::string& title() const { return title_; }
    void setTitle(std::string title) { change(title_, std::move(title)); }

private:
    std::string title_;
};

} // namespace toolkit
