#include "tests/reliability/dialog_rules.h"

#include "tests/reliability/second_reading.h"

#include "framework/image_mode_flag.h"

#include <algorithm>

namespace reliability {
namespace {

// The adjustments: key of the pending and the stored value, entry of the job's print settings, controls.
struct Adjustment {
    std::string_view key, setting, slider, field;
    bool ofColor; // not to be had in mono
};
constexpr Adjustment kAdjustments[] = {
    {"CVBrightness", "com.corvane.print.PrintSettings.CEV_Brightness", "brightnessSlider", "brightnessField", false},
    {"CVContrast", "com.corvane.print.PrintSettings.CEV_Contrast", "contrastSlider", "contrastField", false},
    {"CVRed", "com.corvane.print.PrintSettings.CEV_Red", "redSlider", "redField", true},
    {"CVGreen", "com.corvane.print.PrintSettings.CEV_Green", "greenSlider", "greenField", true},
    {"CVBlue", "com.corvane.print.PrintSettings.CEV_Blue", "blueSlider", "blueField", true},
};

// Controls that stand for no option, and the buttons of alert windows: never disabled.
constexpr std::string_view kAlwaysEnabled[] = {
    "optionButton",
    "helpButton",
    "advancedTableView",
    "customPaperAlertCancelButton",
    "customPaperAlertOKButton",
    "envAlertCancelButton",
    "envAlertOKButton",
    "normalPaperAlertCancelButton",
    "normalPaperAlertOKButton",
    "suppressionButton",
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
std::string_view reasonOfPending(const WalkedDialog& dialog, const Bound& bound, const Moment& moment) {
    if (moment.afterRound)
        return "";
    if (bound.key == "CVBiDir" && (moment.newPaper || moment.biDirStored))
        return "a new paper stores bi-directional printing without asking for it, until the next restore";
    if (bound.key == "CVColorEnhancement" && dialog.pending(kColor, bound.key) == "OFF")
        return "reverting switches the enhancement off as pending only, until the next reading or restore";
    return "";
}

// What a pop-up of the Print Settings panel shows.
std::string popupKeyword(const WalkedDialog& dialog, std::string_view name) {
    return dialog.view<toolkit::PopUpList>(kPrint, name).selectedKeyword().value_or("");
}

std::string_view reasonOfShown(const WalkedDialog& dialog, const Bound& bound, const std::string& pending,
                               const std::string& onScreen, const Moment& moment) {
    const auto& control = dialog.view<toolkit::Control>(bound.panel, bound.control);
    const bool isBox = dynamic_cast<const toolkit::CheckBox*>(&control) != nullptr;
    if (bound.key == "CVMediaType" && pending == "PlainDuplex" && onScreen == "Plain")
        return "the two-sided plain paper is shown as plain paper";
    if (isBox && !control.isEnabled() && isOn(onScreen) && !isOn(pending) && bound.key != "CVSlowDrying")
        return "a disabled box counts as off, whatever it shows";
    if (bound.key == "CVMediaType" && pending == "HagakiUra" && onScreen == "Glossy" &&
        dialog.view<toolkit::PopUpList>(kPrint, bound.control).indexOfItemWithKeyword(pending) < 0)
        return "a postcard that is not listed is shown as glossy paper, also where the printer refuses glossy paper";
    if (moment.afterRound)
        return "";
    if (bound.key == "CVMediaType" && pending == "PlainDuplex" && isTwoSided(dialog))
        return "in a two-sided job every medium is read as the two-sided plain paper, until the next restore";
    if (bound.key == "CVHalfTonePattern" &&
        (pending == (popupKeyword(dialog, "mediaTypePopup") == "Plain" ? "Dither" : "Diffusion") ||
         pending == moment.halfToneWaiting))
        return "a new medium marks the half-tone; its pop-up shows it with the next update of its panel";
    if (bound.key == "CVHalfTonePattern" && pending == "Dither" && moment.newPaper &&
        isBorderless(dialog.paperName()) && popupKeyword(dialog, "mediaTypePopup") == "HagakiAtena")
        return "where a borderless paper forbids the quality, plain paper is shown while the half-tone is marked";
    if (bound.key == "CVBiDir" && !control.isEnabled() && onScreen == "OFF")
        return "rules switch the bi-directional box off; its state becomes pending with the next reading";
    if (bound.key == "CVColorEnhancement" && pending == "OFF")
        return "reverting leaves the box of the enhancement as it is";
    if (bound.key == "CVResolution" &&
        dialog.view<toolkit::PopUpList>(kPrint, bound.control).indexOfItemWithKeyword(pending) < 0)
        return "a quality that is not offered is not shown; what is shown becomes pending with the next reading";
    if (moment.controlsAhead)
        return "what a rule wanted was refused, or not asked for: the control shows it until the next reading or "
               "restore";
    return "";
}

// What the rules on disabled controls look at.
struct Surroundings {
    explicit Surroundings(const WalkedDialog& dialog)
        : paper(dialog.paperName()), media(popupKeyword(dialog, "mediaTypePopup")),
          quality(popupKeyword(dialog, "resolutionPopup")), fax(isFax(dialog)), borderless(isBorderless(paper)),
          matching(dialog.setting(printing::kColorMatchingModeKey) != "AP_ApplicationColorMatching"),
          enhanced(matching && dialog.pending(kColor, "CVColorEnhancement") == "ON"),
          mono((dialog.flags(kColor) & kImageModeMonochrome) != 0) {}

    std::string paper, media, quality; // the last two as shown
    bool fax, borderless, matching, enhanced, mono;
};

// The adjustment of a slider or field; null for another control.
const Adjustment* adjustmentOf(std::string_view control) {
    const auto* found = std::ranges::find_if(
        kAdjustments, [&](const Adjustment& each) { return each.slider == control || each.field == control; });
    return found == std::end(kAdjustments) ? nullptr : found;
}

// The rule that disables a control; empty where none does, so that the control has to be enabled.
std::string_view disablingRule(const WalkedDialog& dialog, const Surroundings& now, std::string_view name) {
    const auto isOneOf = [](const std::string& word, std::initializer_list<std::string_view> words) {
        return std::ranges::find(words, word) != words.end();
    };
    if (std::ranges::find(kAlwaysEnabled, name) != std::end(kAlwaysEnabled))
        return "";
    if (name == "vertLineAlignQT22Button" && !dialog.isJapanese())
        return ""; // it stands for no option then
    if (now.fax)
        return "fax output";
    if (name == "biDirButton") {
        if (now.paper.starts_with("Env") || isOneOf(now.paper, {"Postcard", "CvHagaki_B"}) ||
            (now.paper.starts_with("Custom") && dialog.pending(kPrint, "CVColorPaperThick") == "Env"))
            return "envelopes and postcards print in one direction";
        if (isOneOf(now.quality, {"Photo", "Best"}))
            return "the finest qualities print in one direction";
        if (isOneOf(now.media, {"Inkjet", "CorvaneQT20Matte", "Transparencies"}))
            return "matte papers and transparencies print in one direction";
    }
    if (name == "slowDryButton") {
        if (!now.matching)
            return "no slow drying without the driver's colour matching";
        if (!isOneOf(now.media, {"Plain", "HagakiAtena"}))
            return "no slow drying on this medium";
    }
    if (name == "mirrorButton" && now.media == "Transparencies")
        return "no mirror printing on transparencies";
    const Adjustment* adjustment = adjustmentOf(name);
    if ((adjustment != nullptr || name == "revertButton") && !now.enhanced)
        return "the enhancement is off or not to be had";
    if (adjustment != nullptr && adjustment->ofColor && now.mono)
        return "no colours in mono";
    return "";
}

// Why a control is disabled although no rule says so.
std::string_view reasonOfDisabled(const WalkedDialog& dialog, const Surroundings& now, std::string_view name,
                                  const Moment& moment) {
    if (name == "slowDryButton" && dialog.pending(kPrint, "CVMediaType") == "Transparencies")
        return "no slow drying on the pending medium, which is shown as another after a refusal";
    if (name == "slowDryButton" && now.borderless && moment.controlsAhead && moment.transparenciesRemained)
        return "no slow drying since transparencies, after a refusal, gave way to borderless paper";
    return "";
}

// Why a control is not as the rules say, until the next round.
std::string_view reasonOfDelay(const WalkedDialog& dialog, const Surroundings& now, std::string_view name) {
    const Adjustment* adjustment = adjustmentOf(name);
    if ((adjustment != nullptr || name == "revertButton") && now.enhanced && !dialog.stored("CVColorEnhancement"))
        return "an enhancement that was reverted comes back from its box, and to the adjustments with the next update";
    if (adjustment != nullptr && adjustment->ofColor && now.enhanced && dialog.stored("Color") == now.mono)
        return "a new colour mode reaches the adjustments with the next update of their panel";
    return "";
}

} // namespace

std::string shown(const toolkit::View& control, std::string_view key) {
    if (const auto* popup = dynamic_cast<const toolkit::PopUpList*>(&control))
        return popup->selectedKeyword().value_or("");
    if (const auto* matrix = dynamic_cast<const toolkit::RadioMatrix*>(&control))
        return matrix->selectedCell() == nullptr ? "" : matrix->selectedCell()->keyword.value_or("");
    const bool on = dynamic_cast<const toolkit::CheckBox&>(control).isOn();
    if (key == "MirrorPrint")
        return on ? "True" : "False";
    return on ? "ON" : "OFF";
}

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

std::vector<Finding> disagreements(const WalkedDialog& dialog, const Moment& moment) {
    std::vector<Finding> findings;
    for (const Bound& bound : kBound) {
        const std::string marked = dialog.marked(bound.key), pending = dialog.pending(bound.panel, bound.key);
        const std::string onScreen = shown(dialog.view<toolkit::Control>(bound.panel, bound.control), bound.key);
        const std::string key(bound.key);
        if (pending != marked)
            findings.push_back({key + " is pending as " + pending + " and marked as " + marked,
                                reasonOfPending(dialog, bound, moment)});
        if (onScreen != pending)
            findings.push_back({key + " is shown as " + onScreen + " and pending as " + pending,
                                reasonOfShown(dialog, bound, pending, onScreen, moment)});
    }
    for (const Adjustment& each : kAdjustments) {
        const std::string key(each.key), pending = dialog.pending(kColor, key);
        const std::string stored = std::to_string(dialog.storedNumber(key));
        for (const std::string_view control : {each.slider, each.field}) {
            const std::string onScreen =
                std::to_string(dialog.view<toolkit::NumberField>(kColor, control).integerValue());
            if (onScreen != stored)
                findings.push_back({std::string(control) + " shows " + onScreen + " and " + stored + " is stored", ""});
        }
        if (pending != stored)
            findings.push_back({key + " is stored as " + stored + " and pending as " + pending,
                                moment.afterRound ? "" : "an adjustment is pending from the next saving on"});
        if (const std::string inJob = dialog.setting(each.setting).value_or("0"); inJob != pending)
            findings.push_back({key + " is pending as " + pending + " and " + inJob + " in the print settings",
                                moment.afterRound ? "" : "reverting sets the adjustments as pending only"});
    }
    return findings;
}

Moment momentBeforeAction(const WalkedDialog& dialog) {
    Moment moment;
    moment.biDirStored = dialog.pending(kPrint, "CVBiDir") != dialog.marked("CVBiDir");
    if (!showsPendingChoice(dialog, "ditherPopup"))
        moment.halfToneWaiting = dialog.pending(kColor, "CVHalfTonePattern");
    constexpr std::string_view kSlowDrying = "slowDryButton";
    moment.transparenciesRemained = dialog.pending(kPrint, "CVMediaType") == "Transparencies" ||
                                    (!dialog.view<toolkit::Control>(kPrint, kSlowDrying).isEnabled() &&
                                     disablingRule(dialog, Surroundings(dialog), kSlowDrying).empty());
    return moment;
}

bool showsPendingChoice(const WalkedDialog& dialog, std::string_view control) {
    const auto* bound = std::ranges::find(kBound, control, &Bound::control);
    return bound != std::end(kBound) && shown(dialog.view<toolkit::Control>(bound->panel, bound->control),
                                              bound->key) == dialog.pending(bound->panel, bound->key);
}

std::vector<Finding> disabledControls(const WalkedDialog& dialog, const Moment& moment) {
    std::vector<Finding> findings;
    const Surroundings now(dialog);
    for (const Which which : kPanels)
        for (const toolkit::Control* control : dialog.controls(which)) {
            const std::string& name = control->name();
            const std::string_view rule = disablingRule(dialog, now, name);
            const std::string_view delay = moment.afterRound ? std::string_view() : reasonOfDelay(dialog, now, name);
            if (control->isEnabled()) {
                if (!rule.empty())
                    findings.push_back({name + " is enabled in spite of a rule: " + std::string(rule), delay});
            } else {
                const std::string_view reason = rule.empty() ? reasonOfDisabled(dialog, now, name, moment) : rule;
                findings.push_back({name + " is disabled", reason.empty() ? delay : reason});
            }
            const auto* popup = dynamic_cast<const toolkit::PopUpList*>(control);
            if (popup == nullptr)
                continue;
            for (const toolkit::PopUpList::Item& item : popup->items()) {
                const std::string keyword = item.keyword.value_or("");
                std::string_view rule;
                if (now.borderless && name == "mediaTypePopup" && keyword == "Transparencies")
                    rule = "no transparencies on borderless paper";
                else if (now.borderless && name == "resolutionPopup" &&
                         contains(qualitiesNotOnBorderless(now.paper), keyword))
                    rule = "no such quality on borderless paper";
                if (!item.enabled)
                    findings.push_back({"the item " + keyword + " of " + name + " is disabled", rule});
                else if (!rule.empty())
                    findings.push_back(
                        {"the item " + keyword + " of " + name + " is enabled in spite of a rule: " + std::string(rule),
                         ""});
            }
        }
    return findings;
}

} // namespace reliability
