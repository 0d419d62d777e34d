#include "host/command_line/option_meaning.h"

#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <iterator>

namespace host {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

constexpr const char* kInstallable = "*OpenGroup: InstallableOptions/Options Installed\n"
                                     "*OpenUI *OptionTray/Second Tray: Boolean\n"
                                     "*DefaultOptionTray: False\n"
                                     "*OptionTray False/Absent: \"\"\n"
                                     "*OptionTray True/Present: \"\"\n"
                                     "*CloseUI: *OptionTray\n"
                                     "*CloseGroup: InstallableOptions\n";

std::string samplePpd() {
    std::ifstream file(CV_SOURCE_DIR "/resources/models/corvane-a3.ppd", std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), {}) + kInstallable;
}

class OptionMeaning : public testing::Test {
protected:
    std::vector<MeantOption> meant(const JobOption& given) const {
        return meaningOf(given, *description_, installableOptions(samplePpd()));
    }
    std::vector<std::string> choices(const JobOption& given) const {
        std::vector<std::string> texts;
        for (const MeantOption& each : meant(given))
            texts.push_back((each.kind == OptionKind::Choice ? "" : "not a choice: ") + each.option.name + "=" +
                            each.option.value);
        return texts;
    }

private:
    std::string error_;
    std::unique_ptr<printing::PrinterDescription> description_ =
        printing::PrinterDescription::openText(samplePpd(), {"en"}, error_);
};

TEST_F(OptionMeaning, StandardNamesBecomeThePpdsOwn) {
    struct Case {
        JobOption given;
        std::vector<std::string> choices;
    };
    const Case kCases[] = {
        {{"media", "A4"}, {"PageSize=A4"}},
        {{"media", "iso_a4_210x297mm"}, {"PageSize=A4"}},
        {{"media", "na_letter_8.5x11in"}, {"PageSize=Letter"}},
        {{"media", "A3,Tray2,Plain"}, {"PageSize=A3", "CVInputSlot=Tray2", "CVMediaType=Plain"}},
        {{"media", "A4.Fullbleed"}, {"PageSize=A4.Fullbleed"}},
        {{"PageSize", "iso_a3_297x420mm"}, {"PageSize=A3"}},
        {{"PageRegion", "A5"}, {"PageSize=A5"}},
        {{"PageSize", "Custom.200x300mm"}, {"PageSize=Custom.200x300mm"}},
        {{"sides", "one-sided"}, {"Duplex=None"}},
        {{"sides", "two-sided-long-edge"}, {"Duplex=DuplexNoTumble"}},
        {{"sides", "two-sided-short-edge"}, {"Duplex=DuplexTumble"}},
        {{"Duplex", "DuplexTumble"}, {"Duplex=DuplexTumble"}},
        {{"MirrorPrint", "true"}, {"MirrorPrint=True"}},
        {{"MirrorPrint", "off"}, {"MirrorPrint=False"}},
        {{"CVReverse", "yes"}, {"CVReverse=ON"}},
        {{"CVReverse", "OFF"}, {"CVReverse=OFF"}},
    };
    for (const auto& [given, expected] : kCases) {
        SCOPED_TRACE(given.name + "=" + given.value);
        EXPECT_EQ(choices(given), expected);
    }
}

TEST_F(OptionMeaning, WhatThePpdLacksIsNamed) {
    const JobOption kUnknown[] = {{"media", "Moon"},          {"PageSize", "Custom.1x1"}, {"PageSize", "a4"},
                                  {"sides", "both"},          {"CVMediaType", "Marble"},  {"CVMediaType", "true"},
                                  {"PageSize", "Custom.junk"}};
    for (const JobOption& given : kUnknown) {
        SCOPED_TRACE(given.name + "=" + given.value);
        const auto meaning = meant(given);
        ASSERT_EQ(meaning.size(), 1U);
        EXPECT_EQ(meaning.front().kind, OptionKind::UnknownChoice);
        EXPECT_THAT(meaning.front().reason, HasSubstr("\"" + given.value + "\""));
    }
}

TEST_F(OptionMeaning, WhatIsNoChoiceIsToldApart) {
    struct Case {
        const char* name;
        OptionKind kind;
    };
    constexpr Case kCases[] = {
        {"page-ranges", OptionKind::Attribute},
        {"number-up", OptionKind::Attribute},
        {"job-sheets", OptionKind::Attribute},
        {"fit-to-page", OptionKind::Attribute},
        {"AP_ColorMatchingMode", OptionKind::PrintSetting},
        {"com.corvane.print.PrintSettings.CEV_Red", OptionKind::PrintSetting},
        {"com.apple.print.PageToPaperMappingMediaName", OptionKind::PrintSetting},
        {"OptionTray", OptionKind::Unusable},
        {"CVNothing", OptionKind::UnknownOption},
        {"cvmediatype", OptionKind::UnknownOption},
    };
    for (const auto& [name, kind] : kCases) {
        SCOPED_TRACE(name);
        const auto meaning = meant({name, "True"});
        ASSERT_EQ(meaning.size(), 1U);
        EXPECT_EQ(meaning.front().kind, kind);
        EXPECT_EQ(meaning.front().option.name, name);
        EXPECT_EQ(meaning.front().option.value, "True");
    }
}

TEST_F(OptionMeaning, StandardNamesStayWhereThePpdHasNoSuchOption) {
    const printing::PrinterDescription nothing;
    for (const char* name : {"media", "sides"}) {
        const auto meaning = meaningOf({name, "A4"}, nothing, {});
        ASSERT_EQ(meaning.size(), 1U);
        EXPECT_EQ(meaning.front().kind, OptionKind::Attribute);
    }
}

TEST(InstallableOptions, AreThoseOfTheirGroupAlone) {
    EXPECT_THAT(installableOptions(samplePpd()), UnorderedElementsAre("OptionTray"));
    EXPECT_THAT(installableOptions(""), IsEmpty());
}

TEST(JobFields, AreTakenOutOfTheOptions) {
    std::vector<JobOption> options = {{"copies", "4"},        {"PageSize", "A4"},
                                      {"job-priority", "80"}, {"job-hold-until", "night"},
                                      {"job-name", "Letter"}, {"job-sheets", "secret,none"}};
    JobRequest request;
    EXPECT_THAT(takeJobFields(options, request), IsEmpty());
    ASSERT_EQ(options.size(), 2U);
    EXPECT_EQ(options.front().name, "PageSize");
    EXPECT_EQ(options.back().name, "job-sheets"); // sent like any other
    EXPECT_EQ(request.copies, 4);
    EXPECT_EQ(request.priority, 80);
    EXPECT_EQ(request.holdUntil, "night");
    EXPECT_EQ(request.title, "Letter");
}

TEST(JobFields, OfNoUseAreTold) {
    const JobOption kUseless[] = {{"copies", "many"},
                                  {"copies", "0"},
                                  {"job-priority", "101"},
                                  {"job-hold-until", "banana"},
                                  {"job-anything", "x"}};
    for (const JobOption& given : kUseless) {
        SCOPED_TRACE(given.name + "=" + given.value);
        std::vector<JobOption> options = {given};
        JobRequest request;
        EXPECT_EQ(takeJobFields(options, request).size(), 1U);
        EXPECT_THAT(options, IsEmpty());
        EXPECT_EQ(request.copies, 1);
        EXPECT_EQ(request.priority, 0);
        EXPECT_EQ(request.holdUntil, "");
    }
}

} // namespace
} // namespace host
