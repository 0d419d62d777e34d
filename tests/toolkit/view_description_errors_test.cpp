#include "tests/toolkit/bundle_folder.h"
#include "tests/toolkit/form.h"

#include <gmock/gmock.h>

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

TEST_F(BrokenViewDescription, ABrokenCompanionBreaksThePanel) {
    folder.writeResource("Window.ui", "<ui>");
    EXPECT_THAT(errorOf(text("companions", "Window")), HasSubstr("Window.ui"));
}

} // namespace
} // namespace toolkit
