#include "host/window/user_actions.h"

#include "framework/option_keywords.h"

#include <algorithm>

namespace host {
namespace {

constexpr std::string_view kPageRegion = "PageRegion"; // follows the page size

QString choiceText(const printing::Option* option, const std::optional<std::string>& choice, const Language& language) {
    if (!choice)
        return windowText(Text::NotMarked, language);
    const printing::Choice* own = option == nullptr ? nullptr : option->choice(*choice);
    return QString::fromUtf8(own == nullptr ? *choice : own->text);
}

std::optional<std::string> markIn(const Marks& marks, const std::string& option) {
    const auto found = std::ranges::find(marks, option, &Marks::value_type::first);
    return found == marks.end() ? std::nullopt : found->second;
}

// "A" cannot be used together with "B" and "C".
QString conflictInWords(const printing::PrinterDescription& description, const RefusedMark& conflict,
                        const Language& language) {
    QStringList others;
    for (const auto& [option, choice] : conflict.with)
        others << windowText(Text::Quoted, language).arg(choiceInWords(description, option, choice, language));
    return windowText(Text::CannotBeTogether, language)
        .arg(choiceInWords(description, conflict.option, conflict.choice, language),
             others.join(windowText(Text::And, language)));
}

} // namespace

QString choiceInWords(const printing::PrinterDescription& description, const std::string& option,
                      const std::optional<std::string>& choice, const Language& language) {
    const printing::Option* own = description.option(option);
    return QString::fromUtf8(own == nullptr ? option : own->text) + QStringLiteral(": ") +
           choiceText(own, choice, language);
}

QString changeInWords(const printing::PrinterDescription& description, const Marks& before, const Marks& after,
                      const Cause& cause, const Language& language) {
    QStringList changes;
    for (const auto& [option, choice] : after) {
        const auto chosen = std::ranges::find(cause.chosen, option, &printing::MarkedChoice::first);
        const bool isChosen = chosen != cause.chosen.end();
        if (option == kPageRegion || (isChosen && choice == chosen->second))
            continue;
        const bool isMissed = isChosen && !cause.words.isEmpty();
        if (markIn(before, option) == choice && !isMissed)
            continue;
        const printing::Option* own = description.option(option);
        changes << windowText(Text::IsNow, language)
                       .arg(QString::fromUtf8(own == nullptr ? option : own->text), choiceText(own, choice, language));
    }
    if (changes.isEmpty())
        return {};
    QString list = changes.join(windowText(Text::Separator, language));
    if (cause.chosen.empty() && cause.words.isEmpty())
        return list;
    return windowText(Text::BecauseYouChose, language)
        .arg(cause.words.isEmpty()
                 ? choiceInWords(description, cause.chosen.front().first, cause.chosen.front().second, language)
                 : cause.words,
             list);
}

QString refusalInWords(const printing::PrinterDescription& description, const RefusedMark& refusal,
                       const Language& language) {
    return language == Language::English || refusal.with.empty() ? QString::fromUtf8(refusal.reason)
                                                                 : conflictInWords(description, refusal, language);
}

StepBefore StepBefore::of(Session& session) {
    StepBefore before{.marks = session.description().marks(), .paper = {}, .colorMatching = {}, .scaledTo = {}};
    if (const printing::PageFormat* format = session.pageFormat())
        before.paper = format->paper;
    if (session.settings()) {
        before.colorMatching = session.settings()->valueForKey(printing::kColorMatchingModeKey);
        before.scaledTo = session.settings()->valueForKey(printing::kPageToPaperMappingKey);
    }
    return before;
}

// The paper comes first, because the panels' rules answer it with marks of their own.
void StepBefore::putBack(Session& session) const {
    if (session.settings()) {
        for (const auto& [key, value] : {std::pair(printing::kColorMatchingModeKey, colorMatching),
                                         std::pair(printing::kPageToPaperMappingKey, scaledTo)})
            if (value)
                session.settings()->setValueForKey(*value, key);
            else
                session.settings()->removeKey(key);
    }
    session.setPaper(paper, true);
    std::string error;
    for (const bool areTold : {true, false})
        for (const auto& [option, choice] : marks)
            if (choice && (option == keywords::kDuplex) == areTold && option != kPageRegion &&
                session.description().markedChoice(option) != choice)
                (void)session.markFromOutside(option, *choice, areTold, error); // it was marked, so it is known
}

std::vector<printing::MarkedChoice> StepBefore::differing(const Session& session) const {
    std::vector<printing::MarkedChoice> choices;
    for (const auto& [option, choice] : marks)
        if (choice && option != kPageRegion && session.description().markedChoice(option) != choice)
            choices.emplace_back(option, *choice);
    return choices;
}

void UserActions::setSession(Session* session) {
    session_ = session;
    undo_.reset();
}

bool UserActions::run(const std::function<void()>& action, const Cause& cause) {
    if (running_) {
        waiting_.emplace_back([this, action, cause] { run(action, cause); });
        return false;
    }
    running_ = true;
    Session* const session = session_;
    const StepBefore before = session_ == nullptr ? StepBefore() : StepBefore::of(*session_);
    if (session_ != nullptr)
        (void)session_->takeRecord(); // of what was not the user's doing
    try {
        action();
        if (session_ != nullptr && session_ == session) // another one has begun anew
            tellWhatFollowed(before, cause);
    } catch (const std::exception& exception) {
        tell(windowText(Text::ActionFailed, language_).arg(QString::fromUtf8(exception.what())), {});
    }
    running_ = false;
    while (!running_ && !waiting_.empty()) {
        const std::function<void()> what = std::move(waiting_.front());
        waiting_.pop_front();
        what();
    }
    return true;
}

void UserActions::tell(const QString& message, std::optional<StepBefore> undo) {
    undo_ = std::move(undo);
    tell_(message, undo_.has_value());
}

void UserActions::tellStep(const QString& message, std::function<void()> goBack) {
    StepBefore before;
    before.goBack = std::move(goBack);
    tell(message, std::move(before));
}

void UserActions::tellWhatFollowed(const StepBefore& before, Cause cause) {
    const printing::PrinterDescription& description = session_->description();
    const SessionRecord record = session_->takeRecord();
    if (cause.chosen.empty() && cause.words.isEmpty() && !record.asked.empty())
        cause.chosen.emplace_back(record.asked.front().option, record.asked.front().choice);
    QStringList told;
    for (const RefusedMark& refused : record.refused)
        if (std::ranges::find(cause.chosen, printing::MarkedChoice(refused.option, refused.choice)) !=
            cause.chosen.end())
            told << refusalInWords(description, refused, language_);
    if (!told.isEmpty() && cause.words.isEmpty()) {
        tell(told.join(u' '), {});
        return;
    }
    const Marks after = description.marks();
    const QString changes = changeInWords(description, before.marks, after, cause, language_);
    if (!changes.isEmpty())
        told << changes;
    const bool isOneChoice = cause.chosen.size() == 1 && cause.words.isEmpty();
    if (told.isEmpty() && isOneChoice) { // what the panels could not repair
        RefusedMark conflict{
            .option = cause.chosen.front().first, .choice = cause.chosen.front().second, .with = {}, .reason = {}};
        if (markIn(after, conflict.option) == conflict.choice)
            conflict.with = description.conflictsOf(conflict.option, conflict.choice);
        if (!conflict.with.empty())
            told << conflictInWords(description, conflict, language_);
    }
    const bool canUndo = !changes.isEmpty() && before.marks != after;
    if (!cause.chosen.empty() || !cause.words.isEmpty() || !told.isEmpty())
        tell(told.join(u' '), canUndo ? std::optional(before) : std::nullopt);
}

void UserActions::whenIdle(std::function<void()> what) {
    if (running_)
        waiting_.push_back(std::move(what));
    else
        what();
}

} // namespace host
