#include "toolkit/popup_list.h"

#include <algorithm>

namespace toolkit {

PopUpList::~PopUpList() = default;

void PopUpList::removeAllItems() {
    if (items_.empty())
        return;
    items_.clear();
    selectedIndex_ = -1;
    notifyObservers();
}

void PopUpList::addItemWithTitle(std::string title) {
    if (const int earlier = indexOfItemWithTitle(title); earlier >= 0)
        removeItemAtIndex(earlier);
    items_.push_back({.title = std::move(title), .keyword = {}, .enabled = true, .image = {}});
    if (items_.size() == 1)
        selectedIndex_ = 0;
    notifyObservers();
}

void PopUpList::removeItemAtIndex(int index) {
    items_.erase(items_.begin() + index);
    if (selectedIndex_ == index)
        selectedIndex_ = items_.empty() ? -1 : 0;
    else if (selectedIndex_ > index)
        --selectedIndex_;
}

void PopUpList::setKeywordOfItemWithTitle(std::string keyword, std::string_view title) {
    if (const int index = indexOfItemWithTitle(title); index >= 0)
        change(items_[static_cast<std::size_t>(index)].keyword, std::optional(std::move(keyword)));
}

void PopUpList::setImageOfItemWithTitle(Image image, std::string_view title) {
    if (const int index = indexOfItemWithTitle(title); index >= 0) {
        items_[static_cast<std::size_t>(index)].image = std::move(image);
        notifyObservers();
    }
}

void PopUpList::setItemEnabled(int index, bool enabled) {
    if (index >= 0 && index < static_cast<int>(items_.size()))
        change(items_[static_cast<std::size_t>(index)].enabled, enabled);
}

const PopUpList::Item* PopUpList::selectedItem() const {
    return selectedIndex_ < 0 ? nullptr : &items_[static_cast<std::size_t>(selectedIndex_)];
}

std::optional<std::string> PopUpList::selectedKeyword() const {
    const Item* item = selectedItem();
    return item == nullptr ? std::nullopt : item->keyword;
}

int PopUpList::indexOfItemWithKeyword(std::string_view keyword) const {
    const auto item = std::ranges::find_if(items_, [&](const Item& each) { return each.keyword == keyword; });
    return item == items_.end() ? -1 : static_cast<int>(item - items_.begin());
}

int PopUpList::indexOfItemWithTitle(std::string_view title) const {
    const auto item = std::ranges::find(items_, title, &Item::title);
    return item == items_.end() ? -1 : static_cast<int>(item - items_.begin());
}

void PopUpList::selectItemAtIndex(int index) {
    change(selectedIndex_, index >= 0 && index < static_cast<int>(items_.size()) ? index : -1);
}

bool PopUpList::selectItemWithKeyword(std::string_view keyword) {
    const int index = indexOfItemWithKeyword(keyword);
    if (index >= 0)
        selectItemAtIndex(index);
    return index >= 0;
}

void PopUpList::userSelectedItemAtIndex(int index) {
    selectItemAtIndex(index);
    runAction();
}

} // namespace toolkit
