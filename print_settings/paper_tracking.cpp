// How the panel follows the paper and two-sided printing, which are chosen elsewhere.

#include "print_settings/CVInkPrintSetting12PDE.h"
#include "print_settings/paper_names.h"
#include "print_settings/print_keywords.h"

#include "toolkit/button.h"
#include "toolkit/exception.h"
#include "toolkit/menu.h"
#include "toolkit/popup_list.h"

#include <algorithm>

using namespace keywords;

const printing::Paper* CVInkPrintSetting12PDE::pageFormatPaper() const {
    if (!pdePluginCallbackObject_->respondsToSelector(framework::kPageFormatSelector))
        return nullptr;
    const printing::PageFormat* format = pdePluginCallbackObject_->pageFormat();
    return format != nullptr && format->paper ? &*format->paper : nullptr;
}

// The name of the paper that the job prints on; none where nothing tells it.
std::optional<std::string> CVInkPrintSetting12PDE::readPaperName() {
    if (const auto mapped = printSettingForKey(printing::kPageToPaperMappingKey))
        return mapped->textReading();
    if (!PPDKeys) { // once: every reading comes here, and each observation reads again
        toolkit::NotificationCenter::defaultCenter().removeObserver(this, kMenuDidSendAction, nullptr);
        observe(kMenuDidSendAction, nullptr, &CVInkPrintSetting12PDE::checkPageSizeChange);
    }
    if (!pdePluginCallbackObject_->respondsToSelector(framework::kPrintSettingsSelector))
        return std::nullopt;
    if (pdePluginCallbackObject_->printSettings() == nullptr) {
        toolkit::NotificationCenter::defaultCenter().removeObserver(this);
        return std::nullopt;
    }
    const printing::Paper* paper = pageFormatPaper();
    return paper == nullptr ? std::nullopt : paper->name;
}

// Whether the page format's paper is a user-defined size beyond what the printer takes.
bool CVInkPrintSetting12PDE::isPaperOutOfLimits() const {
    const printing::Paper* paper = pageFormatPaper();
    if (paper == nullptr || paper->ppdName || !paper->width || !paper->height)
        return false;
    const printing::CustomSizeLimits limits = ppd->customSizeLimits();
    return *paper->width > static_cast<double>(limits.maxWidth) ||
           *paper->height > static_cast<double>(limits.maxHeight) ||
           *paper->width < static_cast<double>(limits.minWidth) ||
           *paper->height < static_cast<double>(limits.minHeight);
}

bool CVInkPrintSetting12PDE::readPageSetup() {
    std::optional<std::string> candidate = readPaperName();
    if (!candidate)
        return false;
    if (candidate == "Letter" && isPaperOutOfLimits())
        candidate = kUnsupportedPaper;
    if (paperName == candidate)
        return false;
    paperName = candidate;

    setFlag(kImageModeBorderless,
            paperName->find("Fullbleed") != std::string::npos || paperName->rfind("_B") != std::string::npos);
    setFlag(kImageModeEnvelope, paperName->starts_with(kEnvelopePaperPrefix));
    if (paperName->starts_with(kCustomPaperPrefix)) {
        if (outputBinHolds(kPaperThick, kEnvelopeThickness))
            setFlag(kImageModeEnvelope, true);
    } else {
        const std::string thickness(hasFlag(kImageModeEnvelope) ? kEnvelopeThickness : kRegular);
        setAndMarkValueForKey(thickness, std::string(kPaperThick));
        if (popupInited && paperThickPopup != nullptr)
            paperThickPopup->selectItemWithKeyword(thickness);
    }
    setFlag(kImageModeBiDirDisabled, hasFlag(kImageModeEnvelope) || paper_names::isKindOfPostcardPaperSize(paperName));
    if (hasFlag(kImageModeBiDirDisabled))
        return true;
    const bool biDir = outputBinMediaIsPlain();
    outputBin_.insert_or_assign(std::string(kBiDir), std::string(biDir ? kOn : kOff)); // stored, not asked for
    if (popupInited && biDirButton != nullptr)
        biDirButton->setOn(biDir);
    return true;
}

// Whether a menu action comes from the menu of paper sizes: it is known by its item "A4".
bool CVInkPrintSetting12PDE::comesFromPaperMenu(const toolkit::Notification& notification) const {
    const auto* menu = dynamic_cast<const toolkit::Menu*>(notification.sender);
    if (menu == nullptr || !notification.userInfo || pluginBundle == nullptr)
        return false;
    return std::ranges::find(menu->itemTitles(), localizedString("A4")) != menu->itemTitles().end();
}

void CVInkPrintSetting12PDE::checkPageSizeChange(const toolkit::Notification& notification) {
    try {
        if (notification.name == kMenuDidSendAction && !comesFromPaperMenu(notification))
            return;
        if (!readPageSetup())
            return;
        bool reset = false;
        if (hasFlag(kImageModeBorderless) &&
            (outputBinHolds(kMediaType, kTransparencies) || outputBinHolds(kResolution, kPlainFast))) {
            reset = true;
            if (popupInited)
                application().runModalAlert({.style = toolkit::AlertStyle::Critical,
                                             .messageText = localizedString("Borderless Alert"),
                                             .informativeText = localizedString("Borderless Alert2"),
                                             .buttons = {pluginBundle->localizedText("OK")},
                                             .icon = {}});
        }
        checkConstraints();
        if (popupInited) {
            checkUIConstraints();
            checkUIStateWithMediaType(reset);
            updateUI();
        }
    } catch (const toolkit::Exception&) {
        // From here on the panel no longer follows the paper. What is not the toolkit's own passes on.
        toolkit::NotificationCenter::defaultCenter().removeObserver(this);
    }
}

void CVInkPrintSetting12PDE::checkDuplex() {
    setFlag(kImageModeDuplex, false);
    const printing::Option* mediaType = ppd->option(kMediaType);
    const printing::Option* duplex = ppd->option(kDuplex);
    if (mediaType == nullptr || mediaType->choice(kPlainDuplex) == nullptr || duplex == nullptr)
        return;
    setFlag(kImageModeDuplex, !ppd->isDefaultMarked(*duplex));
}

void CVInkPrintSetting12PDE::checkDuplexChange(const toolkit::Notification&) {
    const bool before = hasFlag(kImageModeDuplex);
    checkDuplex();
    if (hasFlag(kImageModeDuplex)) {
        if (before || !(outputBinHolds(kMediaType, kPlainDuplex) || outputBinHolds(kMediaType, kPlain)))
            return;
        const std::string twoSided(kPlainDuplex);
        setAndMarkValueForKey(twoSided, std::string(kMediaType));
        setDefaultQuality(twoSided);
    }
    if (popupInited)
        updateUI();
}

bool CVInkPrintSetting12PDE::paperSizeIsCustomEnv() {
    if (!paper_names::hasPrefix(paperName, kCustomPaperPrefix))
        return false;
    const bool envelope = outputBinHolds(kPaperThick, kEnvelopeThickness);
    setFlag(kImageModeEnvelope, envelope);
    setFlag(kImageModeBiDirDisabled, envelope);
    return envelope;
}

void CVInkPrintSetting12PDE::checkStateWithPaperFeed() {
    if (!hasFlag(kImageModeBorderless))
        return;
    changeState(mediaTypePopup, {kTransparencies}, false, false);
    setFlag(kImageModeTransparency, false);
}

void CVInkPrintSetting12PDE::changeState(toolkit::PopUpList* popup, std::initializer_list<std::string_view> keywords,
                                         bool enable, bool toDefault) {
    changeStateForArrayToEnableToDefault(popup, std::vector<std::string>(keywords.begin(), keywords.end()), enable,
                                         toDefault);
}

void CVInkPrintSetting12PDE::changeStateForArrayToEnableToDefault(
    toolkit::PopUpList* popup, const std::optional<std::vector<std::string>>& keywords, bool enable, bool toDefault) {
    constexpr std::int64_t kTagRebuilt = 5; // the quality pop-up holds exactly what is allowed
    if (popup == nullptr)
        return;
    const std::vector<std::string> listed = keywords.value_or(std::vector<std::string>());
    if (!enable || popup->tag() != kTagRebuilt) {
        for (const std::string& keyword : listed)
            popup->setItemEnabled(popup->indexOfItemWithKeyword(keyword), enable);
    } else {
        popup->removeAllItems();
        for (const std::string& keyword : listed) {
            // Qualities of different media share titles: the texts that population recorded are looked up by keyword.
            const auto* title =
                effectContent == nullptr ? nullptr : effectContent->valueForKey(keyword).as<std::string>();
            if (title == nullptr)
                continue;
            const std::string text = *title;
            popup->addItemWithTitle(text);
            popup->setKeywordOfItemWithTitle(keyword, text);
        }
    }
    const toolkit::PopUpList::Item* selected = popup->selectedItem();
    if (!toDefault && selected != nullptr && selected->enabled)
        return;
    if (popup == mediaTypePopup)
        popup->selectItemWithKeyword(kPlain);
    else if (popup == resolutionPopup)
        popup->selectItemWithKeyword(defaultQualityForMediaType(selectedMediaType()));
    else if (popup == paperFeedPopup)
        popup->selectItemWithKeyword(kTray1);
}
