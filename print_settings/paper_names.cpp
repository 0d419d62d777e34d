#include "print_settings/paper_names.h"

#include <algorithm>
#include <array>

namespace paper_names {
namespace {

constexpr std::array<std::string_view, 3> kPlainPapers = {"Plain", "PlainDuplex", "HagakiAtena"};

constexpr std::array<std::string_view, 4> kPostcards = {"Postcard", "Postcard.Fullbleed", "CvHagaki_B",
                                                        "DoublePostcardRotated"};

// Compared with base names, the entries with an extension are met by keywords with two extensions only.
constexpr std::array<std::string_view, 16> kTray2Papers = {
    "A3",    "Tabloid",   "B4", "A3.LongGrain", "A3.ShortGrain", "Tabloid.ShortGrain", "B4.ShortGrain", "A4", "Letter",
    "Legal", "Executive", "B5", "CvA3",         "CvA3_S",        "CvLedger_S",         "CvB4_S"};

constexpr std::array<std::string_view, 4> kLandscapePapers = {"A4", "Letter", "Executive", "B5"};

constexpr std::array<std::string_view, 17> kPortraitPapers = {"A5",
                                                              "A6",
                                                              "A6.Fullbleed",
                                                              "Postcard",
                                                              "Postcard.Fullbleed",
                                                              "DoublePostcardRotated",
                                                              "4x6",
                                                              "4x6.Fullbleed",
                                                              "5x8",
                                                              "5x8.Fullbleed",
                                                              "3.5x5",
                                                              "3.5x5.Fullbleed",
                                                              "5x7",
                                                              "5x7.Fullbleed",
                                                              "Env10",
                                                              "EnvDL",
                                                              "EnvMonarch"};

constexpr std::array<std::string_view, 5> kManualFeedPapers = {"A3", "B4", "Tabloid", "Legal", "EnvC5"};

constexpr std::array<std::string_view, 4> kJapaneseEnvelopes = {"EnvYou4", "EnvChou3", "EnvChou4", "EnvKaku2"};

bool isOneOf(Keyword keyword, std::span<const std::string_view> list) {
    return keyword && std::ranges::find(list, *keyword) != list.end();
}

bool hasBaseNameIn(Keyword keyword, std::span<const std::string_view> list) {
    return keyword && isOneOf(keyword->substr(0, keyword->rfind('.')), list);
}

// The operations with the text as the receiver.
template <auto Predicate>
framework::MessageResult sendPredicate(const framework::TextReceiver& receiver,
                                       std::span<const framework::MessageValue> arguments) {
    return framework::callWithArguments<bool>(arguments, [&] { return Predicate(receiver.text); });
}

framework::MessageResult sendIsBorderless(const framework::TextReceiver& receiver,
                                          std::span<const framework::MessageValue> arguments) {
    return framework::callWithArguments<bool, std::optional<std::string>>(
        arguments,
        [&](const std::optional<std::string>& size) { return isBorderelessForPaperSize(receiver.text, size); });
}

framework::MessageResult sendHeight(const framework::TextReceiver& receiver,
                                    std::span<const framework::MessageValue> arguments) {
    return framework::callWithArguments<double, toolkit::Font, double>(
        arguments, [&](const toolkit::Font& font, double width) {
            return heightForSpecifiedFontSpecifiedWidth(receiver.text, font, width, receiver.measurer);
        });
}

constexpr framework::TextMessage kMessages[] = {
    {"isKindOfPlainPaper", sendPredicate<isKindOfPlainPaper>},
    {"isKindOfPostcardPaperSize", sendPredicate<isKindOfPostcardPaperSize>},
    {"allowTray2PaperSize", sendPredicate<allowTray2PaperSize>},
    {"isKindOfLandscapePaper", sendPredicate<isKindOfLandscapePaper>},
    {"isKindOfPortraitPaper", sendPredicate<isKindOfPortraitPaper>},
    {"isKindOfManualFeedPaper", sendPredicate<isKindOfManualFeedPaper>},
    {"isKindOfJPEnvelope", sendPredicate<isKindOfJPEnvelope>},
    {"isBorderelessForPaperSize:", sendIsBorderless},
    {"heightForSpecifiedFont:specifiedWidth:", sendHeight},
};

} // namespace

bool isKindOfPlainPaper(Keyword mediaType) {
    return isOneOf(mediaType, kPlainPapers);
}

bool isKindOfPostcardPaperSize(Keyword paperSize) {
    return isOneOf(paperSize, kPostcards);
}

bool allowTray2PaperSize(Keyword paperSize) {
    return hasBaseNameIn(paperSize, kTray2Papers);
}

bool isKindOfLandscapePaper(Keyword paperSize) {
    return hasBaseNameIn(paperSize, kLandscapePapers);
}

bool isKindOfPortraitPaper(Keyword paperSize) {
    return isOneOf(paperSize, kPortraitPapers);
}

bool isKindOfManualFeedPaper(Keyword paperSize) {
    return hasBaseNameIn(paperSize, kManualFeedPapers);
}

bool isKindOfJPEnvelope(Keyword paperSize) {
    return hasBaseNameIn(paperSize, kJapaneseEnvelopes);
}

bool isBorderelessForPaperSize(Keyword paperSize, Keyword baseSize) {
    if (!paperSize || !baseSize)
        return false;
    const std::string base(*baseSize);
    return paperSize->starts_with(base + ".Fullbleed") || paperSize->starts_with("Cv" + base + "_B");
}

double heightForSpecifiedFontSpecifiedWidth(Keyword text, const toolkit::Font& font, double width,
                                            const toolkit::TextMeasurer& measurer) {
    return text ? measurer.heightOfText(*text, font, width) : 0;
}

bool hasPrefix(Keyword text, std::string_view prefix) {
    return text && text->starts_with(prefix);
}

std::span<const framework::TextMessage> messages() {
    return kMessages;
}

} // namespace paper_names
