#include "host/session/panel_choices.h"

#include "framework/option_keywords.h"
#include "toolkit/button.h"
#include "toolkit/number_field.h"
#include "toolkit/popup_list.h"
#include "toolkit/radio_matrix.h"

#include <charconv>

namespace host {
namespace {

bool isOnWord(std::string_view word) {
    return word == keywords::kOn || word == keywords::kTrue;
}

std::optional<int> wholeNumber(std::string_view text) {
    int number = 0;
    const auto [end, status] = std::from_chars(text.data(), text.data() + text.size(), number);
    return status == std::errc() && end == text.data() + text.size() ? std::optional(number) : std::nullopt;
}

} // namespace

toolkit::View* controlForOption(CVPrintQualityPDE& panel, const std::string& option) {
    const framework::MessageValue argument{toolkit::Value(option)};
    for (const std::string_view message : {"determineUI:", "determineField:"}) {
        const framework::MessageResult result = panel.sendMessage(message, {&argument, 1});
        if (result.value)
            if (auto* const* view = std::get_if<toolkit::View*>(&result.value->content); view != nullptr && *view)
                // cppcheck-suppress identicalInnerCondition; the first message may have answered null
                return *view;
    }
    return nullptr;
}

bool useControl(toolkit::View* view, const std::string& choice) {
    auto* control = dynamic_cast<toolkit::Control*>(view);
    if (control == nullptr || control->isHidden() || !control->isEnabled())
        return false;
    if (auto* popup = dynamic_cast<toolkit::PopUpList*>(control)) {
        const int index = popup->indexOfItemWithKeyword(choice);
        if (index < 0 || !popup->items()[static_cast<std::size_t>(index)].enabled)
            return false;
        popup->userSelectedItemAtIndex(index);
    } else if (auto* matrix = dynamic_cast<toolkit::RadioMatrix*>(control)) {
        const int row = matrix->rowWithKeyword(choice);
        if (row < 0)
            return false;
        matrix->userSelectedRow(row);
    } else if (auto* box = dynamic_cast<toolkit::CheckBox*>(control)) {
        if (box->isOn() != isOnWord(choice)) // a click would turn it over
            box->userSetOn(!box->isOn());
    } else if (auto* field = dynamic_cast<toolkit::NumberField*>(control)) {
        const auto number = wholeNumber(choice);
        if (!number || *number < field->minimum() || *number > field->maximum())
            return false;
        field->userSetValue(*number);
    } else {
        return false;
    }
    return true;
}

} // namespace host
