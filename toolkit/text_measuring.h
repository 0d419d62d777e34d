#pragma once

#include "toolkit/export.h"

#include <string>
#include <string_view>

namespace toolkit {

/// A font by its role and its size in points.
struct Font {
    std::string role; ///< such as "control"
    double size = 0;  ///< points

    /// The font of a control's content in the system's size.
    static Font control() { return {.role = "control", .size = 13}; }
};

/// Measures laid-out text. A host with a window measures with its own fonts.
class CV_TOOLKIT_EXPORT TextMeasurer {
public:
    virtual ~TextMeasurer();

    /// The width in points of the text on one line.
    [[nodiscard]] virtual double widthOfText(std::string_view text, const Font& font) const = 0;
    /// The height in points that the text takes, wrapped to this width (points) with no padding; 0 for no text.
    [[nodiscard]] virtual double heightOfText(std::string_view text, const Font& font, double width) const = 0;
};

/// Measures without any font: each character advances half the font's size, wide East Asian ones the whole size, and
/// a line is 1.25 of the size high. Lines break at blanks, between wide characters and at line ends in the text; a
/// word wider than the line breaks inside. The same everywhere, so that tests and scripted sessions are repeatable.
class CV_TOOLKIT_EXPORT FixedAdvanceMeasurer : public TextMeasurer {
public:
    ~FixedAdvanceMeasurer() override;
    [[nodiscard]] double widthOfText(std::string_view text, const Font& font) const override;
    [[nodiscard]] double heightOfText(std::string_view text, const Font& font, double width) const override;
};

} // namespace toolkit
