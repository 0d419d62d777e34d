#pragma once

#include "toolkit/image.h"
#include "toolkit/view.h"

namespace toolkit {

/// Shows one picture, or none.
class CV_TOOLKIT_EXPORT ImageView : public View {
public:
    using View::View; ///< with its name in the view description
    ~ImageView() override;

    [[nodiscard]] const std::optional<Image>& image() const { return image_; } ///< none: nothing is shown
    /// A new picture always counts as a change, an equal one too: its pixels may be others.
    void setImage(std::optional<Image> image);
    /// How many pictures the view has been given.
    [[nodiscard]] std::int64_t imageCount() const { return imageCount_; }
    /// Does nothing where there is no picture.
    void renameImage(std::string name);
    /// Draws at once what waits to be drawn.
    void displayNow() { notifyObservers(); }

private:
    std::optional<Image> image_;
    std::int64_t imageCount_ = 0;
};

} // namespace toolkit
