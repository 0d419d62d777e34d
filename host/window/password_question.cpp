#include "host/window/password_question.h"

#include "host/window/mnemonics.h"

#include <QApplication>
#include <QDialog>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>

#include <future>
#include <map>
#include <mutex>
#include <vector>

namespace host {
namespace {

QLineEdit* addField(QFormLayout& form, const QString& caption, const char* name) {
    auto* field = new QLineEdit;
    field->setObjectName(name);
    field->setAccessibleName(caption);
    form.addRow(caption, field);
    return field;
}

// A question, shown. It belongs to what stands above the window; the progress, for example, must not hide it.
QDialog* showQuestion(QWidget& window, const Language& language, const PasswordQuestion& question, Text action,
                      const std::function<void(std::optional<Credentials>)>& answer) {
    QWidget* above = QApplication::activeModalWidget();
    auto* dialog = new QDialog(above == nullptr ? &window : above);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setObjectName("passwordQuestion");
    dialog->setWindowTitle(windowText(Text::Password, language));
    auto* form = new QFormLayout(dialog);
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
    auto* agree = buttons->addButton(QString(), QDialogButtonBox::AcceptRole);
    agree->setDefault(true);
    setTextWithMnemonic(*agree, windowText(action, language), taken);
    setTextWithMnemonic(*buttons->addButton(QString(), QDialogButtonBox::RejectRole),
                        windowText(Text::Cancel, language), taken);
    QObject::connect(buttons, &QDialogButtonBox::accepted, dialog, &QDialog::accept);
    QObject::connect(buttons, &QDialogButtonBox::rejected, dialog, &QDialog::reject);
    form->addRow(buttons);
    QObject::connect(dialog, &QDialog::finished, dialog, [user, password, answer](int result) {
        answer(result == QDialog::Accepted ? std::optional(Credentials{.user = user->text().toStdString(),
                                                                       .password = password->text().toStdString()})
                                           : std::nullopt);
    });
    dialog->open();
    return dialog;
}

} // namespace

// Lives as long as a prompt does.
class PasswordQuestions::Desk : public std::enable_shared_from_this<Desk> {
public:
    Desk(QWidget& window, Language language) : window_(window), language_(std::move(language)) {}

    // In the asking thread.
    std::optional<Credentials> known(const PasswordQuestion& question) {
        const std::lock_guard lock(mutex_);
        const auto found = known_.find(question.server);
        return question.isAgain || found == known_.end() ? std::nullopt : std::optional(found->second);
    }

    std::optional<Credentials> ask(const PasswordQuestion& question, Text action) {
        if (auto answer = known(question))
            return answer;
        const auto asked = std::make_shared<Asked>(question, action);
        std::future<std::optional<Credentials>> answer = asked->answer.get_future();
        {
            const std::lock_guard lock(mutex_); // while it is held, the window is there
            if (isRefused_)
                return std::nullopt;
            open_.push_back(asked);
            showLater(asked);
        }
        return answer.get();
    }

    // In the window's thread.
    void refuse() {
        std::vector<std::shared_ptr<Asked>> open;
        {
            const std::lock_guard lock(mutex_);
            isRefused_ = true;
            open = open_;
        }
        for (const auto& asked : open) {
            end(*asked, std::nullopt);
            if (asked->dialog != nullptr)
                asked->dialog->close();
        }
    }

private:
    struct Asked {
        Asked(PasswordQuestion given, Text wanted) : question(std::move(given)), action(wanted) {}

        PasswordQuestion question;
        Text action;
        std::promise<std::optional<Credentials>> answer;
        bool isAnswered = false; // from here on in the window's thread alone
        QPointer<QDialog> dialog{};
    };

    void showLater(const std::shared_ptr<Asked>& asked) {
        QMetaObject::invokeMethod(
            &window_, [self = shared_from_this(), asked] { self->show(asked); }, Qt::QueuedConnection);
    }

    void show(const std::shared_ptr<Asked>& asked) {
        if (asked->isAnswered)
            return;
        asked->dialog =
            showQuestion(window_, language_, asked->question, asked->action,
                         [self = shared_from_this(), asked](auto given) { self->end(*asked, std::move(given)); });
        // What it stood above may have gone: then it is asked anew.
        QObject::connect(asked->dialog, &QObject::destroyed, &window_, [self = shared_from_this(), asked] {
            if (!asked->isAnswered)
                self->showLater(asked);
        });
    }

    void end(Asked& asked, std::optional<Credentials> given) {
        if (std::exchange(asked.isAnswered, true))
            return;
        const std::lock_guard lock(mutex_);
        if (given)
            known_.insert_or_assign(asked.question.server, *given);
        std::erase_if(open_, [&](const auto& each) { return each.get() == &asked; });
        asked.answer.set_value(std::move(given));
    }

    QWidget& window_;
    const Language language_;
    std::mutex mutex_; // guards what follows
    bool isRefused_ = false;
    std::vector<std::shared_ptr<Asked>> open_;
    std::map<std::string, Credentials> known_; // by server
};

PasswordQuestions::PasswordQuestions(QWidget& window, const Language& language)
    : language_(language), desk_(std::make_shared<Desk>(window, language)) {}

PasswordPrompt PasswordQuestions::prompt(Text action) const {
    return [desk = desk_, action](const PasswordQuestion& question) { return desk->ask(question, action); };
}

PasswordPrompt PasswordQuestions::prompt(Text action, GivenUpQuestion givenUp) const {
    return [prompt = prompt(action), givenUp = std::move(givenUp)](const PasswordQuestion& question) {
        auto answer = prompt(question);
        *givenUp = answer ? std::string() : question.server;
        return answer;
    };
}

std::string PasswordQuestions::errorInWords(const std::string& error, const GivenUpQuestion& givenUp,
                                            Text again) const {
    if (error.empty() || givenUp->empty())
        return error;
    return (windowText(Text::PasswordNotGiven, language_).arg(QString::fromStdString(*givenUp)) + u' ' +
            windowText(again, language_))
        .toStdString();
}

PasswordPrompt PasswordQuestions::unasked() const {
    return [desk = desk_](const PasswordQuestion& question) { return desk->known(question); };
}

void PasswordQuestions::refuse() {
    desk_->refuse();
}

} // namespace host
