#include "tests/reliability/second_reading.h"

#include <algorithm>
#include <map>
#include <string_view>

namespace second_reading {
namespace {

struct NamedPaper {
    std::string_view name;
    std::string_view withAnyEnding; ///< questions that look at the name without its last ending
    std::string_view asItStands;    ///< questions that look at the whole name
};

constexpr NamedPaper kPapers[] = {
    {"3.5x5", "", "p"},
    {"3.5x5.Fullbleed", "", "p"},
    {"4x6", "", "p"},
    {"4x6.Fullbleed", "", "p"},
    {"5x7", "", "p"},
    {"5x7.Fullbleed", "", "p"},
    {"5x8", "", "p"},
    {"5x8.Fullbleed", "", "p"},
    {"A3", "tm", ""},
    {"A3.LongGrain", "t", ""},
    {"A3.ShortGrain", "t", ""},
    {"A4", "tl", ""},
    {"A5", "", "p"},
    {"A6", "", "p"},
    {"A6.Fullbleed", "", "p"},
    {"B4", "tm", ""},
    {"B4.ShortGrain", "t", ""},
    {"B5", "tl", ""},
    {"CvA3", "t", ""},
    {"CvA3_S", "t", ""},
    {"CvB4_S", "t", ""},
    {"CvHagaki_B", "", "c"},
    {"CvLedger_S", "t", ""},
    {"DoublePostcardRotated", "", "cp"},
    {"Env10", "", "p"},
    {"EnvC5", "m", ""},
    {"EnvChou3", "e", ""},
    {"EnvChou4", "e", ""},
    {"EnvDL", "", "p"},
    {"EnvKaku2", "e", ""},
    {"EnvMonarch", "", "p"},
    {"EnvYou4", "e", ""},
    {"Executive", "tl", ""},
    {"Legal", "tm", ""},
    {"Letter", "tl", ""},
    {"Postcard", "", "cp"},
    {"Postcard.Fullbleed", "", "cp"},
    {"Tabloid", "tm", ""},
    {"Tabloid.ShortGrain", "t", ""},
};

constexpr std::string_view kEndings[] = {"",      ".",          ".Fullbleed",  ".LongGrain",
                                         "_B",    ".Rotated",   ".ShortGrain", ".ShortGrain.Fullbleed",
                                         "extra", ".fullbleed", " ",           ".Fullbleed.Fullbleed"};
constexpr std::string_view kBeginnings[] = {"", "Cv", "x", " "};

/// One cell a quality, in the one order that all media share: 'o' offered, '1' only for one-sided jobs, '.' not
/// offered.
struct MediaRow {
    std::string_view media;
    std::string_view cells;
    std::string_view usual;
};
constexpr std::string_view kQualities[] = {"PlainFast", "PlainNormal", "High", "Fast", "Normal", "Photo", "Best"};
constexpr MediaRow kMedia[] = {
    //                    F N H f n P B
    {"Plain", "oo1...o", "PlainNormal"},       {"PlainDuplex", "oo1...o", "PlainNormal"},
    {"HagakiAtena", "oo1...o", "PlainNormal"}, {"Inkjet", "....oo.", "Photo"},
    {"CorvaneQT20Matte", "....oo.", "Photo"},  {"CorvaneGlossy", "...o.oo", "Photo"},
    {"CorvaneGlossyR", "...o.oo", "Photo"},    {"Glossy", "...o.oo", "Photo"},
    {"HagakiUra", "...o.oo", "Photo"},         {"Transparencies", "....o..", "Normal"},
};
constexpr std::string_view kUnlistedMedia[] = {"PrintableDisc", "GlossyPrintableDisc", "PhotoPaper", "plain",
                                               "Plain ",        "PlainNormal",         "glossy",     ""};

const MediaRow* rowOfMedia(std::string_view media) {
    const auto* row = std::ranges::find(kMedia, media, &MediaRow::media);
    return row == std::end(kMedia) ? nullptr : row;
}

std::string withoutLastEnding(const std::string& keyword) {
    return keyword.substr(0, keyword.rfind('.'));
}

std::string_view questionsOfName(std::string_view name, std::string_view NamedPaper::*way) {
    const auto* paper = std::ranges::find(kPapers, name, &NamedPaper::name);
    return paper == std::end(kPapers) ? std::string_view() : paper->*way;
}

} // namespace

std::string questionsOfPaper(const std::string& keyword) {
    return std::string(questionsOfName(keyword, &NamedPaper::asItStands)) +
           std::string(questionsOfName(withoutLastEnding(keyword), &NamedPaper::withAnyEnding));
}

std::set<std::string> basesOfBorderlessPaper(const std::string& keyword) {
    std::set<std::string> bases;
    for (std::size_t at = 0; at < keyword.size(); ++at) {
        const std::string_view rest = std::string_view(keyword).substr(at);
        if (rest.starts_with(".Fullbleed"))
            bases.insert(keyword.substr(0, at));
        if (rest.starts_with("_B") && at >= 2 && keyword.starts_with("Cv"))
            bases.insert(keyword.substr(2, at - 2));
    }
    return bases;
}

std::vector<std::string> papersAndTheirLikes() {
    std::vector<std::string> names{"", "a4", "Hagaki", "UnsupportedPaper", "Custom.200x300"};
    for (const NamedPaper& paper : kPapers)
        for (const std::string_view beginning : kBeginnings)
            for (const std::string_view ending : kEndings)
                names.push_back(std::string(beginning) + std::string(paper.name) + std::string(ending));
    return names;
}

bool isPlainPaper(const std::string& media) {
    const MediaRow* row = rowOfMedia(media);
    return row != nullptr && row->usual == "PlainNormal";
}

std::vector<std::string> mediaAndTheirLikes() {
    std::vector<std::string> media;
    for (const MediaRow& row : kMedia)
        media.emplace_back(row.media);
    media.insert(media.end(), std::begin(kUnlistedMedia), std::end(kUnlistedMedia));
    return media;
}

std::vector<std::string> allowedQualities(const std::string& media, bool twoSided, bool disc) {
    if (disc)
        return media == "GlossyPrintableDisc" ? std::vector<std::string>{"DiscNormal"}
                                              : std::vector<std::string>{"DiscNormal", "DiscSlow"};
    const MediaRow* row = rowOfMedia(media);
    const std::string_view cells = row != nullptr ? row->cells : kMedia[0].cells;
    std::vector<std::string> allowed;
    for (std::size_t column = 0; column < cells.size(); ++column)
        if (cells[column] == 'o' || (cells[column] == '1' && !twoSided))
            allowed.emplace_back(kQualities[column]);
    return allowed;
}

std::string replacementOfMedia(const std::string& media, bool disc) {
    if (disc)
        return media == "PrintableDisc" || media == "GlossyPrintableDisc" ? "" : "PrintableDisc";
    return rowOfMedia(media) != nullptr ? "" : "Plain";
}

std::string defaultQuality(const std::string& media, const std::string& paper) {
    const MediaRow* row = rowOfMedia(media);
    if (isPlainPaper(media) && basesOfBorderlessPaper(paper).contains("A3"))
        return "Best";
    return row != nullptr ? std::string(row->usual) : "Photo";
}

char alertForSize(int width, int height, const SizeLimits& limits) {
    // Four bands of heights, one above the other; in each the widths from left to right.
    const auto w = static_cast<float>(width), h = static_cast<float>(height);
    const bool withinPrinter = limits.minWidth <= w && w <= limits.maxWidth;
    if (height < 360)
        return 'U';
    if (height <= 612)
        return withinPrinter ? 'P' : 'U';
    if (height <= 842) {
        if (width < 360)
            return limits.minWidth <= w ? 'M' : 'U';
        if (width <= 612)
            return 'L';                          // whatever the printer's limits
        return w <= limits.maxWidth ? 'M' : 'U'; // a wide sheet is not held to the least width
    }
    return withinPrinter && h <= limits.maxHeight ? 'M' : 'U';
}

} // namespace second_reading
