#pragma once

#include "toolkit/export.h"
#include "toolkit/value.h"

#include <string_view>
#include <vector>

namespace toolkit {

class KeyValueStore;

/// Hears every write to a store it observes, an equal one too.
class CV_TOOLKIT_EXPORT StoreObserver {
public:
    virtual void storeDidWrite(KeyValueStore& store, std::string_view key) = 0; ///< an equal value is told, too

protected:
    ~StoreObserver() = default;
};

/// A panel's store of values by key, shared with its controls by bindings.
class CV_TOOLKIT_EXPORT KeyValueStore {
public:
    KeyValueStore() = default;
    KeyValueStore(const KeyValueStore&) = delete;
    KeyValueStore& operator=(const KeyValueStore&) = delete;

    /// Absent where the store holds no entry. Borrowed: valid until the next write of this key.
    [[nodiscard]] const Value& valueForKey(std::string_view key) const { return valueInMap(entries_, key); }
    /// An absent value removes the entry. Observers are told in either case.
    void setValueForKey(Value value, std::string_view key);
    [[nodiscard]] const ValueMap& entries() const { return entries_; } ///< by key

    /// Observers are borrowed: who adds one removes it. Safe while a write is being told.
    void addObserver(StoreObserver& observer);
    void removeObserver(StoreObserver& observer); ///< safe while a write is being told

private:
    ValueMap entries_;
    std::vector<StoreObserver*> observers_;
};

} // namespace toolkit
