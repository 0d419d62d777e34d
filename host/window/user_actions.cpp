#include "host/window/user_actions.h"

#include "framework/option_keywords.h"

#include <algorithm>

namespace host {
namespace {

constexpr std::string_view kPageRegion = "PageRegion"; // follows the page size

QString ofUtf8(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

QString choiceText(const printing::Option* option, const std::optional<std::string>& choice, Language language) {
    if (!choice)
        return windowText(Text::NotMarked, language);
    const printing::Choice* own = option == nullptr ? nullptr : option->choice(*choice);
    return ofUtf8(own == nullptr ? *choice : own->text);
}

std::optional<std::string> markIn(const Marks& marks, const std::string& option) {
    const auto found = std::ranges::find(marks, option, &Marks::value_type::first);
    return found == marks.end() ? std::nullopt : found->second;
}

} // namespace

QString choiceInWords(const printing::PrinterDescription& description, const std::string& option,
                      const std::optional<std::string>& choice, Language language) {
    const printing::Option* own = description.option(option);
    return ofUtf8(own == nullptr ? option : own->text) + QStringLiteral(": ") + choiceText(own, choice, language);
}

QString changeInWords(const printing::PrinterDescription& description, const Marks& before, const Marks& after,
                      const std::optional<printing::MarkedChoice>& cause, Language language) {
    QStringList changes;
    for (const auto& [option, choice] : after) {
        const bool chosen = cause && cause->first == option && choice == cause->second;
        if (chosen || option == kPageRegion || markIn(before, option) == choice)
            continue;
        const printing::Option* own = description.option(option);
        changes << windowText(Text::IsNow, language)
                       .arg(ofUtf8(own == nullptr ? option : own->text), choiceText(own, choice, language));
    }
    if (changes.isEmpty())
        return {};
    const QString list = changes.join(windowText(Text::Separator, language));
    return cause ? windowText(Text::BecauseYouChose, language)
                       .arg(choiceInWords(description, cause->first, cause->second, language), list)
                 : list;
}

QString refusalInWords(const printing::PrinterDescription& description, const RefusedMark& refusal, Language language) {
    if (language == Language::English || refusal.with.empty())
        return ofUtf8(refusal.reason);
    QStringList others;
    for (const auto& [option, choice] : refusal.with)
        others << windowText(Text::Quoted, language).arg(choiceInWords(description, option, choice, language));
    return windowText(Text::CannotBeTogether, language)
        .arg(choiceInWords(description, refusal.option, refusal.choice, language),
             others.join(windowText(Text::And, language)));
}

bool UserActions::run(const std::function<void()>& action, const std::optional<printing::MarkedChoice>& cause) {
    if (running_)
        return false;
    running_ = true;
    Session* const session = session_;
    const Marks before = session_ == nullptr ? Marks() : session_->description().marks();
    if (session_ != nullptr)
        (void)session_->takeRecord(); // of what was not the user's doing
    try {
        action();
        if (session_ != nullptr && session_ == session) // another one has begun anew
            tellWhatFollowed(before, cause);
    } catch (const std::exception& exception) {
        tell_(windowText(Text::ActionFailed, language_).arg(QString::fromUtf8(exception.what())));
    }
    running_ = false;
    for (const auto& what : std::exchange(waiting_, {}))
        what();
    return true;
}

void UserActions::tellWhatFollowed(const Marks& before, std::optional<printing::MarkedChoice> cause) {
    const printing::PrinterDescription& description = session_->description();
    const SessionRecord record = session_->takeRecord();
    if (!cause && !record.asked.empty())
        cause = printing::MarkedChoice(record.asked.front().option, record.asked.front().choice);
    if (!record.refused.empty() && cause && record.refused.front().option == cause->first &&
        record.refused.front().choice == cause->second) {
        tell_(refusalInWords(description, record.refused.front(), language_));
        return;
    }
    const Marks after = description.marks();
    QString told = changeInWords(description, before, after, cause, language_);
    if (told.isEmpty() && cause) { // what the panels could not repair
        RefusedMark conflict{.option = cause->first, .choice = cause->second, .with = {}, .reason = {}};
        if (markIn(after, cause->first) == cause->second)
            conflict.with = description.conflictsOf(cause->first, cause->second);
        if (!conflict.with.empty()) {
            QStringList others;
            for (const auto& [option, choice] : conflict.with)
                others
                    << windowText(Text::Quoted, language_).arg(choiceInWords(description, option, choice, language_));
            told = windowText(Text::CannotBeTogether, language_)
                       .arg(choiceInWords(description, cause->first, cause->second, language_),
                            others.join(windowText(Text::And, language_)));
        }
    }
    if (cause || !told.isEmpty())
        tell_(told);
}

void UserActions::whenIdle(std::function<void()> what) {
    if (running_)
        waiting_.push_back(std::move(what));
    else
        what();
}

} // namespace host
