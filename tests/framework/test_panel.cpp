#include "tests/framework/test_panel.h"

#include <algorithm>

namespace framework_tests {

using tests::ppdOption;

void TestPanel::step(const std::string& name) {
    if (tellsSteps)
        host_->log.push_back(name);
    look(name);
}

void TestPanel::look(const std::string& name) const {
    if (onStep)
        onStep(name);
}

bool TestPanel::initWithCallback(framework::HostCallback* callback) {
    host_ = dynamic_cast<tests::TestHost*>(callback);
    return CVPrintQualityPDE::initWithCallback(callback);
}

std::string TestPanel::panelName() {
    look("panelName");
    return "Test Setting";
}

void TestPanel::willShow() {
    step("willShow");
    CVPrintQualityPDE::willShow();
}

bool TestPanel::shouldHide() {
    step("shouldHide");
    return CVPrintQualityPDE::shouldHide();
}

bool TestPanel::shouldPrint() {
    step("shouldPrint");
    return CVPrintQualityPDE::shouldPrint();
}

bool TestPanel::saveValuesAndReturnError(const framework::ErrorSlot& error) {
    step("saveValues");
    return CVPrintQualityPDE::saveValuesAndReturnError(error);
}

bool TestPanel::restoreValuesAndReturnError(const framework::ErrorSlot& error) {
    step("restoreValues");
    return CVPrintQualityPDE::restoreValuesAndReturnError(error);
}

std::optional<toolkit::ValueMap> TestPanel::summaryInfo() {
    step("summaryInfo");
    return CVPrintQualityPDE::summaryInfo();
}

std::optional<Words> TestPanel::supportedPPDOptionKeys() {
    look("supportedPPDOptionKeys");
    return CVPrintQualityPDE::supportedPPDOptionKeys();
}

void TestPanel::PPDOptionKeyValueDidChangePpdChoice(const std::string& option, const std::string& choice) {
    step("didChange " + option + "=" + choice);
    CVPrintQualityPDE::PPDOptionKeyValueDidChangePpdChoice(option, choice);
}

void TestPanel::setPPDKeys(const std::optional<Words>& keys) {
    step("setPPDKeys");
    CVPrintQualityPDE::setPPDKeys(keys);
}

void TestPanel::saveAllValues() {
    step("saveAllValues");
    CVPrintQualityPDE::saveAllValues();
}

void TestPanel::requestNewOutputBin(toolkit::View* sender) {
    step("requestNewOutputBin");
    CVPrintQualityPDE::requestNewOutputBin(sender);
}

void TestPanel::revertUIForKey(toolkit::View* control, const std::optional<std::string>& key) {
    step("revertUI " + key.value_or("null"));
    CVPrintQualityPDE::revertUIForKey(control, key);
}

void TestPanel::updateUI() {
    step("updateUI");
    CVPrintQualityPDE::updateUI();
}

void TestPanel::updateUIforKey(const std::optional<std::string>& key) {
    step("updateUIforKey " + key.value_or("null"));
    CVPrintQualityPDE::updateUIforKey(key);
}

bool TestPanel::setAndMarkValueForKey(const std::optional<std::string>& value, const std::optional<std::string>& key) {
    look("setAndMarkValue " + key.value_or("null") + "=" + value.value_or("null"));
    return CVPrintQualityPDE::setAndMarkValueForKey(value, key);
}

void TestPanel::getUIValues() {
    step("getUIValues");
    CVPrintQualityPDE::getUIValues();
}

std::optional<Words> TestPanel::availablePPDOptionKeys() {
    look("availablePPDOptionKeys");
    return summaryKeys ? summaryKeys : CVPrintQualityPDE::availablePPDOptionKeys();
}

void TestPanel::setDefaults() {
    step("setDefaults");
    CVPrintQualityPDE::setDefaults();
}

void TestPanel::initializePopup() {
    step("initializePopup");
    CVPrintQualityPDE::initializePopup();
}

std::optional<std::string> TestPanel::determineKey(toolkit::View* control) {
    look("determineKey");
    const auto row = std::ranges::find(bindings, control, &Binding::control);
    return row == bindings.end() ? CVPrintQualityPDE::determineKey(control) : std::optional(row->keyword);
}

toolkit::View* TestPanel::determineUI(const std::optional<std::string>& key) {
    look("determineUI");
    const auto row = std::ranges::find_if(bindings, [&](const Binding& each) { return each.keyword == key; });
    return row == bindings.end() ? CVPrintQualityPDE::determineUI(key) : row->control;
}

toolkit::View* TestPanel::determineLabel(const std::optional<std::string>& key) {
    look("determineLabel");
    const auto row = std::ranges::find_if(bindings, [&](const Binding& each) { return each.keyword == key; });
    return row == bindings.end() ? CVPrintQualityPDE::determineLabel(key) : row->label;
}

void TestPanel::checkConstraints() {
    step("checkConstraints");
    CVPrintQualityPDE::checkConstraints();
}

void TestPanel::checkUIConstraints() {
    step("checkUIConstraints");
    CVPrintQualityPDE::checkUIConstraints();
}

void TestPanel::checkModelName() {
    step("checkModelName");
    CVPrintQualityPDE::checkModelName();
}

void TestPanel::changeResolutionLetterB() {
    step("changeResolutionLetterB");
    CVPrintQualityPDE::changeResolutionLetterB();
}

std::string TestPanel::optionName() {
    look("optionName");
    return CVPrintQualityPDE::optionName();
}

void TestPanel::saveOptionState() {
    step("saveOptionState");
    CVPrintQualityPDE::saveOptionState();
}

void TestPanel::restoreOptionState() {
    step("restoreOptionState");
    CVPrintQualityPDE::restoreOptionState();
}

void TestPanel::toggleShowOption(toolkit::View* sender) {
    step("toggleShowOption " + (sender == nullptr ? "null" : sender->name()));
    CVPrintQualityPDE::toggleShowOption(sender);
}

std::optional<std::string> TestPanel::helpAnchor() {
    look("helpAnchor");
    return CVPrintQualityPDE::helpAnchor();
}

std::optional<std::string> TestPanel::helpBook() {
    look("helpBook");
    return CVPrintQualityPDE::helpBook();
}

CVPrintQualityPDE::OutletTables TestPanel::outletTables() const {
    static constexpr PanelOutlet kOutlets[] = {
        framework::outlet<CVPrintQualityPDE, &TestPanel::mediaPopup>("mediaPopup"),
        framework::outlet<CVPrintQualityPDE, &TestPanel::matchingMatrix>("matchingMatrix"),
    };
    OutletTables tables = CVPrintQualityPDE::outletTables();
    tables.insert(tables.begin(), kOutlets);
    return tables;
}

std::string testOptions() {
    return ppdOption("CVMediaType", "Media Type", "Plain",
                     {"Plain/Plain Paper", "PlainDuplex/Plain Paper (two-sided)", "Glossy/Glossy Paper",
                      "Matte/Matte Paper"}) +
           ppdOption("CVResolution", "Print Quality", "Fine", {"Draft/Draft", "Fine/Fine", "Best/Best"}) +
           ppdOption("CVColorMatching", "Matching", "Vendor", {"Vendor/Driver", "System/System", "None/No Matching"}) +
           ppdOption("CVBiDir", "Bi-directional Printing", "ON", {"OFF/No", "ON/Yes"}) +
           ppdOption("CVSlowDrying", "Slow Drying", "OFF", {"OFF/No", "ON/Yes"}) +
           ppdOption("MirrorPrint", "Mirror Printing", "False", {"False/No", "True/Yes"}) +
           ppdOption("CVOutput", "Output", "None", {"None/Printer", "FAX/Fax"});
}

Dialog::Dialog(const std::string& optionLines) : host(tests::ppdWith(optionLines)) {
    panel->initWithCallback(&host);
    panel->bindings = {{"CVMediaType", &media, &mediaLabel},
                       {"CVResolution", &resolution, &resolutionLabel},
                       {"CVColorMatching", &matching, &matchingBox},
                       {"CVBiDir", &biDir},
                       {"CVSlowDrying", &slowDrying},
                       {"MirrorPrint", &mirror}};
    panel->setPPDKeys(
        Words{"CVMediaType", "CVResolution", "CVColorMatching", "CVBiDir", "CVSlowDrying", "MirrorPrint"});
    panel->effectContent = std::make_shared<toolkit::KeyValueStore>();
    panel->optionButton = &disclosure;
    panel->restoreValuesAndReturnError();
    host.log.clear();
}

void Dialog::populate() {
    panel->initializePopup();
    panel->updateUI();
    host.log.clear();
}

std::string Dialog::pending(const std::string& option) const {
    return toolkit::valueInMap(panel->outputBin_, option).textReading();
}

std::string Dialog::marked(const std::string& option) const {
    return host.description->markedChoice(option).value_or("none");
}

std::string Dialog::selected(const toolkit::PopUpList& popup) {
    return popup.selectedKeyword().value_or("none");
}

std::string Dialog::selected(const toolkit::RadioMatrix& matrix) {
    return matrix.selectedCell() == nullptr ? "none" : matrix.selectedCell()->keyword.value_or("none");
}

} // namespace framework_tests
