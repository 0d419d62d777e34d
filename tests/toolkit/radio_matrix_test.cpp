#include "toolkit/radio_matrix.h"

#include "tests/toolkit/view_observing.h"

#include <gtest/gtest.h>

namespace toolkit {
namespace {

using toolkit_tests::ChangeCounter;
using toolkit_tests::countActions;

// A matrix of so many rows with the titles and keywords "0", "1" and so on.
class Matrix : public testing::Test {
protected:
    static void fill(RadioMatrix& matrix) {
        for (int row = 0; row < static_cast<int>(matrix.cells().size()); ++row)
            matrix.setCell(row, {.title = std::to_string(row), .keyword = std::to_string(row)});
    }
    static std::string titles(const RadioMatrix& matrix) {
        std::string result;
        for (const RadioMatrix::Cell& cell : matrix.cells())
            result += cell.title;
        return result;
    }
};

TEST_F(Matrix, StartsWithItsFirstRowSelected) {
    const RadioMatrix matrix("matrix", 3);
    EXPECT_EQ(matrix.cells().size(), 3u);
    EXPECT_EQ(matrix.selectedRow(), 0);
    ASSERT_NE(matrix.selectedCell(), nullptr);
    EXPECT_EQ(matrix.selectedCell()->keyword, std::nullopt);
}

TEST_F(Matrix, HasAtLeastOneRow) {
    for (const int rows : {1, 0, -5}) {
        SCOPED_TRACE(rows);
        EXPECT_EQ(RadioMatrix("matrix", rows).cells().size(), 1u);
    }
}

TEST_F(Matrix, ANewRowIsEmptyAndComesLast) {
    RadioMatrix matrix("matrix", 2);
    fill(matrix);
    matrix.addRow();
    EXPECT_EQ(matrix.cells().size(), 3u);
    EXPECT_EQ(matrix.cells().back().title, "");
    EXPECT_EQ(matrix.cells().back().keyword, std::nullopt);
    EXPECT_EQ(matrix.selectedRow(), 0);
}

TEST_F(Matrix, RowsAreRemovedWhereTheyStand) {
    RadioMatrix matrix("matrix", 5);
    fill(matrix);
    matrix.removeRow(2);
    matrix.removeRow(1);
    EXPECT_EQ(titles(matrix), "034");
}

TEST_F(Matrix, RemovingTheSelectedRowSelectsTheFirstOneLeft) {
    RadioMatrix matrix("matrix", 4);
    fill(matrix);
    matrix.selectRow(2);
    matrix.removeRow(2);
    EXPECT_EQ(matrix.selectedRow(), 0);
}

TEST_F(Matrix, RemovingARowBeforeTheSelectedOneKeepsItsCell) {
    RadioMatrix matrix("matrix", 4);
    fill(matrix);
    matrix.selectRow(2);
    matrix.removeRow(1);
    EXPECT_EQ(matrix.selectedCell()->keyword, "2");
}

TEST_F(Matrix, RemovingARowAfterTheSelectedOneKeepsItsCell) {
    RadioMatrix matrix("matrix", 4);
    fill(matrix);
    matrix.selectRow(1);
    matrix.removeRow(3);
    EXPECT_EQ(matrix.selectedCell()->keyword, "1");
}

TEST_F(Matrix, WithoutRowsNothingIsSelected) {
    RadioMatrix matrix("matrix", 1);
    matrix.removeRow(0);
    EXPECT_EQ(matrix.selectedRow(), -1);
    EXPECT_EQ(matrix.selectedCell(), nullptr);
}

TEST_F(Matrix, AMissingRowIsNeitherRemovedNorFilled) {
    RadioMatrix matrix("matrix", 2);
    fill(matrix);
    for (const int row : {-1, 2, 100}) {
        SCOPED_TRACE(row);
        matrix.removeRow(row);
        matrix.setCell(row, {.title = "x", .keyword = "x"});
        EXPECT_EQ(titles(matrix), "01");
    }
}

TEST_F(Matrix, IsSelectedByKeywordInTheFirstSuchCell) {
    RadioMatrix matrix("matrix", 4);
    fill(matrix);
    matrix.setCell(3, {.title = "again", .keyword = "2"});
    EXPECT_TRUE(matrix.selectCellWithKeyword("2"));
    EXPECT_EQ(matrix.selectedRow(), 2);
}

TEST_F(Matrix, AnUnknownKeywordChangesNothing) {
    RadioMatrix matrix("matrix", 3);
    fill(matrix);
    matrix.addRow(); // a cell without keyword
    matrix.selectRow(1);
    for (const char* keyword : {"3", "", "x"}) {
        SCOPED_TRACE(keyword);
        EXPECT_FALSE(matrix.selectCellWithKeyword(keyword));
        EXPECT_EQ(matrix.rowWithKeyword(keyword), -1);
        EXPECT_EQ(matrix.selectedRow(), 1);
    }
}

TEST_F(Matrix, ARowOutsideSelectsNothing) {
    for (const int row : {-1, 3, 100}) {
        SCOPED_TRACE(row);
        RadioMatrix matrix("matrix", 3);
        matrix.selectRow(row);
        EXPECT_EQ(matrix.selectedRow(), -1);
        EXPECT_EQ(matrix.selectedCell(), nullptr);
    }
}

TEST_F(Matrix, TheProgramsSelectionRunsNoAction) {
    RadioMatrix matrix("matrix", 3);
    fill(matrix);
    int runs = 0;
    countActions(matrix, runs);
    matrix.selectRow(1);
    matrix.selectCellWithKeyword("2");
    matrix.removeRow(2);
    EXPECT_EQ(runs, 0);
}

TEST_F(Matrix, TheUsersChoiceIsMadeBeforeItsActionRunsOnce) {
    RadioMatrix matrix("matrix", 3);
    std::vector<int> seen;
    matrix.setAction([&](Control& sender) { seen.push_back(static_cast<RadioMatrix&>(sender).selectedRow()); });
    matrix.userSelectedRow(2);
    matrix.userSelectedRow(2);
    EXPECT_EQ(seen, std::vector<int>({2, 2}));
}

TEST_F(Matrix, ObserversHearEachChange) {
    RadioMatrix matrix("matrix", 2);
    ChangeCounter changes(matrix);
    matrix.addRow();
    EXPECT_EQ(changes.takeCount(), 1);
    matrix.setCell(0, {.title = "x", .keyword = "x"});
    EXPECT_EQ(changes.takeCount(), 1);
    matrix.selectRow(1);
    EXPECT_EQ(changes.takeCount(), 1);
    matrix.selectRow(1);
    EXPECT_EQ(changes.takeCount(), 0);
    matrix.removeRow(1);
    EXPECT_EQ(changes.takeCount(), 1);
    matrix.removeRow(7);
    EXPECT_EQ(changes.takeCount(), 0);
}

} // namespace
} // namespace toolkit
