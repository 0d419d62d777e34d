#include "tests/support/test_host.h"

#include "framework/option_keywords.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

namespace tests {
namespace {

std::string inWords(const toolkit::Notification& notification) {
    std::string text = "post " + notification.name;
    if (!notification.userInfo)
        return text;
    text += " {";
    for (const auto& [key, value] : *notification.userInfo)
        text += (text.back() == '{' ? "" : ",") + key + "=" + value.textReading();
    return text + "}";
}

} // namespace

TestHost::TestHost(const std::string& ppdText, std::vector<std::string> preferred) : languages(std::move(preferred)) {
    std::string error;
    description = printing::PrinterDescription::openText(ppdText, languages, error);
    if (description == nullptr)
        throw std::runtime_error("The test's PPD cannot be opened: " + error);
    description->markDefaults();
    reopenBundle({.languages = languages, .localize = false, .strings = {}, .info = {}, .removedInfo = {}});
    window.setHidden(false);
    window.setFrame({.width = 640, .height = 800});
    toolkit::NotificationCenter::defaultCenter().addObserver(
        observer_, "", this,
        [this](const toolkit::Notification& notification) { log.push_back(inWords(notification)); });
}

TestHost::~TestHost() {
    toolkit::NotificationCenter::defaultCenter().removeObserver(observer_.get());
}

void TestHost::reopenBundle(toolkit::BundleView view) {
    std::string error;
    bundle =
        toolkit::Bundle::open(std::string(CV_BINARY_DIR) + "/PlugIns/CVInkQuality12.plugin", std::move(view), error);
    if (bundle == nullptr)
        throw std::runtime_error(error);
}

bool TestHost::respondsToSelector(std::string_view operation) const {
    return !lacking.contains(operation);
}

printing::PrintSettings* TestHost::printSettings() {
    return settings && respondsToSelector(framework::kPrintSettingsSelector) ? &*settings : nullptr;
}

const printing::PageFormat* TestHost::pageFormat() {
    return format && respondsToSelector(framework::kPageFormatSelector) ? &*format : nullptr;
}

bool TestHost::willChangePPDOptionKeyValuePpdChoice(std::string_view option, std::string_view choice) {
    const std::string optionKeyword(option), choiceKeyword(choice), both = optionKeyword + "=" + choiceKeyword;
    if (beforeAsking)
        beforeAsking(optionKeyword, choiceKeyword);
    const bool accepted =
        !refused.contains(both) && !refused.contains(optionKeyword) && description->mark(option, choice);
    log.push_back((accepted ? "ask " : "refuse ") + both);
    return accepted;
}

void TestHost::panelViewDidResize() {
    log.emplace_back("resized");
}

toolkit::AlertAnswer TestHost::answer(const char* how, const toolkit::Alert& alert) {
    alerts.push_back(alert);
    log.push_back(std::string(how) + " " + alert.messageText);
    toolkit::AlertAnswer given;
    if (!answers.empty()) {
        given = answers.front();
        answers.pop_front();
    }
    return given;
}

toolkit::AlertAnswer TestHost::runModalAlert(const toolkit::Alert& alert) {
    return answer("alert", alert);
}

void TestHost::beginSheet(const toolkit::Alert& alert, const std::function<void(const toolkit::AlertAnswer&)>& didEnd) {
    didEnd(answer("sheet", alert));
}

void TestHost::runAlertPanel(const toolkit::AlertPanel& panel) {
    alertPanels.push_back(panel);
    log.push_back("panel " + panel.title);
}

int TestHost::runModalForWindow(toolkit::Window& shown) {
    shown.setHidden(false);
    log.push_back("window " + shown.name());
    int code = 1;
    if (!windowCodes.empty()) {
        code = windowCodes.front();
        windowCodes.pop_front();
    }
    return code;
}

void TestHost::stopModalWithCode(int code) {
    log.push_back("stop " + std::to_string(code));
}

bool TestHost::registerHelpBooks(const std::filesystem::path& path) {
    log.push_back("register " + path.string());
    return helpRegisters;
}

void TestHost::openHelpAnchor(std::string_view anchor, std::string_view book) {
    log.push_back("help " + std::string(anchor) + " in " + std::string(book));
}

std::string ppdWith(const std::string& lines) {
    return "*PPD-Adobe: \"4.3\"\n*FormatVersion: \"4.3\"\n*FileVersion: \"1.0\"\n*LanguageVersion: English\n"
           "*LanguageEncoding: ISOLatin1\n*PCFileName: \"TEST.PPD\"\n*Product: \"(Test)\"\n*Manufacturer: \"Corvane\"\n"
           "*ModelName: \"CORVANE-TEST\"\n*ShortNickName: \"Corvane Test\"\n*NickName: \"Corvane Test\"\n"
           "*PSVersion: \"(3010) 1\"\n*LanguageLevel: \"3\"\n*ColorDevice: True\n*DefaultColorSpace: RGB\n"
           "*FileSystem: False\n*Throughput: \"1\"\n" +
           lines;
}

std::string ppdOption(const std::string& keyword, const std::string& text, const std::string& defaultChoice,
                      const std::vector<std::string>& choices) {
    std::string lines = "*OpenUI *" + keyword + "/" + text + ": PickOne\n";
    if (!defaultChoice.empty())
        lines += "*Default" + keyword + ": " + defaultChoice + "\n";
    for (const std::string& choice : choices)
        lines += "*" + keyword + " " + choice + ": \"\"\n";
    return lines + "*CloseUI: *" + keyword + "\n";
}

std::string samplePpd(const std::string& name) {
    std::ifstream stream(std::string(CV_SOURCE_DIR) + "/resources/models/" + name + ".ppd");
    std::ostringstream text;
    text << stream.rdbuf();
    return text.str();
}

} // namespace tests
