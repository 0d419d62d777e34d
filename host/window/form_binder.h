#pragma once

#include "host/window/window_texts.h"
#include "toolkit/view_description.h"

#include <QPointer>
#include <QStringList>
#include <QWidget>

#include <functional>
#include <memory>
#include <vector>

namespace toolkit {
class Bundle;
}

namespace host {

class WidgetBinding;

/// What a widget of a form does when the user used it: runs the action, or nothing while it must not.
using ActionRunner = std::function<void(const std::function<void()>& action)>;

/// Loads a form and binds its widgets to the models of the same names: the models decide what is shown, and a widget
/// tells its model what the user did. The models are borrowed and outlive the binder; it owns the form until it is
/// put into a parent.
class FormBinder {
public:
    struct Surroundings {
        ActionRunner run;
        std::function<void()> sizeChanged; ///< the form needs more or less room; may be empty
        QString takenLetters;              ///< mnemonics that are used around the form
        Language language = Language::English;
    };

    /// The form `<name>.ui` of the bundle. Check form() for null.
    FormBinder(const toolkit::Bundle& bundle, const std::string& name, const std::vector<toolkit::View*>& models,
               Surroundings surroundings);
    ~FormBinder();
    FormBinder(const FormBinder&) = delete;
    FormBinder& operator=(const FormBinder&) = delete;

    /// Null where the form cannot be loaded; problems() says why.
    [[nodiscard]] QWidget* form() const { return form_; }
    /// What does not fit between form and models, a sentence each.
    [[nodiscard]] const QStringList& problems() const { return problems_; }

    /// Shows every model again, as after a change of fonts or colours.
    void showAgain();
    void giveMnemonics();

private:
    void translate(const toolkit::Bundle& bundle);
    void bind(const std::vector<toolkit::View*>& models);
    void nameForAssistance();
    void didChange();

    Surroundings surroundings_;
    QPointer<QWidget> form_;
    QStringList problems_;
    std::vector<std::unique_ptr<WidgetBinding>> bindings_;
    bool changeIsTold_ = false;
};

/// The models that stand on a panel's form: all but those in windows of their own.
std::vector<toolkit::View*> modelsOfForm(const toolkit::LoadedViews& views);

/// Writes what was typed into number fields below the widget and not yet committed.
void commitNumbers(QWidget& widget);

/// Number fields keep the Return key, which commits them, and lists and sliders leave the wheel to what scrolls
/// unless they have the focus.
void tameInput(QWidget& widget);

} // namespace host
