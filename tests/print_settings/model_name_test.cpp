#include "tests/print_settings/print_setting_panel.h"

namespace print_settings_tests {
namespace {

class ModelName : public PrintSettingPanel {
protected:
    // A panel for a printer of this model number and name (none: the PPD gives none).
    void makeForModel(int number, const std::optional<std::string>& name) {
        std::string ppd = tests::ppdWith("*cupsModelNumber: " + std::to_string(number) + "\n" +
                                         tests::ppdOption("CVReverse", "Reverse", "OFF", {"OFF/Off", "ON/On"}));
        ppd = replaced(std::move(ppd), "*ModelName: \"CORVANE-TEST\"\n",
                       name ? "*ModelName: \"" + *name + "\"\n" : std::string());
        openHost(ppd);
        makePanel();
    }
    bool isLater() { return panel->hasFlag(kImageModeLaterModel); }
};

TEST_F(ModelName, NumbersFromElevenOnAreLaterModelsWhateverTheName) {
    for (const int number : {11, 12, 100}) {
        SCOPED_TRACE(number);
        for (const std::optional<std::string>& name :
             {std::optional<std::string>("CORVANE-J430T"), std::optional<std::string>("CORVANE"),
              std::optional<std::string>()}) {
            SCOPED_TRACE(name.value_or("none"));
            makeForModel(number, name);
            EXPECT_TRUE(isLater());
        }
    }
}

TEST_F(ModelName, SmallerNumbersAreDecidedByTheName) {
    struct Row {
        std::string name;
        bool later;
    };
    const std::vector<Row> rows = {
        // no suffix, or more than one
        {"CORVANE", false},
        {"A-B-C", false},
        {"CORVANE-J710-X", false},
        {"CORVANE--J710", false},
        {"-", true}, // two empty parts: an empty suffix has no "C" in its fourth place
        {"MX-", true},
        // suffixes that begin with J: letters go from both ends
        {"MX-J", false},
        {"MX-JABC", false},
        {"MX-J710", true},
        {"MX-J710W", true},
        {"MX-J810", true},
        {"MX-J910", true},
        {"MX-J510", false},
        {"MX-J110", false},
        {"MX-J010", false},
        {"MX-J430T", false},
        {"MX-J610", true},
        {"MX-J690", true},
        {"MX-J670R", true},
        {"MX-J600", false},
        {"MX-J6X0", false},
        {"MX-J6", false},
        {"MX-J7", true},
        {"MX-JJJ710", true},
        {"MX-J5W1", false},
        {"MX-J51W1", true}, // "51W1": four characters, the letter inside stays
        {"MX-J1000", true},
        {"MX-J100W", false}, // "100"
        {"MX-J:10", false},
        // other suffixes: the fourth character counts first
        {"X-12", true},
        {"X-123", true},
        {"MX-1234", true},
        {"MX-123c", true},
        {"MX-12C3", true},
        {"MX-j710", true},
        {"MX-385CX", true},
        {"MX-380C", true},
        {"MX-390C", true},
        {"MX-370C", false},
        {"MX-3A0C", false},
        {"MX-3:0C", false},
        {"MX-410C", true},
        {"MX-400CN", true},
        {"MX-510C", true},
        {"MX-910C", true},
        {"MX-210C", false},
        {"MX-290C", false},
        {"MX-110C", false},
        {"MX-010C", false},
        {"MX-:10C", false},
        {"MX-ABCC", false},
        {"MX-XJ6510", true},
    };
    for (const Row& row : rows)
        for (const int number : {0, 10}) {
            SCOPED_TRACE(row.name + " of number " + std::to_string(number));
            makeForModel(number, row.name);
            EXPECT_EQ(isLater(), row.later);
        }
}

TEST_F(ModelName, ANameThatIsNotAsciiCountsAsMissing) {
    makeForModel(10, "CORVAN\xC3\x89-J710");
    EXPECT_FALSE(isLater());
    makeForModel(10, "CORVANE-J710\xC3\xA9");
    EXPECT_FALSE(isLater());
}

TEST_F(ModelName, ANameInThePpdsOwnEncodingIsNotAsciiEither) {
    makeForModel(10, "CORVAN\xC9-J710"); // ISO Latin 1
    EXPECT_FALSE(isLater());
}

TEST_F(ModelName, AnEarlierModelClearsTheBit) {
    for (const char* name : {"CORVANE", "CORVANE-J510", "CORVANE-J600", "CORVANE-370C", "CORVANE-210C"}) {
        SCOPED_TRACE(name);
        makeForModel(10, name);
        setFlags(~0U);
        panel->checkModelName();
        EXPECT_EQ(panel->imageModeFlag(), ~std::uint32_t{kImageModeLaterModel});
    }
}

TEST_F(ModelName, ASampleModelOfEachKind) {
    for (const auto& [sample, later] : {std::pair("corvane-a3", true), std::pair("corvane-a4", false),
                                        std::pair("corvane-mirror", true), std::pair("corvane-office", true)}) {
        SCOPED_TRACE(sample);
        openHost(tests::samplePpd(sample));
        makePanel();
        EXPECT_EQ(isLater(), later);
    }
}

} // namespace
} // namespace print_settings_tests
