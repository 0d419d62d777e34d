// Construction, the binding of options to controls, the advanced options and the summary.

#include "print_settings/CVInkPrintSetting12PDE.h"
#include "print_settings/print_keywords.h"

#include "toolkit/button.h"
#include "toolkit/image_view.h"
#include "toolkit/item_list.h"
#include "toolkit/label.h"
#include "toolkit/popup_list.h"
#include "toolkit/table_view.h"
#include "toolkit/window.h"

#include <algorithm>
#include <array>

namespace {

using namespace keywords;

constexpr double kPanelHeight = 160, kPanelHeightWithoutPaperFeed = 130; // points
constexpr double kPaperFeedRow = 30;    // what the advanced options move up by where the paper source is missing
constexpr double kAdvancedHeight = 140; // what the disclosure adds
constexpr double kTableColumnPadding = 12;

constexpr std::string_view kKeysInfoEntry = "PMPPDKeysSupported";
constexpr std::string_view kDedicatedMedia = "Dedicated Media";

constexpr std::array kLayoutKeys = {kMirrorPrint, kMirror, kReverse};
constexpr std::array kPagedKeys = {kJpeg, kDuplexMode}; // options with a page of their own

} // namespace

// The order is that in which a control or a keyword is looked up.
template <auto Field>
constexpr auto field = &framework::fieldOf<Field, CVInkPrintSetting12PDE>;
using Panel = CVInkPrintSetting12PDE;
constexpr Panel::Binding CVInkPrintSetting12PDE::kBindings[] = {
    // keyword               control                                  label
    {kResolution, field<&Panel::resolutionPopup>, field<&Panel::resolutionLabel>},
    {kMediaType, field<&Panel::mediaTypePopup>, field<&Panel::mediaTypeLabel>},
    {kPaperThick, field<&Panel::paperThickPopup>, field<&Panel::paperThickLabel>},
    {kInputSlot, field<&Panel::paperFeedPopup>, field<&Panel::paperFeedLabel>},
    {kMonoColor, field<&Panel::monoColorPopup>, field<&Panel::monoColorLabel>},
    {kSlowDrying, field<&Panel::slowDryButton>, nullptr},
    {kBiDir, field<&Panel::biDirButton>, nullptr},
    {kMirror, field<&Panel::mirrorButton>, nullptr}, // the control means this one only where it is managed
    {kMirrorPrint, field<&Panel::mirrorButton>, nullptr},
    {kReverse, field<&Panel::reverseButton>, nullptr},
    {kJpeg, field<&Panel::jpegPopup>, field<&Panel::jpegLabel>},
    {kDuplexMode, field<&Panel::duplexPopup>, field<&Panel::duplexLabel>},
    {kVertLineAlignA3, field<&Panel::vertLineAlignA3Button>, nullptr},
    {kVertLineAlignA4, field<&Panel::vertLineAlignA4Button>, nullptr},
    {kVertLineAlignOther, field<&Panel::vertLineAlignOtherButton>, nullptr},
    {kVertLineAlignDedicated, field<&Panel::vertLineAlignQT22Button>, nullptr}, // bound in Japanese only
};

bool CVInkPrintSetting12PDE::initWithCallback(framework::HostCallback* callback) {
    if (!CVPrintQualityPDE::initWithCallback(callback))
        return false;
    setPPDKeys(keysInInfoEntry(kKeysInfoEntry));
    readPageSetup();
    setDefaults();
    observe(printing::kPaperDidChangeNotification, nullptr, &CVInkPrintSetting12PDE::checkPageSizeChange);
    observe(printing::kDuplexChangedNotification, nullptr, &CVInkPrintSetting12PDE::checkDuplexChange);
    return true;
}

std::string CVInkPrintSetting12PDE::panelName() {
    return localizedString("Print Setting");
}

bool CVInkPrintSetting12PDE::bindingHolds(const Binding& binding) {
    return binding.keyword != kVertLineAlignDedicated || firstLanguageSetting() == kJapanese;
}

std::optional<std::string> CVInkPrintSetting12PDE::determineKey(toolkit::View* control) {
    if (control == nullptr)
        return std::nullopt;
    for (const Binding& binding : kBindings)
        if (binding.control(*this) == control && bindingHolds(binding) &&
            (binding.keyword != kMirror || managesKey(kMirror)))
            return std::string(binding.keyword);
    return std::nullopt;
}

toolkit::View* CVInkPrintSetting12PDE::determineUI(const std::optional<std::string>& key) {
    const auto binding = std::ranges::find_if(kBindings, [&](const Binding& each) { return each.keyword == key; });
    return binding != std::end(kBindings) && bindingHolds(*binding) ? binding->control(*this) : nullptr;
}

toolkit::View* CVInkPrintSetting12PDE::determineLabel(const std::optional<std::string>& key) {
    const auto binding = std::ranges::find_if(kBindings, [&](const Binding& each) { return each.keyword == key; });
    return binding != std::end(kBindings) && binding->label != nullptr ? binding->label(*this) : nullptr;
}

std::optional<std::vector<std::string>> CVInkPrintSetting12PDE::supportedPPDOptionKeys() {
    return CVPrintQualityPDE::supportedPPDOptionKeys();
}

std::optional<std::vector<std::string>> CVInkPrintSetting12PDE::availablePPDOptionKeys() {
    auto keys = CVPrintQualityPDE::availablePPDOptionKeys();
    if (keys && hasFlag(kImageModeJpegUnavailable))
        std::erase(*keys, kJpeg);
    return keys;
}

void CVInkPrintSetting12PDE::willShow() {
    CVPrintQualityPDE::willShow();
    checkDuplex();
    updateUI();
}

void CVInkPrintSetting12PDE::PPDOptionKeyValueDidChangePpdChoice(const std::string& option, const std::string& choice) {
    CVPrintQualityPDE::PPDOptionKeyValueDidChangePpdChoice(option, choice);
    if (option != kMediaType)
        return;
    checkUIStateWithMediaType(true);
    setDefaultQuality(choice);
    checkUIConstraints();
}

void CVInkPrintSetting12PDE::updateUIforKey(const std::optional<std::string>& key) {
    CVPrintQualityPDE::updateUIforKey(key);
    if (key == kMediaType)
        checkUIStateWithMediaType(false);
    else if (key == kResolution)
        canSelectJpegPrint();
    else if (key == kInputSlot)
        checkStateWithPaperFeed();
    else if (key == kMonoColor)
        canSelectColorMode();
}

void CVInkPrintSetting12PDE::revertUIForKey(toolkit::View* control, const std::optional<std::string>& key) {
    CVPrintQualityPDE::revertUIForKey(control, key);
    if (key == kMonoColor) {
        canSelectColorMode();
    } else if (key == kMediaType) {
        checkUIStateWithMediaType(true);
        setDefaultQuality(outputBinKeyword(kMediaType));
    }
}

void CVInkPrintSetting12PDE::initializePopup() {
    if (popupInited)
        return;
    CVPrintQualityPDE::initializePopup();
    const std::vector<toolkit::View*> group = {optionLabel, optionButton, advancedTabView, advancedTableView};
    initializeAdvOption(group);
    double height = kPanelHeight;
    if (!managesKey(kInputSlot)) {
        adjustUIPositionForParts(kPaperFeedRow, group);
        height = kPanelHeightWithoutPaperFeed;
    }
    if (panelView_ != nullptr) {
        toolkit::Rect frame = panelView_->frame();
        frame.height = height;
        panelView_->setFrame(frame);
    }
    restoreOptionState();
}

void CVInkPrintSetting12PDE::addAdvOptionForKey(const std::string& text, const std::string& key) {
    if (arrayController != nullptr)
        arrayController->addEntry({.label = text, .id = key});
}

void CVInkPrintSetting12PDE::initializeAdvOption(const std::vector<toolkit::View*>& group) {
    if (arrayController != nullptr)
        arrayController->setSelectsInsertedEntries(false);
    if (std::ranges::any_of(kLayoutKeys, [&](std::string_view key) { return managesKey(key); }))
        addAdvOptionForKey(localizedString("Layout"), "Layout");
    for (const std::string_view key : kPagedKeys) {
        const bool managed = managesKey(key);
        if (const printing::Option* option = managed ? ppd->option(key) : nullptr)
            addAdvOptionForKey(option->text, std::string(key));
        if (effectContent != nullptr)
            effectContent->setValueForKey(managed, key);
    }
    const std::string alignment = localizedString("VertLineAlignSetting");
    addAdvOptionForKey(alignment, "VertLineAlignSetting");
    if (vertLineLabel != nullptr)
        vertLineLabel->setText(alignment);
    addAdvOptionForKey(localizedString("OtherOption"), "OtherOption");

    if (arrayController == nullptr) {
        for (toolkit::View* view : group)
            if (view != nullptr)
                view->setHidden(true);
        return;
    }
    arrayController->selectIndex(0);
    if (optionLabel != nullptr)
        optionLabel->setText(localizedString("advancedItem"));
    for (toolkit::View* view : group) {
        auto* table = dynamic_cast<toolkit::TableView*>(view);
        if (table == nullptr)
            continue;
        double widest = 0;
        for (const toolkit::ItemList::Entry& entry : arrayController->entries())
            widest = std::max(widest, application().textMeasurer().widthOfText(entry.label, table->cellFont()));
        if (widest > table->frame().width)
            table->setColumnWidth(widest + kTableColumnPadding);
        else
            table->setHidesScrollBarsAutomatically(true);
    }
}

void CVInkPrintSetting12PDE::toggleShowOption(toolkit::View* sender) {
    const auto* button = dynamic_cast<toolkit::CheckBox*>(sender);
    const toolkit::Rect frame = panelView_ == nullptr ? toolkit::Rect() : panelView_->frame();
    const double growth = button != nullptr && button->isOn() ? kAdvancedHeight : -kAdvancedHeight;
    setViewFrameSize({.width = frame.width, .height = frame.height + growth});
}

std::optional<toolkit::ValueMap> CVInkPrintSetting12PDE::summaryInfo() {
    auto summary = CVPrintQualityPDE::summaryInfo();
    if (!summary)
        return std::nullopt;
    if (firstLanguageSetting() != kJapanese)
        summary->erase(std::string(kDedicatedMedia));
    const std::string model = localizedString("Model");
    toolkit::ValueList order = {model};
    if (const auto nickname = ppd->shortNickname())
        summary->insert_or_assign(model, *nickname);
    if (const auto* titles = toolkit::valueInMap(*summary, kSummaryDisplayOrder).as<toolkit::ValueList>())
        order.insert(order.end(), titles->begin(), titles->end());
    summary->insert_or_assign(std::string(kSummaryDisplayOrder), std::move(order));
    return summary;
}
