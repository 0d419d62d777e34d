#pragma once

#include "toolkit/view.h"

#include <vector>

namespace toolkit {

/// An ordered list of entries of which one is selected; tables and tab views show it.
class CV_TOOLKIT_EXPORT ItemList : public View {
public:
    struct Entry {
        std::string label; ///< what the user reads
        std::string id;
        friend bool operator==(const Entry&, const Entry&) = default;
    };

    using View::View;
    ~ItemList() override;

    [[nodiscard]] const std::vector<Entry>& entries() const { return entries_; }
    void addEntry(Entry entry);
    /// Whether a new entry is selected as it comes in; it is, unless this is switched off.
    void setSelectsInsertedEntries(bool selects) { selectsInsertedEntries_ = selects; }

    /// -1 where nothing is selected.
    [[nodiscard]] int selectedIndex() const { return selectedIndex_; }
    [[nodiscard]] const Entry* selectedEntry() const;
    /// An index outside the list selects nothing.
    void selectIndex(int index);
    /// -1 where no entry has this id.
    [[nodiscard]] int indexOfId(std::string_view id) const;

private:
    std::vector<Entry> entries_;
    int selectedIndex_ = -1;
    bool selectsInsertedEntries_ = true;
};

} // namespace toolkit
