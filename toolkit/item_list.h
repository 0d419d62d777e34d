#pragma once

#include "toolkit/view.h"

#include <vector>

namespace toolkit {

/// An ordered list of entries of which one is selected; tables and tab views show it.
class CV_TOOLKIT_EXPORT ItemList : public View {
public:
    struct Entry {
        std::string label;                                            ///< what the user reads
        std::string id;                                               ///< its key
        friend bool operator==(const Entry&, const Entry&) = default; ///< the same in every member
    };

    using View::View; ///< with its name in the view description
    ~ItemList() override;

    [[nodiscard]] const std::vector<Entry>& entries() const { return entries_; } ///< in their order
    void addEntry(Entry entry);                                                  ///< at the end
    /// Whether a new entry is selected as it comes in; it is, unless this is switched off.
    void setSelectsInsertedEntries(bool selects) { selectsInsertedEntries_ = selects; }

    /// -1 where nothing is selected.
    [[nodiscard]] int selectedIndex() const { return selectedIndex_; }
    [[nodiscard]] const Entry* selectedEntry() const; ///< null where none is selected
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
