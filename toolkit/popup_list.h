#pragma once

#include "toolkit/image.h"
#include "toolkit/view.h"

#include <optional>
#include <vector>

namespace toolkit {

/// A list of which one item is shown. The first item that a list gets is selected; when the selected one is removed,
/// the first one left is; a list without items selects nothing.
class CV_TOOLKIT_EXPORT PopUpList : public Control {
public:
    struct Item {
        std::string title;                  ///< unique in its list
        std::optional<std::string> keyword; ///< the choice that it represents
        bool enabled = true;                ///< whether a user can choose it
        std::optional<Image> image;         ///< beside the title
    };

    using Control::Control;
    ~PopUpList() override;

    [[nodiscard]] const std::vector<Item>& items() const { return items_; } ///< in their order
    void removeAllItems();                                                  ///< and selects nothing
    /// Titles are unique: an item that bears this one already is removed first. The new item comes last.
    void addItemWithTitle(std::string title);
    /// These do nothing where no item bears the title or the index.
    void setKeywordOfItemWithTitle(std::string keyword, std::string_view title);
    void setImageOfItemWithTitle(Image image, std::string_view title); ///< nothing where none bears it
    void setItemEnabled(int index, bool enabled);                      ///< the selection stays

    /// -1 where nothing is selected.
    [[nodiscard]] int selectedIndex() const { return selectedIndex_; }
    /// Null where nothing is selected. Borrowed: valid until the items change.
    [[nodiscard]] const Item* selectedItem() const;
    /// The keyword of the selected item; nullopt where there is none.
    [[nodiscard]] std::optional<std::string> selectedKeyword() const;
    /// -1 where no item represents this keyword.
    [[nodiscard]] int indexOfItemWithKeyword(std::string_view keyword) const;

    /// By program: no action runs. An index outside the list selects nothing.
    void selectItemAtIndex(int index);
    /// By program; answers false, and changes nothing, where no item represents the keyword.
    bool selectItemWithKeyword(std::string_view keyword);
    /// By the user: the same change, then the action, once.
    void userSelectedItemAtIndex(int index);

private:
    [[nodiscard]] int indexOfItemWithTitle(std::string_view title) const;
    void removeItemAtIndex(int index);

    std::vector<Item> items_;
    int selectedIndex_ = -1;
};

} // namespace toolkit
