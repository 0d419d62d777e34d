#include "tests/toolkit/bundle_folder.h"
#include "tests/toolkit/form.h"
#include "toolkit/radio_matrix.h"

#include <gmock/gmock.h>

#include <cstdint>

namespace toolkit {
namespace {

using namespace toolkit_tests;
using testing::AllOf;
using testing::HasSubstr;

class BrokenViewDescription : public testing::Test {
protected:
    [[nodiscard]] std::string errorOf(const std::string& inside) const {
        return folder.errorOfLoading(form(widget("QWidget", "panelView", inside)));
    }
    BundleFolder folder;
};

TEST_F(BrokenViewDescription, AMissingOneIsNamed) {
    std::string error;
    EXPECT_EQ(LoadedViews::load(*folder.open(), "Absent", error), nullptr);
    EXPECT_THAT(error, HasSubstr("\"Absent\""));
}

TEST_F(BrokenViewDescription, ANameThatLeadsOutOfTheBundleIsMissing) {
    folder.writeResource("Form.ui", form(widget("QWidget", "panelView")));
    std::string error;
    EXPECT_EQ(LoadedViews::load(*folder.open(), "../Resources/Form", error), nullptr);
    EXPECT_NE(error, "");
}

TEST_F(BrokenViewDescription, BrokenXmlIsReportedWithItsFile) {
    for (const char* xml : {"", "no markup", "<ui", "<ui><widget class=\"QWidget\" name=\"panelView\">",
                            "<ui></widget>", "<ui/>", "<form/>", "<widget class=\"QWidget\" name=\"panelView\"/>"}) {
        SCOPED_TRACE(xml);
        EXPECT_THAT(folder.errorOfLoading(xml), AllOf(HasSubstr("Form.ui"), HasSubstr("broken")));
    }
}

TEST_F(BrokenViewDescription, AFormWithoutAnyWidgetIsNotCalledFreeOfErrors) {
    EXPECT_THAT(folder.errorOfLoading("<ui/>"), testing::Not(HasSubstr("No error")));
}

TEST_F(BrokenViewDescription, AnUnknownClassIsNamed) {
    EXPECT_THAT(errorOf(widget("QTextEdit", "notes")), AllOf(HasSubstr("\"notes\""), HasSubstr("\"QTextEdit\"")));
    EXPECT_THAT(errorOf(grid(widget("QFrame", "area", widget("", "inner")))), HasSubstr("\"inner\""));
}

TEST_F(BrokenViewDescription, AnUnknownKindIsRefused) {
    EXPECT_THAT(errorOf(widget("QComboBox", "popup", text("kind", "matrix"))), HasSubstr("\"popup\""));
    EXPECT_THAT(errorOf(widget("QLabel", "label", text("kind", "picture"))), HasSubstr("\"label\""));
}

TEST_F(BrokenViewDescription, ANameThatStandsTwiceIsRefused) {
    EXPECT_THAT(errorOf(widget("QLabel", "label") + grid(widget("QCheckBox", "label"))),
                AllOf(HasSubstr("\"label\""), HasSubstr("twice")));
}

TEST_F(BrokenViewDescription, AWidgetMayNotBearTheListsName) {
    EXPECT_THAT(errorOf(text("list", "entries") + widget("QListView", "entries")), HasSubstr("twice"));
}

TEST_F(BrokenViewDescription, ANameMayNotStandAgainInACompanion) {
    folder.writeResource("Window.ui", form(widget("QDialog", "window", widget("QLabel", "label"))));
    EXPECT_THAT(errorOf(text("companions", "Window") + widget("QLabel", "label")), HasSubstr("twice"));
}

TEST_F(BrokenViewDescription, AMissingCompanionIsNamed) {
    EXPECT_THAT(errorOf(text("companions", "AbsentWindow")), HasSubstr("\"AbsentWindow\""));
}

TEST_F(BrokenViewDescription, ADescriptionIsNotItsOwnCompanion) {
    EXPECT_THAT(errorOf(text("companions", "Form")), HasSubstr("twice"));
}

TEST_F(BrokenViewDescription, WhatIsNestedTooDeeplyIsRefused) {
    const auto nested = [](int depth) {
        std::string inside;
        for (int level = 0; level < depth; ++level)
            inside = widget("QFrame", "frame" + std::to_string(level), inside);
        return form(inside);
    };
    EXPECT_NE(folder.load(nested(64)), nullptr);
    EXPECT_THAT(folder.errorOfLoading(nested(65)), HasSubstr("too deeply"));
    EXPECT_THAT(folder.errorOfLoading(nested(20'000)), HasSubstr("too deeply"));
}

TEST_F(BrokenViewDescription, NumbersBeyondAnyUseAreBounded) {
    const auto huge = [](const char* name, const char* value) {
        return property(name, std::string("<double>") + value + "</double>");
    };
    for (const char* value : {"1e300", "-1e300", "nan", "inf"}) {
        SCOPED_TRACE(value);
        folder.writeResource("Form.ui",
                             form(widget("QWidget", "panelView",
                                         widget("QGroupBox", "matrix", text("kind", "matrix") + huge("rows", value)) +
                                             widget("QCheckBox", "box", huge("tag", value)))));
        std::string error;
        const auto views = LoadedViews::load(*folder.open(), "Form", error);
        ASSERT_NE(views, nullptr) << error;
        const auto rows = dynamic_cast<RadioMatrix&>(*views->viewNamed("matrix")).cells().size();
        EXPECT_TRUE(rows == 1 || rows == 100) << rows;
        const auto tag = dynamic_cast<Control&>(*views->viewNamed("box")).tag();
        EXPECT_TRUE(tag == 0 || tag == INT64_MAX || tag == INT64_MIN) << tag;
    }
}

TEST_F(BrokenViewDescription, ABrokenCompanionBreaksThePanel) {
    folder.writeResource("Window.ui", "<ui>");
    EXPECT_THAT(errorOf(text("companions", "Window")), HasSubstr("Window.ui"));
}

} // namespace
} // namespace toolkit
