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
    void setContent(ItemList* content) { content_ = content; } ///< borrowed

    [[nodiscard]] double columnWidth() const { return columnWidth_; }                     ///< points
    void setColumnWidth(double width) { change(columnWidth_, width); }                    ///< points
    [[nodiscard]] bool hidesScrollBarsAutomatically() const { return hidesScrollBars_; }  ///< where all fits
    void setHidesScrollBarsAutomatically(bool hides) { change(hidesScrollBars_, hides); } ///< where all fits
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
    using View::View; ///< with its name in the view description
    ~TabView() override;

    void setSelection(ItemList* selection) { selection_ = selection; } ///< borrowed; its entry's page is shown
    [[nodiscard]] ItemList* selection() const { return selection_; }   ///< null where none was set
    /// Empty where nothing is selected.
    [[nodiscard]] std::string selectedPage() const;

private:
    ItemList* selection_ = nullptr;
};

} // namespace toolkit
