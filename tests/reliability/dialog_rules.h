#pragma once

#include "tests/reliability/walked_dialog.h"

#include <string>
#include <string_view>
#include <vector>

namespace reliability {

/// A control that shows an option.
struct Bound {
    Which panel;
    std::string_view key, control;
};
/// Which control shows which option. The options that no rule reads stand at one value in a walk and are left out.
inline constexpr Bound kBound[] = {
    {kPrint, "CVMediaType", "mediaTypePopup"},
    {kPrint, "CVResolution", "resolutionPopup"},
    {kPrint, "CVColorPaperThick", "paperThickPopup"},
    {kPrint, "CVInputSlot", "paperFeedPopup"},
    {kPrint, "CVMonoColor", "monoColorPopup"},
    {kPrint, "CVSlowDrying", "slowDryButton"},
    {kPrint, "CVBiDir", "biDirButton"},
    {kPrint, "MirrorPrint", "mirrorButton"},
    {kColor, "CVColorMatching", "colorMatchingMatrix"},
    {kColor, "CVHalfTonePattern", "ditherPopup"},
    {kColor, "CVColorEnhancement", "colorEnhanceButton"},
};

/// What the pop-up list, radio matrix or check box shows, as a choice of this option.
std::string shown(const toolkit::View& control, std::string_view key);

/// What a state shows, where it differs from what one would expect, and the reason where it is so on purpose.
struct Finding {
    std::string what;
    std::string_view reason; ///< empty: it is a fault
};

/// Combinations that the tables of media, qualities and borderless paper forbid and that are marked all the same. For
/// states after a complete round: saved, restored, summarised.
std::vector<Finding> forbiddenCombinations(const WalkedDialog& dialog);

/// What came before the state that is looked at.
struct Moment {
    bool afterRound = false; ///< a complete one; nothing else came then
    /// Until the next round, controls are ahead of the pending choices after a refusal, and after a medium was marked
    /// elsewhere, which moves controls without reading them back.
    bool controlsAhead = false;
    bool newPaper = false;               ///< the action was one
    bool biDirStored = false;            ///< before the action it was pending without being marked
    std::string halfToneWaiting = {};    ///< pending before the action, while its pop-up showed another
    bool transparenciesRemained = false; ///< before the action they were pending, or had left slow drying disabled
};

/// What an action that is done now finds.
Moment momentBeforeAction(const WalkedDialog& dialog);

/// Options whose pending choice is not the marked one, and options whose control shows another than the pending one. Of
/// the adjustments, controls, stored and pending values and print settings.
std::vector<Finding> disagreements(const WalkedDialog& dialog, const Moment& moment);

/// Whether this control of an option shows the pending choice. False for every other control.
bool showsPendingChoice(const WalkedDialog& dialog, std::string_view control);

/// Disabled controls and items, with the rule that disables them, and enabled ones that a rule disables. A state must
/// name a reason for each.
std::vector<Finding> disabledControls(const WalkedDialog& dialog, const Moment& moment);

} // namespace reliability
