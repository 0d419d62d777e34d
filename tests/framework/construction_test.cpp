// The factory, and what happens while a panel is built.

#include "framework/CVInkQuality12PDEPlugIn.h"
#include "tests/framework/test_panel.h"

namespace framework_tests {
namespace {

using tests::ppdWith;
using tests::TestHost;

constexpr std::string_view kPrintDialog = "BDB091F4-E57F-11D3-B5CC-0050E4603277";
constexpr const char* kMarks = "willChangePPDOptionKeyValue:ppdChoice:";

// Two classes that can be told apart, and one that is never built.
class FirstPanel : public TestPanel {};
class SecondPanel : public TestPanel {};
class UnbuiltPanel : public TestPanel {
public:
    bool initWithCallback(framework::HostCallback*) override { return false; }
};

TEST(PanelFactory, AcceptsAnyBundle) {
    CVInkQuality12PDEPlugIn factory({});
    EXPECT_TRUE(factory.initWithBundle(nullptr));
    TestHost host(ppdWith(testOptions()));
    EXPECT_TRUE(factory.initWithBundle(host.bundle));
}

TEST(PanelFactory, MakesThePanelsOfAPrintDialogInTheOrderOfTheMakers) {
    TestHost host(ppdWith(testOptions()));
    CVInkQuality12PDEPlugIn factory({makePanel<FirstPanel>, makePanel<SecondPanel>});
    const auto panels = factory.PDEPanelsForTypeWithHostInfo(kPrintDialog, &host);
    ASSERT_EQ(panels.size(), 2U);
    EXPECT_NE(dynamic_cast<FirstPanel*>(panels[0].get()), nullptr);
    EXPECT_NE(dynamic_cast<SecondPanel*>(panels[1].get()), nullptr);
}

TEST(PanelFactory, GivesEveryPanelTheSameCallback) {
    TestHost host(ppdWith(testOptions()));
    CVInkQuality12PDEPlugIn factory({makePanel<FirstPanel>, makePanel<SecondPanel>});
    for (const auto& panel : factory.PDEPanelsForTypeWithHostInfo(kPrintDialog, &host))
        EXPECT_EQ(dynamic_cast<TestPanel&>(*panel).pdePluginCallbackObject_, &host);
}

TEST(PanelFactory, MakesNewPanelsForEachDialog) {
    TestHost host(ppdWith(testOptions()));
    CVInkQuality12PDEPlugIn factory({makePanel<FirstPanel>});
    const auto first = factory.PDEPanelsForTypeWithHostInfo(kPrintDialog, &host);
    const auto second = factory.PDEPanelsForTypeWithHostInfo(kPrintDialog, &host);
    EXPECT_NE(first.at(0), second.at(0));
}

TEST(PanelFactory, HasNoPanelsForAnotherType) {
    TestHost host(ppdWith(testOptions()));
    CVInkQuality12PDEPlugIn factory({makePanel<TellingPanel>});
    for (const char* type : {"", "bdb091f4-e57f-11d3-b5cc-0050e4603277", "BDB091F4-E57F-11D3-B5CC-0050E4603276",
                             "BDB091F4-E57F-11D3-B5CC-0050E4603277 ", "PrintDialog"}) {
        SCOPED_TRACE(type);
        EXPECT_TRUE(factory.PDEPanelsForTypeWithHostInfo(type, &host).empty());
    }
    EXPECT_EQ(host.log, Words{}); // none was built either
}

TEST(PanelFactory, LeavesOutAPanelThatIsNotBuilt) {
    TestHost host(ppdWith(testOptions()));
    CVInkQuality12PDEPlugIn factory({makePanel<UnbuiltPanel>, makePanel<SecondPanel>});
    const auto panels = factory.PDEPanelsForTypeWithHostInfo(kPrintDialog, &host);
    ASSERT_EQ(panels.size(), 1U);
    EXPECT_NE(dynamic_cast<SecondPanel*>(panels[0].get()), nullptr);
}

TEST(PanelFactory, HasNoPanelsForACallbackThatCannotMark) {
    TestHost host(ppdWith(testOptions()));
    host.lacking = {kMarks};
    CVInkQuality12PDEPlugIn factory({makePanel<FirstPanel>, makePanel<SecondPanel>});
    EXPECT_TRUE(factory.PDEPanelsForTypeWithHostInfo(kPrintDialog, &host).empty());
}

TEST(PanelFactory, HasNoPanelsWithoutACallback) {
    CVInkQuality12PDEPlugIn factory({makePanel<FirstPanel>, makePanel<SecondPanel>});
    EXPECT_TRUE(factory.PDEPanelsForTypeWithHostInfo(kPrintDialog, nullptr).empty());
}

TEST(PanelConstruction, RunsTheOverridesInTheirOrder) {
    TestHost host(ppdWith(testOptions()));
    const auto panel = panelFor<TellingPanel>(host);
    EXPECT_EQ(host.log, (Words{"checkModelName", "restoreValues", "setDefaults", "restoreOptionState",
                               "checkConstraints", "saveAllValues", "checkConstraints"}));
}

TEST(PanelConstruction, AsksTheHostForNothing) {
    TestHost host(tests::samplePpd("corvane-a3"));
    const auto panel = panelFor(host);
    EXPECT_EQ(host.log, Words{});
    EXPECT_TRUE(host.settings->entries().empty());
}

TEST(PanelConstruction, FillsInNoPendingValueAndConnectsNothing) {
    TestHost host(ppdWith(testOptions()));
    const auto panel = panelFor(host);
    EXPECT_TRUE(panel->outputBin().empty());
    EXPECT_EQ(panel->PPDKeys, std::nullopt);
    EXPECT_EQ(panel->paperName, std::nullopt);
    EXPECT_FALSE(panel->popupInited);
    EXPECT_EQ(panel->effectContent, nullptr);
    EXPECT_EQ(panel->panelView_, nullptr);
    EXPECT_EQ(panel->optionButton, nullptr);
    EXPECT_EQ(panel->loadedViews(), nullptr);
}

TEST(PanelConstruction, KeepsTheCallbackTheBundleAndThePpd) {
    TestHost host(ppdWith(testOptions()));
    const auto panel = panelFor(host);
    EXPECT_EQ(panel->pdePluginCallbackObject_, &host);
    EXPECT_EQ(panel->pluginBundle, host.bundle);
    EXPECT_EQ(panel->ppd, host.description.get());
}

TEST(PanelConstruction, TakesThePanelsNameFromTheBundle) {
    TestHost host(ppdWith(testOptions()));
    EXPECT_EQ(panelFor(host)->thePDEName(), "CVInkQuality12");
    host.reopenBundle({.languages = {}, .localize = false, .strings = {}, .info = {}, .removedInfo = {"CFBundleName"}});
    EXPECT_EQ(panelFor(host)->thePDEName(), std::nullopt);
}

TEST(PanelConstruction, StartsWithEveryBitClear) {
    TestHost host(ppdWith(testOptions()));
    auto panel = std::make_shared<TestPanel>();
    panel->imageModeFlag_ = 0xFFFFFFFF;
    std::uint32_t atFirst = 1;
    panel->onStep = [&](const std::string& step) {
        if (step == "checkModelName")
            atFirst = panel->imageModeFlag();
    };
    ASSERT_TRUE(panel->initWithCallback(&host));
    EXPECT_EQ(atFirst, 0U);
    EXPECT_EQ(panel->imageModeFlag(), 0U);
}

TEST(PanelConstruction, StartsAnewWhateverTheFieldsHeld) {
    TestHost host(ppdWith(testOptions()));
    auto panel = std::make_shared<TestPanel>();
    panel->outputBin_ = {{"CVMediaType", "Glossy"}};
    panel->paperName = "A4";
    panel->popupInited = true;
    ASSERT_TRUE(panel->initWithCallback(&host));
    EXPECT_TRUE(panel->outputBin().empty());
    EXPECT_EQ(panel->paperName, std::nullopt);
    EXPECT_FALSE(panel->popupInited);
}

TEST(PanelConstruction, KnowsThePpdWhenTheFirstOverrideRuns) {
    TestHost host(ppdWith(testOptions()));
    auto panel = std::make_shared<TestPanel>();
    const printing::PrinterDescription* atFirst = nullptr;
    panel->onStep = [&](const std::string& step) {
        if (step == "checkModelName")
            atFirst = panel->ppd;
    };
    ASSERT_TRUE(panel->initWithCallback(&host));
    EXPECT_EQ(atFirst, host.description.get());
}

TEST(PanelConstruction, LooksAtTheFaxAndTheColourMatching) {
    TestHost host(ppdWith("*APSupportsCustomColorMatching: True\n" + testOptions()));
    host.description->mark("CVOutput", "FAX");
    EXPECT_EQ(panelFor(host)->imageModeFlag(), kImageModeVendorColorMatching | kImageModeFaxOutput);
}

TEST(PanelConstruction, TakesAMissingPpdForOneWithoutOptions) {
    TestHost host(ppdWith(testOptions()));
    host.description.reset();
    const auto panel = panelFor(host);
    ASSERT_NE(panel->ppd, nullptr);
    panel->setPPDKeys(Words{"CVMediaType"});
    EXPECT_EQ(panel->PPDKeys, Words{});
}

TEST(PanelConstruction, FailsWithoutACallback) {
    auto panel = std::make_shared<TellingPanel>();
    EXPECT_FALSE(panel->initWithCallback(nullptr));
    EXPECT_EQ(panel->pdePluginCallbackObject_, nullptr);
    EXPECT_EQ(panel->pluginBundle, nullptr);
}

TEST(PanelConstruction, LetsGoOfACallbackThatCannotMark) {
    TestHost host(ppdWith(testOptions()));
    host.lacking = {kMarks};
    auto panel = std::make_shared<TellingPanel>();
    EXPECT_FALSE(panel->initWithCallback(&host));
    EXPECT_EQ(panel->pdePluginCallbackObject_, nullptr);
    EXPECT_EQ(panel->pluginBundle, nullptr);
    EXPECT_EQ(host.log, Words{}); // and nothing of it was asked, no override ran
}

TEST(PanelConstruction, NeedsNoOtherOperationOfTheHost) {
    TestHost host(ppdWith(testOptions()));
    host.lacking = {"printSettings", "pageFormat", "panelViewDidResize"};
    EXPECT_TRUE(std::make_shared<TestPanel>()->initWithCallback(&host));
}

TEST(PanelConstruction, NeedsNoPrintSettings) {
    TestHost host(ppdWith("*APSupportsCustomColorMatching: True\n" + testOptions()));
    host.settings.reset();
    host.format.reset();
    EXPECT_TRUE(std::make_shared<TestPanel>()->initWithCallback(&host));
}

TEST(PanelEnd, EndsEveryObservation) {
    TestHost host(ppdWith(testOptions()));
    auto panel = panelFor(host);
    panel->observe("Something", nullptr, &TestPanel::dialogDidExpand);
    toolkit::NotificationCenter::defaultCenter().post({.name = "Something", .sender = nullptr, .userInfo = {}});
    ASSERT_EQ(host.takeLog(), Words{"resized"});
    const std::weak_ptr<TestPanel> gone = panel;
    panel.reset();
    EXPECT_TRUE(gone.expired()); // observing does not keep a panel
    toolkit::NotificationCenter::defaultCenter().post({.name = "Something", .sender = nullptr, .userInfo = {}});
    EXPECT_EQ(host.log, Words{});
}

} // namespace
} // namespace framework_tests
