#include "toolkit/image_view.h"
#include "toolkit/label.h"
#include "toolkit/window.h"

namespace toolkit {

Label::~Label() = default;
TitledBox::~TitledBox() = default;
Window::~Window() = default;
ImageView::~ImageView() = default;

void ImageView::setImage(std::optional<Image> image) {
    image_ = std::move(image);
    ++imageCount_;
    notifyObservers();
}

void ImageView::renameImage(std::string name) {
    if (image_)
        change(image_->name, std::optional(std::move(name)));
}

} // namespace toolkit
