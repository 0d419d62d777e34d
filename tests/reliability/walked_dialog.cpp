#include "tests/reliability/walked_dialog.h"

#include "tests/support/test_host.h"

#include <algorithm>
#include <cmath>
#include <concepts>
#include <deque>
#include <stdexcept>
#include <unordered_map>

namespace reliability {
namespace {

constexpr std::string_view kAdjustmentKeys[] = {"CVBrightness", "CVContrast", "CVRed", "CVGreen", "CVBlue"};

bool isAdjustment(std::string_view key) {
    return std::ranges::find(kAdjustmentKeys, key) != std::end(kAdjustmentKeys);
}

// The adjustments are whole numbers here; whether one is held as an integer or as a real makes no difference.
toolkit::Value plain(const toolkit::Value& value, std::string_view key) {
    return isAdjustment(key) && !value.isAbsent() ? toolkit::Value(value.integerReading()) : value;
}

toolkit::Value fromSetting(const printing::SettingValue& value) {
    return std::visit([](const auto& each) { return toolkit::Value(each); }, value);
}

printing::SettingValue toSetting(const toolkit::Value& value) {
    if (const auto* text = value.as<std::string>())
        return *text;
    if (const auto* flag = value.as<bool>())
        return *flag;
    return value.integerReading();
}

// Each value that was met has a number, the same in every snapshot of the process. The absent one has 0.
class Words {
public:
    std::uint32_t operator()(const toolkit::Value& value) {
        if (value.isAbsent())
            return 0;
        const char kind = value.as<std::string>() ? 't' : value.as<bool>() ? 'b' : value.as<double>() ? 'r' : 'i';
        const auto [entry, isNew] =
            numbers_.try_emplace(kind + value.textReading(), static_cast<std::uint32_t>(values_.size()));
        if (isNew)
            values_.push_back(value);
        return entry->second;
    }
    [[nodiscard]] const toolkit::Value& value(std::uint32_t word) const { return values_[word]; }
    [[nodiscard]] const std::string& text(std::uint32_t word) const { return *values_[word].as<std::string>(); }

private:
    std::deque<toolkit::Value> values_ = {toolkit::Value()};
    std::unordered_map<std::string, std::uint32_t> numbers_;
};

Words wordOf;

bool isUsable(const toolkit::Control& control) {
    return control.isEnabled() && !control.isHidden();
}

} // namespace

const std::vector<printing::Paper>& WalkedDialog::papers() {
    const auto ofPrinter = [](const char* name) {
        return printing::Paper{.name = name, .ppdName = name, .width = 595, .height = 842};
    };
    static const std::vector<printing::Paper> all = {
        ofPrinter("A4"),
        ofPrinter("Env10"),
        ofPrinter("Postcard"),
        ofPrinter("A4.Fullbleed"),
        ofPrinter("CvHagaki_B"),
        ofPrinter("A3.Fullbleed"),
        {.name = "Custom.400x700", .ppdName = {}, .width = 400, .height = 700},
        {.name = "Letter", .ppdName = {}, .width = 2000, .height = 700}, // too wide for the printer
    };
    return all;
}

WalkedDialog::WalkedDialog(std::vector<std::string> languages) : isJapanese_(languages.front() == "ja") {
    std::string error;
    host::SessionOptions options;
    options.plugIn = host::PlugIn::load(std::string(CV_BINARY_DIR) + "/PlugIns/CVInkQuality12.plugin", error);
    options.description = printing::PrinterDescription::openText(tests::samplePpd("corvane-a3"), languages, error);
    if (options.plugIn == nullptr || options.description == nullptr)
        throw std::runtime_error(error);
    description_ = options.description.get();
    description_->markDefaults();
    options.pageFormat = printing::PageFormat{.paper = papers().front()};
    options.bundleView.languages = std::move(languages);
    options.userDefaults = &defaults_;
    options.presenter = this;
    options.askFilter = [this](const std::string& option, const std::string& choice) { return filter(option, choice); };
    session_ = host::Session::open(std::move(options), error);
    if (session_ == nullptr || panels().size() != kPanels.size())
        throw std::runtime_error("There are no panels. " + error);
    showAll();
    options_ = {"Duplex", "CVOutput"};
    for (const Which which : kPanels) {
        Side& side = sides_[which];
        side.keys = panels()[which]->supportedPPDOptionKeys().value();
        options_.insert(options_.end(), side.keys.begin(), side.keys.end());
        for (const auto& [key, value] : panels()[which]->loadedViews()->store()->entries())
            side.stored.push_back(key);
        for (const auto& each : panels()[which]->loadedViews()->views()) {
            if (auto* control = dynamic_cast<toolkit::Control*>(each.get()))
                side.controls.push_back(control);
            else if (auto* label = dynamic_cast<toolkit::Label*>(each.get()))
                side.labels.push_back(label);
        }
    }
}

// The panels

void WalkedDialog::saveAll() {
    for (const auto& panel : panels())
        panel->saveValuesAndReturnError();
}

void WalkedDialog::restoreAll() {
    for (const auto& panel : panels())
        session_->restorePanel(*panel);
}

void WalkedDialog::bringToFront(Which panel) {
    if (!session_->showPanel(*panels()[panel]))
        throw std::runtime_error("A panel has no view.");
    panels()[panel]->shouldHide(); // left again, so that only what the rules do is part of the state
}

void WalkedDialog::showAll() {
    for (const Which which : kPanels)
        bringToFront(which);
}

void WalkedDialog::round() {
    saveAll();
    restoreAll();
    for (const auto& panel : panels())
        (void)panel->summaryInfo();
}

// What a user and a host do

bool WalkedDialog::choose(Which panel, std::string_view control, std::string_view keyword) {
    auto& usable = view<toolkit::Control>(panel, control);
    if (!isUsable(usable))
        return false;
    if (auto* matrix = dynamic_cast<toolkit::RadioMatrix*>(&usable)) {
        matrix->userSelectedRow(matrix->rowWithKeyword(keyword));
        return true;
    }
    auto& popup = view<toolkit::PopUpList>(panel, control);
    const int index = popup.indexOfItemWithKeyword(keyword);
    if (index < 0 || !popup.items()[static_cast<std::size_t>(index)].enabled)
        return false;
    popup.userSelectedItemAtIndex(index);
    return true;
}

bool WalkedDialog::toggle(Which panel, std::string_view control) {
    auto& box = view<toolkit::CheckBox>(panel, control);
    if (!isUsable(box))
        return false;
    box.userSetOn(!box.isOn());
    return true;
}

bool WalkedDialog::enter(std::string_view field, double value) {
    auto& number = view<toolkit::NumberField>(kColor, field);
    if (!isUsable(number))
        return false;
    number.userSetValue(value);
    return true;
}

bool WalkedDialog::press(Which panel, std::string_view button) {
    auto& pressed = view<toolkit::PushButton>(panel, button);
    if (!isUsable(pressed))
        return false;
    pressed.userPressed();
    return true;
}

void WalkedDialog::setPaper(std::size_t index) {
    paper_ = index;
    session_->setPaper(papers()[index], true);
}

void WalkedDialog::markFromOutside(const std::string& option, const std::string& choice) {
    std::string error;
    if (!session_->markFromOutside(option, choice, true, error))
        throw std::runtime_error(error);
}

void WalkedDialog::setOutput(const std::string& choice) {
    markFromOutside("CVOutput", choice);
    saveAll();
    restoreAll();
    showAll();
}

void WalkedDialog::setColorMatchingMode(const std::string& mode) {
    session_->settings()->setValueForKey(mode, printing::kColorMatchingModeKey);
    saveAll();
    restoreAll();
    showAll();
}

// Refusals

void WalkedDialog::refuseAt(std::optional<int> number) {
    asked_ = 0;
    refuseAt_ = number;
    wasRefused_ = false;
    firstRefused_.reset();
    marksAtRefusal_.reset();
    faults_.clear();
    (void)session_->takeRecord(); // it grows otherwise
}

std::optional<std::string> WalkedDialog::filter(const std::string& option, const std::string& choice) {
    compareMarksWithThoseAtTheRefusal();
    constexpr int kMostRequests = 200; // of one action; a loop never ends
    if (asked_ > kMostRequests)
        throw std::runtime_error("The panels ask without end.");
    const bool refused = asked_++ == refuseAt_;
    if (refused && refuseAt_ == 0 && marked(option) != choice)
        firstRefused_ = {option, choice};
    if (refused || (marked(option) != choice && !description_->conflictsOf(option, choice).empty())) {
        wasRefused_ = true;
        marksAtRefusal_ = allMarks();
    }
    return refused ? std::optional<std::string>("It is refused.") : std::nullopt; // the session refuses conflicts
}

// Marks change through requests only, so a refused one has changed nothing if nothing has until the next one.
void WalkedDialog::compareMarksWithThoseAtTheRefusal() {
    if (marksAtRefusal_ && *marksAtRefusal_ != allMarks())
        faults_.emplace_back("a refused request changed the marks");
    marksAtRefusal_.reset();
}

const std::vector<std::string>& WalkedDialog::faults() {
    compareMarksWithThoseAtTheRefusal();
    return faults_;
}

std::vector<std::string> WalkedDialog::allMarks() const {
    std::vector<std::string> marks;
    for (const std::string& option : options_)
        marks.push_back(marked(option));
    return marks;
}

// A look at it

std::string WalkedDialog::marked(std::string_view option) const {
    return description_->markedChoice(option).value_or("");
}

std::string WalkedDialog::pending(Which panel, std::string_view key) const {
    return toolkit::valueInMap(panels()[panel]->outputBin(), key).textReading();
}

bool WalkedDialog::stored(std::string_view key) const {
    return panels()[kColor]->loadedViews()->store()->valueForKey(key).booleanReading();
}

std::int64_t WalkedDialog::storedNumber(std::string_view key) const {
    return panels()[kColor]->loadedViews()->store()->valueForKey(key).integerReading();
}

std::vector<std::int64_t> WalkedDialog::adjustments() const {
    std::vector<std::int64_t> numbers;
    for (const std::string_view key : kAdjustmentKeys)
        numbers.push_back(storedNumber(key));
    return numbers;
}

std::string WalkedDialog::paperName() const {
    return *papers()[paper_].name;
}

std::optional<std::string> WalkedDialog::setting(std::string_view key) const {
    const auto value = session_->settings()->valueForKey(key);
    return value ? std::optional(printing::optionText(*value)) : std::nullopt;
}

// States

Snapshot WalkedDialog::capture() const {
    Snapshot words;
    words.reserve(400);
    words.push_back(static_cast<std::uint32_t>(paper_));
    for (const std::string& option : options_)
        words.push_back(wordOf(marked(option)));
    const auto& settings = session_->settings()->entries();
    words.push_back(static_cast<std::uint32_t>(settings.size()));
    for (const auto& [key, value] : settings) {
        words.push_back(wordOf(key));
        words.push_back(wordOf(fromSetting(value)));
    }
    for (const Which which : kPanels)
        capturePanel(which, words);
    return words;
}

void WalkedDialog::capturePanel(Which which, Snapshot& words) const {
    const CVPrintQualityPDE& panel = *panels()[which];
    const Side& side = sides_[which];
    const auto put = [&](std::integral auto number) { words.push_back(static_cast<std::uint32_t>(number)); };
    const toolkit::ValueMap fields = session_->inspection()->fieldsOfPanel(panel);
    put(panel.imageModeFlag());
    put(wordOf(toolkit::valueInMap(fields, "paperName")));
    const auto& bin = *toolkit::valueInMap(fields, "outputBin").as<toolkit::ValueMap>();
    put(bin.size());
    for (const auto& [key, value] : bin) {
        put(wordOf(key));
        put(wordOf(plain(value, key)));
    }
    const toolkit::KeyValueStore& store = *panel.loadedViews()->store();
    if (store.entries().size() > side.stored.size())
        throw std::runtime_error("A panel stores under a key that it did not store under when it was filled.");
    for (const std::string& key : side.stored)
        put(wordOf(plain(store.valueForKey(key), key)));
    put(std::lround(panel.loadedViews()->root().frame().height));
    for (const toolkit::Control* control : side.controls) {
        put((control->isEnabled() ? 1 : 0) | (control->isHidden() ? 2 : 0));
        if (const auto* popup = dynamic_cast<const toolkit::PopUpList*>(control)) {
            put(popup->selectedIndex() + 1);
            put(popup->items().size());
            for (const toolkit::PopUpList::Item& item : popup->items()) {
                put(wordOf(item.title));
                put(wordOf(item.keyword ? toolkit::Value(*item.keyword) : toolkit::Value()));
                put(item.enabled ? 1 : 0);
            }
        } else if (const auto* box = dynamic_cast<const toolkit::CheckBox*>(control)) {
            put(box->state());
        } else if (const auto* matrix = dynamic_cast<const toolkit::RadioMatrix*>(control)) {
            put(matrix->selectedRow() + 1);
        } else if (const auto* field = dynamic_cast<const toolkit::NumberField*>(control)) {
            put(std::lround(field->value()));
            put(static_cast<int>(field->textColor()));
        }
    }
    for (const toolkit::Label* label : side.labels)
        put(static_cast<int>(label->textColor()) | (label->isHidden() ? 2 : 0));
}

void WalkedDialog::establish(const Snapshot& snapshot) {
    const std::uint32_t* word = snapshot.data();
    if (const std::size_t paper = *word++; paper != paper_) {
        paper_ = paper;
        session_->setPaper(papers()[paper], false);
    }
    for (const std::string& option : options_) {
        const std::string& choice = wordOf.text(*word++);
        if (marked(option) != choice && !description_->mark(option, choice))
            throw std::runtime_error("The mark cannot be put back: " + option + "=" + choice);
    }
    printing::PrintSettings settings;
    for (std::uint32_t left = *word++; left > 0; --left) {
        const std::string& key = wordOf.text(*word++);
        settings.setValueForKey(toSetting(wordOf.value(*word++)), key);
    }
    session_->setPrintSettings(std::move(settings));
    for (const Which which : kPanels)
        establishPanel(which, word);
    if (word != snapshot.data() + snapshot.size())
        throw std::runtime_error("A state was not put back whole.");
}

void WalkedDialog::establishPanel(Which which, const std::uint32_t*& word) {
    CVPrintQualityPDE& panel = *panels()[which];
    const Side& side = sides_[which];
    std::string error;
    const auto setField = [&](std::string_view field, const toolkit::Value& value) {
        if (!session_->inspection()->setFieldOfPanel(panel, field, "", value, error))
            throw std::runtime_error(error);
    };
    setField("imageModeFlag", static_cast<std::int64_t>(*word++));
    setField("paperName", wordOf.value(*word++));
    toolkit::ValueMap bin;
    for (std::uint32_t left = *word++; left > 0; --left) {
        const std::string& key = wordOf.text(*word++);
        bin.insert_or_assign(key, wordOf.value(*word++));
    }
    panel.setOutputBin(bin);
    toolkit::KeyValueStore& store = *panel.loadedViews()->store();
    for (const std::string& key : side.stored) {
        const toolkit::Value& value = wordOf.value(*word++);
        if (plain(store.valueForKey(key), key) != value)
            store.setValueForKey(value, key); // the bound controls follow; they are set again below
    }
    toolkit::View& root = panel.loadedViews()->root();
    toolkit::Rect frame = root.frame();
    frame.height = *word++;
    root.setFrame(frame);
    for (toolkit::Control* control : side.controls) {
        const std::uint32_t state = *word++;
        control->setEnabled((state & 1) != 0);
        control->setHidden((state & 2) != 0);
        if (auto* popup = dynamic_cast<toolkit::PopUpList*>(control)) {
            const int selected = static_cast<int>(*word++) - 1;
            const std::uint32_t count = *word++;
            const auto textAt = [&](std::size_t at) { return wordOf.text(word[at]); };
            bool sameItems = popup->items().size() == count;
            for (std::size_t index = 0; sameItems && index < count; ++index)
                sameItems = popup->items()[index].title == textAt(3 * index) &&
                            popup->items()[index].keyword == textAt(3 * index + 1);
            if (!sameItems) {
                popup->removeAllItems();
                for (std::size_t index = 0; index < count; ++index) {
                    popup->addItemWithTitle(textAt(3 * index));
                    popup->setKeywordOfItemWithTitle(textAt(3 * index + 1), textAt(3 * index));
                }
            }
            for (std::uint32_t index = 0; index < count; ++index, word += 3)
                popup->setItemEnabled(static_cast<int>(index), word[2] != 0);
            popup->selectItemAtIndex(selected);
        } else if (auto* box = dynamic_cast<toolkit::CheckBox*>(control)) {
            box->setOn(*word++ != 0);
        } else if (auto* matrix = dynamic_cast<toolkit::RadioMatrix*>(control)) {
            matrix->selectRow(static_cast<int>(*word++) - 1);
        } else if (auto* field = dynamic_cast<toolkit::NumberField*>(control)) {
            field->setValue(static_cast<std::int32_t>(*word++));
            field->setTextColor(static_cast<toolkit::TextColor>(*word++));
        }
    }
    for (toolkit::Label* label : side.labels) {
        label->setTextColor(static_cast<toolkit::TextColor>(*word & 1));
        label->setHidden((*word++ & 2) != 0);
    }
}

// Alerts

toolkit::AlertAnswer WalkedDialog::presentAlert(const toolkit::Alert&, bool) {
    return {};
}

void WalkedDialog::presentPanel(const toolkit::AlertPanel&) {}
void WalkedDialog::presentWindow(toolkit::Window&) {}
void WalkedDialog::openHelp(std::string_view, std::string_view) {}

} // namespace reliability
