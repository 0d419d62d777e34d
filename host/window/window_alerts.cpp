#include "host/window/window_alerts.h"

#include "host/window/form_binder.h"
#include "host/window/mnemonics.h"
#include "host/window/pictures.h"
#include "toolkit/button.h"
#include "toolkit/image_view.h"
#include "toolkit/label.h"
#include "toolkit/window.h"

#include <QAbstractButton>
#include <QCheckBox>
#include <QDialog>
#include <QLabel>
#include <QLayout>
#include <QPushButton>

#include <algorithm>

namespace host {
namespace {

constexpr std::string_view kCancelKey = "Cancel"; // the key of the button that Escape presses
constexpr const char* kSuppressionKey = "Suppression";
constexpr int kLargestIcon = 128; // pixels

// Texts are shown as they stand, never as markup.
void showPlainly(QMessageBox& box) {
    box.setTextFormat(Qt::PlainText);
    for (auto* label : box.findChildren<QLabel*>())
        label->setTextFormat(Qt::PlainText);
}

// The picture says nothing that the text does not.
void namePicture(QMessageBox& box) {
    if (auto* picture = box.findChild<QLabel*>("qt_msgboxex_icon_label"))
        picture->setAccessibleName(box.text());
}

// The same of an alert window, whose labels are its text.
void namePictures(const QDialog& dialog, const std::vector<toolkit::View*>& content) {
    QStringList texts;
    for (const toolkit::View* view : content)
        if (const auto* label = dynamic_cast<const toolkit::Label*>(view); label != nullptr && !label->isHidden())
            texts << QString::fromUtf8(label->text());
    for (const toolkit::View* view : content)
        if (dynamic_cast<const toolkit::ImageView*>(view) != nullptr)
            if (auto* picture = dialog.findChild<QWidget*>(QString::fromStdString(view->name())))
                picture->setAccessibleName(texts.join(u' '));
}

QPushButton* addButton(QMessageBox& box, const toolkit::LocalizedText& button, QString& taken) {
    const bool cancels = button.key == kCancelKey;
    QPushButton* added = box.addButton(QString(), cancels ? QMessageBox::RejectRole : QMessageBox::AcceptRole);
    setTextWithMnemonic(*added, QString::fromUtf8(button.text), taken);
    if (cancels)
        box.setEscapeButton(added);
    return added;
}

} // namespace

toolkit::AlertAnswer WindowAlerts::presentAlert(const toolkit::Alert& alert, bool asSheet) {
    const QPointer<QMessageBox> box = new QMessageBox(window_);
    box->setWindowModality(asSheet || window_ != nullptr ? Qt::WindowModal : Qt::ApplicationModal);
    box->setWindowTitle(window_ == nullptr ? QString() : window_->windowTitle());
    box->setIcon(alert.style == toolkit::AlertStyle::Critical ? QMessageBox::Critical : QMessageBox::Information);
    box->setText(QString::fromUtf8(alert.messageText));
    if (alert.informativeText)
        box->setInformativeText(QString::fromUtf8(*alert.informativeText));
    if (alert.icon)
        if (const QPixmap picture = pixmapOfImage(*alert.icon); !picture.isNull())
            box->setIconPixmap(
                picture.width() > kLargestIcon || picture.height() > kLargestIcon
                    ? picture.scaled(kLargestIcon, kLargestIcon, Qt::KeepAspectRatio, Qt::SmoothTransformation)
                    : picture);
    showPlainly(*box);
    namePicture(*box);
    QString taken;
    std::vector<QAbstractButton*> buttons;
    for (const toolkit::LocalizedText& button : alert.buttons)
        buttons.push_back(addButton(*box, button, taken));
    if (!buttons.empty())
        box->setDefaultButton(static_cast<QPushButton*>(buttons.front()));
    if (alert.showsSuppressionButton) {
        box->setCheckBox(new QCheckBox(box));
        setTextWithMnemonic(*box->checkBox(), QString::fromUtf8(bundle_->localizedString(kSuppressionKey)), taken);
    }
    box->exec();
    if (box == nullptr) // its window went away meanwhile
        return {.button = static_cast<int>(alert.buttons.size()) - 1};
    const auto pressed = std::ranges::find(buttons, box->clickedButton());
    const toolkit::AlertAnswer answer{
        .button = pressed == buttons.end() ? std::max(0, static_cast<int>(buttons.size()) - 1)
                                           : static_cast<int>(pressed - buttons.begin()),
        .suppressionButtonOn = box->checkBox() != nullptr && box->checkBox()->isChecked()};
    delete box;
    return answer;
}

void WindowAlerts::presentPanel(const toolkit::AlertPanel& panel) {
    const QPointer<QMessageBox> box = new QMessageBox(window_);
    box->setWindowModality(Qt::WindowModal);
    box->setWindowTitle(QString::fromUtf8(panel.title));
    box->setIcon(QMessageBox::Warning);
    box->setText(QString::fromUtf8(panel.title));
    box->setInformativeText(QString::fromUtf8(panel.message));
    showPlainly(*box);
    namePicture(*box);
    QString taken;
    box->setDefaultButton(addButton(*box, panel.defaultButton, taken));
    box->exec();
    delete box;
}

void WindowAlerts::presentWindow(toolkit::Window& window) {
    FormBinder binder(*bundle_, window.name(), window.content(),
                      {.run = [](const std::function<void()>& action) { action(); },
                       .sizeChanged = {},
                       .takenLetters = {},
                       .language = language_});
    const QPointer<QDialog> dialog = qobject_cast<QDialog*>(binder.form());
    std::vector<toolkit::PushButton*> buttons;
    for (toolkit::View* view : window.content())
        if (auto* button = dynamic_cast<toolkit::PushButton*>(view))
            buttons.push_back(button);
    const auto cancel = std::ranges::find(buttons, std::string(kCancelKey), &toolkit::PushButton::titleKey);
    const auto pressCancel = [&] {
        if (cancel != buttons.end())
            (*cancel)->userPressed();
    };
    if (dialog == nullptr || !binder.problems().isEmpty()) { // what cannot be read is not agreed to
        pressCancel();
        return;
    }
    dialog->setParent(window_, dialog->windowFlags());
    dialog->setWindowModality(Qt::WindowModal);
    dialog->setWindowTitle(QString::fromUtf8(window.title()));
    dialog->layout()->setSizeConstraint(QLayout::SetMinimumSize);
    namePictures(*dialog, window.content());
    bool isAnswered = false;
    for (auto* button : dialog->findChildren<QPushButton*>())
        QObject::connect(button, &QPushButton::clicked, dialog, [&isAnswered, dialog] {
            isAnswered = true; // the button's action ran before
            dialog->accept();
        });
    for (const toolkit::PushButton* button : buttons)
        if (button->isDefault())
            if (auto* widget = dialog->findChild<QPushButton*>(QString::fromStdString(button->name())))
                widget->setFocus();
    dialog->exec();
    if (!isAnswered)
        pressCancel();
}

void WindowAlerts::openHelp(std::string_view anchor, std::string_view book) {
    openHelp_(std::string(anchor), std::string(book));
}

void showMessage(QWidget& window, QMessageBox::Icon icon, const QString& message, const QString& explanation,
                 const QString& button) {
    const QPointer<QMessageBox> box = new QMessageBox(&window);
    box->setWindowModality(Qt::WindowModal);
    box->setWindowTitle(window.windowTitle());
    box->setIcon(icon);
    box->setText(message);
    box->setInformativeText(explanation);
    showPlainly(*box);
    namePicture(*box);
    QString taken;
    QPushButton* close = box->addButton(QString(), QMessageBox::AcceptRole);
    setTextWithMnemonic(*close, button, taken);
    box->setDefaultButton(close);
    box->setEscapeButton(close);
    box->exec();
    delete box;
}

} // namespace host
