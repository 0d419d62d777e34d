#include "tests/host/session/fake_dialog.h"

namespace host {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class SessionMarks : public FakeDialog {
protected:
    bool mark(const std::string& option, const std::string& choice, bool tell = true) {
        return session->markFromOutside(option, choice, tell, error);
    }

    std::string error;
};

using SessionPaper = FakeDialog;
using SessionPanels = FakeDialog;

TEST_F(SessionMarks, AMarkFromOutsideIsToldToBothPanelsInTheirOrder) {
    open();
    EXPECT_TRUE(mark("Tray", "Lower"));
    EXPECT_EQ(marked("Tray"), "Lower");
    EXPECT_THAT(posted(), ElementsAre("first told Tray=Lower", "second told Tray=Lower"));
}

TEST_F(SessionMarks, TheFirstPanelsAnswerStandsWhenTheSecondIsTold) {
    options.settings->setValueForKey(std::string("Matte"), "first asks for its media");
    open();
    EXPECT_TRUE(mark("InkMedia", "Glossy"));
    EXPECT_EQ(marked("InkMedia"), "Matte");
    EXPECT_THAT(posted(), ElementsAre("first told InkMedia=Glossy", "second told InkMedia=Glossy"));
}

TEST_F(SessionMarks, AMarkThatAPanelAsksForIsToldToNone) {
    open();
    EXPECT_TRUE(ask("Tray", "Lower"));
    EXPECT_THAT(posted(), IsEmpty());
}

TEST_F(SessionMarks, AMarkFromOutsideIsNotTestedAgainstConstraints) {
    open();
    EXPECT_TRUE(mark("Tray", "Lower"));
    EXPECT_TRUE(mark("InkMedia", "Glossy"));
    EXPECT_EQ(marked("InkMedia"), "Glossy");
    EXPECT_EQ(marked("Tray"), "Lower");
    EXPECT_THAT(session->takeRecord().asked, IsEmpty());
}

TEST_F(SessionMarks, UnknownOptionsAndChoicesAreAnErrorAndToldToNobody) {
    open();
    for (const auto& [option, choice, named] :
         {std::array{"NoSuch", "A", "NoSuch"}, std::array{"Tray", "Middle", "Middle"},
          std::array{"tray", "Lower", "tray"}, std::array{"Tray", "lower", "lower"}}) {
        SCOPED_TRACE(std::string(option) + "=" + choice);
        EXPECT_FALSE(mark(option, choice));
        EXPECT_THAT(error, HasSubstr(named));
        EXPECT_EQ(marked("Tray"), "Upper");
    }
    EXPECT_THAT(posted(), IsEmpty());
}

TEST_F(SessionMarks, AMarkCanBeKeptFromThePanels) {
    open();
    EXPECT_TRUE(mark("Duplex", "DuplexNoTumble", false));
    EXPECT_EQ(marked("Duplex"), "DuplexNoTumble");
    EXPECT_THAT(posted(), IsEmpty());
}

TEST_F(SessionMarks, TwoSidedPrintingIsAlsoToldByItsNotificationAfterwards) {
    open();
    EXPECT_TRUE(mark("Duplex", "DuplexNoTumble"));
    EXPECT_THAT(posted(), ElementsAre("first told Duplex=DuplexNoTumble", "second told Duplex=DuplexNoTumble",
                                      "first two-sided DuplexNoTumble", "second two-sided DuplexNoTumble"));
}

TEST_F(SessionMarks, WhatTheHostItselfPostsIsNotCountedAsThePanels) {
    open();
    session->postFromHost({.name = "FromTheHost", .sender = session.get(), .userInfo = {}});
    EXPECT_THAT(posted(), IsEmpty());
    toolkit::NotificationCenter::defaultCenter().post({.name = "Another", .sender = session.get(), .userInfo = {}});
    toolkit::NotificationCenter::defaultCenter().post({.name = "Elsewhere", .sender = nullptr, .userInfo = {}});
    EXPECT_THAT(posted(), ElementsAre("Another"));
}

TEST_F(SessionPaper, TheSessionStartsWithThePaperOfTheMarkedPageSize) {
    options.description->mark("PageSize", "A5");
    open();
    ASSERT_TRUE(session->pageFormat()->paper);
    const printing::Paper& paper = *session->pageFormat()->paper;
    EXPECT_EQ(paper.name, "A5");
    EXPECT_EQ(paper.ppdName, "A5");
    EXPECT_EQ(paper.width, 420);
    EXPECT_EQ(paper.height, 595);
}

TEST_F(SessionPaper, ANewPaperStandsAndIsMarkedBeforeThePanelsHearOfIt) {
    open();
    session->setPaper(session->paperForPageSize("A5"), true);
    EXPECT_THAT(posted(), ElementsAre("first paper A5, marked A5", "second paper A5, marked A5"));
}

TEST_F(SessionPaper, AUserDefinedPaperLeavesTheMarkedPageSize) {
    open();
    session->setPaper(printing::Paper{.name = "Custom", .ppdName = {}, .width = 300, .height = 400}, true);
    EXPECT_THAT(posted(), ElementsAre("first paper Custom, marked A4", "second paper Custom, marked A4"));
}

TEST_F(SessionPaper, APaperOfAnotherPrinterMarksNothing) {
    open();
    session->setPaper(printing::Paper{.name = "B9", .ppdName = "B9", .width = 300, .height = 400}, true);
    EXPECT_EQ(marked("PageSize"), "A4");
}

TEST_F(SessionPaper, APaperCanBeKeptFromThePanels) {
    open();
    session->setPaper(session->paperForPageSize("A5"), false);
    EXPECT_EQ(marked("PageSize"), "A5");
    EXPECT_EQ(session->pageFormat()->paper->name, "A5");
    EXPECT_THAT(posted(), IsEmpty());
}

TEST_F(SessionPaper, AnUnknownPageSizeHasNoPaper) {
    open();
    EXPECT_FALSE(session->paperForPageSize("B9"));
}

TEST_F(SessionPanels, TheFirstPanelThatIsShownIsPrecededByTheRestoringOfAll) {
    open();
    const framework::PanelList panels = session->panels();
    session->showPanel(*panels[1]);
    EXPECT_THAT(posted(), ElementsAre("first restored", "second restored"));
    session->showPanel(*panels[0]);
    EXPECT_THAT(posted(), IsEmpty());
}

TEST_F(SessionPanels, APanelThatWasRestoredBeforeItIsShownIsNotRestoredAgain) {
    open();
    session->restorePanel(*session->panels()[0]);
    EXPECT_THAT(posted(), ElementsAre("first restored"));
    session->showPanel(*session->panels()[1]);
    EXPECT_THAT(posted(), IsEmpty());
}

TEST_F(SessionPanels, APanelWithoutAViewIsNotShown) {
    open();
    EXPECT_FALSE(session->showPanel(*session->panels()[0]));
}

TEST_F(SessionPanels, EveryPanelIsAskedBeforePrintingUntilOneSaysNo) {
    open();
    EXPECT_TRUE(session->shouldPrint());
    EXPECT_THAT(posted(), ElementsAre("first asked to print", "second asked to print"));
    session->settings()->setValueForKey(true, "first stops the job");
    EXPECT_FALSE(session->shouldPrint());
    EXPECT_THAT(posted(), ElementsAre("first asked to print"));
}

} // namespace
} // namespace host
