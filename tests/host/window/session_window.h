#pragma once

#include "host/script/script_user.h"
#include "host/window/form_binder.h"
#include "host/window/window_alerts.h"

#include <QTabWidget>

#include <exception>
#include <functional>
#include <map>
#include <memory>
#include <vector>

namespace tests {

/// How often something was done, by what it was done to.
using Counts = std::map<std::string, int>;

/// The user of a scripted session who sees its panels in a window: brings a panel's tab to the front, picks items in
/// opened lists, clicks, types, and answers alerts by the buttons of their windows. What no widget can do (a fraction,
/// a state that is there already, a control on a closed page) is done to the model, and counted apart.
class SessionWindow final : public host::ScriptUser {
public:
    struct Record {
        Counts throughWidgets;               ///< by the kind of widget
        Counts toModels;                     ///< by the reason
        QStringList problems;                ///< what the window showed or did wrong
        std::vector<SessionWindow*> windows; ///< that are open
    };

    /// Is a window of the record, which is borrowed, as long as it lives.
    explicit SessionWindow(Record& record);
    ~SessionWindow() override;

    /// Compares every widget with its model.
    void checkWhatIsShown();

    void sessionDidOpen(host::Session& session) override;
    void sessionWillEnd() override;
    bool showPanel(host::Session& session, CVPrintQualityPDE& panel) override;
    void pickItem(toolkit::PopUpList& list, int index) override;
    void pickRow(toolkit::RadioMatrix& matrix, int row) override;
    void pickEntry(toolkit::TableView& table, int index) override;
    void setOn(toolkit::CheckBox& box, bool on) override;
    void press(toolkit::PushButton& button) override;
    void enter(toolkit::NumberField& field, double value) override;
    toolkit::AlertAnswer answerAlert(const toolkit::Alert& alert, bool asSheet,
                                     const toolkit::AlertAnswer& wanted) override;
    void answerPanel(const toolkit::AlertPanel& panel) override;
    void answerWindow(toolkit::Window& window, const WindowAnswer& wanted) override;

private:
    struct Page {
        CVPrintQualityPDE* panel = nullptr;
        QWidget* widget = nullptr; // in the tabs
        std::unique_ptr<host::FormBinder> binder;
    };

    void bind(Page& page);
    /// The model's widget, on the page in front; null where it cannot be seen.
    template <typename Widget>
    Widget* widgetOf(const toolkit::View& model);
    void reveal(QWidget& widget);
    /// Lets the widget do it, then passes on what the action raised.
    void use(const char* kind, const std::function<void()>& what);
    void useModel(const char* why, const std::function<void()>& what);
    /// Shows a modal window, and has it answered.
    void answer(const std::function<void()>& show, const std::function<void(QWidget& modal)>& how);
    void expect(const QString& shown, const std::string& wanted, const char* what);
    void pressAlertButton(QMessageBox& box, const std::string& text);

    Record& record_;
    QTabWidget tabs_;
    host::WindowAlerts alerts_;
    std::shared_ptr<toolkit::Bundle> bundle_;
    host::Session* session_ = nullptr;
    std::vector<Page> pages_;
    std::vector<std::function<void()>> revealed_; // how to cover again what was opened for one doing
    std::exception_ptr raised_;                   // by an action; it must not pass through the toolkit of the window
    std::function<void()> showing_;               // what a tab that comes to the front does
};

} // namespace tests
