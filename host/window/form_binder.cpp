#include "host/window/form_binder.h"

#include "host/window/mnemonics.h"
#include "host/window/pop_up_box.h"
#include "host/window/widget_bindings.h"
#include "toolkit/bundle.h"
#include "toolkit/button.h"
#include "toolkit/item_list.h"
#include "toolkit/window.h"

#include <QAbstractSpinBox>
#include <QBuffer>
#include <QComboBox>
#include <QCoreApplication>
#include <QFile>
#include <QFrame>
#include <QKeyEvent>
#include <QLabel>
#include <QSlider>
#include <QTimer>
#include <QUiLoader>

#include <memory>

namespace host {
namespace {

class FormLoader : public QUiLoader {
public:
    QWidget* createWidget(const QString& type, QWidget* parent, const QString& name) override {
        if (type != QStringLiteral("QComboBox"))
            return QUiLoader::createWidget(type, parent, name);
        auto* box = new PopUpBox(parent);
        box->setObjectName(name);
        return box;
    }
};

// A loader would load all widgets that are installed for Designer as it is made; the forms have none but Qt's own.
std::unique_ptr<QUiLoader> loaderWithoutPlugIns() {
    const QStringList paths = QCoreApplication::libraryPaths();
    QCoreApplication::setLibraryPaths({});
    auto loader = std::make_unique<FormLoader>();
    QCoreApplication::setLibraryPaths(paths);
    return loader;
}

constexpr const char* kDisclosedBy = "disclosedBy"; // on a container: the disclosure button that shows it

// Shows a container while its disclosure button is on.
class DisclosureBinding final : public WidgetBinding {
public:
    DisclosureBinding(toolkit::CheckBox& button, QWidget& container, Context context)
        : WidgetBinding(button, container, std::move(context)), button_(button) {
        show();
    }

private:
    void show() override { showVisible(button_.isOn()); }
    toolkit::CheckBox& button_;
};

// Shows a line or a frame that holds nothing of its own.
class FrameBinding final : public WidgetBinding {
public:
    FrameBinding(toolkit::View& model, QWidget& frame, Context context)
        : WidgetBinding(model, frame, std::move(context)) {
        show();
    }

private:
    void show() override { showVisibility(); }
};

// Kinds of models that no widget has to show: lists, windows, and plain areas.
bool needsWidget(const toolkit::View& model) {
    return dynamic_cast<const toolkit::ItemList*>(&model) == nullptr &&
           dynamic_cast<const toolkit::Window*>(&model) == nullptr && typeid(model) != typeid(toolkit::View);
}

// Whether its model alone says when it is shown; the pages of a stack and what is disclosed follow others.
bool isFrame(const QWidget& widget) {
    return qobject_cast<const QFrame*>(&widget) != nullptr && !widget.property(kDisclosedBy).isValid();
}

class InputFilter : public QObject {
public:
    using QObject::QObject;
    bool eventFilter(QObject* object, QEvent* event) override {
        auto* widget = static_cast<QWidget*>(object);
        if (event->type() == QEvent::Wheel && !widget->hasFocus()) {
            event->ignore();
            return true;
        }
        auto* box = qobject_cast<QAbstractSpinBox*>(widget);
        if (box == nullptr || event->type() != QEvent::KeyPress)
            return false;
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key != Qt::Key_Return && key != Qt::Key_Enter)
            return false;
        box->interpretText();
        box->selectAll();
        return true;
    }
};

} // namespace

std::vector<toolkit::View*> modelsOfForm(const toolkit::LoadedViews& views) {
    std::vector<const toolkit::View*> elsewhere;
    for (const auto& view : views.views())
        if (const auto* window = dynamic_cast<const toolkit::Window*>(view.get()))
            elsewhere.insert(elsewhere.end(), window->content().begin(), window->content().end());
    std::vector<toolkit::View*> models;
    for (const auto& view : views.views())
        if (std::ranges::find(elsewhere, view.get()) == elsewhere.end())
            models.push_back(view.get());
    return models;
}

void commitNumbers(QWidget& widget) {
    for (auto* box : widget.findChildren<QAbstractSpinBox*>())
        box->interpretText();
}

void tameInput(QWidget& widget) {
    auto* filter = new InputFilter(&widget);
    for (auto* child : widget.findChildren<QWidget*>())
        if (qobject_cast<QAbstractSpinBox*>(child) != nullptr || qobject_cast<QComboBox*>(child) != nullptr ||
            qobject_cast<QSlider*>(child) != nullptr) {
            child->setFocusPolicy(Qt::StrongFocus);
            child->installEventFilter(filter);
        }
}

FormBinder::FormBinder(const toolkit::Bundle& bundle, const std::string& name,
                       const std::vector<toolkit::View*>& models, Surroundings surroundings)
    : surroundings_(std::move(surroundings)) {
    const auto* path = bundle.pathForResource(name, "ui");
    if (!path) {
        problems_ << QStringLiteral("There is no form \"%1\".").arg(QString::fromStdString(name));
        return;
    }
    QFile file(QString::fromStdString(path->string()));
    const auto loader = loaderWithoutPlugIns();
    if (file.open(QIODevice::ReadOnly)) {
        const std::string text = toolkit::formForWidgets(file.readAll().toStdString());
        QBuffer buffer;
        buffer.setData(text.data(), static_cast<int>(text.size()));
        form_ = buffer.open(QIODevice::ReadOnly) ? loader->load(&buffer) : nullptr;
    }
    if (form_ == nullptr) {
        problems_ << QStringLiteral("The form \"%1\" cannot be loaded: %2")
                         .arg(QString::fromStdString(path->string()), loader->errorString());
        return;
    }
    translate(bundle);
    bind(models);
    tameInput(*form_);
    nameForAssistance();
    giveMnemonics();
}

FormBinder::~FormBinder() {
    bindings_.clear();
    delete form_;
}

// Texts in forms are keys of the bundle's table. Those that belong to models come with the models.
void FormBinder::translate(const toolkit::Bundle& bundle) {
    const auto translated = [&](const QString& key) {
        return QString::fromStdString(bundle.localizedString(key.toStdString()));
    };
    for (QWidget* widget : form_->findChildren<QWidget*>()) {
        if (!widget->accessibleName().isEmpty())
            widget->setAccessibleName(translated(widget->accessibleName()));
        if (!widget->toolTip().isEmpty())
            widget->setToolTip(translated(widget->toolTip()));
    }
}

void FormBinder::bind(const std::vector<toolkit::View*>& models) {
    const WidgetBinding::Context context{
        .run = surroundings_.run, .changed = [this] { didChange(); }, .language = surroundings_.language};
    const auto modelNamed = [&](const std::string& name) -> toolkit::View* {
        const auto found = std::ranges::find_if(models, [&](const auto* each) { return each->name() == name; });
        return found == models.end() ? nullptr : *found;
    };
    for (toolkit::View* model : models) {
        const QString name = QString::fromStdString(model->name());
        const auto widgets = form_->findChildren<QWidget*>(name);
        if (!needsWidget(*model)) {
            if (widgets.size() == 1 && isFrame(*widgets.front()))
                bindings_.push_back(std::make_unique<FrameBinding>(*model, *widgets.front(), context));
            continue;
        }
        if (widgets.size() != 1) {
            problems_ << QStringLiteral("The form has %1 widgets \"%2\".").arg(widgets.size()).arg(name);
            continue;
        }
        if (auto binding = makeBinding(*model, *widgets.front(), context))
            bindings_.push_back(std::move(binding));
        else
            problems_ << QStringLiteral("The widget \"%1\" is of another kind than its model.").arg(name);
    }
    for (QWidget* container : form_->findChildren<QWidget*>()) {
        const std::string by = container->property(kDisclosedBy).toString().toStdString();
        if (by.empty())
            continue;
        if (auto* button = dynamic_cast<toolkit::CheckBox*>(modelNamed(by)))
            bindings_.push_back(std::make_unique<DisclosureBinding>(*button, *container, context));
        else
            problems_ << QStringLiteral("There is no disclosure button \"%1\".").arg(QString::fromStdString(by));
    }
}

// A control without a name of its own is called as its label.
void FormBinder::nameForAssistance() {
    for (auto* label : form_->findChildren<QLabel*>()) {
        QWidget* buddy = label->buddy();
        const QString text = caption(*label).trimmed();
        if (buddy == nullptr || text.isEmpty())
            continue;
        QString name = text;
        while (name.endsWith(u':') || name.endsWith(u' '))
            name.chop(1);
        buddy->setAccessibleName(name);
    }
}

void FormBinder::showAgain() {
    for (const auto& binding : bindings_)
        binding->showAgain();
}

void FormBinder::giveMnemonics() {
    if (form_ != nullptr)
        assignMnemonics(*form_, surroundings_.takenLetters);
}

// Many models change at once, so what follows from it is done once.
void FormBinder::didChange() {
    if (std::exchange(changeIsTold_, true))
        return;
    QTimer::singleShot(0, form_, [this] {
        changeIsTold_ = false;
        nameForAssistance();
        giveMnemonics();
        if (surroundings_.sizeChanged)
            surroundings_.sizeChanged();
    });
}

} // namespace host
