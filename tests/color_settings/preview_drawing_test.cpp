#include "tests/color_settings/color_panel.h"

#include <cstring>

namespace color_settings_tests {
namespace {

using imaging::Bitmap;
using testing::ElementsAre;
using testing::IsEmpty;
using toolkit::Image;
using toolkit::ImageView;
using toolkit::Value;

/// The pixels' bytes, row by row.
std::vector<std::uint8_t> bytesOf(const std::uint8_t* firstRow, std::size_t stride, int width, int height) {
    std::vector<std::uint8_t> bytes;
    for (int y = 0; y < height; ++y) {
        const std::uint8_t* row = firstRow + static_cast<std::size_t>(y) * stride;
        bytes.insert(bytes.end(), row, row + Bitmap::kBytesPerPixel * static_cast<std::size_t>(width));
    }
    return bytes;
}

class PreviewDrawing : public ColorPanelTest {
protected:
    const std::optional<Image>& image() { return model<ImageView>("effectImageView").image(); }
    std::vector<std::uint8_t> imageBytes() {
        return bytesOf(image()->pixels.get(), image()->stride, image()->width, image()->height);
    }
    /// One changed value, by a control that is bound to nothing.
    void change(int tag, double value) {
        toolkit::NumberField control("control");
        control.setTag(tag);
        control.setValue(value);
        send("effectValueDidChange:", {{&control}});
    }
};

std::vector<std::uint8_t> bytesOfPicture(const imaging::Picture& picture) {
    Bitmap bitmap;
    picture.renderInto(bitmap);
    return bytesOf(bitmap.row(0), bitmap.stride(), bitmap.width(), bitmap.height());
}

TEST_F(PreviewDrawing, GivesTheViewThePictureInItsOwnSize) {
    host->description->mark("CVColorMatching", "Vivid");
    showPanel();
    ASSERT_TRUE(image());
    EXPECT_EQ(image()->width, 320);
    EXPECT_EQ(image()->height, 240);
    EXPECT_EQ(imageBytes(), bytesOfPicture(*preview().reference));
    EXPECT_EQ(image()->path, "");
    EXPECT_FALSE(image()->name);
}

TEST_F(PreviewDrawing, OfFiveZerosIsTheReferencePicture) {
    host->description->mark("CVColorEnhancement", "ON");
    showPanel();
    EXPECT_EQ(stored("CVColorEnhancement"), Value(true));
    EXPECT_EQ(imageBytes(), bytesOfPicture(*preview().reference));
}

TEST_F(PreviewDrawing, ShowsTheFilteredPixels) {
    host->description->mark("CVColorEnhancement", "ON");
    showPanel();
    setStored("CVBrightness", 20);
    setStored("CVRed", -20);
    send("redrawEffectImage");
    EXPECT_EQ(imageBytes(), bytesOfPicture(*preview().shown));
    EXPECT_NE(imageBytes(), bytesOfPicture(*preview().reference));
}

TEST_F(PreviewDrawing, FollowsThePicturesSize) {
    showPanel();
    send("setRefImage:", {{pictureNamed("small")}});
    send("redrawEffectImage");
    EXPECT_EQ(image()->width, 1);
    EXPECT_EQ(image()->height, 1);
    EXPECT_THAT(imageBytes(), ElementsAre(128, 128, 128, 255));
}

TEST_F(PreviewDrawing, OfNoPictureIsAnEmptyOneInAFullRedraw) {
    showPanel();
    const std::int64_t before = drawn();
    send("setRefImage:", {{Value()}});
    for (const bool mono : {false, true}) {
        setFlags(kMono, mono);
        send("redrawEffectImage");
        ASSERT_TRUE(image());
        EXPECT_EQ(image()->width, 0) << mono;
        EXPECT_EQ(image()->height, 0) << mono;
        EXPECT_EQ(image()->pixels, nullptr) << mono;
        EXPECT_FALSE(preview().shown) << mono;
    }
    EXPECT_EQ(drawn(), before + 2);
}

TEST_F(PreviewDrawing, OfNoPictureKeepsTheShownOneInAnIncrementalRedraw) {
    host->description->mark("CVColorEnhancement", "ON");
    showPanel();
    const std::int64_t before = drawn();
    send("setRefImage:", {{Value()}});
    setStored("CVBrightness", 20);
    setStored("CVRed", 14);
    for (const bool mono : {false, true}) {
        setFlags(kMono, mono);
        change(0, mono ? 1 : 2);
        change(2, mono ? 1 : 2);
    }
    EXPECT_EQ(drawn(), before);
    EXPECT_TRUE(preview().shown);
    EXPECT_EQ(preview().colorControls.brightness, 0.1F);
    EXPECT_EQ(preview().colorMatrix.r[0], 1.2);
}

TEST_F(PreviewDrawing, NeedsNoView) {
    makePanel();
    send("setRefImage:", {{pictureNamed("small")}});
    send("redrawEffectImage");
    EXPECT_THAT(shownFilters(), IsEmpty());
    EXPECT_EQ(preview().shown->sourceName(), "small");
}

class PreviewOnResize : public PreviewDrawing {
protected:
    void resizeWindow(double height) {
        host->window.setFrame({.width = 640, .height = height});
        send("updateImage:", {{Value()}});
    }
};

TEST_F(PreviewOnResize, RedrawsWhereTheWindowIsMoreThan96PointsHigher) {
    showPanel(); // 110 points high
    const std::int64_t before = drawn();
    resizeWindow(110 + 96);
    EXPECT_EQ(stored("frameHeight"), Value(206.0));
    EXPECT_EQ(drawn(), before);
    resizeWindow(110 + 97);
    EXPECT_EQ(stored("frameHeight"), Value(207.0));
    EXPECT_EQ(drawn(), before + 1);
    resizeWindow(110 + 96.25);
    EXPECT_EQ(drawn(), before + 2);
    resizeWindow(100);
    EXPECT_EQ(stored("frameHeight"), Value(100.0));
    EXPECT_EQ(drawn(), before + 2);
}

TEST_F(PreviewOnResize, GoesByThePanelsHeight) {
    showPanel();
    panel->panelView()->setFrame({.width = 520, .height = 312});
    const std::int64_t before = drawn();
    resizeWindow(312 + 96);
    EXPECT_EQ(drawn(), before);
    resizeWindow(312 + 97);
    EXPECT_EQ(drawn(), before + 1);
}

TEST_F(PreviewOnResize, LeavesAWindowOfTheSameHeight) {
    showPanel();
    resizeWindow(700);
    const std::int64_t before = drawn();
    resizeWindow(700);
    EXPECT_EQ(drawn(), before);
    resizeWindow(700.5);
    EXPECT_EQ(drawn(), before + 1);
}

TEST_F(PreviewOnResize, ReadsTheRememberedHeightAsANumber) {
    showPanel();
    setStored("frameHeight", "700");
    const std::int64_t before = drawn();
    resizeWindow(700);
    EXPECT_EQ(drawn(), before);
    EXPECT_EQ(stored("frameHeight"), Value("700"));
}

TEST_F(PreviewOnResize, RedrawsAtTheFirstTimeAfterShowing) {
    showPanel();
    resizeWindow(700);
    panel->willShow();
    const std::int64_t before = drawn();
    resizeWindow(700);
    EXPECT_EQ(drawn(), before + 1);
    EXPECT_EQ(stored("frameHeight"), Value(700.0));
}

TEST_F(PreviewOnResize, DoesNothingWhileThePanelIsHidden) {
    showPanel();
    panel->shouldHide();
    const std::int64_t before = drawn();
    resizeWindow(700);
    EXPECT_EQ(drawn(), before);
    EXPECT_EQ(stored("frameHeight"), Value(0.0));
}

TEST_F(PreviewOnResize, CountsAMissingWindowAsHeightZero) {
    showPanel();
    host->hasKeyWindow = false;
    setStored("frameHeight", 700.0);
    const std::int64_t before = drawn();
    resizeWindow(700);
    EXPECT_EQ(stored("frameHeight"), Value(0.0));
    EXPECT_EQ(drawn(), before);
}

TEST_F(PreviewOnResize, CountsAMissingViewAsHeightZero) {
    makePanel();
    setFlags(kShown, true);
    send("setRefImage:", {{pictureNamed("small")}});
    resizeWindow(96);
    EXPECT_FALSE(preview().shown);
    resizeWindow(97);
    EXPECT_TRUE(preview().shown);
}

// Notes how many pictures a view had been given whenever it has to draw.
class DrawingObserver : public toolkit::ViewObserver {
public:
    explicit DrawingObserver(ImageView& view) : view_(view) { view_.addObserver(*this); }
    DrawingObserver(const DrawingObserver&) = delete;
    DrawingObserver& operator=(const DrawingObserver&) = delete;
    virtual ~DrawingObserver() { view_.removeObserver(*this); }
    void viewDidChange(toolkit::View&) override { counts.push_back(view_.imageCount()); }

    std::vector<std::int64_t> counts;

private:
    ImageView& view_;
};

TEST_F(PreviewOnResize, DrawsWhatIsPendingBeforeTheNewPicture) {
    showPanel();
    const std::int64_t before = drawn();
    const DrawingObserver observer(model<ImageView>("effectImageView"));
    resizeWindow(110 + 96);
    EXPECT_THAT(observer.counts, IsEmpty());
    resizeWindow(700);
    EXPECT_THAT(observer.counts, ElementsAre(before, before + 1));
}

TEST_F(PreviewOnResize, IsTheFullRedraw) {
    showPanel();
    setStored("CVColorEnhancement", true);
    setStored("CVBrightness", 20);
    setStored("CVBlue", 7);
    resizeWindow(700);
    EXPECT_EQ(preview().colorControls.brightness, 0.1F);
    EXPECT_EQ(preview().colorMatrix.b[2], 1.1);
}

TEST_F(PreviewOnResize, IsWhatTheFormAsksFor) {
    makePanelWithView();
    EXPECT_EQ(panel->loadedViews()->resizeAction(), "updateImage:");
}

} // namespace
} // namespace color_settings_tests
