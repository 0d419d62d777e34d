#pragma once

#include "toolkit/alert.h"
#include "toolkit/bundle.h"
#include "toolkit/export.h"
#include "toolkit/text_measuring.h"
#include "toolkit/user_defaults.h"
#include "toolkit/window.h"

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace toolkit {

/// What the windowing system gives the panels of one dialog. A host implements it; every call blocks until it is
/// done, alerts until they are answered.
class CV_TOOLKIT_EXPORT Application {
public:
    virtual ~Application();

    /// The plug-in's own bundle, as this dialog sees it. Never null.
    [[nodiscard]] virtual std::shared_ptr<Bundle> pluginBundle() = 0;
    /// The user's languages, the first one preferred. Never empty.
    [[nodiscard]] virtual std::vector<std::string> preferredLanguages() = 0;
    /// Null where the user has no preferences.
    [[nodiscard]] virtual UserDefaults* userDefaults() = 0;
    [[nodiscard]] virtual const TextMeasurer& textMeasurer() = 0; ///< measures as the host draws

    /// The dialog's window while it is the key window, else null.
    [[nodiscard]] virtual Window* keyWindow() = 0;

    /// Shows the alert and waits for its answer.
    virtual AlertAnswer runModalAlert(const Alert& alert) = 0;
    /// Shows the alert as a sheet on the key window, or by itself where there is none, and hands on its answer.
    virtual void beginSheet(const Alert& alert, const std::function<void(const AlertAnswer&)>& didEnd) = 0;
    virtual void runAlertPanel(const AlertPanel& panel) = 0; ///< shows it until it is dismissed
    /// Shows the window and waits for stopModalWithCode(); answers its code.
    virtual int runModalForWindow(Window& window) = 0;
    virtual void stopModalWithCode(int code) = 0; ///< ends the innermost modal run

    /// Makes the help books at this path known; false where there are none.
    virtual bool registerHelpBooks(const std::filesystem::path& path) = 0;
    virtual void openHelpAnchor(std::string_view anchor, std::string_view book) = 0; ///< of a book that is known
};

} // namespace toolkit
