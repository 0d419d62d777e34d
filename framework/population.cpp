// How the controls are filled from the PPD.

#include "framework/CVPrintQualityPDE.h"
#include "framework/option_keywords.h"

#include "toolkit/button.h"
#include "toolkit/label.h"
#include "toolkit/popup_list.h"
#include "toolkit/radio_matrix.h"

#include <algorithm>
#include <array>

namespace {

using namespace keywords;

// Pop-up lists bear these tags in the view description.
constexpr std::int64_t kTagRecordsTitles = 5;  // each choice's title goes into effectContent under its keyword
constexpr std::int64_t kTagShowsPictures = 10; // a picture of the bundle stands beside each item

constexpr std::string_view kHiddenTitleStart = "Hagaki"; // choices with such titles are not listed

// The check boxes that population enables; the others wait for the constraints.
constexpr std::array kEnabledByPopulation = {kVertLineAlignA3, kVertLineAlignA4, kVertLineAlignOther,
                                             kVertLineAlignDedicated};

} // namespace

std::optional<std::string> CVPrintQualityPDE::determineKey(toolkit::View*) {
    return std::nullopt;
}

toolkit::View* CVPrintQualityPDE::determineUI(const std::optional<std::string>&) {
    return nullptr;
}

toolkit::View* CVPrintQualityPDE::determineLabel(const std::optional<std::string>&) {
    return nullptr;
}

void CVPrintQualityPDE::initializePopup() {
    observe(kWindowWillClose, application().keyWindow(), &CVPrintQualityPDE::removeNotificationObserver);
    for (const std::string& key : std::vector(managedKeys())) {
        toolkit::View* const control = determineUI(key);
        if (control == nullptr)
            continue;
        control->setHidden(false);
        const printing::Option* option = ppd->option(key);
        if (auto* matrix = dynamic_cast<toolkit::RadioMatrix*>(control)) {
            if (option != nullptr)
                populateMatrix(*matrix, *option);
        } else if (auto* popup = dynamic_cast<toolkit::PopUpList*>(control)) {
            popup->removeAllItems();
            if (option != nullptr)
                populatePopUp(*popup, *option);
        } else if (auto* button = dynamic_cast<toolkit::Button*>(control)) {
            if (option != nullptr)
                button->setTitle(option->text);
            button->setEnabled(std::ranges::find(kEnabledByPopulation, key) != kEnabledByPopulation.end());
        }
    }
    if (effectContent != nullptr)
        effectContent->setValueForKey(false, optionName());
    setFlag(kImageModeHelpRegistered, registerHelp());
    popupInited = true;
}

void CVPrintQualityPDE::populateMatrix(toolkit::RadioMatrix& matrix, const printing::Option& option) {
    const int rows = static_cast<int>(matrix.cells().size());
    const int choices = static_cast<int>(option.choices.size());
    for (int row = rows - choices; row >= 1; --row) // from the middle: row 0 stays
        matrix.removeRow(row);
    for (int row = rows; row < choices; ++row)
        matrix.addRow();
    for (int row = 0; row < choices; ++row) {
        const printing::Choice& choice = option.choices[static_cast<std::size_t>(row)];
        matrix.setCell(row, {.title = choice.text, .keyword = choice.keyword});
    }
    if (toolkit::View* label = determineLabel(option.keyword))
        showOptionText(label, option);
}

void CVPrintQualityPDE::populatePopUp(toolkit::PopUpList& popup, const printing::Option& option) {
    if (toolkit::View* label = determineLabel(option.keyword)) {
        label->setHidden(false);
        showOptionText(label, option);
    }
    for (const printing::Choice& choice : option.choices) {
        if (choice.text.starts_with(kHiddenTitleStart) || choice.keyword == kPlainDuplex)
            continue;
        popup.addItemWithTitle(choice.text);
        popup.setKeywordOfItemWithTitle(choice.keyword, choice.text);
        if (popup.tag() == kTagRecordsTitles && effectContent != nullptr)
            effectContent->setValueForKey(choice.text, choice.keyword);
        if (popup.tag() == kTagShowsPictures)
            if (const auto* path = pluginBundle->pathForResource(choice.keyword, "tiff"))
                popup.setImageOfItemWithTitle({.name = choice.keyword, .pixels = nullptr, .path = path->string()},
                                              choice.text);
    }
}

void CVPrintQualityPDE::showOptionText(toolkit::View* label, const printing::Option& option) {
    if (auto* field = dynamic_cast<toolkit::Label*>(label))
        field->setText(option.text + ": ");
    else if (auto* box = dynamic_cast<toolkit::TitledBox*>(label))
        box->setTitle(option.text);
}
