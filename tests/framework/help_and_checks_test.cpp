// The checks of colour matching and fax, the help book and the memory of suppressed alerts.

#include "tests/framework/scratch_bundle.h"
#include "tests/framework/test_panel.h"

namespace framework_tests {
namespace {

using printing::SettingValue;
using tests::ppdOption;
using tests::ppdWith;
using tests::TestHost;

constexpr const char* kMode = "AP_ColorMatchingMode";

bool hasBit(const TestPanel& panel, ImageModeFlag bit) {
    return (panel.imageModeFlag() & bit) != 0;
}

class ColorMatchingCheck : public testing::Test {
protected:
    TestHost host{ppdWith("*APSupportsCustomColorMatching: True\n" + testOptions())};
    std::shared_ptr<TestPanel> panel = panelFor(host);
};

TEST_F(ColorMatchingCheck, FollowsThePrintSetting) {
    struct {
        std::optional<SettingValue> mode;
        bool vendors;
    } const rows[] = {{std::nullopt, true},
                      {std::string("AP_VendorColorMatching"), true},
                      {std::string("AP_ApplicationColorMatching"), false},
                      {std::string("AP_Other"), true},
                      {std::string(""), true},
                      {std::int64_t{1}, true}};
    for (const auto& row : rows)
        for (const std::uint32_t before : {0U, 0xFFFFFFFFU}) {
            SCOPED_TRACE(row.mode ? printing::optionText(*row.mode) : "none");
            host.settings = printing::PrintSettings();
            if (row.mode)
                host.settings->setValueForKey(*row.mode, kMode);
            panel->imageModeFlag_ = before;
            panel->checkColorSync();
            EXPECT_EQ(hasBit(*panel, kImageModeVendorColorMatching), row.vendors);
            EXPECT_EQ(panel->imageModeFlag() | kImageModeVendorColorMatching, before | kImageModeVendorColorMatching);
        }
}

TEST_F(ColorMatchingCheck, LeavesTheBitWithoutPrintSettings) {
    struct {
        const char* what;
        std::function<void()> take;
    } const rows[] = {{"none", [&] { host.settings.reset(); }},
                      {"cannot be asked for", [&] { host.lacking = {"printSettings"}; }}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        host.settings = printing::PrintSettings();
        row.take();
        for (const bool before : {true, false}) {
            panel->imageModeFlag_ = before ? kImageModeVendorColorMatching : 0U;
            panel->checkColorSync();
            EXPECT_EQ(hasBit(*panel, kImageModeVendorColorMatching), before);
        }
    }
}

TEST_F(ColorMatchingCheck, AcceptsAnySpecifierAndValueOfTheAttribute) {
    for (const char* attribute :
         {"*APSupportsCustomColorMatching Color: True\n", "*APSupportsCustomColorMatching: False\n"}) {
        SCOPED_TRACE(attribute);
        TestHost other(ppdWith(attribute + testOptions()));
        EXPECT_TRUE(hasBit(*panelFor(other), kImageModeVendorColorMatching));
    }
}

TEST(ColorMatchingWithoutTheAttribute, IsNeverTheDrivers) {
    TestHost host(ppdWith(testOptions()));
    const auto panel = panelFor(host);
    for (const char* mode : {"AP_VendorColorMatching", "AP_ApplicationColorMatching", "none", "no settings"}) {
        SCOPED_TRACE(mode);
        if (mode == std::string("no settings"))
            host.settings.reset();
        else if (mode != std::string("none"))
            host.settings->setValueForKey(std::string(mode), kMode);
        else
            host.settings->removeKey(kMode);
        panel->imageModeFlag_ = 0xFFFFFFFF;
        panel->checkColorSync();
        EXPECT_EQ(panel->imageModeFlag(), 0xFFFFFFFE);
    }
}

TEST(FaxCheck, FollowsTheMarkedOutput) {
    TestHost host(ppdWith(ppdOption("CVOutput", "Output", "None", {"None/Printer", "FAX/Fax", "Faxes/File"})));
    const auto panel = panelFor(host);
    for (const char* choice : {"FAX", "None", "FAX", "Faxes", "FAX", ""}) {
        SCOPED_TRACE(choice);
        if (*choice == '\0')
            host.description->unmark("CVOutput");
        else
            host.description->mark("CVOutput", choice);
        panel->checkFax();
        EXPECT_EQ(panel->imageModeFlag(), choice == std::string("FAX") ? kImageModeFaxOutput : 0U);
    }
}

TEST(FaxCheck, LooksAtTheMarkNotAtTheDefault) {
    TestHost host(ppdWith(ppdOption("CVOutput", "Output", "FAX", {"None/Printer", "FAX/Fax"})));
    const auto panel = panelFor(host);
    EXPECT_TRUE(hasBit(*panel, kImageModeFaxOutput)); // the default was marked
    host.description->unmark("CVOutput");
    panel->checkFax();
    EXPECT_FALSE(hasBit(*panel, kImageModeFaxOutput));
}

TEST(FaxCheck, ClearsItsBitWhereThePpdHasNoOutput) {
    TestHost host(ppdWith(ppdOption("CVBiDir", "Bi-directional", "ON", {"OFF/No", "ON/Yes"})));
    const auto panel = panelFor(host);
    panel->imageModeFlag_ = 0xFFFFFFFF;
    panel->checkFax();
    EXPECT_EQ(panel->imageModeFlag(), ~std::uint32_t{kImageModeFaxOutput});
}

class Help : public testing::Test, public Dialog {
protected:
    Help() { panel->pluginBundle = files.open(); }

    ScratchBundle files;
};

TEST_F(Help, BookStandsTwoFoldersAboveTheBundle) {
    panel->setThePDEName("N");
    files.makeHelpBook("N");
    EXPECT_TRUE(panel->registerHelp());
    EXPECT_EQ(host.log, Words{"register " + (files.folder() / "Help" / "N.help").string()});
}

TEST_F(Help, IsNotRegisteredWhereTheBookIsMissing) {
    panel->setThePDEName("N");
    files.makeHelpBook("M");
    EXPECT_FALSE(panel->registerHelp());
    EXPECT_EQ(host.log, Words{});
}

TEST_F(Help, IsNotRegisteredWhereTheManagerRefuses) {
    panel->setThePDEName("N");
    files.makeHelpBook("N");
    host.helpRegisters = false;
    EXPECT_FALSE(panel->registerHelp());
    EXPECT_EQ(host.log.size(), 1U);
}

TEST_F(Help, HasItsAnchorAndTheBundlesBook) {
    EXPECT_EQ(panel->helpAnchor(), "CvHelpAnchor");
    EXPECT_EQ(panel->helpBook(), "Test Help");
}

TEST_F(Help, HasNoBookWhereTheBundleNamesNone) {
    panel->pluginBundle = files.open(
        {.languages = {}, .localize = false, .strings = {}, .info = {}, .removedInfo = {"CFBundleHelpBookName"}});
    EXPECT_EQ(panel->helpBook(), std::nullopt);
    panel->pluginBundle = files.open(
        {.languages = {}, .localize = false, .strings = {}, .info = {{"CFBundleHelpBookName", 7}}, .removedInfo = {}});
    EXPECT_EQ(panel->helpBook(), std::nullopt);
}

TEST_F(Help, IsShownByThePanelWhereItsBookIsRegistered) {
    panel->imageModeFlag_ = kImageModeHelpRegistered;
    EXPECT_FALSE(panel->shouldShowHelp());
    EXPECT_EQ(host.log, Words{"help CvHelpAnchor in Test Help"});
}

TEST_F(Help, IsShownByTheHostWhereNoBookIsRegistered) {
    panel->imageModeFlag_ = ~std::uint32_t{kImageModeHelpRegistered};
    EXPECT_TRUE(panel->shouldShowHelp());
    EXPECT_EQ(host.log, Words{});
}

TEST_F(Help, IsShownByTheHostWhereTheBookHasNoName) {
    panel->imageModeFlag_ = kImageModeHelpRegistered;
    panel->pluginBundle = files.open(
        {.languages = {}, .localize = false, .strings = {}, .info = {}, .removedInfo = {"CFBundleHelpBookName"}});
    EXPECT_TRUE(panel->shouldShowHelp());
    EXPECT_EQ(host.log, Words{});
}

TEST(HelpWithoutAnAnchor, IsShownByTheHost) {
    class Anchorless : public TestPanel {
    public:
        std::optional<std::string> helpAnchor() override { return std::nullopt; }
    };
    TestHost host(ppdWith(testOptions()));
    const auto panel = panelFor<Anchorless>(host);
    panel->imageModeFlag_ = kImageModeHelpRegistered;
    EXPECT_TRUE(panel->shouldShowHelp());
    EXPECT_EQ(host.log, Words{});
}

TEST_F(Help, IsOpenedByItsButtonWhereTheBookIsRegistered) {
    panel->imageModeFlag_ = 0;
    panel->showHelpFile(&disclosure);
    EXPECT_EQ(host.takeLog(), Words{});
    panel->imageModeFlag_ = kImageModeHelpRegistered;
    panel->showHelpFile(nullptr);
    EXPECT_EQ(host.takeLog(), Words{"help CvHelpAnchor in Test Help"});
}

TEST_F(Help, IsTheHostsWhereNoBookStandsBesideTheBundle) {
    panel->initializePopup();
    EXPECT_TRUE(panel->shouldShowHelp());
    panel->showHelpFile(&disclosure);
    EXPECT_EQ(host.log, Words{});
}

class AlertMemory : public testing::Test, public Dialog {
protected:
    AlertMemory() { panel->pluginBundle = files.open(); }

    void remember(toolkit::ValueMap domain) {
        host.defaults.setPersistentDomainForName(std::move(domain), "test.panel");
    }
    std::optional<toolkit::ValueMap> domain() { return host.defaults.persistentDomainForName("test.panel"); }
    void takeIdentifier() {
        panel->pluginBundle = files.open(
            {.languages = {}, .localize = false, .strings = {}, .info = {}, .removedInfo = {"CFBundleIdentifier"}});
    }

    ScratchBundle files;
};

TEST_F(AlertMemory, ShowsAnAlertUnlessItsEntryIsNo) {
    struct {
        toolkit::Value entry;
        bool shows;
    } const rows[] = {{toolkit::Value(), true}, {true, true}, {false, false}, {1, true}, {0, false}, {"NO", false}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.entry.textReading());
        remember({{"Other", false}});
        if (!row.entry.isAbsent())
            remember({{"Key", row.entry}});
        EXPECT_EQ(panel->shouldShowAlert("Key"), row.shows);
    }
}

TEST_F(AlertMemory, ShowsEveryAlertWhereNothingIsRemembered) {
    EXPECT_TRUE(panel->shouldShowAlert("Key"));
    remember({{"Key", false}});
    EXPECT_TRUE(panel->shouldShowAlert(std::nullopt));
    EXPECT_FALSE(panel->shouldShowAlert("Key"));
    host.hasDefaults = false;
    EXPECT_TRUE(panel->shouldShowAlert("Key"));
    host.hasDefaults = true;
    takeIdentifier();
    EXPECT_TRUE(panel->shouldShowAlert("Key"));
}

TEST_F(AlertMemory, ReadsTheDomainOfTheBundlesIdentifier) {
    host.defaults.setPersistentDomainForName({{"Key", false}}, "another.panel");
    EXPECT_TRUE(panel->shouldShowAlert("Key"));
}

TEST_F(AlertMemory, RemembersHowTheSuppressionBoxWasLeft) {
    panel->alertDidEndReturnCodeContextInfo({.button = 0, .suppressionButtonOn = true}, 0, "Key");
    EXPECT_EQ(domain(), (toolkit::ValueMap{{"Key", false}}));
    panel->alertDidEndReturnCodeContextInfo({.button = 0, .suppressionButtonOn = false}, 0, "Key");
    EXPECT_EQ(domain(), (toolkit::ValueMap{{"Key", true}}));
}

TEST_F(AlertMemory, IgnoresTheButtonAndTheReturnCode) {
    for (const int code : {0, 1, 1000, 1001, -1}) {
        SCOPED_TRACE(code);
        panel->alertDidEndReturnCodeContextInfo({.button = code, .suppressionButtonOn = true}, code, "Key");
        EXPECT_EQ(domain(), (toolkit::ValueMap{{"Key", false}}));
    }
}

TEST_F(AlertMemory, KeepsWhatElseIsRemembered) {
    remember({{"Other", "kept"}, {"Key", false}});
    panel->alertDidEndReturnCodeContextInfo({.button = 0, .suppressionButtonOn = false}, 0, "Key");
    EXPECT_EQ(domain(), (toolkit::ValueMap{{"Other", "kept"}, {"Key", true}}));
}

TEST_F(AlertMemory, RemembersNothingWithoutAKeyDefaultsOrAnIdentifier) {
    panel->alertDidEndReturnCodeContextInfo({.button = 0, .suppressionButtonOn = true}, 0, std::nullopt);
    EXPECT_EQ(domain(), std::nullopt);
    host.hasDefaults = false;
    panel->alertDidEndReturnCodeContextInfo({.button = 0, .suppressionButtonOn = true}, 0, "Key");
    EXPECT_EQ(domain(), std::nullopt);
    host.hasDefaults = true;
    takeIdentifier();
    panel->alertDidEndReturnCodeContextInfo({.button = 0, .suppressionButtonOn = true}, 0, "Key");
    EXPECT_EQ(domain(), std::nullopt);
    EXPECT_EQ(host.defaults.persistentDomainForName(""), std::nullopt);
}

/// Preferences that tell when they are written down.
class CountingDefaults : public toolkit::MemoryUserDefaults {
public:
    Words calls;
    void setPersistentDomainForName(toolkit::ValueMap domain, std::string_view name) override {
        calls.push_back("set " + std::string(name));
        MemoryUserDefaults::setPersistentDomainForName(std::move(domain), name);
    }
    bool synchronize() override {
        calls.emplace_back("synchronize");
        return true;
    }
};

TEST(AlertAnswer, IsWrittenDownAtOnce) {
    struct Host : TestHost {
        using TestHost::TestHost;
        CountingDefaults counting;
        toolkit::UserDefaults* userDefaults() override { return &counting; }
    };
    ScratchBundle files;
    Host host(ppdWith(testOptions()));
    host.bundle = files.open();
    panelFor(host)->alertDidEndReturnCodeContextInfo({.button = 0, .suppressionButtonOn = true}, 0, "Key");
    EXPECT_EQ(host.counting.calls, (Words{"set test.panel", "synchronize"}));
}

} // namespace
} // namespace framework_tests
