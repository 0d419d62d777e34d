#include "session_window.h"

#include "shown_json.h"

#include "host/window/mnemonics.h"
#include "toolkit/button.h"
#include "toolkit/label.h"
#include "toolkit/number_field.h"
#include "toolkit/popup_list.h"
#include "toolkit/radio_matrix.h"
#include "toolkit/table_view.h"
#include "toolkit/window.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QListView>
#include <QMessageBox>
#include <QPushButton>
#include <QRadioButton>
#include <QSlider>
#include <QSpinBox>
#include <QStackedWidget>
#include <QTabBar>
#include <QTest>
#include <QTimer>
#include <QVBoxLayout>

#include <algorithm>
#include <cmath>

namespace tests {
namespace {

// A number that lies outside is shown as the end of the range.
host::Json jsonWithinRange(const toolkit::View& model) {
    host::Json json = host::jsonFromView(model);
    if (const auto* field = dynamic_cast<const toolkit::NumberField*>(&model))
        json["value"] = std::clamp(field->value(), field->minimum(), field->maximum());
    return json;
}

} // namespace

SessionWindow::SessionWindow(Record& record)
    : record_(record), alerts_(tabs_, host::Language::English, [](const std::string&, const std::string&) {}) {
    tabs_.addTab(new QWidget, "General");
    QObject::connect(&tabs_, &QTabWidget::currentChanged, [this] {
        if (showing_)
            showing_();
    });
    record_.windows.push_back(this);
}

SessionWindow::~SessionWindow() {
    std::erase(record_.windows, this);
}

void SessionWindow::sessionDidOpen(host::Session& session) {
    session_ = &session;
    bundle_ = session.pluginBundle();
    alerts_.setBundle(bundle_);
    for (const auto& panel : session.panels()) {
        auto* widget = new QWidget;
        new QVBoxLayout(widget);
        tabs_.addTab(widget, QString::fromUtf8(panel->panelName()));
        pages_.push_back({.panel = panel.get(), .widget = widget, .binder = nullptr});
    }
    tabs_.show();
}

void SessionWindow::sessionWillEnd() {
    tabs_.hide();
    pages_.clear(); // before the models that they observe
}

void SessionWindow::bind(Page& page) {
    if (page.binder != nullptr || page.panel->loadedViews() == nullptr)
        return;
    page.binder = std::make_unique<host::FormBinder>(
        *bundle_, page.panel->thePDEName().value_or(""), host::modelsOfForm(*page.panel->loadedViews()),
        host::FormBinder::Surroundings{.run =
                                           [this](const std::function<void()>& action) {
                                               try {
                                                   action();
                                               } catch (...) {
                                                   raised_ = std::current_exception();
                                               }
                                           },
                                       .sizeChanged = [this] { tabs_.adjustSize(); },
                                       .takenLetters = {},
                                       .language = host::Language::English});
    record_.problems << page.binder->problems();
    if (page.binder->form() == nullptr)
        return;
    page.widget->layout()->addWidget(page.binder->form());
    page.binder->form()->show();
    tabs_.adjustSize();
}

void SessionWindow::checkWhatIsShown() {
    for (Page& page : pages_) {
        bind(page);
        if (page.binder == nullptr || page.binder->form() == nullptr)
            continue;
        for (const toolkit::View* model : host::modelsOfForm(*page.panel->loadedViews()))
            if (const auto* widget = page.binder->form()->findChild<QWidget*>(QString::fromUtf8(model->name())))
                record_.problems << differences(jsonFromWidget(*widget), jsonWithinRange(*model),
                                                QString::fromUtf8(model->name()));
    }
}

// As if the user had opened the advanced options and their page before.
void SessionWindow::reveal(QWidget& widget) {
    for (QWidget* parent = widget.parentWidget(); parent != nullptr && !parent->isWindow();
         parent = parent->parentWidget()) {
        if (parent->property("disclosedBy").isValid() && parent->isHidden()) {
            parent->show();
            revealed_.push_back([parent] { parent->hide(); });
        }
        auto* pages = qobject_cast<QStackedWidget*>(parent->parentWidget());
        if (pages != nullptr && pages->currentWidget() != parent) {
            revealed_.push_back([pages, before = pages->currentIndex()] { pages->setCurrentIndex(before); });
            pages->setCurrentWidget(parent);
        }
    }
    QCoreApplication::processEvents();
}

template <typename Widget>
Widget* SessionWindow::widgetOf(const toolkit::View& model) {
    for (Page& page : pages_) {
        const toolkit::LoadedViews* views = page.panel->loadedViews();
        if (views == nullptr || views->viewNamed(model.name()) != &model)
            continue;
        bind(page);
        tabs_.setCurrentWidget(page.widget);
        QCoreApplication::processEvents();
        auto* widget = page.binder->form() == nullptr
                           ? nullptr
                           : page.binder->form()->findChild<Widget*>(QString::fromUtf8(model.name()));
        if (widget != nullptr && !widget->isVisible())
            reveal(*widget);
        return widget != nullptr && widget->isVisible() ? widget : nullptr;
    }
    return nullptr;
}

void SessionWindow::use(const char* kind, const std::function<void()>& what) {
    ++record_.throughWidgets[kind];
    raised_ = nullptr;
    what();
    for (const auto& cover : std::exchange(revealed_, {}))
        cover();
    if (raised_ != nullptr)
        std::rethrow_exception(std::exchange(raised_, nullptr));
}

void SessionWindow::useModel(const char* why, const std::function<void()>& what) {
    ++record_.toModels[why];
    what();
}

namespace {

constexpr const char* kNotSeen = "control that is not seen";
constexpr const char* kThereAlready = "state that is there already";
constexpr const char* kFraction = "fraction";

} // namespace

bool SessionWindow::showPanel(host::Session& session, CVPrintQualityPDE& panel) {
    const auto page = std::ranges::find(pages_, &panel, &Page::panel);
    bool isShown = false;
    const auto show = [&] {
        try {
            isShown = session.showPanel(panel);
        } catch (...) {
            raised_ = std::current_exception();
        }
        bind(*page);
    };
    if (tabs_.currentWidget() == page->widget) {
        useModel(kThereAlready, show);
        if (raised_ != nullptr)
            std::rethrow_exception(std::exchange(raised_, nullptr));
        return isShown;
    }
    use("tab", [&] {
        showing_ = show;
        QTest::mouseClick(tabs_.tabBar(), Qt::LeftButton, {},
                          tabs_.tabBar()->tabRect(tabs_.indexOf(page->widget)).center());
        showing_ = nullptr;
    });
    return isShown;
}

void SessionWindow::pickItem(toolkit::PopUpList& list, int index) {
    auto* box = widgetOf<QComboBox>(list);
    if (box == nullptr)
        return useModel(kNotSeen, [&] { ScriptUser::pickItem(list, index); });
    use("pop-up list", [&] {
        box->showPopup();
        box->view()->setCurrentIndex(box->model()->index(index, 0));
        QTest::keyClick(box->view(), Qt::Key_Return);
    });
}

void SessionWindow::pickRow(toolkit::RadioMatrix& matrix, int row) {
    auto* box = widgetOf<QGroupBox>(matrix);
    if (box == nullptr)
        return useModel(kNotSeen, [&] { ScriptUser::pickRow(matrix, row); });
    use("radio button", [&] { radioButtonsOf(*box)[row]->click(); });
}

void SessionWindow::pickEntry(toolkit::TableView& table, int index) {
    auto* view = widgetOf<QListView>(table);
    if (view == nullptr)
        return useModel(kNotSeen, [&] { ScriptUser::pickEntry(table, index); });
    if (view->currentIndex().row() == index)
        return useModel(kThereAlready, [&] { ScriptUser::pickEntry(table, index); });
    use("list entry", [&] {
        QTest::mouseClick(view->viewport(), Qt::LeftButton, {},
                          view->visualRect(view->model()->index(index, 0)).center());
    });
}

void SessionWindow::setOn(toolkit::CheckBox& box, bool on) {
    auto* button = widgetOf<QAbstractButton>(box);
    if (button == nullptr)
        return useModel(kNotSeen, [&] { ScriptUser::setOn(box, on); });
    if (button->isChecked() == on)
        return useModel(kThereAlready, [&] { ScriptUser::setOn(box, on); });
    use(qobject_cast<QCheckBox*>(button) != nullptr ? "check box" : "disclosure button", [&] { button->click(); });
}

void SessionWindow::press(toolkit::PushButton& button) {
    auto* widget = widgetOf<QPushButton>(button);
    if (widget == nullptr)
        return useModel(kNotSeen, [&] { ScriptUser::press(button); });
    use("push button", [&] { widget->click(); });
}

void SessionWindow::enter(toolkit::NumberField& field, double value) {
    auto* spin = widgetOf<QSpinBox>(field);
    auto* slider = widgetOf<QSlider>(field);
    if (spin == nullptr && slider == nullptr)
        return useModel(kNotSeen, [&] { ScriptUser::enter(field, value); });
    if (std::trunc(value) != value)
        return useModel(kFraction, [&] { ScriptUser::enter(field, value); });
    const int number = static_cast<int>(value);
    if ((spin != nullptr ? spin->value() : slider->value()) == number)
        return useModel(kThereAlready, [&] { ScriptUser::enter(field, value); });
    if (spin == nullptr)
        return use("slider", [&] { slider->setSliderPosition(number); });
    use("number field", [&] {
        spin->setFocus();
        spin->selectAll();
        QTest::keyClicks(spin, QString::number(number));
        QTest::keyClick(spin, Qt::Key_Return);
    });
}

void SessionWindow::answer(const std::function<void()>& show, const std::function<void(QWidget& modal)>& how) {
    QWidget* const before = QApplication::activeModalWidget();
    bool isAnswered = false;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [&] {
        QWidget* modal = QApplication::activeModalWidget();
        if (modal == nullptr || modal == before)
            return;
        timer.stop();
        isAnswered = true;
        how(*modal);
    });
    timer.start(0);
    show();
    if (isAnswered)
        ++record_.throughWidgets["alert button"];
    else
        record_.problems << QStringLiteral("An alert was not shown.");
}

void SessionWindow::expect(const QString& shown, const std::string& wanted, const char* what) {
    if (shown != QString::fromUtf8(wanted))
        record_.problems
            << QStringLiteral("An alert's %1 is \"%2\", not \"%3\".").arg(what, shown, QString::fromUtf8(wanted));
}

void SessionWindow::pressAlertButton(QMessageBox& box, const std::string& text) {
    for (QAbstractButton* button : box.buttons())
        if (button->text().remove(u'&') == QString::fromUtf8(text))
            return button->click();
    record_.problems << QStringLiteral("An alert has no button \"%1\".").arg(QString::fromUtf8(text));
    box.reject();
}

toolkit::AlertAnswer SessionWindow::answerAlert(const toolkit::Alert& alert, bool asSheet,
                                                const toolkit::AlertAnswer& wanted) {
    toolkit::AlertAnswer given;
    answer([&] { given = alerts_.presentAlert(alert, asSheet); },
           [&](QWidget& modal) {
               auto& box = dynamic_cast<QMessageBox&>(modal);
               expect(box.text(), alert.messageText, "message");
               expect(box.informativeText(), alert.informativeText.value_or(""), "explanation");
               if ((box.checkBox() != nullptr) != alert.showsSuppressionButton)
                   record_.problems << QStringLiteral("An alert's suppression box is missing, or one too many.");
               if (box.checkBox() != nullptr && wanted.suppressionButtonOn)
                   box.checkBox()->click();
               pressAlertButton(box, alert.buttons[static_cast<std::size_t>(wanted.button)].text);
           });
    return given;
}

void SessionWindow::answerPanel(const toolkit::AlertPanel& panel) {
    answer([&] { alerts_.presentPanel(panel); },
           [&](QWidget& modal) {
               auto& box = dynamic_cast<QMessageBox&>(modal);
               expect(box.text(), panel.title, "title");
               expect(box.informativeText(), panel.message, "message");
               pressAlertButton(box, panel.defaultButton.text);
           });
}

void SessionWindow::answerWindow(toolkit::Window& window, const WindowAnswer& wanted) {
    answer([&] { alerts_.presentWindow(window); },
           [&](QWidget& modal) {
               expect(modal.windowTitle(), window.title(), "title");
               for (const toolkit::View* model : window.content())
                   if (const auto* widget = modal.findChild<QWidget*>(QString::fromUtf8(model->name())))
                       record_.problems << differences(jsonFromWidget(*widget), host::jsonFromView(*model),
                                                       QString::fromUtf8(model->name()));
                   else
                       record_.problems
                           << QStringLiteral("An alert does not show %1.").arg(QString::fromUtf8(model->name()));
               if (wanted.suppressionButton != nullptr) {
                   auto* box = modal.findChild<QCheckBox*>(QString::fromUtf8(wanted.suppressionButton->name()));
                   if (box->isChecked() != wanted.suppressionButtonOn)
                       box->click();
               }
               modal.findChild<QPushButton*>(QString::fromUtf8(wanted.button->name()))->click();
           });
}

} // namespace tests
