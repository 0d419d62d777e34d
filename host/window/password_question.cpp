#include "host/window/password_question.h"

#include "host/window/mnemonics.h"

#include <QApplication>
#include <QDialog>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace host {
namespace {

QLineEdit* addField(QFormLayout& form, const QString& caption, const char* name) {
    auto* field = new QLineEdit;
    field->setObjectName(name);
    field->setAccessibleName(caption);
    form.addRow(caption, field);
    return field;
}

std::optional<Credentials> askFor(QWidget& window, const Language& language, const PasswordQuestion& question) {
    QWidget* above = QApplication::activeModalWidget(); // the progress, which the question must not stand below
    QDialog dialog(above == nullptr ? &window : above);
    dialog.setObjectName("passwordQuestion");
    dialog.setWindowTitle(windowText(Text::Password, language));
    auto* form = new QFormLayout(&dialog);
    QString words = windowText(Text::PasswordWanted, language).arg(QString::fromStdString(question.server));
    if (question.isAgain)
        words.prepend(windowText(Text::PasswordNotTaken, language) + u'\n');
    auto* label = new QLabel(words);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    form->addRow(label);
    QLineEdit* user = addField(*form, windowText(Text::UserName, language), "userNameField");
    user->setText(QString::fromStdString(question.user));
    QLineEdit* password = addField(*form, windowText(Text::Password, language), "passwordField");
    password->setEchoMode(QLineEdit::Password);
    password->setFocus();
    auto* buttons = new QDialogButtonBox;
    QString taken;
    auto* print =
        buttons->addButton(textWithMnemonic(windowText(Text::Print, language), taken), QDialogButtonBox::AcceptRole);
    print->setDefault(true);
    buttons->addButton(textWithMnemonic(windowText(Text::Cancel, language), taken), QDialogButtonBox::RejectRole);
    QObject::connect(buttons, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
    QObject::connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
    form->addRow(buttons);
    if (dialog.exec() != QDialog::Accepted)
        return std::nullopt;
    return Credentials{.user = user->text().toStdString(), .password = password->text().toStdString()};
}

} // namespace

PasswordPrompt passwordPrompt(QWidget& window, const Language& language) {
    return [&window, language](const PasswordQuestion& question) {
        std::optional<Credentials> given;
        QMetaObject::invokeMethod(
            &window, [&] { given = askFor(window, language, question); }, Qt::BlockingQueuedConnection);
        return given;
    };
}

} // namespace host
