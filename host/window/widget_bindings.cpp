// How each kind of model is shown, and what its widget tells it.

#include "host/window/widget_bindings.h"

#include "host/window/mnemonics.h"
#include "host/window/pictures.h"
#include "host/window/pop_up_box.h"
#include "toolkit/button.h"
#include "toolkit/image_view.h"
#include "toolkit/label.h"
#include "toolkit/number_field.h"
#include "toolkit/popup_list.h"
#include "toolkit/radio_matrix.h"
#include "toolkit/table_view.h"

#include <QAbstractButton>
#include <QBoxLayout>
#include <QButtonGroup>
#include <QCheckBox>
#include <QEvent>
#include <QGroupBox>
#include <QLabel>
#include <QListView>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalBlocker>
#include <QSlider>
#include <QSpinBox>
#include <QStackedWidget>
#include <QStandardItemModel>
#include <QToolButton>

#include <algorithm>
#include <cmath>

namespace host {
WidgetBinding::WidgetBinding(toolkit::View& model, QWidget& widget, Context context)
    : model_(model), widget_(&widget), context_(std::move(context)) {
    model_.addObserver(*this);
}

WidgetBinding::~WidgetBinding() {
    model_.removeObserver(*this);
}

void WidgetBinding::viewDidChange(toolkit::View&) {
    if (widget_ != nullptr)
        show();
}

void WidgetBinding::showAgain() {
    if (widget_ == nullptr)
        return;
    forget();
    show();
}

void WidgetBinding::userDid(const std::function<void()>& what) {
    // Where it has to wait for an alert's answer, the widget may be gone by then.
    context_.run([what, alive = QPointer<QObject>(&lifetime_)] {
        if (alive != nullptr)
            what();
    });
    if (widget_ != nullptr)
        show();
}

void WidgetBinding::showVisibility() {
    showVisible(!model_.isHidden());
}

void WidgetBinding::showVisible(bool visible) {
    if (visible_ == visible)
        return;
    visible_ = visible;
    widget_->setVisible(visible);
    context_.changed();
}

void WidgetBinding::showEnabled(const toolkit::Control& control) {
    widget_->setEnabled(control.isEnabled());
    widget_->setAccessibleDescription(control.isEnabled() ? widget_->toolTip()
                                                          : windowText(Text::NotAvailable, context_.language));
}

// The palette's own disabled colour, so that it fits light and dark ones.
void WidgetBinding::showTextColor(toolkit::TextColor color, QPalette::ColorRole role) {
    widget_->setPalette(QPalette());
    if (color == toolkit::TextColor::Enabled)
        return;
    QPalette palette = widget_->palette();
    const QColor disabled = palette.color(QPalette::Disabled, role);
    palette.setColor(QPalette::Active, role, disabled);
    palette.setColor(QPalette::Inactive, role, disabled);
    widget_->setPalette(palette);
}

void WidgetBinding::showCaption(const std::string& text) {
    const QString shown = QString::fromUtf8(text);
    if (caption(*widget_) == shown)
        return;
    setCaption(*widget_, shown);
    context_.changed();
}

namespace {

class PopUpBinding final : public WidgetBinding {
public:
    PopUpBinding(toolkit::PopUpList& list, PopUpBox& box, Context context)
        : WidgetBinding(list, box, std::move(context)), list_(list), box_(box) {
        QObject::connect(&box_, &QComboBox::activated, lifetime(), [this](int index) { userPicked(index); });
        show();
    }

private:
    // By the time it is done the list may hold other items.
    void userPicked(int index) {
        const QString title = box_.itemText(index);
        userDid([this, index, title] {
            const auto& items = list_.items();
            if (index >= 0 && index < static_cast<int>(items.size()) &&
                QString::fromUtf8(items[static_cast<std::size_t>(index)].title) == title)
                list_.userSelectedItemAtIndex(index);
        });
    }

    void show() override {
        const QSignalBlocker quiet(box_);
        if (!isShown())
            fill();
        if (box_.currentIndex() != list_.selectedIndex())
            box_.setCurrentIndex(list_.selectedIndex());
        showVisibility();
        showEnabled(list_);
        if (list_.isEnabled())
            describeDisabledItems();
    }

    void forget() override { known_ = false; }

    [[nodiscard]] bool isShown() const {
        return known_ && std::ranges::equal(list_.items(), shown_, [](const auto& one, const auto& other) {
                   return one.title == other.title && one.enabled == other.enabled &&
                          (one.image ? one.image->path : std::string()) ==
                              (other.image ? other.image->path : std::string());
               });
    }

    void fill() {
        auto& model = static_cast<QStandardItemModel&>(*box_.model());
        QList<QStandardItem*> items;
        QSize largest;
        for (const auto& item : list_.items()) {
            auto* row = new QStandardItem(QString::fromUtf8(item.title));
            row->setEnabled(item.enabled);
            if (item.image)
                if (const QPixmap pixmap = pixmapOfImage(*item.image); !pixmap.isNull()) {
                    row->setIcon(QIcon(pixmap));
                    largest = largest.expandedTo(pixmap.size());
                }
            items << row;
        }
        model.clear();
        for (QStandardItem* item : items)
            model.appendRow(item);
        if (largest.isValid()) // in the height of a line of text
            box_.setIconSize(largest.scaled(QSize(4, 1) * box_.fontMetrics().height(), Qt::KeepAspectRatio));
        shown_ = list_.items();
        known_ = true;
        context().changed();
    }

    void describeDisabledItems() {
        QStringList disabled;
        for (const auto& item : list_.items())
            if (!item.enabled)
                disabled << QString::fromUtf8(item.title);
        box_.setAccessibleDescription(disabled.isEmpty()
                                          ? box_.toolTip()
                                          : windowText(Text::ChoicesNotAvailable, context().language)
                                                .arg(disabled.join(windowText(Text::Separator, context().language))));
    }

    toolkit::PopUpList& list_;
    PopUpBox& box_;
    std::vector<toolkit::PopUpList::Item> shown_;
    bool known_ = false;
};

class MatrixBinding final : public WidgetBinding {
public:
    MatrixBinding(toolkit::RadioMatrix& matrix, QGroupBox& box, Context context)
        : WidgetBinding(matrix, box, std::move(context)), matrix_(matrix), box_(box) {
        QObject::connect(&group_, &QButtonGroup::idClicked, lifetime(),
                         [this](int row) { userDid([this, row] { matrix_.userSelectedRow(row); }); });
        show();
    }

private:
    void show() override {
        const QSignalBlocker quiet(group_);
        std::vector<std::string> titles;
        for (const auto& cell : matrix_.cells())
            titles.push_back(cell.title);
        if (titles != shown_) {
            shown_ = std::move(titles);
            fill();
        }
        group_.setExclusive(false);
        for (QAbstractButton* button : group_.buttons())
            button->setChecked(group_.id(button) == matrix_.selectedRow());
        group_.setExclusive(true);
        if (QAbstractButton* checked = group_.checkedButton())
            box_.setFocusProxy(checked);
        showVisibility();
        showEnabled(matrix_);
        for (QAbstractButton* button : group_.buttons())
            button->setAccessibleDescription(box_.accessibleDescription());
    }

    void fill() {
        for (QAbstractButton* button : group_.buttons()) {
            group_.removeButton(button);
            button->hide();
            button->deleteLater();
        }
        QWidget* previous = &box_;
        for (int row = 0; row < static_cast<int>(shown_.size()); ++row) {
            auto* button = new QRadioButton(&box_);
            setCaption(*button, QString::fromUtf8(shown_[static_cast<std::size_t>(row)]));
            group_.addButton(button, row);
            box_.layout()->addWidget(button);
            QWidget::setTabOrder(previous, button);
            previous = button;
        }
        context().changed();
    }

    toolkit::RadioMatrix& matrix_;
    QGroupBox& box_;
    QButtonGroup group_;
    std::vector<std::string> shown_;
};

class TitledBoxBinding final : public WidgetBinding {
public:
    TitledBoxBinding(toolkit::TitledBox& model, QGroupBox& box, Context context)
        : WidgetBinding(model, box, std::move(context)), model_(model), box_(box) {
        show();
    }

private:
    void show() override {
        box_.setTitle(textWithoutMnemonic(QString::fromUtf8(model_.title())));
        showVisibility();
    }
    toolkit::TitledBox& model_;
    QGroupBox& box_;
};

class CheckBinding final : public WidgetBinding {
public:
    CheckBinding(toolkit::CheckBox& model, QAbstractButton& button, Context context)
        : WidgetBinding(model, button, std::move(context)), model_(model), button_(button) {
        QObject::connect(&button_, &QAbstractButton::clicked, lifetime(),
                         [this](bool on) { userDid([this, on] { model_.userSetOn(on); }); });
        show();
    }

private:
    void show() override {
        const QSignalBlocker quiet(button_);
        button_.setChecked(model_.isOn());
        if (auto* disclosure = qobject_cast<QToolButton*>(&button_))
            disclosure->setArrowType(model_.isOn() ? Qt::DownArrow : Qt::RightArrow);
        else
            showCaption(model_.title());
        showVisibility();
        showEnabled(model_);
    }
    toolkit::CheckBox& model_;
    QAbstractButton& button_;
};

class PushBinding final : public WidgetBinding {
public:
    PushBinding(toolkit::PushButton& model, QPushButton& button, Context context)
        : WidgetBinding(model, button, std::move(context)), model_(model), button_(button) {
        QObject::connect(&button_, &QAbstractButton::clicked, lifetime(),
                         [this] { userDid([this] { model_.userPressed(); }); });
        show();
    }

private:
    void show() override {
        showCaption(model_.title());
        showVisibility();
        showEnabled(model_);
    }
    toolkit::PushButton& model_;
    QPushButton& button_;
};

class LabelBinding final : public WidgetBinding {
public:
    LabelBinding(toolkit::Label& model, QLabel& label, Context context)
        : WidgetBinding(model, label, std::move(context)), model_(model), label_(label) {
        label_.setTextFormat(Qt::PlainText);
        show();
    }

private:
    void show() override {
        showCaption(model_.text());
        showVisibility();
        showTextColor(model_.textColor(), QPalette::WindowText);
    }
    toolkit::Label& model_;
    QLabel& label_;
};

// A picture is made of the model's only where it is seen: the preview is drawn anew with each value, and stands on an
// area that is mostly closed.
class PictureBinding final : public WidgetBinding {
public:
    PictureBinding(toolkit::ImageView& model, QLabel& label, Context context)
        : WidgetBinding(model, label, std::move(context)), model_(model), label_(label) {
        label_.installEventFilter(&shown_);
        show();
    }

private:
    // Where the label's size depends on its picture, the picture is needed before.
    void show() override {
        if (label_.isVisible() || label_.minimumSize().isEmpty())
            showPicture();
        showVisibility();
    }

    void showPicture() {
        if (shownCount_ == model_.imageCount())
            return;
        shownCount_ = model_.imageCount();
        QPixmap pixmap = model_.image() ? pixmapOfImage(*model_.image()) : QPixmap();
        const QSize room = label_.minimumSize();
        if (!pixmap.isNull() && !room.isEmpty() && (pixmap.width() > room.width() || pixmap.height() > room.height()))
            pixmap = pixmap.scaled(room, Qt::KeepAspectRatio, Qt::SmoothTransformation);
        label_.setPixmap(pixmap);
    }

    class WhenShown : public QObject {
    public:
        explicit WhenShown(PictureBinding& binding) : binding_(binding) {}
        bool eventFilter(QObject*, QEvent* event) override {
            if (event->type() == QEvent::Show)
                binding_.showPicture();
            return false;
        }

    private:
        PictureBinding& binding_;
    };

    toolkit::ImageView& model_;
    QLabel& label_;
    std::int64_t shownCount_ = -1;
    WhenShown shown_{*this};
};

// A number in a spin box or on a slider. The user's change is the only one that reaches the model.
template <typename Widget>
class NumberBinding final : public WidgetBinding {
public:
    NumberBinding(toolkit::NumberField& model, Widget& widget, Context context)
        : WidgetBinding(model, widget, std::move(context)), model_(model), widget_(widget) {
        const QSignalBlocker quiet(widget_);
        using Number = decltype(widget_.value());
        widget_.setRange(static_cast<Number>(model_.minimum()), static_cast<Number>(model_.maximum()));
        if constexpr (!std::is_same_v<Widget, QSlider>)
            widget_.setKeyboardTracking(false);
        QObject::connect(&widget_, &Widget::valueChanged, lifetime(), [this](Number number) {
            userDid([this, number] { model_.userSetValue(static_cast<double>(number)); });
        });
        show();
    }

private:
    void show() override {
        const QSignalBlocker quiet(widget_);
        using Number = decltype(widget_.value());
        if constexpr (std::is_same_v<Number, int>)
            widget_.setValue(static_cast<int>(std::lround(std::clamp(model_.value(), -1e9, 1e9))));
        else
            widget_.setValue(model_.value());
        showVisibility();
        showEnabled(model_);
        if constexpr (!std::is_same_v<Widget, QSlider>)
            showTextColor(model_.textColor(), QPalette::Text);
    }
    toolkit::NumberField& model_;
    Widget& widget_;
};

class TableBinding final : public WidgetBinding {
public:
    TableBinding(toolkit::TableView& model, QListView& view, Context context)
        : WidgetBinding(model, view, std::move(context)), model_(model), view_(view) {
        view_.setModel(new QStandardItemModel(&view_));
        if (model_.content() != nullptr)
            model_.content()->addObserver(*this);
        QObject::connect(view_.selectionModel(), &QItemSelectionModel::currentRowChanged, lifetime(),
                         [this](const QModelIndex& current) {
                             if (!showing_ && current.isValid())
                                 userDid([this, row = current.row()] { model_.userSelectedEntry(row); });
                         });
        show();
    }
    ~TableBinding() override {
        if (model_.content() != nullptr)
            model_.content()->removeObserver(*this);
    }

private:
    void show() override {
        showing_ = true;
        const toolkit::ItemList* list = model_.content();
        std::vector<std::string> labels;
        if (list != nullptr)
            for (const auto& entry : list->entries())
                labels.push_back(entry.label);
        if (labels != shown_) {
            shown_ = std::move(labels);
            fill();
        }
        const QModelIndex index = view_.model()->index(list == nullptr ? -1 : list->selectedIndex(), 0);
        if (view_.currentIndex() != index)
            view_.setCurrentIndex(index);
        showVisibility();
        showing_ = false;
    }

    void forget() override { shown_.clear(); }

    void fill() {
        auto& model = static_cast<QStandardItemModel&>(*view_.model());
        model.clear();
        for (const std::string& label : shown_) {
            auto* item = new QStandardItem(QString::fromUtf8(label));
            item->setEditable(false);
            model.appendRow(item);
        }
        constexpr int kMargin = 8; // pixels beside the longest text
        const int width = view_.sizeHintForColumn(0) + 2 * view_.frameWidth() + kMargin;
        view_.setMinimumWidth(std::max(static_cast<int>(model_.columnWidth()), width));
        context().changed();
    }

    toolkit::TableView& model_;
    QListView& view_;
    std::vector<std::string> shown_;
    bool showing_ = false;
};

class PagesBinding final : public WidgetBinding {
public:
    PagesBinding(toolkit::TabView& model, QStackedWidget& pages, Context context)
        : WidgetBinding(model, pages, std::move(context)), model_(model), pages_(pages) {
        if (model_.selection() != nullptr)
            model_.selection()->addObserver(*this);
        show();
    }
    ~PagesBinding() override {
        if (model_.selection() != nullptr)
            model_.selection()->removeObserver(*this);
    }

private:
    void show() override {
        const QString id = QString::fromUtf8(model_.selectedPage());
        for (int index = 0; index < pages_.count(); ++index)
            if (pages_.widget(index)->property("pageId").toString() == id && pages_.currentIndex() != index) {
                pages_.setCurrentIndex(index);
                context().changed();
            }
        showVisibility();
    }
    toolkit::TabView& model_;
    QStackedWidget& pages_;
};

template <typename Binding, typename Model, typename Widget>
std::unique_ptr<WidgetBinding> tryBinding(toolkit::View& model, QWidget& widget,
                                          const WidgetBinding::Context& context) {
    auto* own = dynamic_cast<Model*>(&model);
    auto* ownWidget = dynamic_cast<Widget*>(&widget);
    return own == nullptr || ownWidget == nullptr ? nullptr : std::make_unique<Binding>(*own, *ownWidget, context);
}

using Try = std::unique_ptr<WidgetBinding> (*)(toolkit::View&, QWidget&, const WidgetBinding::Context&);
constexpr Try kKinds[] = {
    tryBinding<PopUpBinding, toolkit::PopUpList, PopUpBox>,
    tryBinding<MatrixBinding, toolkit::RadioMatrix, QGroupBox>,
    tryBinding<TitledBoxBinding, toolkit::TitledBox, QGroupBox>,
    tryBinding<CheckBinding, toolkit::CheckBox, QCheckBox>,
    tryBinding<CheckBinding, toolkit::CheckBox, QToolButton>,
    tryBinding<PushBinding, toolkit::PushButton, QPushButton>,
    tryBinding<LabelBinding, toolkit::Label, QLabel>,
    tryBinding<PictureBinding, toolkit::ImageView, QLabel>,
    tryBinding<NumberBinding<QSpinBox>, toolkit::NumberField, QSpinBox>,
    tryBinding<NumberBinding<QDoubleSpinBox>, toolkit::NumberField, QDoubleSpinBox>,
    tryBinding<NumberBinding<QSlider>, toolkit::NumberField, QSlider>,
    tryBinding<TableBinding, toolkit::TableView, QListView>,
    tryBinding<PagesBinding, toolkit::TabView, QStackedWidget>,
};

} // namespace

std::unique_ptr<WidgetBinding> makeBinding(toolkit::View& model, QWidget& widget,
                                           const WidgetBinding::Context& context) {
    for (const Try each : kKinds)
        if (auto binding = each(model, widget, context))
            return binding;
    return nullptr;
}

} // namespace host
