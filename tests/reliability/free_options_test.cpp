// The options that no rule reads: reverse, JPEG, two-sided drying, vertical lines. In pairs with every action of a
// walk, it makes no difference whether they are changed before it or after it.

#include "tests/reliability/walk.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace {

using reliability::Action;
using reliability::kPrint;
using reliability::Snapshot;
using reliability::WalkedDialog;

// Changes an option and changes it back.
struct FreeOption {
    const char* control;
    const char* changed; // null: a box
    const char* original;
};
const std::vector<FreeOption> kFreeOptions = {
    {"reverseButton", nullptr, nullptr},
    {"jpegPopup", "ON", "OFF"},
    {"duplexPopup", "LongDrying", "Standard"},
    {"duplexPopup", "LessInk", "Standard"},
    {"vertLineAlignA3Button", nullptr, nullptr},
    {"vertLineAlignA4Button", nullptr, nullptr},
    {"vertLineAlignOtherButton", nullptr, nullptr},
};
constexpr FreeOption kInJapaneseOnly = {"vertLineAlignQT22Button", nullptr, nullptr};

bool change(WalkedDialog& dialog, const FreeOption& option, bool back) {
    return option.changed == nullptr ? dialog.toggle(kPrint, option.control)
                                     : dialog.choose(kPrint, option.control, back ? option.original : option.changed);
}

// Pairs each option with every action of two walks. Answers how many pairs there were.
int pairWithEveryAction(const std::string& language, const std::vector<FreeOption>& options) {
    WalkedDialog dialog({language});
    const Snapshot start = dialog.capture();
    int pairs = 0;
    for (const reliability::WalkPlan& plan : reliability::walkPlans()) {
        if (plan.name != "papers" && plan.name != "feed")
            continue;
        for (const Action& action : plan.actions)
            for (const FreeOption& option : options) {
                if (action.name == "mirrorButton" && option.control == std::string_view("jpegPopup"))
                    continue; // the printer excludes them, which is tested below
                SCOPED_TRACE(action.name + " and " + option.control);
                dialog.refuseAt(std::nullopt);
                dialog.establish(start);
                const bool could = action.run(dialog);
                EXPECT_TRUE(change(dialog, option, false) && change(dialog, option, true));
                const Snapshot after = dialog.capture();
                dialog.refuseAt(std::nullopt);
                dialog.establish(start);
                EXPECT_TRUE(change(dialog, option, false));
                EXPECT_NE(dialog.capture(), start);
                EXPECT_EQ(action.run(dialog), could);
                EXPECT_TRUE(change(dialog, option, true));
                EXPECT_EQ(dialog.capture(), after);
                ++pairs;
            }
    }
    return pairs;
}

TEST(FreeOptions, ChangeNothingElseInPairsWithEveryAction) {
    EXPECT_GT(pairWithEveryAction("en", kFreeOptions), 200);
    EXPECT_GT(pairWithEveryAction("ja", {kInJapaneseOnly}), 30);
}

TEST(FreeOptions, DoNotTouchOneAnother) {
    WalkedDialog dialog({"ja"});
    const Snapshot start = dialog.capture();
    std::vector<FreeOption> options = kFreeOptions;
    options.push_back(kInJapaneseOnly);
    for (const FreeOption& one : options)
        for (const FreeOption& other : options) {
            if (one.control == std::string_view(other.control))
                continue;
            SCOPED_TRACE(std::string(one.control) + " and " + other.control);
            dialog.refuseAt(std::nullopt);
            dialog.establish(start);
            ASSERT_TRUE(change(dialog, one, false));
            const Snapshot alone = dialog.capture();
            ASSERT_TRUE(change(dialog, other, false) && change(dialog, other, true));
            EXPECT_EQ(dialog.capture(), alone);
        }
}

TEST(FreeOptions, MirrorAndJpegAreExcludedByThePrinterOnly) {
    WalkedDialog dialog({"en"});
    ASSERT_TRUE(dialog.choose(kPrint, "jpegPopup", "ON"));
    dialog.toggle(kPrint, "mirrorButton");
    EXPECT_EQ(dialog.marked("MirrorPrint"), "False");
    EXPECT_FALSE(dialog.view<toolkit::CheckBox>(kPrint, "mirrorButton").isOn());
    EXPECT_EQ(dialog.marked("CVJpeg"), "ON");
}

} // namespace
