#include "host/session/session.h"

#include "framework/option_keywords.h"
#include "printing/ppd_texts.h"

#include <algorithm>
#include <cmath>
#include <map>

namespace host {
namespace {

// "Media Type: Glossy", in the PPD's own words.
std::string choiceInWords(const printing::PrinterDescription& description, const std::string& option,
                          const std::string& choice) {
    const printing::Option* own = description.option(option);
    if (own == nullptr)
        return option + ": " + choice;
    const printing::Choice* ownChoice = own->choice(choice);
    return own->text + ": " + (ownChoice == nullptr ? choice : ownChoice->text);
}

// "Custom.200x300" for a free size in points.
std::string customPageSize(double width, double height) {
    const auto points = [](double side) {
        const printing::SettingValue value = std::trunc(side) == side && std::abs(side) < 1e9
                                                 ? printing::SettingValue(static_cast<std::int64_t>(side))
                                                 : printing::SettingValue(side);
        return printing::optionText(value);
    };
    return "Custom." + points(width) + "x" + points(height);
}

} // namespace

Session::Session(SessionOptions options) : options_(std::move(options)) {
    keyWindow_.setHidden(false);
    setWindowHeight(options_.windowHeight);
}

std::shared_ptr<Session> Session::open(SessionOptions options, std::string& error) {
    std::shared_ptr<Session> session(new Session(std::move(options)));
    SessionOptions& own = session->options_;
    session->bundle_ = toolkit::Bundle::open(own.plugIn->path(), own.bundleView, error);
    if (session->bundle_ == nullptr)
        return nullptr;
    if (!own.pageFormat) {
        own.pageFormat = printing::PageFormat();
        if (const auto marked = own.description->markedChoice(keywords::kPageSize))
            own.pageFormat->paper = session->paperForPageSize(*marked);
    }
    session->observePosts();
    session->principal_ = own.plugIn->makePrincipalObject();
    session->principal_->initWithBundle(session->bundle_);
    session->panels_ = session->principal_->PDEPanelsForTypeWithHostInfo(own.panelType, session.get());
    return session;
}

Session::~Session() {
    try {
        closeKeyWindow();
    } catch (const std::exception&) {
        // An observer of another dialog failed; this one ends all the same.
    }
    panels_.clear();
    toolkit::NotificationCenter::defaultCenter().removeObserver(observer_.get());
}

void Session::observePosts() {
    toolkit::NotificationCenter::defaultCenter().addObserver(observer_, "", this,
                                                             [this](const toolkit::Notification& notification) {
                                                                 if (&notification != postedByHost_)
                                                                     record_.posted.push_back(notification);
                                                             });
}

bool Session::showPanel(CVPrintQualityPDE& panel) {
    if (!restored_) {
        for (const auto& each : framework::PanelList(panels_))
            each->restoreValuesAndReturnError();
        restored_ = true;
    }
    if (panel.panelView() == nullptr)
        return false;
    panel.willShow();
    return true;
}

void Session::restorePanel(CVPrintQualityPDE& panel) {
    restored_ = true;
    panel.restoreValuesAndReturnError();
}

bool Session::markFromOutside(const std::string& option, const std::string& choice, bool tell, std::string& error) {
    const printing::Option* own = options_.description->option(option);
    if (own == nullptr) {
        error = "The printer has no option \"" + option + "\".";
        return false;
    }
    if (!options_.description->mark(option, choice)) {
        error = "The option \"" + option + "\" has no choice \"" + printing::cleanText(choice) + "\".";
        return false;
    }
    if (!tell)
        return true;
    for (const auto& panel : framework::PanelList(panels_))
        panel->PPDOptionKeyValueDidChangePpdChoice(option, choice);
    if (option == keywords::kDuplex)
        postFromHost({.name = std::string(printing::kDuplexChangedNotification), .sender = nullptr, .userInfo = {}});
    return true;
}

std::optional<printing::Paper> Session::paperForPageSize(const std::string& keyword) const {
    const auto size = options_.description->pageSize(keyword);
    if (!size)
        return std::nullopt;
    const bool own = options_.description->option(keywords::kPageSize) != nullptr &&
                     options_.description->option(keywords::kPageSize)->choice(keyword) != nullptr;
    return printing::Paper{.name = keyword,
                           .ppdName = own ? std::optional(keyword) : std::nullopt,
                           .width = size->width,
                           .height = size->height};
}

void Session::setPaper(std::optional<printing::Paper> paper, bool tell) {
    if (paper && paper->ppdName)
        options_.description->mark(keywords::kPageSize, *paper->ppdName);
    options_.pageFormat = printing::PageFormat{.paper = std::move(paper)};
    if (tell)
        postFromHost({.name = std::string(printing::kPaperDidChangeNotification), .sender = nullptr, .userInfo = {}});
}

void Session::setWindowHeight(std::optional<double> height) {
    constexpr double kWindowWidth = 640; // points; nothing depends on it
    options_.windowHeight = height;
    keyWindow_.setFrame({.width = kWindowWidth, .height = height.value_or(0)});
}

bool Session::closeKeyWindow() {
    if (keyWindow() == nullptr)
        return false;
    postFromHost({.name = std::string(keywords::kWindowWillClose), .sender = keyWindow(), .userInfo = {}});
    return true;
}

void Session::postFromHost(const toolkit::Notification& notification) {
    const toolkit::Notification* outer = std::exchange(postedByHost_, &notification);
    struct Reset {
        const toolkit::Notification*& field;
        const toolkit::Notification* value;
        ~Reset() { field = value; }
    } const reset{postedByHost_, outer};
    toolkit::NotificationCenter::defaultCenter().post(notification);
}

bool Session::shouldPrint() {
    return std::ranges::all_of(framework::PanelList(panels_), [](const auto& panel) { return panel->shouldPrint(); });
}

std::vector<JobOption> Session::jobOptions() const {
    const printing::PrinterDescription& description = *options_.description;
    std::vector<std::string> managed;
    for (const auto& panel : panels_)
        for (std::string& key : panel->supportedPPDOptionKeys().value_or(std::vector<std::string>()))
            managed.push_back(std::move(key));
    std::map<std::string, std::string> options;
    for (const printing::Option& option : description.options()) {
        const auto marked = description.markedChoice(option.keyword);
        const bool isManaged = std::ranges::find(managed, option.keyword) != managed.end();
        if (marked && (isManaged || *marked != option.defaultChoice))
            options.insert_or_assign(option.keyword, *marked);
    }
    // The paper goes once, as the page size.
    options.erase("PageRegion");
    options.erase(std::string(keywords::kPageSize));
    const auto mapped = options_.settings ? options_.settings->valueForKey(printing::kPageToPaperMappingKey)
                                          : std::optional<printing::SettingValue>();
    const std::optional<printing::Paper> paper = options_.pageFormat->paper;
    if (mapped) {
        options.insert_or_assign(std::string(keywords::kPageSize), printing::optionText(*mapped));
        options.insert_or_assign("print-scaling", "fit");
    } else if (paper && paper->ppdName && description.pageSize(*paper->ppdName)) {
        options.insert_or_assign(std::string(keywords::kPageSize), *paper->ppdName);
    } else if (paper && paper->width && paper->height) {
        options.insert_or_assign(std::string(keywords::kPageSize), customPageSize(*paper->width, *paper->height));
    } else if (const auto marked = description.markedChoice(keywords::kPageSize)) {
        options.insert_or_assign(std::string(keywords::kPageSize), *marked);
    }
    if (options_.settings)
        for (const auto& [key, value] : options_.settings->entries())
            options.emplace(key, printing::optionText(value)); // a mark of the same name stands
    std::vector<JobOption> list;
    list.reserve(options.size());
    for (const auto& [name, value] : options)
        list.push_back({name, value});
    return list;
}

bool Session::respondsToSelector(std::string_view operation) const {
    constexpr std::string_view kOperations[] = {framework::kWillChangeOptionSelector, framework::kPrintSettingsSelector,
                                                framework::kPageFormatSelector, framework::kPanelViewDidResizeSelector,
                                                "ppdFile"};
    return std::ranges::find(kOperations, operation) != std::end(kOperations) &&
           std::ranges::find(options_.lacks, operation) == options_.lacks.end();
}

printing::PrintSettings* Session::printSettings() {
    return options_.settings && respondsToSelector(framework::kPrintSettingsSelector) ? &*options_.settings : nullptr;
}

const printing::PageFormat* Session::pageFormat() {
    return respondsToSelector(framework::kPageFormatSelector) ? &*options_.pageFormat : nullptr;
}

std::optional<RefusedMark> Session::refusalOf(const std::string& option, const std::string& choice) const {
    const printing::PrinterDescription& description = *options_.description;
    RefusedMark refusal{.option = option, .choice = choice, .with = {}, .reason = {}};
    const printing::Option* own = description.option(option);
    if (own == nullptr) {
        refusal.reason = "This printer has no option \"" + printing::cleanText(option) + "\".";
        return refusal;
    }
    if (own->choice(choice) == nullptr) {
        refusal.reason = "\"" + own->text + "\" has no choice \"" + printing::cleanText(choice) + "\".";
        return refusal;
    }
    if (description.markedChoice(option) == choice)
        return std::nullopt;
    refusal.with = description.conflictsOf(option, choice);
    if (refusal.with.empty())
        return std::nullopt;
    refusal.reason = "\"" + choiceInWords(description, option, choice) + "\" cannot be used together with ";
    for (std::size_t index = 0; index < refusal.with.size(); ++index)
        refusal.reason += (index == 0 ? "\"" : " and \"") +
                          choiceInWords(description, refusal.with[index].first, refusal.with[index].second) + "\"";
    refusal.reason += ".";
    return refusal;
}

bool Session::willChangePPDOptionKeyValuePpdChoice(std::string_view option, std::string_view choice) {
    if (!respondsToSelector(framework::kWillChangeOptionSelector))
        return false;
    const std::string optionKeyword(option), choiceKeyword(choice);
    std::optional<RefusedMark> refusal;
    if (options_.askFilter)
        if (const auto reason = options_.askFilter(optionKeyword, choiceKeyword))
            refusal = RefusedMark{.option = optionKeyword, .choice = choiceKeyword, .with = {}, .reason = *reason};
    if (!refusal)
        refusal = refusalOf(optionKeyword, choiceKeyword);
    record_.asked.push_back({.option = optionKeyword, .choice = choiceKeyword, .accepted = !refusal});
    if (refusal) {
        record_.refused.push_back(std::move(*refusal));
        return false;
    }
    options_.description->mark(optionKeyword, choiceKeyword);
    return true;
}

void Session::panelViewDidResize() {
    if (respondsToSelector(framework::kPanelViewDidResizeSelector))
        ++record_.resized;
}

toolkit::AlertAnswer Session::runModalAlert(const toolkit::Alert& alert) {
    return options_.presenter->presentAlert(alert, false);
}

void Session::beginSheet(const toolkit::Alert& alert, const std::function<void(const toolkit::AlertAnswer&)>& didEnd) {
    didEnd(options_.presenter->presentAlert(alert, true));
}

void Session::runAlertPanel(const toolkit::AlertPanel& panel) {
    options_.presenter->presentPanel(panel);
}

int Session::runModalForWindow(toolkit::Window& window) {
    const std::optional<int> outer = std::exchange(modalCode_, std::nullopt);
    window.setHidden(false);
    options_.presenter->presentWindow(window);
    return std::exchange(modalCode_, outer).value_or(0);
}

bool Session::registerHelpBooks(const std::filesystem::path& path) {
    return helpBooks_.registerBook(path);
}

void Session::openHelpAnchor(std::string_view anchor, std::string_view book) {
    options_.presenter->openHelp(anchor, book);
}

} // namespace host
