// Hosts that do not keep to what is asked of them. No panel may crash, loop or lose its way for it.

#include "tests/reliability/dialog_rules.h"
#include "tests/support/test_host.h"

#include "color_settings/CVInkColorSettingPDE.h"
#include "print_settings/CVInkPrintSetting12PDE.h"

#include "toolkit/button.h"
#include "toolkit/number_field.h"
#include "toolkit/popup_list.h"
#include "toolkit/radio_matrix.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

namespace {

constexpr const char* kPaperChanged = "PMPrintDestinationPaperDidChangeNotification";
constexpr const char* kDuplexChanged = "PMPrintDuplexChangedNotification";
constexpr const char* kWindowCloses = "NSWindowWillCloseNotification";

void post(const char* name, const toolkit::Object* sender = nullptr) {
    toolkit::NotificationCenter::defaultCenter().post({.name = name, .sender = sender, .userInfo = {}});
}

/// A host with a will of its own.
class WilfulHost : public tests::TestHost {
public:
    using TestHost::TestHost;

    /// Answers a request instead of marking; empty: marks.
    std::function<bool(const std::string& option, const std::string& choice)> onRequest;
    std::function<void()> whileAlertIsShown;
    bool hasBundle = true;
    int requests = 0;

    bool willChangePPDOptionKeyValuePpdChoice(std::string_view option, std::string_view choice) override {
        constexpr int kMostRequests = 20'000; // of one test; a loop never ends
        if (++requests > kMostRequests)
            throw std::runtime_error("The panels ask without end.");
        return onRequest ? onRequest(std::string(option), std::string(choice))
                         : TestHost::willChangePPDOptionKeyValuePpdChoice(option, choice);
    }
    std::shared_ptr<toolkit::Bundle> pluginBundle() override { return hasBundle ? TestHost::pluginBundle() : nullptr; }
    toolkit::AlertAnswer runModalAlert(const toolkit::Alert& alert) override {
        duringAlert();
        return TestHost::runModalAlert(alert);
    }
    void beginSheet(const toolkit::Alert& alert,
                    const std::function<void(const toolkit::AlertAnswer&)>& didEnd) override {
        duringAlert();
        TestHost::beginSheet(alert, didEnd);
    }
    int runModalForWindow(toolkit::Window& window) override {
        duringAlert();
        return TestHost::runModalForWindow(window);
    }

private:
    void duringAlert() {
        if (const auto work = std::exchange(whileAlertIsShown, nullptr)) // once
            work();
    }
};

/// Both panels in such a host. The panels are made by a test, in a host that misbehaves already if it likes.
class Misbehaving : public testing::Test {
protected:
    WilfulHost host{tests::samplePpd("corvane-a3")};
    std::shared_ptr<CVInkPrintSetting12PDE> print;
    std::shared_ptr<CVInkColorSettingPDE> color;
    std::function<void()> lack; // taken away again whenever the paper changes

    Misbehaving() { setPaper("A4"); }

    void setPaper(const std::string& name) {
        host.format =
            printing::PageFormat{.paper = printing::Paper{.name = name, .ppdName = name, .width = 595, .height = 842}};
    }
    void lackNothing() {
        lack = nullptr;
        host.lacking.clear();
        host.settings.emplace();
        host.languages = {"en"};
        host.hasKeyWindow = host.hasDefaults = host.helpRegisters = true;
        host.reopenBundle({.languages = {"en"}, .localize = false, .strings = {}, .info = {}, .removedInfo = {}});
        host.description->markDefaults();
        setPaper("A4");
    }
    void makePanels() {
        print = std::make_shared<CVInkPrintSetting12PDE>();
        color = std::make_shared<CVInkColorSettingPDE>();
        ASSERT_TRUE(print->initWithCallback(&host));
        ASSERT_TRUE(color->initWithCallback(&host));
    }
    void showPanels() {
        makePanels();
        for (CVPrintQualityPDE* panel : both()) {
            panel->restoreValuesAndReturnError();
            ASSERT_NE(panel->panelView(), nullptr);
            panel->willShow();
        }
    }
    std::vector<CVPrintQualityPDE*> both() const { return {print.get(), color.get()}; }

    // Everything that a user can do to the controls of a panel, one after the other.
    static void useEveryControl(CVPrintQualityPDE& panel) {
        for (const auto& view : panel.loadedViews()->views()) {
            if (auto* popup = dynamic_cast<toolkit::PopUpList*>(view.get())) {
                for (int index = 0; index < static_cast<int>(popup->items().size()); ++index)
                    popup->userSelectedItemAtIndex(index);
            } else if (auto* matrix = dynamic_cast<toolkit::RadioMatrix*>(view.get())) {
                for (int row = 0; row < static_cast<int>(matrix->cells().size()); ++row)
                    matrix->userSelectedRow(row);
            } else if (auto* box = dynamic_cast<toolkit::CheckBox*>(view.get())) {
                for (const bool on : {true, false, true})
                    box->userSetOn(on);
            } else if (auto* field = dynamic_cast<toolkit::NumberField*>(view.get())) {
                for (const double value : {-20.0, 0.0, 7.5, 20.0})
                    field->userSetValue(value);
            } else if (auto* button = dynamic_cast<toolkit::PushButton*>(view.get())) {
                button->userPressed();
            }
        }
    }
    static void useOneControl(CVPrintQualityPDE& panel) {
        for (const auto& view : panel.loadedViews()->views())
            if (auto* popup = dynamic_cast<toolkit::PopUpList*>(view.get()))
                return popup->userSelectedItemAtIndex(1);
    }
    // And everything that a host calls.
    void callEverything() {
        for (CVPrintQualityPDE* panel : both()) {
            if (panel->loadedViews() != nullptr)
                useEveryControl(*panel);
            (void)panel->panelName();
            panel->saveValuesAndReturnError();
            panel->restoreValuesAndReturnError();
            (void)panel->summaryInfo();
            (void)panel->shouldShowHelp();
            panel->PPDOptionKeyValueDidChangePpdChoice("CVMediaType", "Glossy");
            // One of each kind: envelopes, borderless, free, loaded across and along, and one that nobody knows.
            for (const char* paper :
                 {"Env10", "A3.Fullbleed", "Custom.400x700", "Letter", "EnvChou3", "B4", "Unknown"}) {
                setPaper(paper);
                if (lack)
                    lack();
                post(kPaperChanged);
                post(kDuplexChanged);
                (void)panel->shouldPrint();
            }
            panel->shouldHide();
            if (panel->panelView() != nullptr)
                panel->willShow();
        }
    }
    std::string marked(const std::string& option) const { return host.description->markedChoice(option).value_or(""); }
    static std::string pending(CVPrintQualityPDE& panel, const std::string& key) {
        return toolkit::valueInMap(panel.outputBin(), key).textReading();
    }
    void choose(std::string_view popupName, std::string_view keyword) {
        auto* popup = dynamic_cast<toolkit::PopUpList*>(print->loadedViews()->viewNamed(popupName));
        popup->userSelectedItemAtIndex(popup->indexOfItemWithKeyword(keyword));
    }
    void expectPendingAsMarked(CVPrintQualityPDE& panel) const {
        const std::vector<std::string> keys = panel.supportedPPDOptionKeys().value();
        for (const std::string& key : keys) {
            if (!isAdjustment(key)) {
                EXPECT_EQ(pending(panel, key), marked(key)) << key;
            }
        }
    }
    void expectShownAsPending() const {
        for (const reliability::Bound& bound : reliability::kBound) {
            CVPrintQualityPDE& panel = *both()[bound.panel];
            const auto* control = dynamic_cast<const toolkit::Control*>(panel.loadedViews()->viewNamed(bound.control));
            ASSERT_NE(control, nullptr) << bound.control;
            const std::string held = pending(panel, std::string(bound.key));
            const bool isBox = dynamic_cast<const toolkit::CheckBox*>(control) != nullptr;
            if (isBox && !control->isEnabled() && (held == "OFF" || held == "False"))
                continue; // a disabled box counts as off, whatever it shows
            // The two-sided plain paper is shown as plain paper.
            EXPECT_EQ(reliability::shown(*control, bound.key), held == "PlainDuplex" ? "Plain" : held) << bound.key;
        }
    }
    // A dialog that came to itself takes what is marked, shows it, and leaves it marked.
    void expectARestoreToSetThingsRight() {
        const auto marksOfNoRule = [this] { // options that no rule marks
            return std::vector{marked("CVInputSlot"), marked("CVMonoColor"), marked("CVColorMatching")};
        };
        const auto before = marksOfNoRule();
        for (CVPrintQualityPDE* panel : both()) {
            panel->restoreValuesAndReturnError();
            expectPendingAsMarked(*panel);
        }
        expectShownAsPending();
        EXPECT_EQ(marksOfNoRule(), before);
    }
    static bool isAdjustment(std::string_view key) { // kept in the print settings, not marked
        return key == "CVBrightness" || key == "CVContrast" || key == "CVRed" || key == "CVGreen" || key == "CVBlue";
    }
};

TEST_F(Misbehaving, WhatAHostRefusesIsNotPending) {
    host.onRequest = [](const std::string&, const std::string&) { return false; };
    showPanels();
    useEveryControl(*print);
    expectPendingAsMarked(*print);
    useEveryControl(*color);
    EXPECT_EQ(pending(*color, "CVColorEnhancement"), "OFF"); // reverting switches it off as pending only
    color->restoreValuesAndReturnError();
    expectPendingAsMarked(*color);
    callEverything();
    for (CVPrintQualityPDE* panel : both()) {
        panel->restoreValuesAndReturnError();
        expectPendingAsMarked(*panel);
    }
    host.onRequest = nullptr;
    expectARestoreToSetThingsRight();
}

TEST_F(Misbehaving, AHostThatAcceptsAndDoesNotMarkIsReadAgainAtTheNextRestore) {
    showPanels();
    host.onRequest = [](const std::string&, const std::string&) { return true; };
    choose("mediaTypePopup", "Glossy");
    choose("paperFeedPopup", "Tray2");
    EXPECT_EQ(pending(*print, "CVMediaType"), "Glossy"); // the host said so
    EXPECT_EQ(pending(*print, "CVInputSlot"), "Tray2");
    for (CVPrintQualityPDE* panel : both())
        panel->restoreValuesAndReturnError();
    EXPECT_EQ(pending(*print, "CVMediaType"), "Plain"); // and this is so
    EXPECT_EQ(pending(*print, "CVInputSlot"), "Tray1");
    expectShownAsPending();
    callEverything();
    host.onRequest = nullptr;
    expectARestoreToSetThingsRight();
}

TEST_F(Misbehaving, AHostThatMarksAnotherChoiceIsReadAgainAtTheNextRestore) {
    showPanels();
    host.onRequest = [this](const std::string& option, const std::string& choice) {
        const printing::Option* own = host.description->option(option);
        if (own == nullptr)
            return false;
        const auto other = std::ranges::find_if(own->choices, [&](const auto& each) { return each.keyword != choice; });
        return other != own->choices.end() && host.description->mark(option, other->keyword);
    };
    choose("paperFeedPopup", "Tray2");
    EXPECT_EQ(pending(*print, "CVInputSlot"), "Tray2");
    EXPECT_EQ(marked("CVInputSlot"), "Tray1");
    callEverything();
    host.onRequest = nullptr;
    expectARestoreToSetThingsRight();
}

TEST_F(Misbehaving, AHostThatMarksAnotherOptionIsReadAgainAtTheNextRestore) {
    showPanels();
    host.onRequest = [this](const std::string& option, const std::string& choice) {
        host.description->mark("CVMediaType", "Transparencies");
        return host.description->mark(option, choice);
    };
    callEverything();
    host.onRequest = nullptr;
    expectARestoreToSetThingsRight();
}

// Each thing that a host may call while a panel waits for its answer, on both panels.
TEST_F(Misbehaving, AHostMayCallBackIntoTheAskingPanel) {
    using Call = std::function<void(CVPrintQualityPDE&, const std::string& option, const std::string& choice)>;
    const std::map<std::string, Call> calls = {
        {"tells the mark",
         [](auto& panel, auto& option, auto& choice) { panel.PPDOptionKeyValueDidChangePpdChoice(option, choice); }},
        {"restores", [](auto& panel, auto&, auto&) { panel.restoreValuesAndReturnError(); }},
        {"saves", [](auto& panel, auto&, auto&) { panel.saveValuesAndReturnError(); }},
        {"asks for the summary", [](auto& panel, auto&, auto&) { (void)panel.summaryInfo(); }},
        {"shows", [](auto& panel, auto&, auto&) { panel.willShow(); }},
        {"prints", [](auto& panel, auto&, auto&) { (void)panel.shouldPrint(); }},
        {"uses a control", [](auto& panel, auto&, auto&) { useOneControl(panel); }},
        {"changes the paper",
         [this](auto&, auto&, auto&) {
             setPaper(host.format->paper->name == "A4" ? "A4.Fullbleed" : "A4");
             post(kPaperChanged);
         }},
        {"changes two-sided printing",
         [this](auto&, auto&, auto&) {
             host.description->mark("Duplex", marked("Duplex") == "None" ? "DuplexTumble" : "None");
             post(kDuplexChanged);
         }},
    };
    for (const auto& [what, call] : calls) {
        SCOPED_TRACE(what);
        host.onRequest = nullptr;
        host.requests = 0;
        host.description->markDefaults();
        setPaper("A4");
        showPanels();
        bool inside = false;
        host.onRequest = [&](const std::string& option, const std::string& choice) {
            const bool accepted = host.description->mark(option, choice);
            if (std::exchange(inside, true)) // once in each request of the user's
                return accepted;
            for (CVPrintQualityPDE* panel : both())
                call(*panel, option, choice);
            inside = false;
            return accepted;
        };
        callEverything();
        host.onRequest = nullptr;
        expectARestoreToSetThingsRight();
    }
}

TEST_F(Misbehaving, AHostMayLackWhateverItMayLack) {
    const std::map<std::string, std::function<void()>> lacks = {
        {"printSettings", [this] { host.lacking.insert("printSettings"); }},
        {"pageFormat", [this] { host.lacking.insert("pageFormat"); }},
        {"panelViewDidResize", [this] { host.lacking.insert("panelViewDidResize"); }},
        {"print settings", [this] { host.settings.reset(); }},
        {"a page format", [this] { host.format.reset(); }},
        {"a paper", [this] { host.format->paper.reset(); }},
        {"a paper's name", [this] { host.format->paper->name.reset(); }},
        {"a paper's keyword", [this] { host.format->paper->ppdName.reset(); }},
        {"a free paper's width",
         [this] {
             host.format->paper->ppdName.reset();
             host.format->paper->width.reset();
         }},
        {"a free paper's height",
         [this] {
             host.format->paper->ppdName.reset();
             host.format->paper->height.reset();
         }},
        {"a key window", [this] { host.hasKeyWindow = false; }},
        {"user defaults", [this] { host.hasDefaults = false; }},
        {"languages", [this] { host.languages.clear(); }},
        {"help", [this] { host.helpRegisters = false; }},
        {"marks",
         [this] {
             for (const printing::Option& option : host.description->options())
                 host.description->unmark(option.keyword);
         }},
        {"a bundle's name",
         [this] {
             host.reopenBundle(
                 {.languages = {"en"}, .localize = false, .strings = {}, .info = {}, .removedInfo = {"CFBundleName"}});
         }},
        {"an identifier",
         [this] {
             host.reopenBundle({.languages = {"en"},
                                .localize = false,
                                .strings = {},
                                .info = {},
                                .removedInfo = {"CFBundleIdentifier"}});
         }},
        {"keys",
         [this] {
             host.reopenBundle({.languages = {"en"},
                                .localize = false,
                                .strings = {},
                                .info = {},
                                .removedInfo = {"PMPPDKeysSupported", "PMPPDKeysSupportedColor"}});
         }},
    };
    for (const auto& [what, takeAway] : lacks) {
        SCOPED_TRACE(what);
        host.requests = 0;
        lack = takeAway;
        takeAway();
        makePanels(); // it lacks it from the start
        callEverything();

        lackNothing(); // it lacks it from the middle on
        showPanels();
        lack = takeAway;
        takeAway();
        callEverything();

        lackNothing();
        expectARestoreToSetThingsRight();
    }
}

TEST_F(Misbehaving, AHostWithoutAPrinterGetsPanelsWithoutOptions) {
    host.description = nullptr;
    host.onRequest = [](const std::string&, const std::string&) { return false; };
    makePanels();
    callEverything();
    EXPECT_EQ(print->supportedPPDOptionKeys(), std::vector<std::string>());
    EXPECT_EQ(color->supportedPPDOptionKeys(), std::vector<std::string>());
}

TEST_F(Misbehaving, AHostWithoutABundleOrWithoutMarkingGetsNoPanel) {
    host.hasBundle = false;
    EXPECT_FALSE(std::make_shared<CVInkPrintSetting12PDE>()->initWithCallback(&host));
    EXPECT_FALSE(std::make_shared<CVInkColorSettingPDE>()->initWithCallback(&host));
    host.hasBundle = true;
    host.lacking.insert("willChangePPDOptionKeyValue:ppdChoice:");
    EXPECT_FALSE(std::make_shared<CVInkPrintSetting12PDE>()->initWithCallback(&host));
    EXPECT_FALSE(std::make_shared<CVInkColorSettingPDE>()->initWithCallback(nullptr));
}

TEST_F(Misbehaving, APaperThatChangesDuringItsOwnAlertIsFollowed) {
    showPanels();
    choose("resolutionPopup", "PlainFast");
    host.whileAlertIsShown = [this] {
        setPaper("A3.Fullbleed");
        post(kPaperChanged);
    };
    setPaper("A4.Fullbleed");
    post(kPaperChanged);                  // fast printing on borderless paper: the alert
    EXPECT_FALSE(host.whileAlertIsShown); // it was shown
    expectARestoreToSetThingsRight();
    EXPECT_EQ(marked("CVResolution"), "Best"); // the default of the later paper
}

TEST_F(Misbehaving, APaperThatChangesDuringTheAlertBeforePrintingIsFollowed) {
    showPanels();
    host.whileAlertIsShown = [this] {
        setPaper("Env10");
        post(kPaperChanged);
    };
    EXPECT_TRUE(print->shouldPrint());
    EXPECT_FALSE(host.whileAlertIsShown); // it was shown
    EXPECT_EQ(marked("CVColorPaperThick"), "Env");
    expectARestoreToSetThingsRight();
}

TEST_F(Misbehaving, APaperThatChangesDuringTheSheetOfTheHighestQualityIsFollowed) {
    showPanels();
    choose("mediaTypePopup", "Glossy");
    host.whileAlertIsShown = [this] {
        setPaper("CvHagaki_B");
        post(kPaperChanged);
    };
    choose("resolutionPopup", "Best");
    EXPECT_FALSE(host.whileAlertIsShown); // it was shown
    EXPECT_EQ(marked("CVBiDir"), "OFF");
    expectARestoreToSetThingsRight();
}

TEST_F(Misbehaving, AWindowThatClosesDuringAnActionEndsTheObservingOnly) {
    showPanels();
    host.onRequest = [this](const std::string& option, const std::string& choice) {
        post(kWindowCloses, &host.window);
        return host.description->mark(option, choice);
    };
    choose("mediaTypePopup", "Glossy");
    EXPECT_EQ(marked("CVMediaType"), "Glossy");
    EXPECT_EQ(marked("CVHalfTonePattern"), "Dither"); // the other panel hears no more
    host.onRequest = nullptr;
    setPaper("Env10");
    post(kPaperChanged); // nor does this one
    EXPECT_EQ(marked("CVColorPaperThick"), "Regular");
    expectARestoreToSetThingsRight();
}

TEST_F(Misbehaving, PanelsThatAreReleasedDuringAnActionEndAfterIt) {
    showPanels();
    const std::weak_ptr<CVInkPrintSetting12PDE> watch = print;
    host.onRequest = [&](const std::string& option, const std::string& choice) {
        print.reset();
        color.reset();
        EXPECT_FALSE(watch.expired()); // the action holds it
        return host.description->mark(option, choice);
    };
    choose("mediaTypePopup", "Glossy");
    EXPECT_TRUE(watch.expired());
    EXPECT_EQ(marked("CVMediaType"), "Glossy");
}

TEST_F(Misbehaving, PanelsThatAreReleasedDuringANotificationEndAfterIt) {
    for (const char* name : {kPaperChanged, kDuplexChanged}) {
        SCOPED_TRACE(name);
        host.onRequest = nullptr;
        host.description->markDefaults();
        setPaper("A4");
        showPanels();
        const std::weak_ptr<CVInkPrintSetting12PDE> watch = print;
        host.onRequest = [&](const std::string& option, const std::string& choice) {
            print.reset();
            color.reset();
            EXPECT_FALSE(watch.expired()); // the centre holds it
            return host.description->mark(option, choice);
        };
        setPaper("Env10");
        host.description->mark("Duplex", "DuplexTumble");
        post(name);
        EXPECT_TRUE(watch.expired());
        post(kPaperChanged); // nobody is there to hear it
    }
}

TEST_F(Misbehaving, ThePanelThatHearsAnotherMayBeReleasedMeanwhile) {
    showPanels();
    const std::weak_ptr<CVInkColorSettingPDE> watch = color;
    host.onRequest = [&](const std::string& option, const std::string& choice) {
        if (option == "CVHalfTonePattern") {
            color.reset();
            EXPECT_FALSE(watch.expired());
        }
        return host.description->mark(option, choice);
    };
    choose("mediaTypePopup", "Glossy");
    EXPECT_TRUE(watch.expired());
    EXPECT_EQ(marked("CVHalfTonePattern"), "Diffusion");
}

TEST_F(Misbehaving, WhatAHostRaisesReachesWhoeverActed) {
    showPanels();
    host.onRequest = [](const std::string&, const std::string&) -> bool { throw std::runtime_error("host"); };
    EXPECT_THROW(choose("mediaTypePopup", "Glossy"), std::runtime_error);
    host.onRequest = nullptr;
    expectARestoreToSetThingsRight();
    choose("mediaTypePopup", "Glossy");
    EXPECT_EQ(marked("CVMediaType"), "Glossy");
}

} // namespace
