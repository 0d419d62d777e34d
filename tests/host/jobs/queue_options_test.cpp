#include "host/jobs/option_encoding.h"
#include "tests/host/jobs/queue_test.h"

namespace host {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;

using OptionMap = std::map<std::string, std::string>;

class QueueOptions : public QueueTest {
protected:
    /// What the filter reads, without the server's own keys.
    OptionMap arrived(const std::vector<JobOption>& options) const {
        JobRequest job = request();
        job.options = options;
        return withoutServersOwn(printed(job).options);
    }

    /// What the filter would have to read.
    static OptionMap asMap(const std::vector<JobOption>& options) {
        OptionMap map;
        for (const JobOption& option : options)
            map[option.name] = option.value;
        return map;
    }

    void expectArrive(const std::vector<JobOption>& options) const { EXPECT_EQ(arrived(options), asMap(options)); }
};

TEST_F(QueueOptions, WithoutOptionsOnlyTheServersOwnKeysArrive) {
    expectArrive({});
}

TEST_F(QueueOptions, MarksAndPrivateKeysArrive) {
    expectArrive({{"PageSize", "A4"},
                  {"InkMedia", "Glossy"},
                  {"com.corvane.print.PrintSettings.advancedItem", "1"},
                  {"com.corvane.print.PrintSettings.Orientation", "Portrait"},
                  {"AP_ColorMatchingMode", "AP_VendorColorMatching"},
                  {"Brightness", "-20"},
                  {"Custom", "Custom.200x300"}});
}

TEST_F(QueueOptions, EveryPrintableCharacterOfAValueArrives) {
    std::string all;
    for (char byte = ' '; byte < '\x7F'; ++byte)
        all += byte;
    expectArrive({{"All", "x" + all}, {"Again", all + all + "\\"}});
    std::vector<JobOption> options;
    for (char byte = ' '; byte < '\x7F'; ++byte)
        if (byte != '{') {
            options.push_back({"First" + std::to_string(byte), std::string(1, byte) + "b"});
            options.push_back({"Last" + std::to_string(byte), std::string("b") + byte});
            options.push_back({"Only" + std::to_string(byte), std::string(1, byte)});
        }
    OptionMap refused;
    std::erase_if(options, [&refused](const JobOption& option) {
        const std::string refusal = refusalForOptions({option});
        if (!refusal.empty())
            refused[option.name] = refusal;
        return !refusal.empty();
    });
    EXPECT_THAT(refused, IsEmpty());
    expectArrive(options);
}

TEST_F(QueueOptions, OddValuesArrive) {
    expectArrive({{"Empty", ""},
                  {"Comma", "a,b,,c"},
                  {"Quotes", "it's \"so\""},
                  {"Backslash", "C:\\dir\\"},
                  {"Blanks", "two words, and  more"},
                  {"Japanese", "\xE6\x97\xA5\xE6\x9C\xAC\xE8\xAA\x9E"},
                  {"Equals", "a=b c=d"},
                  {"Braces", "a{b}c"},
                  {"Shell", "$(id); `id` | cat >x &"},
                  {"Long", std::string(kMaximumOptionValueBytes, 'v')}});
}

TEST_F(QueueOptions, BooleanWordsArriveAsBareKeys) {
    JobRequest job = request();
    job.options = {{"SlowDrying", "True"}, {"CVFlag", "false"}, {"Other", "TRUE"}};
    const auto record = printed(job);
    EXPECT_THAT(" " + record.optionText + " ", HasSubstr(" SlowDrying "));
    EXPECT_THAT(" " + record.optionText + " ", HasSubstr(" noCVFlag "));
    EXPECT_EQ(withoutServersOwn(record.options),
              (OptionMap{{"SlowDrying", "true"}, {"CVFlag", "false"}, {"Other", "true"}}));
}

TEST_F(QueueOptions, BooleanWordsOfKeysThatBeginLikeANegationArrive) {
    expectArrive({{"noise", "true"}, {"Normal", "false"}, {"NO", "true"}});
}

TEST_F(QueueOptions, WordsCloseToBooleansStayAsTheyAre) {
    expectArrive({{"A", "on"}, {"B", "off"}, {"C", "yes"}, {"D", "1"}, {"E", "ON"}, {"F", "truely"}});
}

TEST_F(QueueOptions, StandardOptionsArriveWithTheirStandardTypes) {
    expectArrive({{"sides", "two-sided-long-edge"},
                  {"orientation-requested", "4"},
                  {"page-ranges", "1-3,5"},
                  {"fit-to-page", "true"},
                  {"print-scaling", "fit"},
                  {"number-up-layout", "lrtb"},
                  {"printer-resolution", "600x300dpi"}});
    // These the server itself translates, or writes in another form.
    EXPECT_EQ(arrived({{"media", "A5"}}), (OptionMap{{"media", "A5"}, {"PageSize", "A5"}}));
    EXPECT_EQ(arrived({{"printer-resolution", "600dpi"}}), (OptionMap{{"printer-resolution", "600x600dpi"}}));
}

TEST_F(QueueOptions, AStandardOptionWithAValueOfAnotherKindIsRefused) {
    constexpr std::pair<const char*, const char*> kMistyped[] = {
        {"number-up", "many"}, {"page-ranges", "all"}, {"fit-to-page", "perhaps"}, {"printer-resolution", "fine"}};
    for (const auto& [name, value] : kMistyped) {
        const std::string refusal = refusalForOptions({{name, value}});
        EXPECT_THAT(refusal, HasSubstr(name));
        EXPECT_THAT(refusal, HasSubstr(value));
    }
}

TEST_F(QueueOptions, EveryCharacterOfANameArrivesOrIsRefused) {
    std::vector<JobOption> accepted;
    std::string refused;
    for (int byte = 1; byte < 0x80; ++byte) {
        const JobOption option{std::string("k") + static_cast<char>(byte) + std::to_string(byte), "v"};
        if (refusalForOptions({option}).empty())
            accepted.push_back(option);
        else if (byte > ' ' && byte < 0x7F)
            refused += static_cast<char>(byte);
    }
    expectArrive(accepted);
    EXPECT_THAT(refused, HasSubstr("="));
    EXPECT_LT(refused.size(), 10U) << refused;
}

TEST_F(QueueOptions, NamesThatBeginOddlyArriveOrAreRefused) {
    std::vector<JobOption> accepted;
    for (int byte = 1; byte < 0x80; ++byte) {
        const JobOption option{static_cast<char>(byte) + std::string("k") + std::to_string(byte), "v"};
        if (refusalForOptions({option}).empty())
            accepted.push_back(option);
    }
    EXPECT_GT(accepted.size(), 62U); // at least letters and digits
    expectArrive(accepted);
}

TEST_F(QueueOptions, OfTwoOptionsWithOneNameTheLastCounts) {
    EXPECT_EQ(arrived({{"InkMedia", "Plain"}, {"Other", "x"}, {"InkMedia", "Glossy"}}),
              (OptionMap{{"InkMedia", "Glossy"}, {"Other", "x"}}));
}

TEST_F(QueueOptions, AThousandOptionsArrive) {
    std::vector<JobOption> options;
    for (int index = 0; index < 1000; ++index)
        options.push_back({"Key" + std::to_string(index), "value " + std::to_string(index)});
    expectArrive(options);
}

TEST_F(QueueOptions, AsManyBytesAsAreAllowedArrive) {
    const std::string value(kMaximumOptionValueBytes, 'v');
    expectArrive({{"A", value}, {"B", value}, {"C", value}, {"D", std::string(3900, 'v')}});
}

struct RefusedOption {
    std::string name, value, reason;
};

TEST_F(QueueOptions, WhatWouldNotArriveIsRefusedInWords) {
    const RefusedOption kRefused[] = {
        {"Key", "{a=b}", "brace"},
        {"Key", "line\nbreak", "control"},
        {"Key", std::string("null\0byte", 9), "control"},
        {"Key", "caf\xE9", "UTF-8"},
        {"Key", std::string(32'001, 'x'), "32001 bytes"},
        {"a=b", "x", "name"},
        {"two words", "x", "name"},
        {"tab\tbed", "x", "name"},
        {"caf\xE9", "x", "name"},
        {std::string("nu\0ll", 5), "x", "name"},
        {std::string(256, 'k'), "x", "name"},
        {"", "x", "without a name"},
        {"job-hold-until", "indefinite", "own use"},
        {"job-anything", "x", "own use"},
        {"copies", "3", "copies"},
        {"Copies", "3", "copies"},
        {"requesting-user-name", "x", "own use"},
        {"auth-info", "x", "own use"},
        {"number-of-documents", "3", "own use"},
        {"printer-uri", "x", "printer-uri"},
    };
    const std::size_t before = server().jobStates().size();
    for (const auto& [name, value, reason] : kRefused) {
        SCOPED_TRACE(name + "=" + value.substr(0, 40));
        JobRequest job = request();
        job.options = {{"InkMedia", "Plain"}, {name, value}};
        const JobResult result = submitToQueue(queue(), job);
        EXPECT_FALSE(result.ok);
        EXPECT_THAT(result.error, HasSubstr(reason));
    }
    EXPECT_EQ(server().jobStates().size(), before);
}

TEST_F(QueueOptions, NamesThatDifferOnlyInCaseAreRefused) {
    EXPECT_THAT(refusalForOptions({{"InkMedia", "Plain"}, {"X", "y"}, {"inkmedia", "Glossy"}}), HasSubstr("case"));
}

TEST_F(QueueOptions, TooManyBytesTogetherAreRefused) {
    const std::string value(kMaximumOptionValueBytes, 'v');
    EXPECT_THAT(refusalForOptions({{"A", value}, {"B", value}, {"C", value}, {"D", value}}), HasSubstr("together"));
}

TEST_F(QueueOptions, PriorityAndCopiesOutsideTheirLimitsAreRefused) {
    JobRequest job = request();
    job.copies = 10'000;
    EXPECT_THAT(submitToQueue(queue(), job).error, HasSubstr("10000 copies"));
    job.copies = 1;
    job.priority = 101;
    EXPECT_THAT(submitToQueue(queue(), job).error, HasSubstr("priority 101"));
    job.priority = 100;
    EXPECT_EQ(submitToQueue(queue(), job).error, "");
    job.holdUntil = "never\n";
    EXPECT_THAT(submitToQueue(queue(), job).error, HasSubstr("held"));
}

} // namespace
} // namespace host
