#include "toolkit/table_view.h"

namespace toolkit {

TableView::~TableView() = default;
TabView::~TabView() = default;

void TableView::userSelectedEntry(int index) {
    if (content_ != nullptr)
        content_->selectIndex(index);
    runAction();
}

std::string TabView::selectedPage() const {
    const ItemList::Entry* entry = selection_ == nullptr ? nullptr : selection_->selectedEntry();
    return entry == nullptr ? std::string() : entry->id;
}

} // namespace toolkit
