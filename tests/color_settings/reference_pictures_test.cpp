#include "color_settings/reference_pictures.h"
#include "tests/color_settings/color_panel.h"
#include "tests/support/scratch_folder.h"

#include <algorithm>
#include <chrono>
#include <filesystem>

namespace color_settings_tests {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;
using testing::internal::CaptureStderr;
using testing::internal::GetCapturedStderr;
using toolkit::Value;

const fs::path kBuiltBundle = fs::path(CV_BINARY_DIR) / "PlugIns/CVInkQuality12.plugin";

// A bundle that a test may spoil, with the color panel's form and two pictures; removed at the end.
class OwnBundle {
public:
    OwnBundle() {
        fs::create_directory(folder_.path() / "Resources");
        fs::copy_file(kBuiltBundle / "Info.json", folder_.path() / "Info.json");
        for (const char* name : {"CVInkColorSetting.ui", "None.tiff", "Vivid.tiff"})
            fs::copy_file(kBuiltBundle / "Resources" / name, resource(name));
    }

    [[nodiscard]] fs::path resource(const std::string& name) const { return folder_.path() / "Resources" / name; }
    void spoil(const std::string& name) const { folder_.write(fs::path("Resources") / name, "no picture"); }
    [[nodiscard]] std::shared_ptr<toolkit::Bundle> open() const {
        toolkit::BundleView view;
        view.languages = {"en"};
        std::string error;
        return toolkit::Bundle::open(folder_.path(), std::move(view), error);
    }

private:
    const test_support::ScratchFolder folder_;
};

class ReferencePicture : public ColorPanelTest {
protected:
    ReferencePicture() { host->bundle = own.open(); }
    void setName(const Value& name) { send("setRefImageWithName:", {{name}}); }

    OwnBundle own;
};

TEST_F(ReferencePicture, IsTheResourceOfItsName) {
    makePanel();
    setName("Vivid");
    ASSERT_TRUE(preview().reference);
    EXPECT_EQ(preview().reference->sourceName(), "Vivid");
    EXPECT_EQ(preview().reference->extent(), (imaging::Extent{320, 240}));
    setName("None");
    EXPECT_EQ(preview().reference->sourceName(), "None");
}

TEST_F(ReferencePicture, StaysWhereThereIsNoSuchResource) {
    makePanel();
    setName("Vivid");
    for (const Value& name : {Value("Photo"), Value("vivid"), Value("../Resources/None"), Value(""), Value()}) {
        SCOPED_TRACE(testing::PrintToString(name));
        setName(name);
        ASSERT_TRUE(preview().reference);
        EXPECT_EQ(preview().reference->sourceName(), "Vivid");
    }
}

TEST_F(ReferencePicture, IsNoneWhereTheResourceCannotBeRead) {
    makePanel();
    setName("Vivid");
    own.spoil("None.tiff");
    CaptureStderr();
    setName("None");
    EXPECT_THAT(GetCapturedStderr(), HasSubstr("None.tiff"));
    EXPECT_FALSE(preview().reference);
}

TEST_F(ReferencePicture, ThatCannotBeReadLeavesAnEmptyPreview) {
    own.spoil("Vivid.tiff");
    host->description->mark("CVColorMatching", "Vivid");
    CaptureStderr();
    showPanel();
    EXPECT_NE(GetCapturedStderr(), "");
    const auto& image = model<toolkit::ImageView>("effectImageView").image();
    ASSERT_TRUE(image);
    EXPECT_EQ(image->width, 0);
    EXPECT_EQ(image->height, 0);
    EXPECT_FALSE(preview().shown);
}

TEST_F(ReferencePicture, OfAFaxThatCannotBeReadLeavesAnEmptyPreview) {
    showPanel();
    own.spoil("None.tiff");
    setFlags(kFaxOutput, true);
    CaptureStderr();
    send("redrawEffectImage");
    EXPECT_NE(GetCapturedStderr(), "");
    EXPECT_FALSE(preview().shown);
    EXPECT_EQ(model<toolkit::ImageView>("effectImageView").image()->width, 0);
}

TEST_F(ReferencePicture, CanBeSetAndRead) {
    makePanel();
    EXPECT_FALSE(sendForPicture("refImage", {}));
    send("setRefImage:", {{pictureNamed("own")}});
    ASSERT_TRUE(sendForPicture("refImage", {}));
    EXPECT_EQ(sendForPicture("refImage", {})->sourceName(), "own");
    send("setRefImage:", {{Value()}});
    EXPECT_FALSE(sendForPicture("refImage", {}));
}

TEST(ReferencePictureFile, IsReadOnceWhileItDoesNotChange) {
    const OwnBundle own;
    const auto first = referencePictureAtPath(own.resource("Vivid.tiff"));
    ASSERT_TRUE(first);
    const auto written = fs::last_write_time(own.resource("Vivid.tiff"));
    own.spoil("Vivid.tiff");
    fs::last_write_time(own.resource("Vivid.tiff"), written);
    EXPECT_TRUE(referencePictureAtPath(own.resource("Vivid.tiff")));
}

TEST(ReferencePictureFile, IsReadAgainAfterItChanged) {
    const OwnBundle own;
    const fs::path path = own.resource("Vivid.tiff");
    ASSERT_TRUE(referencePictureAtPath(path));
    const auto written = fs::last_write_time(path);
    own.spoil("Vivid.tiff");
    fs::last_write_time(path, written + std::chrono::seconds(1));
    CaptureStderr();
    EXPECT_FALSE(referencePictureAtPath(path));
    EXPECT_THAT(GetCapturedStderr(), HasSubstr("Vivid.tiff"));
    fs::remove(path);
    fs::copy_file(kBuiltBundle / "Resources/Vivid.tiff", path);
    fs::last_write_time(path, written + std::chrono::seconds(2));
    EXPECT_TRUE(referencePictureAtPath(path));
}

TEST(ReferencePictureFile, IsReportedOnceWhereItCannotBeRead) {
    const OwnBundle own;
    own.spoil("None.tiff");
    CaptureStderr();
    EXPECT_FALSE(referencePictureAtPath(own.resource("None.tiff")));
    EXPECT_FALSE(referencePictureAtPath(own.resource("None.tiff")));
    const std::string lines = GetCapturedStderr();
    EXPECT_EQ(std::ranges::count(lines, '\n'), 1);
}

TEST(ReferencePictureFile, ThatIsMissingGivesNoPicture) {
    const OwnBundle own;
    CaptureStderr();
    EXPECT_FALSE(referencePictureAtPath(own.resource("Missing.tiff")));
    EXPECT_NE(GetCapturedStderr(), "");
}

} // namespace
} // namespace color_settings_tests
