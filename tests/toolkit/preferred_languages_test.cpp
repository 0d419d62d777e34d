#include "toolkit/preferred_languages.h"

#include "tests/toolkit/environment.h"

#include <gtest/gtest.h>

namespace toolkit {
namespace {

using toolkit_tests::EnvironmentVariable;
using Words = std::vector<std::string>;

TEST(PreferredLanguages, FollowTheEnvironment) {
    const struct {
        const char *language, *lcAll, *lcMessages, *lang;
        Words expected;
    } kRows[] = {
        // LANGUAGE            LC_ALL         LC_MESSAGES    LANG           languages
        {nullptr, nullptr, nullptr, nullptr, {"en"}},
        {nullptr, nullptr, nullptr, "ja_JP.UTF-8", {"ja"}},
        {nullptr, nullptr, "ja_JP.UTF-8", "de_DE.UTF-8", {"ja"}},
        {nullptr, "fr_FR.UTF-8", "ja_JP.UTF-8", "de_DE.UTF-8", {"fr"}},
        {nullptr, "", "", "de_DE", {"de"}},
        {"ja:de:en", nullptr, nullptr, "en_US.UTF-8", {"ja", "de", "en"}},
        {"ja_JP:de_AT.UTF-8@euro", nullptr, nullptr, "en_US.UTF-8", {"ja", "de"}},
        {"ja:ja_JP:de:ja", nullptr, nullptr, "en_US.UTF-8", {"ja", "de"}},
        {"::ja:", nullptr, nullptr, "en_US.UTF-8", {"ja"}},
        {"", nullptr, nullptr, "de_DE.UTF-8", {"de"}},
        {":", nullptr, nullptr, "de_DE.UTF-8", {"de"}},
        {"C:1:x", nullptr, nullptr, "de_DE.UTF-8", {"de"}},
        {"ja", "C", nullptr, "de_DE.UTF-8", {"en"}},
        {"ja", "POSIX", nullptr, "de_DE.UTF-8", {"en"}},
        {"ja", "C.UTF-8", nullptr, "de_DE.UTF-8", {"en"}},
        {"ja", nullptr, "C", "de_DE.UTF-8", {"en"}},
        {"ja", "de_DE.UTF-8", "C", "C", {"ja"}},
        {nullptr, "C", nullptr, "ja_JP.UTF-8", {"en"}},
        {nullptr, nullptr, nullptr, "nonsense", {"en"}},
        {nullptr, nullptr, nullptr, "../../etc", {"en"}},
    };
    for (const auto& row : kRows) {
        const EnvironmentVariable language("LANGUAGE", row.language), lcAll("LC_ALL", row.lcAll),
            lcMessages("LC_MESSAGES", row.lcMessages), lang("LANG", row.lang);
        SCOPED_TRACE(&row - kRows);
        EXPECT_EQ(preferredLanguages(), row.expected);
    }
}

TEST(PreferredLanguages, ALocaleBeginsWithItsLanguagesCode) {
    constexpr std::pair<const char*, const char*> kCodes[] = {
        {"ja", "ja"},          {"ja_JP", "ja"},   {"ja_JP.UTF-8", "ja"},
        {"ja-JP", "ja"},       {"de@euro", "de"}, {"de.UTF-8", "de"},
        {"JA_jp", "ja"},       {"haw_US", "haw"}, {"C", ""},
        {"C.UTF-8", ""},       {"POSIX", ""},     {"", ""},
        {"_JP", ""},           {"1a", ""},        {"j", ""},
        {"japanese", ""},      {"\xE6\x97", ""},  {"a/b", ""},
        {"de_AT.UTF-8", "de"},
    };
    for (const auto& [locale, code] : kCodes) {
        SCOPED_TRACE(locale);
        EXPECT_EQ(languageCode(locale), code);
    }
}

TEST(PreferredLanguages, ChineseIsToldApartByItsScript) {
    constexpr std::pair<const char*, const char*> kCodes[] = {
        {"zh", "zh_CN"},         {"zh_CN.UTF-8", "zh_CN"}, {"zh-CN", "zh_CN"},       {"zh-Hans", "zh_CN"},
        {"zh-Hans-HK", "zh_CN"}, {"zh_SG", "zh_CN"},       {"zh_TW.UTF-8", "zh_TW"}, {"zh-TW", "zh_TW"},
        {"zh-Hant", "zh_TW"},    {"zh_HK", "zh_TW"},       {"zh_MO", "zh_TW"},
    };
    for (const auto& [locale, code] : kCodes) {
        SCOPED_TRACE(locale);
        EXPECT_EQ(languageCode(locale), code);
    }
    const EnvironmentVariable language("LANGUAGE", nullptr), lcAll("LC_ALL", "zh_CN.UTF-8");
    EXPECT_EQ(preferredLanguages(), Words{"zh_CN"});
}

} // namespace
} // namespace toolkit
