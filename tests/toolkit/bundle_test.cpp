#include "tests/toolkit/bundle_folder.h"
#include "tests/toolkit/message_catalogue.h"

#include <gmock/gmock.h>

namespace toolkit {
namespace {

using namespace toolkit_tests;
using testing::HasSubstr;

class BundleOf : public testing::Test {
protected:
    [[nodiscard]] std::string textIn(std::vector<std::string> languages, std::string_view key) const {
        return folder.open(inLanguages(std::move(languages)))->localizedString(key);
    }
    void writeTwoLanguages() const {
        folder.writeTexts("en", {{"Print", "Print it"}, {"English", "In English"}});
        folder.writeTexts("ja", {{"Print", "\xE5\x8D\xB0\xE5\x88\xB7"}, {"Japanese", "\xE6\x97\xA5"}});
    }
    BundleFolder folder;
};

TEST_F(BundleOf, AMissingFolderIsNamed) {
    std::string error;
    EXPECT_EQ(Bundle::open(folder.path() / "absent.plugin", {}, error), nullptr);
    EXPECT_THAT(error, HasSubstr("absent.plugin"));
}

TEST_F(BundleOf, AFileIsNoBundle) {
    std::string error;
    EXPECT_EQ(Bundle::open(folder.path() / "Info.json", {}, error), nullptr);
    EXPECT_NE(error, "");
}

TEST_F(BundleOf, AnUnreadableInfoDictionaryIsReported) {
    for (const char* info : {"", "{", "[]", "\"text\"", "null", "{\"a\":1}x"}) {
        SCOPED_TRACE(info);
        folder.writeInfo(info);
        std::string error;
        EXPECT_EQ(Bundle::open(folder.path(), {}, error), nullptr);
        EXPECT_THAT(error, HasSubstr("Panels.plugin"));
    }
}

TEST_F(BundleOf, AMissingInfoDictionaryIsReported) {
    std::filesystem::remove(folder.path() / "Info.json");
    std::string error;
    EXPECT_EQ(Bundle::open(folder.path(), {}, error), nullptr);
    EXPECT_THAT(error, HasSubstr("Info.json"));
}

TEST_F(BundleOf, GivesItsInfoDictionary) {
    folder.writeInfo(R"({"CFBundleName":"Panels","Keys":["a","b"],"Number":7})");
    const ValueMap info = folder.open()->infoDictionary();
    EXPECT_EQ(info.size(), 3u);
    EXPECT_EQ(valueInMap(info, "CFBundleName"), Value("Panels"));
    EXPECT_EQ(valueInMap(info, "Keys"), Value(ValueList{Value("a"), Value("b")}));
    EXPECT_EQ(valueInMap(info, "Number"), Value(7));
}

TEST_F(BundleOf, ADialogMayReplaceAddAndRemoveInfoEntries) {
    folder.writeInfo(R"({"Kept":"k","Replaced":"old","Removed":"r"})");
    BundleView view;
    view.info = {{"Replaced", Value("new")}, {"Added", Value(1)}};
    view.removedInfo = {"Removed", "NeverThere"};
    const ValueMap info = folder.open(view)->infoDictionary();
    EXPECT_EQ(info, (ValueMap{{"Kept", Value("k")}, {"Replaced", Value("new")}, {"Added", Value(1)}}));
}

TEST_F(BundleOf, TheIdentifierIsAText) {
    folder.writeInfo(R"({"CFBundleIdentifier":"com.corvane.test"})");
    EXPECT_EQ(folder.open()->identifier(), "com.corvane.test");
    folder.writeInfo(R"({"CFBundleIdentifier":7})");
    EXPECT_EQ(folder.open()->identifier(), std::nullopt);
    folder.writeInfo("{}");
    EXPECT_EQ(folder.open()->identifier(), std::nullopt);
}

TEST_F(BundleOf, ATextComesInTheFirstLanguageThatHasIt) {
    writeTwoLanguages();
    EXPECT_EQ(textIn({"en", "ja"}, "Print"), "Print it");
    EXPECT_EQ(textIn({"ja", "en"}, "Print"), "\xE5\x8D\xB0\xE5\x88\xB7");
    EXPECT_EQ(textIn({"fr", "ja"}, "Print"), "\xE5\x8D\xB0\xE5\x88\xB7");
    EXPECT_EQ(textIn({"en", "ja"}, "Japanese"), "\xE6\x97\xA5");
}

TEST_F(BundleOf, EnglishComesAfterTheUsersLanguages) {
    writeTwoLanguages();
    EXPECT_EQ(textIn({"ja"}, "English"), "In English");
    EXPECT_EQ(textIn({"fr"}, "Print"), "Print it");
    EXPECT_EQ(textIn({}, "Print"), "Print it");
}

TEST_F(BundleOf, ATextThatNoLanguageHasIsItsKey) {
    writeTwoLanguages();
    for (const char* key : {"No Such Key", "print", "", "\xE5\x8D\xB0"}) {
        SCOPED_TRACE(key);
        EXPECT_EQ(textIn({"ja", "en"}, key), key);
    }
}

TEST_F(BundleOf, ALocalizedTextKnowsItsKey) {
    writeTwoLanguages();
    EXPECT_EQ(folder.open()->localizedText("Print"), (LocalizedText{.key = "Print", .text = "Print it"}));
}

TEST_F(BundleOf, LanguageTagsFindTheirLanguage) {
    writeTwoLanguages();
    for (const char* tag : {"ja-JP", "ja_JP.UTF-8", "JA"}) {
        SCOPED_TRACE(tag);
        EXPECT_EQ(textIn({tag}, "Print"), "\xE5\x8D\xB0\xE5\x88\xB7");
    }
}

TEST_F(BundleOf, HostileLanguagesArePassedOver) {
    writeTwoLanguages();
    for (const char* language : {"../ja", "/", "..", "", "C", "ja/../en"}) {
        SCOPED_TRACE(language);
        EXPECT_EQ(textIn({language}, "Print"), "Print it");
    }
}

TEST_F(BundleOf, AFolderWithATrailingSlashHasItsTextsToo) {
    writeTwoLanguages();
    std::string error;
    const auto bundle = Bundle::open(folder.path() / "", inLanguages({"en"}), error);
    ASSERT_NE(bundle, nullptr) << error;
    EXPECT_EQ(bundle->localizedString("Print"), "Print it");
}

TEST_F(BundleOf, WithoutLocalizingEveryTextStaysItsKey) {
    writeTwoLanguages();
    BundleView view = inLanguages({"ja"});
    view.localize = false;
    view.strings = {{"Model", "Modell"}};
    const auto bundle = folder.open(view);
    EXPECT_EQ(bundle->localizedString("Print"), "Print");
    EXPECT_EQ(bundle->localizedString("Model"), "Modell");
}

TEST_F(BundleOf, GivenTextsStandForSingleKeys) {
    writeTwoLanguages();
    BundleView view = inLanguages({"ja"});
    view.strings = {{"Print", "Mine"}, {"Empty", ""}};
    const auto bundle = folder.open(view);
    EXPECT_EQ(bundle->localizedText("Print"), (LocalizedText{.key = "Print", .text = "Mine"}));
    EXPECT_EQ(bundle->localizedString("Empty"), "");
    EXPECT_EQ(bundle->localizedString("Japanese"), "\xE6\x97\xA5");
}

TEST_F(BundleOf, TwoViewsOfOneBundleHaveTheirOwnLanguages) {
    writeTwoLanguages();
    const auto english = folder.open(inLanguages({"en"})), japanese = folder.open(inLanguages({"ja"}));
    EXPECT_EQ(english->localizedString("Print"), "Print it");
    EXPECT_EQ(japanese->localizedString("Print"), "\xE5\x8D\xB0\xE5\x88\xB7");
    EXPECT_EQ(english->localizedString("Print"), "Print it");
}

TEST_F(BundleOf, ABrokenCatalogueIsPassedOver) {
    const std::string sound = messageCatalogue({{"Print", "Drucken"}});
    std::string wildTable = sound;
    wildTable.replace(12, 4, "\xF0\xFF\xFF\xFF");
    const std::string broken[] = {"",
                                  "x",
                                  "not a catalogue at all, but long enough to be one",
                                  sound.substr(0, 20),
                                  sound.substr(0, 40),
                                  wildTable,
                                  std::string(1000, '\0')};
    folder.writeTexts("en", {{"Print", "Print it"}});
    for (const std::string& bytes : broken) {
        SCOPED_TRACE(testing::PrintToString(bytes));
        folder.writeResource("de/Panels.mo", bytes);
        EXPECT_EQ(textIn({"de"}, "Print"), "Print it");
    }
}

TEST_F(BundleOf, ACatalogueThatWasCutOffInItsTextsIsPassedOver) {
    const std::string sound = messageCatalogue({{"Print", "Drucken"}, {"Quality", "Druckqualit\xC3\xA4t"}});
    folder.writeTexts("en", {{"Print", "Print it"}, {"Quality", "Print quality"}});
    folder.writeResource("de/Panels.mo", sound.substr(0, sound.size() - 8));
    EXPECT_EQ(textIn({"de"}, "Quality"), "Print quality");
}

TEST_F(BundleOf, ACatalogueWithAWildHashTableIsPassedOver) {
    std::string wild = messageCatalogue({{"Print", "Drucken"}});
    wild.replace(24, 4, "\xF0\xFF\xFF\x7F"); // where the hash table begins
    folder.writeTexts("en", {{"Print", "Print it"}});
    folder.writeResource("de/Panels.mo", wild);
    EXPECT_EQ(textIn({"de"}, "Print"), "Print it");
}

TEST_F(BundleOf, AFolderInACataloguesPlaceIsPassedOver) {
    std::filesystem::create_directories(folder.path() / "Resources/de/Panels.mo");
    folder.writeTexts("en", {{"Print", "Print it"}});
    EXPECT_EQ(textIn({"de"}, "Print"), "Print it");
}

TEST_F(BundleOf, AResourceIsFoundByNameAndType) {
    folder.writeResource("Plain.tiff", "picture");
    const auto bundle = folder.open();
    const auto* path = bundle->pathForResource("Plain", "tiff");
    ASSERT_TRUE(path);
    EXPECT_EQ(test_support::contentsOf(*path), "picture");
    EXPECT_EQ(folder.open()->pathForResource("Plain", "pdf"), nullptr);
    EXPECT_EQ(folder.open()->pathForResource("plain", "tiff"), nullptr);
    EXPECT_EQ(folder.open()->pathForResource("Glossy", "tiff"), nullptr);
}

TEST_F(BundleOf, ATypeInCapitalsFindsAFileInSmallLetters) {
    folder.writeResource("Envelope.bmp", "picture");
    const auto bundle = folder.open();
    const auto* path = bundle->pathForResource("Envelope", "BMP");
    ASSERT_TRUE(path);
    EXPECT_EQ(path->filename(), "Envelope.bmp");
}

TEST_F(BundleOf, AFileOfTheVeryTypeComesFirst) {
    folder.writeResource("Envelope.bmp", "small");
    folder.writeResource("Envelope.BMP", "capitals");
    const auto bundle = folder.open();
    EXPECT_EQ(bundle->pathForResource("Envelope", "BMP")->filename(), "Envelope.BMP");
}

TEST_F(BundleOf, HostileNamesNameNoResource) {
    folder.writeResource("en/Secret.tiff", "picture");
    std::filesystem::create_directories(folder.path() / "Resources/Folder.tiff");
    folder.writeResource("Plain.tiff", "picture");
    folder.writeResource(".tiff", "picture");
    const std::string_view kNames[] = {
        "",       "en/Secret", "../Resources/Plain",           "/Plain",
        "Folder", "..",        std::string_view("Plain\0", 6), std::string_view("Plain.tiff\0", 11)};
    for (const std::string_view name : kNames) {
        SCOPED_TRACE(name);
        EXPECT_EQ(folder.open()->pathForResource(name, "tiff"), nullptr);
    }
}

TEST_F(BundleOf, ItsPathIsAbsolute) {
    EXPECT_TRUE(folder.open()->path().is_absolute());
    EXPECT_TRUE(std::filesystem::equivalent(folder.open()->path(), folder.path()));
}

} // namespace
} // namespace toolkit
