#pragma once

#include "framework/option_keywords.h"

#include <array>
#include <string_view>

/// PPD options and keys that only the Color Settings panel knows.
namespace keywords {

inline constexpr std::string_view kColorMatching = "CVColorMatching";
inline constexpr std::string_view kColorEnhancement = "CVColorEnhancement";

/// Keys of effectContent beside those of options: whether there is colour to adjust, and the window's height as the
/// preview last saw it (points).
inline constexpr std::string_view kColorAvailable = "Color";
inline constexpr std::string_view kFrameHeight = "frameHeight";

/// The reference picture that stands for no colour matching.
inline constexpr std::string_view kNoneKeyword = "None";

/// The five adjustments, in the order of the tags of their controls.
struct Adjustment {
    std::string_view key;        ///< PPD option, and key of the pending values and of effectContent
    std::string_view settingKey; ///< entry of the job's print settings
};
inline constexpr std::array<Adjustment, 5> kAdjustments = {{
    {"CVBrightness", "com.corvane.print.PrintSettings.CEV_Brightness"},
    {"CVContrast", "com.corvane.print.PrintSettings.CEV_Contrast"},
    {"CVRed", "com.corvane.print.PrintSettings.CEV_Red"},
    {"CVGreen", "com.corvane.print.PrintSettings.CEV_Green"},
    {"CVBlue", "com.corvane.print.PrintSettings.CEV_Blue"},
}};
enum AdjustmentTag : int { kTagBrightness, kTagContrast, kTagRed, kTagGreen, kTagBlue };

} // namespace keywords
