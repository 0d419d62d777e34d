#pragma once

#include "toolkit/item_list.h"
#include "toolkit/text_measuring.h"

namespace toolkit {

/// A scroll view that holds a table of one column, which shows the labels of a list.
class CV_TOOLKIT_EXPORT TableView : public Control {
public:
    using Control::Control;
    ~TableView() override;

    /// The list that it shows. Borrowed from the same description; null where it shows none.
    [[nodiscard]] ItemList* content() const { return content_; }
    void setContent(ItemList* content) { content_ = content; }

    [[nodiscard]] double columnWidth() const { return columnWidth_; }
    void setColumnWidth(double width) { change(columnWidth_, width); }
    [[nodiscard]] bool hidesScrollBarsAutomatically() const { return hidesScrollBars_; }
    void setHidesScrollBarsAutomatically(bool hides) { change(hidesScrollBars_, hides); }
    /// The font of the column's cells.
    [[nodiscard]] Font cellFont() const { return Font::control(); }

    /// By the user: the entry is selected in the list, then the action runs, once.
    void userSelectedEntry(int index);

private:
    ItemList* content_ = nullptr;
    double columnWidth_ = 0;
    bool hidesScrollBars_ = false;
};

/// Pages of which one is shown: the one whose id is that of the selected entry of a list.
class CV_TOOLKIT_EXPORT TabView : public View {
public:
    using View::View;
    ~TabView() override;

    void setSelection(ItemList* selection) { selection_ = selection; }
    [[nodiscard]] ItemList* selection() const { return selection_; }
    /// Empty where nothing is selected.
    [[nodiscard]] std::string selectedPage() const;

private:
    ItemList* selection_ = nullptr;
};

} // namespace toolkit
