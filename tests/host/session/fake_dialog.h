#pragma once

#include "host/session/session.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace host {

/// The path of one of the bundles that stand in the build tree for tests, such as "Fake".
std::filesystem::path fakeBundle(const std::string& name);

/// A small printer: media, a tray, slow drying and two-sided printing, with constraints between media, tray and drying.
std::string smallPrinter();

/// Answers nothing, and presses the first button of a window when it is told to.
class SilentPresenter : public AlertPresenter {
public:
    toolkit::AlertAnswer presentAlert(const toolkit::Alert& alert, bool asSheet) override;
    void presentPanel(const toolkit::AlertPanel& panel) override;
    void presentWindow(toolkit::Window& window) override;
    void openHelp(std::string_view anchor, std::string_view book) override;

    std::function<void()> whileWindowRuns;
    toolkit::AlertAnswer answer;
    std::vector<std::string> shown; ///< "alert MESSAGE", "sheet MESSAGE", "panel TITLE", "window NAME", "help A in B"
};

/// A dialog of the two small panels, with the printer's defaults marked. Set up the options, then open().
class FakeDialog : public testing::Test {
protected:
    FakeDialog();

    Session& open();
    /// Panels ask like this.
    bool ask(const std::string& option, const std::string& choice);
    std::optional<std::string> marked(const std::string& option) const;
    /// The names of what was posted since the last time.
    std::vector<std::string> posted();

    SilentPresenter presenter;
    SessionOptions options;
    std::shared_ptr<Session> session;
    printing::PrinterDescription* description = nullptr; ///< the session's own
};

} // namespace host
