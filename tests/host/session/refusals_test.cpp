#include "tests/host/session/fake_dialog.h"

#include <stdexcept>

namespace host {
namespace {

using printing::MarkedChoice;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class SessionRefusals : public FakeDialog {
protected:
    /// The only refusal since the last time; the test fails where there is none, or more.
    RefusedMark refusal() {
        const SessionRecord record = session->takeRecord();
        EXPECT_EQ(record.refused.size(), 1U);
        return record.refused.empty() ? RefusedMark() : record.refused.front();
    }
};

TEST_F(SessionRefusals, AChoiceThatNothingForbidsIsMarked) {
    open();
    EXPECT_TRUE(ask("InkMedia", "Glossy"));
    EXPECT_EQ(marked("InkMedia"), "Glossy");
    const SessionRecord record = session->takeRecord();
    ASSERT_EQ(record.asked.size(), 1U);
    EXPECT_EQ(record.asked[0].option + "=" + record.asked[0].choice, "InkMedia=Glossy");
    EXPECT_TRUE(record.asked[0].accepted);
    EXPECT_THAT(record.refused, IsEmpty());
}

TEST_F(SessionRefusals, UnknownOptionsAreRefusedWithTheirName) {
    open();
    for (const char* option : {"NoSuch", "inkmedia", "", "InkMedia "}) {
        SCOPED_TRACE(option);
        EXPECT_FALSE(ask(option, "Plain"));
        EXPECT_THAT(refusal().reason, HasSubstr("\"" + std::string(option) + "\""));
    }
}

TEST_F(SessionRefusals, UnknownChoicesAreRefusedInTheOptionsWords) {
    open();
    for (const char* choice : {"Cardboard", "glossy", "", "Glossy Paper"}) {
        SCOPED_TRACE(choice);
        EXPECT_FALSE(ask("InkMedia", choice));
        EXPECT_THAT(refusal().reason, AllOf(HasSubstr("Media"), HasSubstr("\"" + std::string(choice) + "\"")));
        EXPECT_EQ(marked("InkMedia"), "Plain");
    }
}

TEST_F(SessionRefusals, AChoiceOfTwoLinesIsToldInOne) { // a PPD's default may be one
    open();
    EXPECT_FALSE(ask("InkMedia", "Card\nboard"));
    EXPECT_THAT(refusal().reason, Not(HasSubstr("\n")));
}

TEST_F(SessionRefusals, AConstraintIsToldInThePpdsWords) {
    open();
    ASSERT_TRUE(ask("Tray", "Lower"));
    (void)session->takeRecord();
    EXPECT_FALSE(ask("InkMedia", "Glossy"));
    const RefusedMark refused = refusal();
    EXPECT_EQ(refused.option + "=" + refused.choice, "InkMedia=Glossy");
    EXPECT_THAT(refused.with, ElementsAre(MarkedChoice("Tray", "Lower")));
    EXPECT_THAT(refused.reason, AllOf(HasSubstr("Media: Glossy Paper"), HasSubstr("Paper Tray: Lower Tray")));
    EXPECT_EQ(marked("InkMedia"), "Plain");
}

TEST_F(SessionRefusals, EveryMarkThatExcludesTheChoiceIsTold) {
    open();
    ASSERT_TRUE(ask("Tray", "Lower"));
    ASSERT_TRUE(ask("Slow", "ON"));
    (void)session->takeRecord();
    EXPECT_FALSE(ask("InkMedia", "Glossy"));
    const RefusedMark refused = refusal();
    EXPECT_THAT(refused.with, testing::UnorderedElementsAre(MarkedChoice("Tray", "Lower"), MarkedChoice("Slow", "ON")));
    EXPECT_THAT(refused.reason, AllOf(HasSubstr("Paper Tray: Lower Tray"), HasSubstr("Slow Drying: On")));
}

TEST_F(SessionRefusals, AConstraintBetweenOtherMarksForbidsNothing) {
    open();
    std::string error;
    ASSERT_TRUE(session->markFromOutside("Tray", "Lower", true, error));
    ASSERT_TRUE(session->markFromOutside("InkMedia", "Glossy", true, error));
    EXPECT_TRUE(ask("Staple", "One"));
    EXPECT_TRUE(ask("InkMedia", "Matte"));
}

TEST_F(SessionRefusals, AChoiceThatIsMarkedIsNotTested) {
    open();
    std::string error;
    ASSERT_TRUE(session->markFromOutside("Tray", "Lower", true, error));
    ASSERT_TRUE(session->markFromOutside("InkMedia", "Glossy", true, error));
    EXPECT_TRUE(ask("InkMedia", "Glossy"));
    EXPECT_TRUE(ask("Tray", "Lower"));
    EXPECT_FALSE(ask("Slow", "ON"));
}

TEST_F(SessionRefusals, TheFilterComesFirstAlsoForAMarkedChoice) {
    options.askFilter = [](const std::string& option, const std::string& choice) -> std::optional<std::string> {
        return option == "InkMedia" && choice == "Plain" ? std::optional<std::string>("Not today.") : std::nullopt;
    };
    open();
    EXPECT_FALSE(ask("InkMedia", "Plain"));
    const RefusedMark refused = refusal();
    EXPECT_EQ(refused.reason, "Not today.");
    EXPECT_THAT(refused.with, IsEmpty());
    EXPECT_TRUE(ask("InkMedia", "Matte"));
}

TEST_F(SessionRefusals, WhatTheFilterRaisesReachesThePanelAndIsNoRequest) {
    options.askFilter = [](const std::string& option, const std::string&) -> std::optional<std::string> {
        return option == "Slow" ? throw std::runtime_error("raised") : std::nullopt;
    };
    open();
    EXPECT_THROW(ask("Slow", "ON"), std::runtime_error);
    EXPECT_EQ(marked("Slow"), "OFF");
    EXPECT_THAT(session->takeRecord().asked, IsEmpty());
}

TEST_F(SessionRefusals, AHostThatLacksTheOperationHasNoPanelsAndMarksNothing) {
    options.lacks = {"willChangePPDOptionKeyValue:ppdChoice:"};
    open();
    EXPECT_THAT(session->panels(), IsEmpty());
    EXPECT_FALSE(ask("InkMedia", "Glossy"));
    EXPECT_EQ(marked("InkMedia"), "Plain");
    EXPECT_THAT(session->takeRecord().asked, IsEmpty());
}

} // namespace
} // namespace host
