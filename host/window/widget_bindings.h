#pragma once

#include "host/window/form_binder.h"
#include "toolkit/view.h"

#include <QPointer>
#include <QWidget>

#include <memory>
#include <optional>

namespace host {

/// Shows one model in one widget, and brings the user's doings to the model.
class WidgetBinding : public toolkit::ViewObserver {
public:
    struct Context {
        ActionRunner run;
        std::function<void()> changed; ///< texts or visibility did
        Language language = Language::English;
    };

    WidgetBinding(toolkit::View& model, QWidget& widget, Context context);
    WidgetBinding(const WidgetBinding&) = delete;
    WidgetBinding& operator=(const WidgetBinding&) = delete;
    virtual ~WidgetBinding();

    void viewDidChange(toolkit::View& view) final;
    /// Shows all of the model, as if nothing had been shown.
    void showAgain();

protected:
    virtual void show() = 0;
    /// Forgets what show() remembers of what it showed.
    virtual void forget() {}
    /// Runs what the user did; the widget shows the model afterwards, whatever came of it.
    void userDid(const std::function<void()>& what);
    void showVisibility();
    void showVisible(bool visible);
    void showEnabled(const toolkit::Control& control);
    void showTextColor(toolkit::TextColor color, QPalette::ColorRole role);
    void showCaption(const std::string& text);
    [[nodiscard]] const Context& context() const { return context_; }
    /// Signals are connected in this object's context, so that they end with the binding.
    [[nodiscard]] QObject* lifetime() { return &lifetime_; }

private:
    toolkit::View& model_;
    QPointer<QWidget> widget_;
    Context context_;
    std::optional<bool> visible_;
    QObject lifetime_;
};

/// The binding of a model to a widget of the kind that shows it; null where the widget is of another kind.
std::unique_ptr<WidgetBinding> makeBinding(toolkit::View& model, QWidget& widget,
                                           const WidgetBinding::Context& context);

} // namespace host
