#pragma once

#include "toolkit/view.h"

#include <optional>
#include <vector>

namespace toolkit {

/// One column of radio cells of which one is selected. Starts with its first row selected.
class CV_TOOLKIT_EXPORT RadioMatrix : public Control {
public:
    struct Cell {
        std::string title;                  ///< as it is shown
        std::optional<std::string> keyword; ///< the choice that it represents
    };

    /// A matrix of so many empty cells, at least one.
    RadioMatrix(std::string name, int rows);
    ~RadioMatrix() override;

    [[nodiscard]] const std::vector<Cell>& cells() const { return cells_; } ///< from the top
    void addRow();                                                          ///< at the bottom, without a title
    /// Does nothing where there is no such row. When the selected row is removed, the first one left is selected.
    void removeRow(int row);
    void setCell(int row, Cell cell); ///< of a row that is there

    [[nodiscard]] int selectedRow() const { return selectedRow_; } ///< -1 for none
    [[nodiscard]] const Cell* selectedCell() const;                ///< null where none is selected
    /// By program: no action runs. A row outside the matrix selects nothing.
    void selectRow(int row);
    /// By program; the first such cell. Answers false, and changes nothing, where no cell represents the keyword.
    bool selectCellWithKeyword(std::string_view keyword);
    /// -1 where no cell represents this keyword.
    [[nodiscard]] int rowWithKeyword(std::string_view keyword) const;
    /// By the user: the same change, then the action, once.
    void userSelectedRow(int row);

private:
    std::vector<Cell> cells_;
    int selectedRow_ = 0;
};

} // namespace toolkit
