#include "toolkit/item_list.h"

#include <algorithm>

namespace toolkit {

ItemList::~ItemList() = default;

void ItemList::addEntry(Entry entry) {
    entries_.push_back(std::move(entry));
    if (selectsInsertedEntries_)
        selectedIndex_ = static_cast<int>(entries_.size()) - 1;
    notifyObservers();
}

const ItemList::Entry* ItemList::selectedEntry() const {
    return selectedIndex_ < 0 ? nullptr : &entries_[static_cast<std::size_t>(selectedIndex_)];
}

void ItemList::selectIndex(int index) {
    change(selectedIndex_, index >= 0 && index < static_cast<int>(entries_.size()) ? index : -1);
}

int ItemList::indexOfId(std::string_view id) const {
    const auto entry = std::ranges::find(entries_, id, &Entry::id);
    return entry == entries_.end() ? -1 : static_cast<int>(entry - entries_.begin());
}

} // namespace toolkit
