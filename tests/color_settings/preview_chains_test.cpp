#include "tests/color_settings/color_panel.h"

namespace color_settings_tests {
namespace {

using imaging::ColorControls;
using imaging::ColorMatrix;
using imaging::Filter;
using testing::ElementsAre;
using testing::IsEmpty;
using toolkit::NumberField;
using toolkit::Value;

class AdjustmentPreview : public ColorPanelTest {
protected:
    /// Shown, in colour, with these values.
    void showValues(const std::array<int, 5>& values, bool enhancement) {
        showPanel();
        for (std::size_t index = 0; index < values.size(); ++index)
            setStored(kAdjustmentKeys[index], values[index]);
        setStored("CVColorEnhancement", enhancement);
        send("setRefImage:", {{pictureNamed("reference")}});
    }
    /// One changed value, by a control that is bound to nothing.
    void change(int tag) {
        NumberField control("control");
        control.setTag(tag);
        control.setValue(++lastValue_);
        send("effectValueDidChange:", {{&control}});
    }

private:
    double lastValue_ = 100;
};

// The values that most tests begin with, and what becomes of them: 20 / 200, -20 / 160 + 1, 14 / 70 + 1, -14 / 70 + 1
// and 7 / 70 + 1.
constexpr std::array<int, 5> kValues = {20, -20, 14, -14, 7};
const ColorControls kControls{.brightness = 0.1F, .contrast = 0.875F};
const ColorMatrix kMatrix{.r = {1.2, 0, 0, 0}, .g = {0, 0.8, 0, 0}, .b = {0, 0, 1.1, 0}};

TEST_F(AdjustmentPreview, SetsEveryParameterInAFullRedraw) {
    for (const bool enhancement : {true, false}) {
        showValues(kValues, enhancement);
        send("redrawEffectImage");
        EXPECT_EQ(preview().colorControls, kControls) << enhancement;
        EXPECT_EQ(preview().colorMatrix, kMatrix) << enhancement;
    }
}

TEST_F(AdjustmentPreview, ComputesTheColourControlsInSinglePrecision) {
    showValues({}, true);
    for (int value = -20; value <= 20; ++value) {
        SCOPED_TRACE(value);
        setStored("CVBrightness", value);
        setStored("CVContrast", value);
        send("redrawEffectImage");
        const auto single = static_cast<float>(value);
        EXPECT_EQ(preview().colorControls,
                  (ColorControls{.brightness = single / 200.0F, .contrast = single / 160.0F + 1.0F}));
    }
    setStored("CVBrightness", 16777217); // 16777216 in single precision
    send("redrawEffectImage");
    EXPECT_EQ(preview().colorControls.brightness, 16777216.0F / 200.0F);
}

TEST_F(AdjustmentPreview, ComputesTheColourMatrixInDoublePrecision) {
    showValues({}, true);
    for (int value = -20; value <= 20; ++value) {
        SCOPED_TRACE(value);
        for (const char* key : {"CVRed", "CVGreen", "CVBlue"})
            setStored(key, value);
        send("redrawEffectImage");
        const double own = static_cast<double>(value) / 70.0 + 1.0;
        EXPECT_EQ(preview().colorMatrix, (ColorMatrix{.r = {own, 0, 0, 0}, .g = {0, own, 0, 0}, .b = {0, 0, own, 0}}));
    }
}

TEST_F(AdjustmentPreview, ReadsTheValuesAsIntegersAndDoesNotLimitThem) {
    showValues({}, true);
    setStored("CVBrightness", 40.9);
    setStored("CVContrast", "-40 or so");
    setStored("CVRed", -35.9);
    setStored("CVGreen", Value());
    setStored("CVBlue", "abc");
    send("redrawEffectImage");
    EXPECT_EQ(preview().colorControls, (ColorControls{.brightness = 0.2F, .contrast = 0.75F}));
    EXPECT_EQ(preview().colorMatrix, (ColorMatrix{.r = {0.5, 0, 0, 0}}));
}

TEST_F(AdjustmentPreview, LeavesTheStoreInAFullRedraw) {
    showValues({}, true);
    setStored("CVBrightness", 7.5);
    setStored("CVRed", 7.5);
    send("redrawEffectImage");
    EXPECT_EQ(stored("CVBrightness"), Value(7.5));
    EXPECT_EQ(stored("CVRed"), Value(7.5));
}

TEST_F(AdjustmentPreview, PutsTheColourControlsBeforeTheMatrixInAFullRedraw) {
    showValues(kValues, true);
    send("redrawEffectImage");
    EXPECT_THAT(shownFilters(), ElementsAre(Filter(kControls), Filter(kMatrix)));
    EXPECT_EQ(preview().shown->sourceName(), "reference");
}

TEST_F(AdjustmentPreview, IsTheReferencePictureWithoutEnhancement) {
    showValues(kValues, false);
    send("redrawEffectImage");
    EXPECT_THAT(shownFilters(), IsEmpty());
    EXPECT_EQ(preview().shown->sourceName(), "reference");
}

TEST_F(AdjustmentPreview, IsGreyInMonoWithTheColourControlsIfEnhanced) {
    showValues(kValues, true);
    setFlags(kMono, true);
    send("redrawEffectImage");
    EXPECT_THAT(shownFilters(), ElementsAre(Filter(kControls), Filter(grey())));
    setStored("CVColorEnhancement", false);
    send("redrawEffectImage");
    EXPECT_THAT(shownFilters(), ElementsAre(Filter(grey())));
    EXPECT_EQ(preview().colorMatrix, kMatrix);
}

TEST_F(AdjustmentPreview, OfAFaxIsThePictureNoneInGreyWhateverTheColourMatching) {
    showValues(kValues, true);
    send("setRefImageWithName:", {{Value("Vivid")}});
    const framework::PreviewState before = preview();
    setFlags(kFaxOutput, true);
    send("redrawEffectImage");
    EXPECT_EQ(preview().shown->sourceName(), "None");
    EXPECT_EQ(preview().reference->sourceName(), "None");
    EXPECT_THAT(shownFilters(), ElementsAre(Filter(grey())));
    EXPECT_EQ(preview().colorControls, before.colorControls);
    EXPECT_EQ(preview().colorMatrix, before.colorMatrix);
}

TEST_F(AdjustmentPreview, SetsOneParameterPerChangedValue) {
    showValues(kValues, true);
    const ColorControls identity;
    const ColorMatrix none;
    ColorControls controls = identity;
    ColorMatrix matrix = none;
    ASSERT_EQ(preview().colorControls, identity);
    ASSERT_EQ(preview().colorMatrix, none);
    change(1);
    controls.contrast = kControls.contrast;
    EXPECT_EQ(preview().colorControls, controls);
    EXPECT_EQ(preview().colorMatrix, matrix);
    change(0);
    controls.brightness = kControls.brightness;
    EXPECT_EQ(preview().colorControls, controls);
    EXPECT_EQ(preview().colorMatrix, matrix);
    change(3);
    matrix.g = kMatrix.g;
    EXPECT_EQ(preview().colorControls, controls);
    EXPECT_EQ(preview().colorMatrix, matrix);
    change(4);
    matrix.b = kMatrix.b;
    EXPECT_EQ(preview().colorMatrix, matrix);
    change(2);
    matrix.r = kMatrix.r;
    EXPECT_EQ(preview().colorMatrix, matrix);
    EXPECT_EQ(preview().colorControls, controls);
}

TEST_F(AdjustmentPreview, PutsTheKeptMatrixBehindChangedColourControls) {
    showValues(kValues, true);
    send("redrawEffectImage");
    for (const std::string_view key : kAdjustmentKeys)
        setStored(key, 0);
    change(0);
    EXPECT_THAT(shownFilters(),
                ElementsAre(Filter(ColorControls{.brightness = 0, .contrast = 0.875F}), Filter(kMatrix)));
    change(1);
    EXPECT_THAT(shownFilters(), ElementsAre(Filter(ColorControls()), Filter(kMatrix)));
    EXPECT_EQ(preview().shown->sourceName(), "reference");
}

TEST_F(AdjustmentPreview, PutsTheKeptColourControlsBehindAChangedMatrix) {
    showValues(kValues, true);
    send("redrawEffectImage");
    for (const std::string_view key : kAdjustmentKeys)
        setStored(key, 0);
    ColorMatrix matrix = kMatrix;
    change(2);
    matrix.r = ColorMatrix().r;
    EXPECT_THAT(shownFilters(), ElementsAre(Filter(matrix), Filter(kControls)));
    change(3);
    matrix.g = ColorMatrix().g;
    EXPECT_THAT(shownFilters(), ElementsAre(Filter(matrix), Filter(kControls)));
    change(4);
    matrix.b = ColorMatrix().b;
    EXPECT_THAT(shownFilters(), ElementsAre(Filter(matrix), Filter(kControls)));
    EXPECT_EQ(preview().shown->sourceName(), "reference");
}

TEST_F(AdjustmentPreview, OfOneChangeSkipsOnlyItsOwnFilterWithoutEnhancement) {
    showValues(kValues, false);
    send("redrawEffectImage");
    change(0);
    EXPECT_THAT(shownFilters(), ElementsAre(Filter(kMatrix)));
    change(-1);
    EXPECT_THAT(shownFilters(), ElementsAre(Filter(kMatrix)));
    change(4);
    EXPECT_THAT(shownFilters(), ElementsAre(Filter(kControls)));
}

TEST_F(AdjustmentPreview, OfANegativeTagPutsTheKeptMatrixBehindTheColourControls) {
    showValues(kValues, true);
    change(-1);
    EXPECT_THAT(shownFilters(), ElementsAre(Filter(kControls), Filter(ColorMatrix())));
}

TEST_F(AdjustmentPreview, OfOneChangeInMonoReplacesTheMatrixByGrey) {
    showValues(kValues, true);
    send("redrawEffectImage");
    setFlags(kMono, true);
    for (const int tag : {0, 1, -1}) {
        SCOPED_TRACE(tag);
        change(tag);
        EXPECT_THAT(shownFilters(), ElementsAre(Filter(kControls), Filter(grey())));
    }
    for (const int tag : {2, 3, 4}) {
        SCOPED_TRACE(tag);
        change(tag);
        EXPECT_THAT(shownFilters(), ElementsAre(Filter(grey()), Filter(kControls)));
    }
    setStored("CVColorEnhancement", false);
    change(0);
    EXPECT_THAT(shownFilters(), ElementsAre(Filter(grey())));
    change(2);
    EXPECT_THAT(shownFilters(), ElementsAre(Filter(grey()), Filter(kControls)));
}

TEST_F(AdjustmentPreview, OfOneColourInMonoSetsItsParameterAllTheSame) {
    showValues(kValues, true);
    setFlags(kMono, true);
    setStored("CVRed", 14.9);
    change(2);
    EXPECT_EQ(preview().colorMatrix, (ColorMatrix{.r = kMatrix.r}));
    EXPECT_EQ(stored("CVRed"), Value(14));
}

TEST_F(AdjustmentPreview, OfOneChangeDoesNotConsultTheFax) {
    showValues(kValues, true);
    send("redrawEffectImage");
    setFlags(kFaxOutput, true);
    change(0);
    EXPECT_THAT(shownFilters(), ElementsAre(Filter(kControls), Filter(kMatrix)));
    change(2);
    EXPECT_THAT(shownFilters(), ElementsAre(Filter(kMatrix), Filter(kControls)));
    EXPECT_EQ(preview().shown->sourceName(), "reference");
}

class PreviewFilters : public AdjustmentPreview {
protected:
    std::optional<imaging::Picture> applyControls(int code) {
        return sendForPicture("applyColorControlFilter:code:", {{pictureNamed("given")}, {Value(code)}});
    }
    std::optional<imaging::Picture> applyMatrix(int code) {
        return sendForPicture("applyColorMatrixFilter:code:", {{pictureNamed("given")}, {Value(code)}});
    }
};

TEST_F(PreviewFilters, OfColourControlsSetTheParametersOfTheirCode) {
    const std::pair<int, ColorControls> rows[] = {
        {-1, kControls}, {-2, kControls}, {0, {.brightness = 0.1F}}, {1, {.contrast = 0.875F}}, {2, {}},
    };
    for (const bool enhancement : {true, false})
        for (const auto& [code, controls] : rows) {
            SCOPED_TRACE(testing::Message() << "code " << code << ", enhancement " << enhancement);
            showValues(kValues, enhancement);
            const auto result = applyControls(code);
            EXPECT_EQ(preview().colorControls, controls);
            ASSERT_TRUE(result);
            EXPECT_EQ(result->sourceName(), "given");
            if (enhancement)
                EXPECT_THAT(result->filters(), ElementsAre(Filter(controls)));
            else
                EXPECT_THAT(result->filters(), IsEmpty());
        }
}

TEST_F(PreviewFilters, OfTheMatrixSetTheParametersOfTheirCode) {
    const std::pair<int, ColorMatrix> rows[] = {
        {-1, kMatrix}, {-2, kMatrix}, {0, {.r = kMatrix.r}}, {1, {.g = kMatrix.g}}, {2, {.b = kMatrix.b}},
    };
    for (const bool enhancement : {true, false})
        for (const auto& [code, matrix] : rows) {
            SCOPED_TRACE(testing::Message() << "code " << code << ", enhancement " << enhancement);
            showValues(kValues, enhancement);
            const auto result = applyMatrix(code);
            EXPECT_EQ(preview().colorMatrix, matrix);
            ASSERT_TRUE(result);
            EXPECT_EQ(result->sourceName(), "given");
            if (enhancement)
                EXPECT_THAT(result->filters(), ElementsAre(Filter(matrix)));
            else
                EXPECT_THAT(result->filters(), IsEmpty());
        }
}

TEST_F(PreviewFilters, OfTheMatrixAreGreyInMonoWhateverTheEnhancement) {
    for (const bool enhancement : {true, false}) {
        showValues(kValues, enhancement);
        setFlags(kMono, true);
        const auto result = applyMatrix(-1);
        ASSERT_TRUE(result);
        EXPECT_THAT(result->filters(), ElementsAre(Filter(grey())));
        EXPECT_EQ(preview().colorMatrix, kMatrix);
    }
}

TEST_F(PreviewFilters, OfColourControlsDoNotConsultTheColourMode) {
    showValues(kValues, true);
    setFlags(kMono, true);
    const auto result = applyControls(-1);
    ASSERT_TRUE(result);
    EXPECT_THAT(result->filters(), ElementsAre(Filter(kControls)));
}

TEST_F(PreviewFilters, GiveNoPictureForNone) {
    showValues(kValues, true);
    EXPECT_FALSE(sendForPicture("applyColorControlFilter:code:", {{Value()}, {Value(-1)}}));
    EXPECT_FALSE(sendForPicture("applyColorMatrixFilter:code:", {{Value()}, {Value(-1)}}));
    setFlags(kMono, true);
    EXPECT_FALSE(sendForPicture("applyColorMatrixFilter:code:", {{Value()}, {Value(-1)}}));
}

TEST_F(PreviewFilters, NeverTouchTheSaturation) {
    showValues(kValues, true);
    setFlags(kMono, true);
    send("redrawEffectImage");
    change(0);
    change(2);
    EXPECT_EQ(preview().colorControls.saturation, 1);
    EXPECT_EQ(preview().colorMatrix.a, ColorMatrix().a);
    EXPECT_EQ(preview().colorMatrix.bias, ColorMatrix().bias);
}

} // namespace
} // namespace color_settings_tests
