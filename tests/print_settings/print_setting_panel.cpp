#include "tests/print_settings/print_setting_panel.h"

#include <algorithm>
#include <stdexcept>

namespace print_settings_tests {

void PrintSettingPanel::openHost(const std::string& ppdText, std::vector<std::string> languages) {
    panel.reset(); // it must not outlive its host
    host = std::make_unique<tests::TestHost>(ppdText, std::move(languages));
}

void PrintSettingPanel::makePanel() {
    panel = std::make_shared<OpenPanel>();
    if (!panel->initWithCallback(host.get()))
        throw std::runtime_error("The panel cannot be made.");
    host->log.clear();
}

void PrintSettingPanel::makePanelWithView() {
    makePanel();
    if (panel->panelView() == nullptr)
        throw std::runtime_error("The panel has no view.");
    host->log.clear();
}

void PrintSettingPanel::showPanel() {
    makePanelWithView();
    panel->willShow();
    host->log.clear();
}

void PrintSettingPanel::setPaper(const std::string& name) {
    host->format->paper = printing::Paper{.name = name, .ppdName = name, .width = 595, .height = 842};
}

void PrintSettingPanel::setCustomPaper(const std::string& name, std::optional<double> width,
                                       std::optional<double> height) {
    host->format->paper = printing::Paper{.name = name, .ppdName = {}, .width = width, .height = height};
}

void PrintSettingPanel::addItems(toolkit::PopUpList& list, const std::vector<std::string>& keywords) {
    for (const std::string& keyword : keywords) {
        list.addItemWithTitle("Title of " + keyword);
        list.setKeywordOfItemWithTitle(keyword, "Title of " + keyword);
    }
}

std::vector<std::string> PrintSettingPanel::keywordsOf(const toolkit::PopUpList& list) {
    std::vector<std::string> keywords;
    for (const auto& item : list.items())
        keywords.push_back(item.keyword.value_or("null"));
    return keywords;
}

std::vector<std::string> PrintSettingPanel::disabledKeywordsOf(const toolkit::PopUpList& list) {
    std::vector<std::string> keywords;
    for (const auto& item : list.items())
        if (!item.enabled)
            keywords.push_back(item.keyword.value_or("null"));
    return keywords;
}

void PrintSettingPanel::choose(std::string_view popupName, std::string_view keyword) {
    toolkit::PopUpList& list = popup(popupName);
    const int index = list.indexOfItemWithKeyword(keyword);
    if (index < 0)
        throw std::runtime_error("There is no such item: " + std::string(keyword));
    list.userSelectedItemAtIndex(index);
}

void PrintSettingPanel::setPending(const std::string& key, const std::string& choice) {
    toolkit::ValueMap bin = panel->outputBin();
    bin.insert_or_assign(key, choice);
    panel->setOutputBin(bin);
}

void PrintSettingPanel::removePending(const std::string& key) {
    toolkit::ValueMap bin = panel->outputBin();
    bin.erase(key);
    panel->setOutputBin(bin);
}

std::string PrintSettingPanel::pending(std::string_view key) {
    const toolkit::ValueMap bin = panel->outputBin();
    return toolkit::valueInMap(bin, key).textReading();
}

std::string PrintSettingPanel::marked(std::string_view option) {
    return host->description->markedChoice(option).value_or("");
}

void PrintSettingPanel::post(std::string_view name) {
    toolkit::NotificationCenter::defaultCenter().post({.name = std::string(name), .sender = nullptr, .userInfo = {}});
}

std::vector<std::string> PrintSettingPanel::takeLogBeginningWith(const std::vector<std::string>& starts) {
    std::vector<std::string> log = host->takeLog();
    std::erase_if(log, [&](const std::string& entry) {
        return std::ranges::none_of(starts, [&](const std::string& start) { return entry.starts_with(start); });
    });
    return log;
}

std::string replaced(std::string text, std::string_view part, std::string_view by) {
    const std::size_t position = text.find(part);
    if (position == std::string::npos)
        throw std::runtime_error("The text has no such part: " + std::string(part));
    return text.replace(position, part.size(), by);
}

std::string samplePpdWithoutOption(const std::string& option) {
    std::string text = tests::samplePpd("corvane-a3");
    const std::size_t begin = text.find("*OpenUI *" + option + "/");
    const std::string last = "*CloseUI: *" + option + "\n";
    const std::size_t end = text.find(last, begin);
    if (begin == std::string::npos || end == std::string::npos)
        throw std::runtime_error("The sample printer has no such option: " + option);
    return text.erase(begin, end + last.size() - begin);
}

std::vector<std::string> without(std::vector<std::string> log, std::string_view start) {
    std::erase_if(log, [&](const std::string& entry) { return entry.starts_with(start); });
    return log;
}

} // namespace print_settings_tests
