#include "host/session/plug_in.h"
#include "tests/host/session/fake_dialog.h"
#include "tests/support/scratch_folder.h"

namespace host {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::MatchesRegex;

/// A folder for broken bundles.
class PlugInLoading : public testing::Test {
protected:
    std::filesystem::path bundleWithFile(const std::string& name, const std::string& file, const std::string& content) {
        const std::filesystem::path bundle = folder.path() / name;
        std::filesystem::create_directories(bundle);
        if (!file.empty())
            folder.write(std::filesystem::path(name) / file, content);
        return bundle;
    }

    /// The sentence that tells why the bundle cannot be loaded; it names the bundle.
    static std::string refusalOf(const std::filesystem::path& bundle) {
        std::string error;
        EXPECT_EQ(PlugIn::load(bundle, error), nullptr);
        EXPECT_THAT(error, HasSubstr(bundle.string()));
        EXPECT_THAT(error, MatchesRegex("[A-Z].*\\."));
        return error;
    }

    const test_support::ScratchFolder folder;
};

TEST_F(PlugInLoading, ABundleOfThisInterfaceIsLoadedOnce) {
    std::string error;
    const auto plugIn = PlugIn::load(fakeBundle("Fake"), error);
    ASSERT_NE(plugIn, nullptr) << error;
    EXPECT_EQ(PlugIn::load(fakeBundle("Fake") / ".." / "Fake.plugin", error), plugIn);
    EXPECT_EQ(plugIn->path(), std::filesystem::canonical(fakeBundle("Fake")));
    EXPECT_NE(plugIn->makePrincipalObject(), nullptr);
    EXPECT_NE(plugIn->inspection(), nullptr);
}

TEST_F(PlugInLoading, ABundleWithAnotherInspectionIsUsedWithoutIt) {
    std::string error;
    const auto plugIn = PlugIn::load(fakeBundle("OtherInspection"), error);
    ASSERT_NE(plugIn, nullptr) << error;
    EXPECT_EQ(plugIn->inspection(), nullptr);
    EXPECT_NE(plugIn->makePrincipalObject(), nullptr);
}

TEST_F(PlugInLoading, AnotherInterfaceVersionIsRefusedWithBothNumbers) {
    EXPECT_THAT(refusalOf(fakeBundle("OtherInterface")),
                AllOf(HasSubstr(std::to_string(framework::kPlugInInterfaceVersion + 1)),
                      HasSubstr(std::to_string(framework::kPlugInInterfaceVersion) + ".")));
}

TEST_F(PlugInLoading, ASharedObjectWithoutTheEntryIsNoPlugIn) {
    EXPECT_THAT(refusalOf(fakeBundle("NoEntry")), HasSubstr("no print-dialog plug-in"));
}

TEST_F(PlugInLoading, AMissingBundleIsRefused) {
    refusalOf(folder.path() / "missing.plugin");
}

TEST_F(PlugInLoading, ABundleWithoutItsInfoIsRefused) {
    refusalOf(bundleWithFile("empty.plugin", "", ""));
    refusalOf(bundleWithFile("broken.plugin", "Info.json", "{"));
    refusalOf(bundleWithFile("list.plugin", "Info.json", "[]"));
}

TEST_F(PlugInLoading, AnExecutableThatIsNotNamedOrLiesElsewhereIsRefused) {
    EXPECT_THAT(refusalOf(bundleWithFile("unnamed.plugin", "Info.json", "{}")), HasSubstr("executable"));
    EXPECT_THAT(refusalOf(bundleWithFile("number.plugin", "Info.json", R"({"CFBundleExecutable": 5})")),
                HasSubstr("executable"));
    const std::string real = (fakeBundle("Fake") / "Fake.so").string();
    EXPECT_THAT(
        refusalOf(bundleWithFile("elsewhere.plugin", "Info.json", R"({"CFBundleExecutable": ")" + real + "\"}")),
        HasSubstr("executable"));
}

TEST_F(PlugInLoading, WhatIsNoSharedObjectIsRefused) {
    refusalOf(bundleWithFile("missing_object.plugin", "Info.json", R"({"CFBundleExecutable": "x.so"})"));
    bundleWithFile("text.plugin", "Info.json", R"({"CFBundleExecutable": "x.so"})");
    refusalOf(bundleWithFile("text.plugin", "x.so", "no shared object"));
}

TEST_F(PlugInLoading, ARefusedBundleCanBeLoadedOnceItIsMended) {
    const auto bundle = bundleWithFile("mended.plugin", "Info.json", "{");
    refusalOf(bundle);
    std::filesystem::copy_file(fakeBundle("Fake") / "Fake.so", bundle / "x.so");
    bundleWithFile("mended.plugin", "Info.json", R"({"CFBundleExecutable": "x.so"})");
    std::string error;
    EXPECT_NE(PlugIn::load(bundle, error), nullptr) << error;
}

} // namespace
} // namespace host
