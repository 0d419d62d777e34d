#include "host/window/remembered.h"

#include "framework/option_keywords.h"
#include "host/window/session_starter.h"

#include <algorithm>
#include <filesystem>

namespace host {
namespace {

constexpr std::string_view kDomain = "com.corvane.print.dialog";
constexpr const char* kWindow = "window";
constexpr const char* kChoices = "choices";
constexpr const char* kWidth = "width";
constexpr const char* kExtraHeight = "extraHeight";
constexpr std::string_view kOrientation = ".Orientation"; // a print setting that belongs to the printed job
constexpr std::size_t kMostChoices = 1000;                // that are read
constexpr int kLargestWindow = 10000;                     // pixels

std::string keyOf(const Printer& printer) {
    return printer.queue ? "queue " + printer.queue->server + "/" + printer.queue->queue + "/" + printer.instance
                         : "ppd " + std::filesystem::path(printer.ppdPath).filename().string();
}

} // namespace

toolkit::Value Remembered::read(const std::string& key) const {
    const auto domain = defaults_ == nullptr ? std::nullopt : defaults_->persistentDomainForName(kDomain);
    return domain ? toolkit::valueInMap(*domain, key) : toolkit::Value();
}

std::string Remembered::write(const std::string& key, const toolkit::Value& value) {
    if (defaults_ == nullptr)
        return {};
    toolkit::ValueMap domain = defaults_->persistentDomainForName(kDomain).value_or(toolkit::ValueMap());
    if (value.isAbsent())
        domain.erase(key);
    else
        domain.insert_or_assign(key, value);
    defaults_->setPersistentDomainForName(std::move(domain), kDomain);
    return defaults_->synchronize() ? std::string() : defaults_->lastError();
}

std::optional<std::vector<JobOption>> Remembered::choices(const Printer& printer) const {
    const toolkit::Value printerEntry = read(keyOf(printer));
    const auto* entry = printerEntry.as<toolkit::ValueMap>();
    const auto* kept = entry == nullptr ? nullptr : toolkit::valueInMap(*entry, kChoices).as<toolkit::ValueMap>();
    if (kept == nullptr)
        return std::nullopt;
    std::vector<JobOption> choices;
    for (const auto& [name, value] : *kept)
        if (choices.size() < kMostChoices)
            choices.push_back({.name = name, .value = value.textReading()});
    return choices;
}

std::string Remembered::keepChoices(const Printer& printer, const std::vector<JobOption>& choices) {
    toolkit::ValueMap kept;
    for (const JobOption& choice : choices)
        kept.insert_or_assign(choice.name, toolkit::Value(choice.value));
    return write(keyOf(printer), toolkit::ValueMap{{kChoices, std::move(kept)}});
}

std::string Remembered::forgetChoices(const Printer& printer) {
    return write(keyOf(printer), {});
}

Remembered::WindowSize Remembered::windowSize() const {
    const toolkit::Value window = read(kWindow);
    const auto* entry = window.as<toolkit::ValueMap>();
    if (entry == nullptr)
        return {};
    const auto pixels = [&](const char* key) {
        return static_cast<int>(
            std::clamp<std::int64_t>(toolkit::valueInMap(*entry, key).integerReading(), 0, kLargestWindow));
    };
    return {.width = pixels(kWidth), .extraHeight = pixels(kExtraHeight)};
}

void Remembered::keepWindowSize(const WindowSize& size) {
    (void)write(kWindow, toolkit::ValueMap{{kWidth, size.width}, {kExtraHeight, size.extraHeight}});
}

std::vector<JobOption> choicesToRemember(Session& session) {
    StartChoices chosen = choicesOfSession(session);
    if (chosen.freePaper)
        chosen.choices.push_back({.name = std::string(keywords::kPageSize), .value = *chosen.freePaper->name});
    if (chosen.settings)
        for (const auto& [key, value] : chosen.settings->entries())
            if (key != std::string(keywords::kPrintSettingsPrefix) + std::string(kOrientation))
                chosen.choices.push_back({.name = key, .value = printing::optionText(value)});
    return chosen.choices;
}

} // namespace host
