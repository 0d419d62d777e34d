#pragma once

#include "imaging/picture.h"

#include <optional>
#include <utility>

namespace imaging {

/// A filter that keeps its parameters and its input picture, to be made once and read many times. Reading the output
/// composes a picture from both as they stand then; later changes of the node do not reach it.
template <class Parameters>
class FilterNode {
public:
    /// Free to change at any time; they begin as the filter's defaults.
    Parameters parameters;

    /// Puts the parameters back to the filter's defaults. The input stays.
    void setDefaults() { parameters = Parameters{}; }

    void setInputImage(std::optional<Picture> picture) { inputImage_ = std::move(picture); }
    [[nodiscard]] const std::optional<Picture>& inputImage() const { return inputImage_; }

    /// The input with this filter put on it; none when there is no input.
    [[nodiscard]] std::optional<Picture> outputImage() const {
        return inputImage_ ? std::optional(inputImage_->filteredBy(parameters)) : std::nullopt;
    }

private:
    std::optional<Picture> inputImage_;
};

using ColorControlsNode = FilterNode<ColorControls>;
using ColorMatrixNode = FilterNode<ColorMatrix>;
using ColorMonochromeNode = FilterNode<ColorMonochrome>;

} // namespace imaging
