#include "toolkit/key_value_store.h"

#include <algorithm>

namespace toolkit {

void KeyValueStore::setValueForKey(Value value, std::string_view key) {
    const std::string name(key); // the caller's text may live in an entry that an observer rewrites
    if (value.isAbsent())
        entries_.erase(name);
    else
        entries_.insert_or_assign(name, std::move(value));
    if (observers_.empty())
        return;
    const std::vector observers(observers_); // a copy: any of them may leave meanwhile
    for (std::size_t index = 0; index < observers.size(); ++index) {
        const bool standsInItsPlace = index < observers_.size() && observers_[index] == observers[index];
        if (standsInItsPlace || std::ranges::find(observers_, observers[index]) != observers_.end())
            observers[index]->storeDidWrite(*this, name);
    }
}

void KeyValueStore::addObserver(StoreObserver& observer) {
    observers_.push_back(&observer);
}

void KeyValueStore::removeObserver(StoreObserver& observer) {
    std::erase(observers_, &observer);
}

} // namespace toolkit
