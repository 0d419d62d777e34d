#pragma once

#include "host/session/session.h"
#include "host/window/window_texts.h"

#include <QMessageBox>
#include <QPointer>

#include <functional>

namespace host {

/// Shows the panels' alerts as windows that are modal to the dialog's.
class WindowAlerts final : public AlertPresenter {
public:
    using HelpOpener = std::function<void(const std::string& anchor, const std::string& book)>;

    WindowAlerts(QWidget& window, const Language& language, HelpOpener openHelp)
        : window_(&window), language_(language), openHelp_(std::move(openHelp)) {}

    /// The bundle whose forms and texts are used. Needed before anything is shown.
    void setBundle(std::shared_ptr<toolkit::Bundle> bundle) { bundle_ = std::move(bundle); }

    toolkit::AlertAnswer presentAlert(const toolkit::Alert& alert, bool asSheet) override;
    void presentPanel(const toolkit::AlertPanel& panel) override;
    void presentWindow(toolkit::Window& window) override;
    void openHelp(std::string_view anchor, std::string_view book) override;

private:
    QPointer<QWidget> window_;
    Language language_;
    HelpOpener openHelp_;
    std::shared_ptr<toolkit::Bundle> bundle_;
};

/// A message of the window's own, with one button. Returns when it was read.
void showMessage(QWidget& window, QMessageBox::Icon icon, const QString& message, const QString& explanation,
                 const QString& button);

} // namespace host
