// How the controls are filled from the PPD.

#include "tests/framework/scratch_bundle.h"
#include "tests/framework/test_panel.h"

#include "toolkit/number_field.h"

#include <algorithm>
#include <filesystem>

namespace framework_tests {
namespace {

using tests::ppdOption;

Words titles(const toolkit::PopUpList& popup) {
    Words result;
    for (const auto& item : popup.items())
        result.push_back(item.title);
    return result;
}

Words keywords(const toolkit::PopUpList& popup) {
    Words result;
    for (const auto& item : popup.items())
        result.push_back(item.keyword.value_or("none"));
    return result;
}

std::string keywords(const toolkit::RadioMatrix& matrix) {
    std::string result;
    for (const auto& cell : matrix.cells())
        result += cell.keyword.value_or("-");
    return result;
}

class Population : public testing::Test, public Dialog {};

TEST_F(Population, ShowsControlsAndPopUpLabels) {
    const std::vector<toolkit::View*> shown = {&media,      &resolution, &matching,   &biDir,
                                               &slowDrying, &mirror,     &mediaLabel, &resolutionLabel};
    for (toolkit::View* view : shown)
        view->setHidden(true);
    panel->initializePopup();
    for (toolkit::View* view : shown) {
        SCOPED_TRACE(view->name());
        EXPECT_FALSE(view->isHidden());
    }
}

TEST_F(Population, LeavesTheVisibilityOfAMatrixsLabel) {
    matchingBox.setHidden(true);
    panel->initializePopup();
    EXPECT_TRUE(matchingBox.isHidden());
    matchingBox.setHidden(false);
    panel->initializePopup();
    EXPECT_FALSE(matchingBox.isHidden());
}

TEST_F(Population, ShowsTheControlOfAMissingOptionAndLeavesItsLabel) {
    panel->PPDKeys = Words{"CVJpeg"};
    toolkit::PopUpList jpeg("jpegPopup");
    toolkit::Label label("jpegLabel");
    jpeg.addItemWithTitle("old");
    jpeg.setHidden(true);
    label.setText("old");
    label.setHidden(true);
    panel->bindings = {{"CVJpeg", &jpeg, &label}};
    panel->initializePopup();
    EXPECT_FALSE(jpeg.isHidden());
    EXPECT_TRUE(jpeg.items().empty()); // and the list stays empty
    EXPECT_TRUE(label.isHidden());
    EXPECT_EQ(label.text(), "old");
}

TEST_F(Population, LeavesTheMatrixOfAMissingOptionAsItIs) {
    panel->PPDKeys = Words{"CVJpeg"};
    matching.setCell(0, {.title = "old", .keyword = "Old"});
    matching.setHidden(true);
    matchingBox.setTitle("old");
    panel->bindings = {{"CVJpeg", &matching, &matchingBox}};
    panel->initializePopup();
    EXPECT_FALSE(matching.isHidden());
    EXPECT_EQ(keywords(matching), "Old--");
    EXPECT_EQ(matching.cells()[0].title, "old");
    EXPECT_EQ(matchingBox.title(), "old");
}

TEST_F(Population, DisablesTheBoxOfAMissingOptionAndLeavesItsTitle) {
    panel->PPDKeys = Words{"CVJpeg"};
    biDir.setTitle("old");
    panel->bindings = {{"CVJpeg", &biDir}};
    panel->initializePopup();
    EXPECT_EQ(biDir.title(), "old");
    EXPECT_FALSE(biDir.isEnabled());
}

TEST_F(Population, FillsAMatrixWithTextsAndKeywords) {
    panel->initializePopup();
    ASSERT_EQ(matching.cells().size(), 3U);
    EXPECT_EQ(keywords(matching), "VendorSystemNone");
    EXPECT_EQ(matching.cells()[0].title, "Driver");
    EXPECT_EQ(matching.cells()[1].title, "System");
    EXPECT_EQ(matching.cells()[2].title, "No Matching");
}

TEST_F(Population, AppendsTheRowsThatAMatrixLacks) {
    toolkit::RadioMatrix small("small", 1);
    panel->bindings = {{"CVColorMatching", &small}};
    panel->initializePopup();
    EXPECT_EQ(keywords(small), "VendorSystemNone");
    EXPECT_EQ(small.selectedRow(), 0);
}

/// Writes down the keywords of a matrix with every change of it.
class RowWatch : public toolkit::ViewObserver {
public:
    explicit RowWatch(toolkit::RadioMatrix& matrix) : matrix_(matrix) { matrix_.addObserver(*this); }
    ~RowWatch() { matrix_.removeObserver(*this); }
    void viewDidChange(toolkit::View&) override { seen.push_back(keywords(matrix_)); }
    Words seen;

private:
    toolkit::RadioMatrix& matrix_;
};

TEST_F(Population, RemovesSpareRowsFromTheMiddleOneAtATime) {
    struct {
        int rows;
        Words afterEachRemoval;
    } const table[] = {
        {4, {"acd"}},
        {5, {"abde", "ade"}},
        {6, {"abcef", "abef", "aef"}},
        {7, {"abcdfg", "abcfg", "abfg", "afg"}},
    };
    for (const auto& row : table) {
        SCOPED_TRACE(row.rows);
        toolkit::RadioMatrix large("large", row.rows);
        for (int index = 0; index < row.rows; ++index)
            large.setCell(index, {.title = {}, .keyword = std::string(1, static_cast<char>('a' + index))});
        panel->bindings = {{"CVColorMatching", &large}};
        RowWatch watch(large);
        panel->initializePopup();
        ASSERT_GE(watch.seen.size(), row.afterEachRemoval.size());
        watch.seen.resize(row.afterEachRemoval.size());
        EXPECT_EQ(watch.seen, row.afterEachRemoval);
        EXPECT_EQ(keywords(large), "VendorSystemNone");
    }
}

TEST_F(Population, KeepsTheFirstRowOfAMatrixForASingleChoice) {
    const auto option = ppdOption("CVSingle", "Single", "A", {"A/Only"});
    Dialog single(option);
    toolkit::RadioMatrix matrix("matrix", 4);
    single.panel->bindings = {{"CVSingle", &matrix}};
    single.panel->setPPDKeys(Words{"CVSingle"});
    single.panel->initializePopup();
    EXPECT_EQ(keywords(matrix), "A");
    EXPECT_EQ(matrix.cells()[0].title, "Only");
}

TEST_F(Population, ListsThePpdsChoicesInTheirOrder) {
    panel->initializePopup();
    EXPECT_EQ(titles(resolution), (Words{"Draft", "Fine", "Best"}));
    EXPECT_EQ(keywords(resolution), (Words{"Draft", "Fine", "Best"}));
}

TEST_F(Population, NeverListsPlainOnBothSides) {
    panel->initializePopup();
    EXPECT_EQ(keywords(media), (Words{"Plain", "Glossy", "Matte"}));
    Dialog other(ppdOption("CVResolution", "Quality", "PlainDuplex", {"PlainDuplex/Both", "Plain/One"}));
    other.panel->initializePopup();
    EXPECT_EQ(keywords(other.resolution), Words{"Plain"}); // in no list
}

TEST_F(Population, ListsNoTitleThatBeginsWithHagaki) {
    Dialog other(ppdOption("CVResolution", "Quality", "A",
                           {"A/Hagaki", "B/Hagaki (Postcard)", "C/Hagak", "HagakiD/Postcard", "E/hagaki", "F/My Hagaki",
                            "G/HagakiUra", "H/H"}));
    other.panel->initializePopup();
    EXPECT_EQ(keywords(other.resolution), (Words{"C", "HagakiD", "E", "F", "H"}));
}

TEST_F(Population, ListsTheLaterOfTwoEqualTitles) {
    Dialog other(ppdOption("CVResolution", "Quality", "A", {"A/Same", "B/Between", "C/Same", "D/After", "E/Between"}));
    other.panel->initializePopup();
    EXPECT_EQ(titles(other.resolution), (Words{"Same", "After", "Between"}));
    EXPECT_EQ(keywords(other.resolution), (Words{"C", "D", "E"}));
}

TEST_F(Population, EmptiesAListBeforeItFillsIt) {
    resolution.addItemWithTitle("old");
    panel->initializePopup();
    panel->initializePopup();
    EXPECT_EQ(titles(resolution), (Words{"Draft", "Fine", "Best"}));
    EXPECT_EQ(resolution.selectedIndex(), 0);
}

TEST_F(Population, EnablesEveryItem) {
    panel->initializePopup();
    resolution.setItemEnabled(1, false);
    panel->initializePopup();
    EXPECT_TRUE(std::ranges::all_of(resolution.items(), &toolkit::PopUpList::Item::enabled));
}

TEST_F(Population, NamesTheOptionInLabelsAndBoxes) {
    toolkit::TitledBox mediaBox("mediaBox");
    toolkit::Label matchingLabel("matchingLabel");
    panel->initializePopup();
    EXPECT_EQ(mediaLabel.text(), "Media Type: ");
    EXPECT_EQ(matchingBox.title(), "Matching");
    panel->bindings = {{"CVMediaType", &media, &mediaBox}, {"CVColorMatching", &matching, &matchingLabel}};
    mediaBox.setHidden(true);
    matchingLabel.setHidden(true);
    panel->initializePopup();
    EXPECT_EQ(mediaBox.title(), "Media Type");
    EXPECT_FALSE(mediaBox.isHidden());
    EXPECT_EQ(matchingLabel.text(), "Matching: ");
    EXPECT_TRUE(matchingLabel.isHidden());
}

TEST_F(Population, RecordsTitlesOfAListWithTheTagForIt) {
    resolution.setTag(5);
    panel->initializePopup();
    const toolkit::KeyValueStore& store = *panel->effectContent;
    EXPECT_EQ(store.valueForKey("Draft"), "Draft");
    EXPECT_EQ(store.valueForKey("Fine"), "Fine");
    EXPECT_EQ(store.valueForKey("Best"), "Best");
    EXPECT_TRUE(store.valueForKey("Glossy").isAbsent()); // of another list
    EXPECT_EQ(store.entries().size(), 4U);               // and the disclosure state
}

TEST_F(Population, RecordsTheTitlesUnderTheKeywordsOfListedChoicesOnly) {
    media.setTag(5);
    panel->initializePopup();
    EXPECT_EQ(panel->effectContent->valueForKey("Glossy"), "Glossy Paper");
    EXPECT_TRUE(panel->effectContent->valueForKey("PlainDuplex").isAbsent());
}

TEST_F(Population, RecordsNothingWithoutAStore) {
    resolution.setTag(5);
    panel->effectContent.reset();
    panel->initializePopup();
    EXPECT_EQ(titles(resolution), (Words{"Draft", "Fine", "Best"}));
    EXPECT_TRUE(panel->popupInited);
}

TEST_F(Population, ShowsPicturesInAListWithTheTagForThem) {
    ScratchBundle files;
    files.writeResource("Glossy.tiff", "a picture");
    files.writeResource("Matte.pdf", "no tiff");
    panel->pluginBundle = files.open();
    media.setTag(10);
    panel->initializePopup();
    ASSERT_EQ(keywords(media), (Words{"Plain", "Glossy", "Matte"}));
    EXPECT_FALSE(media.items()[0].image);
    ASSERT_TRUE(media.items()[1].image);
    EXPECT_EQ(media.items()[1].image->path, files.resource("Glossy.tiff").string());
    EXPECT_FALSE(media.items()[2].image);
}

TEST_F(Population, ShowsNoPicturesInOtherLists) {
    ScratchBundle files;
    files.writeResource("Glossy.tiff", "a picture");
    panel->pluginBundle = files.open();
    for (const int tag : {0, 5, 9}) {
        SCOPED_TRACE(tag);
        media.setTag(tag);
        panel->initializePopup();
        EXPECT_FALSE(media.items().at(1).image);
    }
    EXPECT_EQ(panel->effectContent->valueForKey("Glossy"), "Glossy Paper"); // by the tag 5
}

TEST_F(Population, TitlesTheCheckBoxes) {
    panel->initializePopup();
    EXPECT_EQ(biDir.title(), "Bi-directional Printing");
    EXPECT_EQ(mirror.title(), "Mirror Printing");
}

TEST_F(Population, TakesAPushButtonForACheckBox) {
    toolkit::PushButton button("button");
    panel->bindings = {{"CVBiDir", &button}};
    panel->initializePopup();
    EXPECT_EQ(button.title(), "Bi-directional Printing");
    EXPECT_FALSE(button.isEnabled());
}

TEST_F(Population, EnablesTheVerticalLineBoxesOnly) {
    struct {
        const char* keyword;
        bool enabled;
    } const rows[] = {{"CVVertLineAlignA3B4Ledger", true},
                      {"CVVertLineAlignA4Letter", true},
                      {"CVVertLineAlignOther", true},
                      {"CVVertLineAlignDedicated", true},
                      {"CVVertLineAlign", false},
                      {"CVBiDir", false},
                      {"CVSlowDrying", false},
                      {"MirrorPrint", false}};
    for (const auto& row : rows)
        for (const bool before : {false, true}) {
            SCOPED_TRACE(row.keyword);
            toolkit::CheckBox box("box");
            box.setEnabled(before);
            panel->PPDKeys = Words{row.keyword};
            panel->bindings = {{row.keyword, &box}};
            panel->initializePopup();
            EXPECT_EQ(box.isEnabled(), row.enabled);
        }
}

TEST_F(Population, LeavesOtherControlsButShowsThem) {
    toolkit::NumberField field("field");
    field.setHidden(true);
    panel->bindings = {{"CVBiDir", &field, &mediaLabel}};
    panel->initializePopup();
    EXPECT_FALSE(field.isHidden());
    EXPECT_TRUE(field.isEnabled());
    EXPECT_EQ(mediaLabel.text(), "");
}

TEST_F(Population, GoesOnAfterAnOptionWithoutAControl) {
    panel->bindings = {{"MirrorPrint", &mirror}};
    panel->initializePopup();
    EXPECT_EQ(mirror.title(), "Mirror Printing");
    EXPECT_TRUE(media.items().empty());
}

TEST_F(Population, CollapsesTheAdvancedOptions) {
    panel->effectContent->setValueForKey(true, "advancedItem");
    panel->initializePopup();
    EXPECT_EQ(panel->effectContent->valueForKey("advancedItem"), false);
    panel->setThePDEName("CVInkColorSetting");
    panel->effectContent->setValueForKey(true, "advancedcolorItem");
    panel->initializePopup();
    EXPECT_EQ(panel->effectContent->valueForKey("advancedcolorItem"), false);
}

TEST_F(Population, TellsWhetherTheHelpBookIsRegistered) {
    panel->initializePopup();
    EXPECT_NE(panel->imageModeFlag() & kImageModeHelpRegistered, 0U);
    host.helpRegisters = false;
    panel->initializePopup();
    EXPECT_EQ(panel->imageModeFlag() & kImageModeHelpRegistered, 0U);
}

TEST_F(Population, IsTold) {
    EXPECT_FALSE(panel->popupInited);
    panel->initializePopup();
    EXPECT_TRUE(panel->popupInited);
}

TEST_F(Population, NeedsNoKeys) {
    panel->PPDKeys.reset();
    panel->initializePopup();
    EXPECT_TRUE(panel->popupInited);
    EXPECT_TRUE(media.items().empty());
}

TEST_F(Population, AsksForNoMark) {
    panel->initializePopup();
    ASSERT_EQ(host.log.size(), 1U);
    EXPECT_TRUE(host.log[0].starts_with("register ")) << host.log[0];
}

TEST_F(Population, RunsNoAction) {
    bool acted = false;
    for (toolkit::Control* control : std::initializer_list<toolkit::Control*>{&media, &matching, &biDir})
        control->setAction([&](toolkit::Control&) { acted = true; });
    panel->initializePopup();
    EXPECT_FALSE(acted);
}

TEST_F(Population, ObservesAnyWindowWhereNoneIsTheKeyWindow) {
    host.hasKeyWindow = false;
    panel->initializePopup();
    panel->observe("Something", nullptr, &TestPanel::dialogDidExpand);
    host.log.clear();
    toolkit::NotificationCenter& center = toolkit::NotificationCenter::defaultCenter();
    center.post({.name = "NSWindowWillCloseNotification", .sender = &root, .userInfo = {}});
    center.post({.name = "Something", .sender = nullptr, .userInfo = {}});
    EXPECT_EQ(host.log, Words{});
}

} // namespace
} // namespace framework_tests
