#pragma once

#include "framework/panel_inspection.h"

#include <optional>
#include <span>
#include <string>
#include <string_view>

/// Questions to a keyword: a media type's or a paper size's, as the PPD spells it. A missing keyword answers no.
/// Case counts everywhere. "Base name": the keyword without its last extension, "A4" for "A4.Fullbleed".
namespace paper_names {

using Keyword = std::optional<std::string_view>;

/// A media type that prints as plain paper; the address side of a postcard is one too.
bool isKindOfPlainPaper(Keyword mediaType);
bool isKindOfPostcardPaperSize(Keyword paperSize);
/// A size that the second tray takes; by base name.
bool allowTray2PaperSize(Keyword paperSize);
/// A size that is loaded with its long side first; by base name.
bool isKindOfLandscapePaper(Keyword paperSize);
/// A size that is loaded with its short side first.
bool isKindOfPortraitPaper(Keyword paperSize);
/// A size that is fed by hand; by base name.
bool isKindOfManualFeedPaper(Keyword paperSize);
/// A Japanese envelope; by base name.
bool isKindOfJPEnvelope(Keyword paperSize);
/// Whether the keyword begins with that of the borderless variant of this size: "A4.Fullbleed" or "CvHagaki_B".
bool isBorderelessForPaperSize(Keyword paperSize, Keyword baseSize);
/// The height in points that the text takes in this font, wrapped to this width (points).
double heightForSpecifiedFontSpecifiedWidth(Keyword text, const toolkit::Font& font, double width,
                                            const toolkit::TextMeasurer& measurer);

/// Whether the text begins so. A missing text does not.
bool hasPrefix(Keyword text, std::string_view prefix);

/// The operations above by their message names.
std::span<const framework::TextMessage> messages();

} // namespace paper_names
