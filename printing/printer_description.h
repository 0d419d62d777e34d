#pragma once

#include "printing/export.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace printing {

/// A choice of an option. Texts are UTF-8 without control characters, in the session's language where the PPD has it.
struct Choice {
    std::string keyword; ///< as the PPD and the job name it
    std::string text;    ///< as the user reads it
};

/// An option of the PPD, with its choices in the PPD's order.
struct CV_PRINTING_EXPORT Option {
    std::string keyword;         ///< as the PPD and the job name it
    std::string text;            ///< as the user reads it
    std::string defaultChoice;   ///< as the PPD declares it: empty, or no choice at all, where the PPD is odd
    std::vector<Choice> choices; ///< in the PPD's order

    /// Null where the option has no such choice. Keywords are compared exactly.
    [[nodiscard]] const Choice* choice(std::string_view keyword) const;
};

/// The limits of custom page sizes in points, as single-precision numbers; all 0 where the PPD allows none.
struct CustomSizeLimits {
    float minWidth = 0, minHeight = 0, maxWidth = 0, maxHeight = 0; ///< of sheets
};

/// A page size of the PPD, in points.
struct PageSize {
    std::string keyword;          ///< as the PPD and the job name it
    double width = 0, height = 0; ///< points
};

/// An option and one of its choices.
using MarkedChoice = std::pair<std::string, std::string>;

/// An opened PPD and the choices that are marked in it. Owns the libcups record. Use from one thread.
/// Keywords are compared exactly, with case. What the printer lacks is an empty answer, never an error.
class CV_PRINTING_EXPORT PrinterDescription {
public:
    /// The largest PPD that is opened.
    static constexpr std::size_t kLargestFile = 4 << 20; // bytes

    /// The text of a regular file of at most 4 MB, as openText() takes it; nullopt and an `error` like openFile()'s.
    [[nodiscard]] static std::optional<std::string> readFile(const std::string& path, std::string& error);
    /// Opens a regular file of at most 4 MB. Texts are given in the first of these languages that the PPD has
    /// translations for. Nothing is marked yet. Null where it cannot be used; `error` then says what, where and why.
    [[nodiscard]] static std::unique_ptr<PrinterDescription>
    openFile(const std::string& path, const std::vector<std::string>& languages, std::string& error);
    /// The same for the text of a PPD.
    [[nodiscard]] static std::unique_ptr<PrinterDescription>
    openText(std::string_view text, const std::vector<std::string>& languages, std::string& error);
    /// What a PPD's text says in its line "*ShortNickName", for a list of printers of which none is opened yet. nullopt
    /// where it has no such line, or one without a quoted text.
    [[nodiscard]] static std::optional<std::string> shortNicknameIn(std::string_view text);
    /// A printer without any option.
    PrinterDescription();
    ~PrinterDescription();
    PrinterDescription(const PrinterDescription&) = delete;
    PrinterDescription& operator=(const PrinterDescription&) = delete;

    /// Null where this printer has no such option. Valid as long as this object.
    [[nodiscard]] const Option* option(std::string_view keyword) const;
    /// Every option, in the order of the PPD's groups.
    [[nodiscard]] const std::vector<Option>& options() const;

    /// The keyword of the marked choice; nullopt where the option is missing or nothing is marked.
    [[nodiscard]] std::optional<std::string> markedChoice(std::string_view option) const;
    /// Whether the option's default choice is the one that is marked.
    [[nodiscard]] bool isDefaultMarked(const Option& option) const;
    [[nodiscard]] bool hasAttribute(std::string_view name) const; ///< with any value

    [[nodiscard]] int modelNumber() const; ///< 0 where the PPD gives none
    /// The bytes of the attribute, not cleaned: for rules, not to be shown. nullopt where the PPD gives none.
    [[nodiscard]] std::optional<std::string> modelName() const;
    /// nullopt where the PPD gives none.
    [[nodiscard]] std::optional<std::string> shortNickname() const;
    [[nodiscard]] CustomSizeLimits customSizeLimits() const; ///< of the sheet
    [[nodiscard]] bool allowsCustomSizes() const;            ///< whether "Custom.WxH" can be marked
    /// nullopt where the PPD has no such size.
    [[nodiscard]] std::optional<PageSize> pageSize(std::string_view keyword) const;

    void markDefaults(); ///< every option's default, where it is a choice
    /// Marks the choice. Answers false, and changes nothing, where the option or the choice is unknown. A page size
    /// "Custom.WxH" must lie within the limits.
    bool mark(std::string_view option, std::string_view choice);
    /// Leaves the option with nothing marked; false where it is unknown.
    bool unmark(std::string_view option);
    /// Every option with its marked choice, nullopt where nothing is marked.
    [[nodiscard]] std::vector<std::pair<std::string, std::optional<std::string>>> marks() const;

    /// The marked choices that the PPD's constraints exclude together with this one: those of the constraints of which
    /// it is itself a part.
    [[nodiscard]] std::vector<MarkedChoice> conflictsOf(std::string_view option, std::string_view choice) const;

private:
    struct Record;
    std::unique_ptr<Record> record_;
};

} // namespace printing
