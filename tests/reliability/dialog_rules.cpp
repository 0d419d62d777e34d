#include "tests/reliability/dialog_rules.h"

#include "tests/reliability/second_reading.h"

#include "framework/image_mode_flag.h"

#include <algorithm>

namespace reliability {
namespace {

struct Bound {
    Which panel;
    std::string_view key, control;
};
// Which control shows which option. The options that no rule reads stand at one value in a walk and are left out.
constexpr Bound kBound[] = {
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

bool isTwoSided(const WalkedDialog& dialog) {
    return dialog.marked("Duplex") != "None";
}

bool isFax(const WalkedDialog& dialog) {
    return dialog.marked("CVOutput") == "FAX";
}

bool isOn(const std::string& word) {
    return word == "ON" || word == "True";
}

// What the control shows, as a choice.
std::string shown(const WalkedDialog& dialog, const Bound& bound) {
    auto& control = dialog.view<toolkit::Control>(bound.panel, bound.control);
    if (const auto* popup = dynamic_cast<const toolkit::PopUpList*>(&control))
        return popup->selectedKeyword().value_or("");
    if (const auto* matrix = dynamic_cast<const toolkit::RadioMatrix*>(&control))
        return matrix->selectedCell() == nullptr ? "" : matrix->selectedCell()->keyword.value_or("");
    const bool on = dynamic_cast<const toolkit::CheckBox&>(control).isOn();
    if (bound.key == "MirrorPrint")
        return on ? "True" : "False";
    return on ? "ON" : "OFF";
}

bool isBorderless(const std::string& paper) {
    return paper.find("Fullbleed") != std::string::npos || paper.find("_B") != std::string::npos;
}

std::vector<std::string> qualitiesNotOnBorderless(const std::string& paper) {
    if (second_reading::basesOfBorderlessPaper(paper).contains("A3"))
        return {"PlainFast", "PlainNormal", "High"};
    return {"PlainFast"};
}

bool contains(const std::vector<std::string>& list, const std::string& word) {
    return std::ranges::find(list, word) != list.end();
}

// Where the pending choice is not the marked one. After a round it always is.
std::string_view reasonOfPending(const WalkedDialog& dialog, const Bound& bound, Moment moment) {
    if (moment == Moment::AfterRound)
        return "";
    if (bound.key == "CVBiDir")
        return "a new paper stores bi-directional printing without asking for it, until the next restore";
    if (bound.key == "CVColorEnhancement" && dialog.pending(kColor, bound.key) == "OFF")
        return "reverting switches the enhancement off as pending only, until the next reading or restore";
    return "";
}

std::string_view reasonOfShown(const WalkedDialog& dialog, const Bound& bound, const std::string& pending,
                               const std::string& onScreen, Moment moment) {
    const auto& control = dialog.view<toolkit::Control>(bound.panel, bound.control);
    const bool isBox = dynamic_cast<const toolkit::CheckBox*>(&control) != nullptr;
    if (bound.key == "CVMediaType" && pending == "PlainDuplex" && onScreen == "Plain")
        return "the two-sided plain paper is shown as plain paper";
    if (isBox && !control.isEnabled() && isOn(onScreen) && !isOn(pending) && bound.key != "CVSlowDrying")
        return "a disabled box counts as off, whatever it shows";
    if (moment == Moment::AfterRound)
        return "";
    if (bound.key == "CVMediaType" && pending == "PlainDuplex" && isTwoSided(dialog))
        return "in a two-sided job every medium is read as the two-sided plain paper, until the next restore";
    if (bound.key == "CVHalfTonePattern")
        return "a new medium marks the half-tone; its pop-up shows it with the next update of its panel";
    if (bound.key == "CVBiDir" && !control.isEnabled() && onScreen == "OFF")
        return "rules switch the bi-directional box off; its state becomes pending with the next reading";
    if (bound.key == "CVColorEnhancement" && pending == "OFF")
        return "reverting leaves the box of the enhancement as it is";
    if (bound.key == "CVResolution" &&
        dialog.view<toolkit::PopUpList>(kPrint, bound.control).indexOfItemWithKeyword(pending) < 0)
        return "a quality that is not offered is not shown; what is shown becomes pending with the next reading";
    if (moment == Moment::ControlsAhead)
        return "what a rule wanted was refused, or not asked for: the control shows it until the next reading or "
               "restore";
    return "";
}

} // namespace

std::vector<Finding> forbiddenCombinations(const WalkedDialog& dialog) {
    std::vector<Finding> findings;
    const std::string media = dialog.marked("CVMediaType"), quality = dialog.marked("CVResolution");
    const std::string paper = dialog.paperName();
    if (!contains(second_reading::allowedQualities(media, isTwoSided(dialog), false), quality))
        findings.push_back({quality + " on " + media + (isTwoSided(dialog) ? ", two-sided" : ""), ""});
    if (isBorderless(paper) && media == "Transparencies")
        findings.push_back({"transparencies on " + paper, ""});
    if (isBorderless(paper) && contains(qualitiesNotOnBorderless(paper), quality))
        findings.push_back({quality + " on " + paper, ""});
    return findings;
}

std::vector<Finding> disagreements(const WalkedDialog& dialog, Moment moment) {
    std::vector<Finding> findings;
    for (const Bound& bound : kBound) {
        const std::string marked = dialog.marked(bound.key), pending = dialog.pending(bound.panel, bound.key);
        const std::string onScreen = shown(dialog, bound), key(bound.key);
        if (pending != marked)
            findings.push_back({key + " is pending as " + pending + " and marked as " + marked,
                                reasonOfPending(dialog, bound, moment)});
        if (onScreen != pending)
            findings.push_back({key + " is shown as " + onScreen + " and pending as " + pending,
                                reasonOfShown(dialog, bound, pending, onScreen, moment)});
    }
    return findings;
}

std::vector<Finding> disabledControls(const WalkedDialog& dialog) {
    std::vector<Finding> findings;
    const std::string paper = dialog.paperName();
    const std::string media = dialog.view<toolkit::PopUpList>(kPrint, "mediaTypePopup").selectedKeyword().value_or("");
    const std::string quality =
        dialog.view<toolkit::PopUpList>(kPrint, "resolutionPopup").selectedKeyword().value_or("");
    const bool custom = paper.starts_with("Custom");
    const bool matching = dialog.setting(printing::kColorMatchingModeKey) != "AP_ApplicationColorMatching";
    for (const Which which : kPanels)
        for (const toolkit::Control* control : dialog.controls(which)) {
            const std::string& name = control->name();
            if (!control->isEnabled()) {
                std::string_view reason;
                if (isFax(dialog))
                    reason = "fax output";
                else if (name == "biDirButton" &&
                         (paper.starts_with("Env") || paper == "Postcard" || paper == "CvHagaki_B" ||
                          (custom && dialog.pending(kPrint, "CVColorPaperThick") == "Env")))
                    reason = "envelopes and postcards print in one direction";
                else if (name == "biDirButton" && (quality == "Photo" || quality == "Best"))
                    reason = "the finest qualities print in one direction";
                else if (name == "biDirButton" &&
                         (media == "Inkjet" || media == "CorvaneQT20Matte" || media == "Transparencies"))
                    reason = "matte papers and transparencies print in one direction";
                else if (name == "slowDryButton" && !matching)
                    reason = "no slow drying without the driver's colour matching";
                else if (name == "slowDryButton" &&
                         ((media != "Plain" && media != "HagakiAtena") ||
                          dialog.pending(kPrint, "CVMediaType") == "Transparencies")) // shown otherwise if refused
                    reason = "no slow drying on this medium";
                else if (name == "slowDryButton" && isBorderless(paper) &&
                         (dialog.flags(kPrint) & kImageModeSlowDryingDisabled) != 0)
                    reason = "no slow drying since transparencies gave way to borderless paper";
                else if (name == "mirrorButton" && media == "Transparencies")
                    reason = "no mirror printing on transparencies";
                else if (which == kColor && !dialog.stored("CVColorEnhancement"))
                    reason = "the enhancement is off or not to be had";
                else if (which == kColor && !dialog.stored("Color"))
                    reason = "no colours in mono";
                findings.push_back({name + " is disabled", reason});
            }
            const auto* popup = dynamic_cast<const toolkit::PopUpList*>(control);
            if (popup == nullptr)
                continue;
            for (const toolkit::PopUpList::Item& item : popup->items()) {
                if (item.enabled)
                    continue;
                std::string_view reason;
                const std::string keyword = item.keyword.value_or("");
                if (isBorderless(paper) && name == "mediaTypePopup" && keyword == "Transparencies")
                    reason = "no transparencies on borderless paper";
                else if (isBorderless(paper) && name == "resolutionPopup" &&
                         contains(qualitiesNotOnBorderless(paper), keyword))
                    reason = "no such quality on borderless paper";
                findings.push_back({"the item " + keyword + " of " + name + " is disabled", reason});
            }
        }
    return findings;
}

} // namespace reliability
