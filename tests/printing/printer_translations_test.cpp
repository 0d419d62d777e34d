#include "tests/printing/ppd_text.h"

#include <clocale>
#include <cstdlib>
#include <gtest/gtest.h>

namespace printing {
namespace {

using namespace printing_tests;
using Words = std::vector<std::string>;

constexpr const char* kMediaInJapanese = "\xE7\x94\xA8\xE7\xB4\x99";
constexpr const char* kPlainInJapanese = "\xE6\x99\xAE\xE9\x80\x9A";

// A printer with English texts of its own and translations into Japanese and German.
std::string translatedPpd(const std::string& languages = "ja de") {
    return ppdWith("*cupsLanguages: \"" + languages + "\"\n" +
                   option("CVMediaType/Media", "Plain", {"Plain/Plain Paper", "Glossy/Glossy Paper"}) +
                   "*ja.Translation CVMediaType/" + kMediaInJapanese + ": \"\"\n" + "*ja.CVMediaType Plain/" +
                   kPlainInJapanese + ": \"\"\n" +
                   "*de.Translation CVMediaType/Papier: \"\"\n*de.CVMediaType Plain/Normal: \"\"\n"
                   "*de.CVMediaType Glossy/Gl<C3A4>nzend: \"\"\n");
}

std::string mediaTextIn(const std::string& ppd, const Words& languages) {
    return openPrinter(ppd, languages)->option("CVMediaType")->text;
}

TEST(PpdTranslations, ComeInTheFirstLanguageThatThePpdHas) {
    const std::pair<Words, const char*> kRows[] = {
        {{"ja"}, kMediaInJapanese},
        {{"de"}, "Papier"},
        {{"de", "ja"}, "Papier"},
        {{"ja", "de"}, kMediaInJapanese},
        {{"fr", "de"}, "Papier"},
        {{"en"}, "Media"},
        {{"en", "ja"}, "Media"},
        {{"fr"}, "Media"},
        {{}, "Media"},
        {{"ja_JP"}, kMediaInJapanese},
        {{"ja-JP"}, kMediaInJapanese},
    };
    for (const auto& [languages, text] : kRows) {
        SCOPED_TRACE(testing::PrintToString(languages));
        EXPECT_EQ(mediaTextIn(translatedPpd(), languages), text);
    }
}

TEST(PpdTranslations, ChoicesAreTranslatedWhereThePpdHasATranslation) {
    const auto printer = openPrinter(translatedPpd(), {"ja"});
    EXPECT_EQ(printer->option("CVMediaType")->choice("Plain")->text, kPlainInJapanese);
    EXPECT_EQ(printer->option("CVMediaType")->choice("Glossy")->text, "Glossy Paper");
}

TEST(PpdTranslations, AreCleanTexts) {
    const auto printer = openPrinter(translatedPpd() + "*ja.CVMediaType Glossy/<0A><E5>G<1B>loss: \"\"\n", {"ja"});
    EXPECT_EQ(printer->option("CVMediaType")->choice("Glossy")->text, "Gloss");
}

TEST(PpdTranslations, AnEmptyTranslationGivesWayToThePpdsOwnText) {
    const auto printer = openPrinter(translatedPpd() + "*ja.CVMediaType Glossy/<0A>: \"\"\n", {"ja"});
    EXPECT_EQ(printer->option("CVMediaType")->choice("Glossy")->text, "Glossy Paper");
}

TEST(PpdTranslations, LanguagesWithARegionAreFoundByTheirCode) {
    const std::string ppd = ppdWith("*cupsLanguages: \"pt_BR\"\n" + option("CVMediaType/Media", "Plain", {"Plain"}) +
                                    "*pt_BR.Translation CVMediaType/Papel: \"\"\n");
    EXPECT_EQ(mediaTextIn(ppd, {"pt"}), "Papel");
}

TEST(PpdTranslations, TheVeryRegionComesBeforeAnotherOfItsLanguage) {
    const std::string ppd =
        ppdWith("*cupsLanguages: \"zh_CN zh_TW\"\n" + option("CVMediaType/Media", "Plain", {"Plain"}) +
                "*zh_CN.Translation CVMediaType/CN: \"\"\n*zh_TW.Translation CVMediaType/TW: \"\"\n");
    EXPECT_EQ(mediaTextIn(ppd, {"zh_TW"}), "TW");
    EXPECT_EQ(mediaTextIn(ppd, {"zh-TW"}), "TW");
    EXPECT_EQ(mediaTextIn(ppd, {"zh_CN"}), "CN");
}

TEST(PpdTranslations, ChineseOfTheOtherScriptIsNotTaken) {
    const std::string ppd = ppdWith("*cupsLanguages: \"zh_CN\"\n" + option("CVMediaType/Media", "Plain", {"Plain"}) +
                                    "*zh_CN.Translation CVMediaType/CN: \"\"\n");
    EXPECT_EQ(mediaTextIn(ppd, {"zh_CN"}), "CN");
    EXPECT_EQ(mediaTextIn(ppd, {"zh-Hans"}), "CN");
    EXPECT_EQ(mediaTextIn(ppd, {"zh_TW"}), "Media");
}

TEST(PpdTranslations, EnglishTranslationsServeEnglishUsers) {
    std::string ppd = ppdWith("*cupsLanguages: \"en\"\n" + option("CVMediaType/Papier", "Plain", {"Plain"}) +
                              "*en.Translation CVMediaType/Media: \"\"\n");
    ppd.replace(ppd.find("English"), 7, "German");
    EXPECT_EQ(mediaTextIn(ppd, {"en"}), "Media");
}

TEST(PpdTranslations, ALongKeywordIsTranslatedToo) {
    const std::string keyword = "CVVerticalLineAlignmentA3B4Ledger"; // 33 characters
    const auto printer =
        openPrinter(ppdWith("*cupsLanguages: \"ja\"\n" + option(keyword + "/Align", "OFF", {"OFF/Off", "ON"}) +
                            "*ja.Translation " + keyword + "/" + kMediaInJapanese + ": \"\"\n" + "*ja." + keyword +
                            " OFF/" + kPlainInJapanese + ": \"\"\n"),
                    {"ja"});
    EXPECT_EQ(printer->option(keyword)->text, kMediaInJapanese);
    EXPECT_EQ(printer->option(keyword)->choice("OFF")->text, kPlainInJapanese);
}

TEST(PpdTranslations, TwoSessionsOfOneProcessHaveTheirOwnLanguages) {
    const auto japanese = openPrinter(translatedPpd(), {"ja"}), english = openPrinter(translatedPpd(), {"en"});
    EXPECT_EQ(japanese->option("CVMediaType")->text, kMediaInJapanese);
    EXPECT_EQ(english->option("CVMediaType")->text, "Media");
}

TEST(PpdTranslations, AreNoOptionsOfTheirOwn) {
    const auto printer = openPrinter(translatedPpd(), {"ja"});
    EXPECT_EQ(printer->options().size(), 1u);
}

// The locale is read once in a process, so each of them gets a process of its own that has read none yet.
TEST(PpdTranslationsDeathTest, DoNotDependOnTheProcessesLocale) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    for (const char* locale : {"C", "ja_JP.UTF-8", "de_DE.UTF-8", "en_US.UTF-8", "POSIX"}) {
        SCOPED_TRACE(locale);
        EXPECT_EXIT(
            {
                for (const char* name : {"LC_ALL", "LC_MESSAGES", "LANG", "LANGUAGE"})
                    ::setenv(name, locale, 1);
                std::setlocale(LC_ALL, "");
                const bool own = mediaTextIn(translatedPpd(), {"en"}) == "Media";
                const bool japanese = mediaTextIn(translatedPpd(), {"ja"}) == kMediaInJapanese;
                const bool german = mediaTextIn(translatedPpd(), {"de"}) == "Papier";
                std::_Exit(own && japanese && german ? 0 : 1);
            },
            testing::ExitedWithCode(0), "");
    }
}

} // namespace
} // namespace printing
