#include "toolkit/radio_matrix.h"

#include <algorithm>

namespace toolkit {

RadioMatrix::RadioMatrix(std::string name, int rows)
    : Control(std::move(name)), cells_(static_cast<std::size_t>(std::max(rows, 1))) {}

RadioMatrix::~RadioMatrix() = default;

void RadioMatrix::addRow() {
    cells_.emplace_back();
    notifyObservers();
}

void RadioMatrix::removeRow(int row) {
    if (row < 0 || row >= static_cast<int>(cells_.size()))
        return;
    cells_.erase(cells_.begin() + row);
    if (selectedRow_ == row)
        selectedRow_ = cells_.empty() ? -1 : 0;
    else if (selectedRow_ > row)
        --selectedRow_;
    notifyObservers();
}

void RadioMatrix::setCell(int row, Cell cell) {
    if (row < 0 || row >= static_cast<int>(cells_.size()))
        return;
    cells_[static_cast<std::size_t>(row)] = std::move(cell);
    notifyObservers();
}

const RadioMatrix::Cell* RadioMatrix::selectedCell() const {
    return selectedRow_ < 0 ? nullptr : &cells_[static_cast<std::size_t>(selectedRow_)];
}

void RadioMatrix::selectRow(int row) {
    change(selectedRow_, row >= 0 && row < static_cast<int>(cells_.size()) ? row : -1);
}

bool RadioMatrix::selectCellWithKeyword(std::string_view keyword) {
    const int row = rowWithKeyword(keyword);
    if (row >= 0)
        selectRow(row);
    return row >= 0;
}

int RadioMatrix::rowWithKeyword(std::string_view keyword) const {
    const auto cell = std::ranges::find_if(cells_, [&](const Cell& each) { return each.keyword == keyword; });
    return cell == cells_.end() ? -1 : static_cast<int>(cell - cells_.begin());
}

void RadioMatrix::userSelectedRow(int row) {
    selectRow(row);
    runAction();
}

} // namespace toolkit
