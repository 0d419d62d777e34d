#include "printing/printer_description.h"

#include "printing/constraints.h"
#include "printing/ppd_texts.h"

#include <cups/ppd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cmath>
#include <cstring>
#include <fcntl.h>
#include <iterator>
#include <sstream>
#include <string.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>
#include <unordered_map>

namespace printing {
namespace {

// Options that libcups unmarks one for the other.
bool marksOthersToo(std::string_view option) {
    constexpr std::string_view kOptions[] = {"PageSize", "PageRegion", "InputSlot", "ManualFeed"};
    return std::ranges::find(kOptions, option) != std::end(kOptions);
}

struct ClosePpd {
    void operator()(ppd_file_t* ppd) const { ppdClose(ppd); }
};
using PpdHandle = std::unique_ptr<ppd_file_t, ClosePpd>;

struct CloseDescriptor {
    explicit CloseDescriptor(int number) : number(number) {}
    CloseDescriptor(const CloseDescriptor&) = delete;
    CloseDescriptor& operator=(const CloseDescriptor&) = delete;
    ~CloseDescriptor() {
        if (number >= 0)
            ::close(number);
    }
    int number;
};

std::string systemError() {
    char text[256];
    return strerror_r(errno, text, sizeof text);
}

bool readAll(int descriptor, std::string& text) {
    char block[1 << 16];
    while (true) {
        const ssize_t count = ::read(descriptor, block, sizeof block);
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            return false;
        if (count == 0)
            return true;
        text.append(block, static_cast<std::size_t>(count));
        if (text.size() > PrinterDescription::kLargestFile)
            return true;
    }
}

// A text for libcups to read from the start.
int memoryFile(std::string_view text) {
    const int descriptor = memfd_create("ppd", MFD_CLOEXEC);
    while (descriptor >= 0 && !text.empty()) {
        const ssize_t written = ::write(descriptor, text.data(), text.size());
        if (written <= 0) {
            ::close(descriptor);
            return -1;
        }
        text.remove_prefix(static_cast<std::size_t>(written));
    }
    if (descriptor >= 0)
        ::lseek(descriptor, 0, SEEK_SET);
    return descriptor;
}

// Where the line that stands at the place ends; the text's end where nothing ends it.
std::size_t endOfLine(std::string_view text, std::size_t at) {
    const std::string_view line = text.substr(at, text.find('\n', at) - at);
    return at + std::min(line.find('\r'), line.size());
}

// The lines of a PPD's text, without their ends.
template <typename Visit>
void forEachLine(std::string_view text, Visit visit) {
    const bool hasReturns = text.find('\r') != std::string_view::npos; // few files have, and large ones 10,000 lines
    while (!text.empty()) {
        const std::size_t end = hasReturns ? endOfLine(text, 0) : std::min(text.find('\n'), text.size());
        visit(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
}

template <typename Visit>
void forEachWord(std::string_view text, Visit visit) {
    constexpr std::string_view kBlanks = " \t\n\v\f\r";
    for (std::size_t at = text.find_first_not_of(kBlanks); at != std::string_view::npos;) {
        const std::size_t end = std::min(text.find_first_of(kBlanks, at), text.size());
        visit(text.substr(at, end - at));
        at = text.find_first_not_of(kBlanks, end);
    }
}

// The option that the text opens and never closes: a file that was cut off in the middle still opens in libcups. Where
// a group ends or begins the file goes on: it was not cut there, but the closing line forgotten.
std::string unclosedOption(std::string_view text) {
    std::string open;
    forEachLine(text, [&](std::string_view line) {
        if (line.size() < 2 || std::string_view("OCJ").find(line[1]) == std::string_view::npos)
            return; // most lines: a large PPD has ten thousand
        for (const std::string_view keyword : {"*OpenUI", "*JCLOpenUI"})
            if (line.starts_with(keyword)) {
                const std::size_t star = std::min(line.find('*', keyword.size()), line.size());
                const std::size_t end = std::min(line.find_first_of("/:", star), line.size());
                open = star == line.size() ? std::string(keyword) : std::string(line.substr(star, end - star));
            }
        for (const std::string_view keyword : {"*CloseUI", "*JCLCloseUI", "*OpenGroup", "*CloseGroup"})
            if (line.starts_with(keyword))
                open.clear();
    });
    return open;
}

// The first of the wanted languages that the PPD has translations for; empty for the PPD's own texts.
std::string translationLanguage(std::string_view text, const std::vector<std::string>& wanted) {
    std::vector<std::string> available;
    forEachLine(text, [&](std::string_view line) {
        constexpr std::string_view kKeyword = "*cupsLanguages:";
        if (!line.starts_with(kKeyword))
            return;
        std::string list(line.substr(kKeyword.size()));
        std::ranges::replace(list, '"', ' ');
        std::istringstream stream(list);
        for (std::string language; stream >> language;)
            available.push_back(language);
    });
    const auto code = [](const std::string& language) { return language.substr(0, language.find_first_of("_-")); };
    const auto region = [](std::string language) {
        std::ranges::replace(language, '-', '_');
        return language;
    };
    const auto isTraditionalChinese = [&](const std::string& language) {
        const std::string name = region(language);
        return name.starts_with("zh_TW") || name.starts_with("zh_HK") || name.starts_with("zh_Hant");
    };
    for (const std::string& language : wanted) {
        const auto found = std::ranges::find_if(available, [&](const std::string& each) {
            return code(each) == code(language) && isTraditionalChinese(each) == isTraditionalChinese(language);
        });
        if (const auto same = std::ranges::find(available, region(language)); same != available.end())
            return *same;
        if (found != available.end())
            return *found;
        if (code(language) == "en")
            return {};
    }
    return {};
}

constexpr std::string_view kTranslatedPrefix = "L."; // no longer than a language's: keywords have a limit

// libcups keeps the translations into the process's own language alone, which need not be the session's: the session's
// get a prefix that it takes for ordinary attributes.
std::string withTranslationsKept(std::string_view text, const std::string& language) {
    std::string kept;
    kept.reserve(text.size());
    const std::string prefix = "*" + language + ".";
    std::size_t at = 0;
    while (at < text.size()) {
        if (text.substr(at).starts_with(prefix)) {
            kept += '*';
            kept += kTranslatedPrefix;
            at += prefix.size();
        }
        const std::size_t end = std::min(endOfLine(text, at), text.size() - 1);
        kept += text.substr(at, end + 1 - at);
        at = end + 1;
    }
    return kept;
}

// The PPD's translations that were kept: "*L.Translation Option/text" and "*L.Option Choice/text".
class Translations {
public:
    explicit Translations(ppd_file_t* ppd) : ppd_(ppd) {}

    [[nodiscard]] std::string optionText(const char* option, const char* own) const {
        return text("Translation", option, own);
    }
    [[nodiscard]] std::string choiceText(const char* option, const char* choice, const char* own) const {
        return text(option, choice, own);
    }

private:
    [[nodiscard]] std::string text(const char* keyword, const char* specifier, const char* own) const {
        const std::string name = std::string(kTranslatedPrefix) + keyword;
        if (const ppd_attr_t* attribute = ppdFindAttr(ppd_, name.c_str(), specifier))
            if (std::string translated = cleanText(attribute->text); !translated.empty())
                return translated;
        return cleanText(own);
    }

    ppd_file_t* ppd_;
};

std::optional<std::string> textOrNone(const char* text) {
    return text == nullptr ? std::nullopt : std::optional(cleanText(text));
}

constexpr std::string_view kPageSizeOption = "PageSize", kPageRegionOption = "PageRegion";
constexpr std::string_view kCustomPrefix = "Custom.", kCustomChoice = "Custom";

// The size in points that "Custom.WxH" (points, or with a unit in, ft, cm, mm or m) names.
std::optional<std::pair<double, double>> customSize(std::string_view choice) {
    if (!choice.starts_with(kCustomPrefix))
        return std::nullopt;
    std::istringstream stream{std::string(choice.substr(kCustomPrefix.size()))};
    stream.imbue(std::locale::classic());
    stream >> std::noskipws;
    double width = 0, height = 0;
    char times = 0;
    std::string unit;
    stream >> width >> times >> height;
    if (!stream || times != 'x' || !std::isfinite(width) || !std::isfinite(height))
        return std::nullopt;
    unit.assign(std::istreambuf_iterator<char>(stream), {});
    constexpr std::pair<std::string_view, double> kUnits[] = {
        {"", 1}, {"pt", 1}, {"in", 72}, {"ft", 864}, {"cm", 72 / 2.54}, {"mm", 72 / 25.4}, {"m", 7200 / 2.54}};
    for (const auto& [name, points] : kUnits)
        if (unit == name)
            return std::pair(width * points, height * points);
    return std::nullopt;
}

std::string cannotBeUsed(const std::string& path) {
    return "The PPD \"" + cleanText(path) + "\" cannot be used: ";
}

} // namespace

const Choice* Option::choice(std::string_view wanted) const {
    const auto found = std::ranges::find(choices, wanted, &Choice::keyword);
    return found == choices.end() ? nullptr : &*found;
}

// The libcups record and what is read from it once.
struct PrinterDescription::Record {
    PpdHandle ppd;
    std::vector<Option> options;
    std::unordered_map<std::string_view, std::size_t> optionsByKeyword; // keys are the options' own keywords
    std::unordered_map<std::string_view, ppd_option_t*> ppdOptions;
    std::optional<ConstraintTable> constraints; // borrows texts of the record; read when first asked for
    std::string customPageSize;                 // libcups keeps only "Custom"

    [[nodiscard]] ppd_option_t* ppdOption(std::string_view keyword) const {
        const auto found = ppdOptions.find(keyword);
        return found == ppdOptions.end() ? nullptr : found->second;
    }

    [[nodiscard]] std::optional<std::string> markedChoice(std::string_view keyword) const {
        const ppd_option_t* option = ppdOption(keyword);
        if (option == nullptr)
            return std::nullopt;
        const ppd_choice_t* choice = ppdFindMarkedChoice(ppd.get(), option->keyword);
        if (choice == nullptr)
            return std::nullopt;
        if (keyword == kPageSizeOption && kCustomChoice == choice->choice && !customPageSize.empty())
            return customPageSize;
        return std::string(choice->choice);
    }

    void readOptions() {
        const Translations translations(ppd.get());
        std::vector<ppd_option_t*> found;
        for (int group = 0; group < ppd->num_groups; ++group)
            collect(ppd->groups[group], found);
        options.reserve(found.size());
        for (ppd_option_t* option : found) {
            Option& own = options.emplace_back();
            own.keyword = option->keyword;
            own.text = translations.optionText(option->keyword, option->text);
            own.defaultChoice = option->defchoice;
            own.choices.reserve(static_cast<std::size_t>(option->num_choices));
            for (int index = 0; index < option->num_choices; ++index) {
                const ppd_choice_t& choice = option->choices[index];
                own.choices.push_back(
                    {choice.choice, translations.choiceText(option->keyword, choice.choice, choice.text)});
            }
        }
        for (std::size_t index = 0; index < options.size(); ++index) {
            optionsByKeyword.emplace(options[index].keyword, index);
            ppdOptions.emplace(options[index].keyword, found[index]);
        }
    }

    static void collect(ppd_group_t& group, std::vector<ppd_option_t*>& found) {
        for (int index = 0; index < group.num_options; ++index)
            found.push_back(&group.options[index]);
        for (int index = 0; index < group.num_subgroups; ++index)
            collect(group.subgroups[index], found);
    }

    const ConstraintTable& readConstraints() {
        if (constraints)
            return *constraints;
        constraints.emplace();
        if (ppd == nullptr)
            return *constraints; // a description of no printer
        for (int index = 0; index < ppd->num_consts; ++index) {
            const ppd_const_t& constraint = ppd->consts[index];
            constraints->add(
                std::array{term(constraint.option1, constraint.choice1), term(constraint.option2, constraint.choice2)});
        }
        for (const ppd_attr_t* attribute = ppdFindAttr(ppd.get(), "cupsUIConstraints", nullptr); attribute != nullptr;
             attribute = ppdFindNextAttr(ppd.get(), "cupsUIConstraints", nullptr)) {
            std::vector<ConstraintTable::Term> terms; // "*Option Choice *Option Choice ..."
            forEachWord(attribute->value == nullptr ? "" : attribute->value, [&](std::string_view word) {
                if (word.starts_with('*'))
                    terms.push_back({word.substr(1), {}});
                else if (!terms.empty())
                    terms.back().choice = word;
            });
            for (ConstraintTable::Term& each : terms)
                each = term(each.option, each.choice);
            constraints->add(terms);
        }
        return *constraints;
    }

    // "*CustomPageSize True" is how a PPD spells the free sizes of "PageSize".
    static ConstraintTable::Term term(std::string_view option, std::string_view choice) {
        if (option == "CustomPageSize")
            return {kPageSizeOption, kCustomChoice};
        return {option, choice};
    }
};

PrinterDescription::PrinterDescription() : record_(std::make_unique<Record>()) {}
PrinterDescription::~PrinterDescription() = default;

std::optional<std::string> PrinterDescription::readFile(const std::string& path, std::string& error) {
    const std::string what = cannotBeUsed(path);
    // Not blocking: a FIFO must not hold us up before we know that it is one.
    const CloseDescriptor file(::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY));
    struct stat status {};
    if (file.number < 0 || ::fstat(file.number, &status) != 0) {
        error = what + systemError() + ".";
        return std::nullopt;
    }
    if (!S_ISREG(status.st_mode)) {
        error = what + (S_ISDIR(status.st_mode) ? "it is a folder." : "it is not a regular file.");
        return std::nullopt;
    }
    if (static_cast<std::uint64_t>(status.st_size) > kLargestFile) {
        error = what + "it is larger than 4 MB.";
        return std::nullopt;
    }
    std::string text;
    text.reserve(static_cast<std::size_t>(status.st_size));
    if (!readAll(file.number, text)) {
        error = what + systemError() + ".";
        return std::nullopt;
    }
    return text;
}

std::unique_ptr<PrinterDescription>
PrinterDescription::openFile(const std::string& path, const std::vector<std::string>& languages, std::string& error) {
    const auto text = readFile(path, error);
    if (!text)
        return nullptr;
    auto description = openText(*text, languages, error);
    if (description == nullptr)
        error = cannotBeUsed(path) + error;
    return description;
}

std::unique_ptr<PrinterDescription>
PrinterDescription::openText(std::string_view text, const std::vector<std::string>& languages, std::string& error) {
    if (text.size() > kLargestFile) {
        error = "it is larger than 4 MB.";
        return nullptr;
    }
    const std::string language = translationLanguage(text, languages);
    const int descriptor = memoryFile(language.empty() ? text : withTranslationsKept(text, language));
    if (descriptor < 0) {
        error = systemError() + ".";
        return nullptr;
    }
    auto description = std::make_unique<PrinterDescription>();
    Record& record = *description->record_;
    record.ppd.reset(ppdOpenFd(descriptor)); // closes the descriptor
    if (record.ppd == nullptr) {
        int line = 0;
        const ppd_status_t status = ppdLastError(&line);
        error = std::string(ppdErrorString(status)) + (line > 0 ? " (line " + std::to_string(line) + ")." : ".");
        return nullptr;
    }
    record.readOptions();
    if (record.options.empty()) {
        error = "it has no options; it may have been cut off, or be no PPD.";
        return nullptr;
    }
    if (const std::string open = unclosedOption(text); !open.empty()) {
        error = "it was cut off: the option " + cleanText(open) + " is never closed.";
        return nullptr;
    }
    return description;
}

std::optional<std::string> PrinterDescription::shortNicknameIn(std::string_view text) {
    constexpr std::string_view kKeyword = "*ShortNickName:";
    std::optional<std::string> name;
    forEachLine(text, [&](std::string_view line) {
        if (name || !line.starts_with(kKeyword))
            return;
        const std::size_t begin = line.find('"'), end = line.rfind('"');
        if (begin != end)
            name = cleanText(line.substr(begin + 1, end - begin - 1));
    });
    return name;
}

const Option* PrinterDescription::option(std::string_view keyword) const {
    const auto found = record_->optionsByKeyword.find(keyword);
    return found == record_->optionsByKeyword.end() ? nullptr : &record_->options[found->second];
}

const std::vector<Option>& PrinterDescription::options() const {
    return record_->options;
}

std::optional<std::string> PrinterDescription::markedChoice(std::string_view option) const {
    return record_->markedChoice(option);
}

bool PrinterDescription::isDefaultMarked(const Option& option) const {
    return record_->ppd != nullptr &&
           ppdIsMarked(record_->ppd.get(), option.keyword.c_str(), option.defaultChoice.c_str()) != 0;
}

bool PrinterDescription::hasAttribute(std::string_view name) const {
    return record_->ppd != nullptr && ppdFindAttr(record_->ppd.get(), std::string(name).c_str(), nullptr) != nullptr;
}

int PrinterDescription::modelNumber() const {
    return record_->ppd == nullptr ? 0 : record_->ppd->model_number;
}

std::optional<std::string> PrinterDescription::modelName() const {
    if (record_->ppd == nullptr || record_->ppd->modelname == nullptr)
        return std::nullopt;
    return std::string(record_->ppd->modelname);
}

std::optional<std::string> PrinterDescription::shortNickname() const {
    return record_->ppd == nullptr ? std::nullopt : textOrNone(record_->ppd->shortnickname);
}

CustomSizeLimits PrinterDescription::customSizeLimits() const {
    if (record_->ppd == nullptr)
        return {};
    const ppd_file_t& ppd = *record_->ppd;
    return {.minWidth = ppd.custom_min[0],
            .minHeight = ppd.custom_min[1],
            .maxWidth = ppd.custom_max[0],
            .maxHeight = ppd.custom_max[1]};
}

bool PrinterDescription::allowsCustomSizes() const {
    return record_->ppd != nullptr && record_->ppd->variable_sizes != 0;
}

std::optional<PageSize> PrinterDescription::pageSize(std::string_view keyword) const {
    if (const auto size = customSize(keyword); size && allowsCustomSizes())
        return PageSize{.keyword = std::string(keyword), .width = size->first, .height = size->second};
    if (record_->ppd == nullptr)
        return std::nullopt;
    const ppd_file_t& ppd = *record_->ppd;
    for (int index = 0; index < ppd.num_sizes; ++index)
        if (keyword == ppd.sizes[index].name && keyword != kCustomChoice)
            return PageSize{.keyword = std::string(keyword),
                            .width = static_cast<double>(ppd.sizes[index].width),
                            .height = static_cast<double>(ppd.sizes[index].length)};
    return std::nullopt;
}

void PrinterDescription::markDefaults() {
    if (record_->ppd != nullptr)
        ppdMarkDefaults(record_->ppd.get());
    record_->customPageSize.clear();
}

bool PrinterDescription::mark(std::string_view option, std::string_view choice) {
    const Option* own = this->option(option);
    if (own == nullptr)
        return false;
    const std::string name(choice);
    if (option == kPageSizeOption && choice.starts_with(kCustomPrefix)) {
        const auto size = customSize(choice);
        const CustomSizeLimits limits = customSizeLimits();
        if (!size || !allowsCustomSizes() || size->first < static_cast<double>(limits.minWidth) ||
            size->first > static_cast<double>(limits.maxWidth) ||
            size->second < static_cast<double>(limits.minHeight) ||
            size->second > static_cast<double>(limits.maxHeight))
            return false;
        ppdMarkOption(record_->ppd.get(), own->keyword.c_str(), name.c_str());
        record_->customPageSize = name;
        return true;
    }
    // libcups finds choices without case, and would mark the first of two that differ in nothing else.
    const ppd_choice_t* found = ppdFindChoice(record_->ppdOption(option), name.c_str());
    if (own->choice(choice) == nullptr || found == nullptr || name != found->choice)
        return false;
    // Marking counts all conflicts, which costs more than all else; a choice that is marked needs none of it, save for
    // the options whose marking also unmarks others.
    if (!marksOthersToo(option) && record_->markedChoice(option) == choice)
        return true;
    ppdMarkOption(record_->ppd.get(), own->keyword.c_str(), name.c_str());
    if (option == kPageSizeOption || option == kPageRegionOption)
        record_->customPageSize.clear();
    return record_->markedChoice(option) == choice;
}

bool PrinterDescription::unmark(std::string_view option) {
    ppd_option_t* own = record_->ppdOption(option);
    if (own == nullptr)
        return false;
    // libcups has no call for it; what it looks at is the list of marked choices in its record.
    for (int index = 0; index < own->num_choices; ++index)
        own->choices[index].marked = 0;
    if (ppd_choice_t* marked = ppdFindMarkedChoice(record_->ppd.get(), own->keyword))
        cupsArrayRemove(record_->ppd->marked, marked);
    if (option == kPageSizeOption)
        record_->customPageSize.clear();
    return true;
}

std::vector<std::pair<std::string, std::optional<std::string>>> PrinterDescription::marks() const {
    std::vector<std::pair<std::string, std::optional<std::string>>> result;
    for (const Option& option : record_->options)
        result.emplace_back(option.keyword, record_->markedChoice(option.keyword));
    return result;
}

std::vector<MarkedChoice> PrinterDescription::conflictsOf(std::string_view option, std::string_view choice) const {
    const auto covers = [](const ConstraintTable::Term& term, std::string_view given) {
        return term.covers(given.starts_with(kCustomPrefix) ? kCustomChoice : given);
    };
    std::vector<MarkedChoice> conflicts;
    const ConstraintTable& constraints = record_->readConstraints();
    for (const std::uint32_t number : constraints.withOption(option)) {
        const ConstraintTable::Constraint constraint = constraints.constraint(number);
        const bool concerned = std::ranges::all_of(constraint, [&](const ConstraintTable::Term& term) {
            return term.option != option || covers(term, choice);
        });
        if (!concerned)
            continue; // most: they are about another choice
        std::vector<MarkedChoice> others;
        const bool active = std::ranges::all_of(constraint, [&](const ConstraintTable::Term& term) {
            if (term.option == option)
                return true;
            const auto marked = record_->markedChoice(term.option);
            if (marked)
                others.emplace_back(std::string(term.option), *marked);
            return marked && covers(term, *marked);
        });
        if (!active)
            continue;
        for (MarkedChoice& other : others)
            if (std::ranges::find(conflicts, other) == conflicts.end())
                conflicts.push_back(std::move(other));
    }
    return conflicts;
}

} // namespace printing
