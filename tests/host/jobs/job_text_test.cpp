#include "host/jobs/job.h"
#include "host/jobs/job_text.h"

#include <gtest/gtest.h>

namespace host {
namespace {

TEST(JobText, WellFormedUtf8IsAccepted) {
    for (const std::string_view text : {"", "plain", "gr\xC3\xBC\xC3\x9F", "\xE6\x97\xA5\xE6\x9C\xAC",
                                        "\xF0\x9F\x96\xA8", "\xF4\x8F\xBF\xBF", "\xEF\xBF\xBF"}) {
        SCOPED_TRACE(text);
        EXPECT_TRUE(isUtf8(text));
    }
}

TEST(JobText, MalformedUtf8IsRefused) {
    constexpr std::string_view kMalformed[] = {
        "\x80",             // a continuation alone
        "\xC3",             // cut
        "\xE6\x97",         // cut
        "\xC0\xAF",         // overlong
        "\xE0\x80\x80",     // overlong
        "\xF0\x80\x80\x80", // overlong
        "\xED\xA0\x80",     // a surrogate
        "\xF4\x90\x80\x80", // above the last character
        "\xF5\x80\x80\x80",
        "\xFF",
        "a\xC3(",
        "\xE6(\x97",
    };
    for (const std::string_view text : kMalformed) {
        SCOPED_TRACE(text);
        EXPECT_FALSE(isUtf8(text));
    }
}

TEST(JobText, NamesAreComparedWithoutTheCaseOfAsciiLetters) {
    EXPECT_TRUE(equalWithoutCase("Queue-2", "qUEUE-2"));
    EXPECT_TRUE(equalWithoutCase("", ""));
    EXPECT_FALSE(equalWithoutCase("Queue-2", "Queue-3"));
    EXPECT_FALSE(equalWithoutCase("Queue", "Queue-2"));
    EXPECT_FALSE(equalWithoutCase("\xC3\xBC", "\xC3\x9C")); // u and U with their dots
}

TEST(JobText, PlainTextReplacesWhatCannotBeShown) {
    EXPECT_EQ(plainText("two\nlines\tand\x01more\x7F", 100), "two lines and more");
    EXPECT_EQ(plainText("caf\xE9", 100), "caf\xEF\xBF\xBD");
    EXPECT_EQ(plainText("  \n outer \r ", 100), "outer");
}

TEST(JobText, PlainTextIsCutAtACharactersBorder) {
    EXPECT_EQ(plainText("ab\xC3\xBC", 3), "ab");
    EXPECT_EQ(plainText("ab\xC3\xBC", 4), "ab\xC3\xBC");
    EXPECT_EQ(plainText(std::string(1000, ' ') + "x", 1), "x");
}

TEST(JobText, AnEmptyTitleGivesWayToTheDocumentsName) {
    EXPECT_EQ(jobTitle({.documentPath = "/a/b/Letter.pdf", .title = ""}), "Letter.pdf");
    EXPECT_EQ(jobTitle({.documentPath = "/a/b/Letter.pdf", .title = "\n \t"}), "Letter.pdf");
    EXPECT_EQ(jobTitle({.documentPath = "/a/b/", .title = ""}), "document");
    EXPECT_EQ(jobTitle({.documentPath = "/a/b/Letter.pdf", .title = "Mine"}), "Mine");
}

TEST(JobText, CopiesHaveLimits) {
    EXPECT_EQ(refusalForCopies(1), "");
    EXPECT_EQ(refusalForCopies(9999), "");
    for (const int copies : {0, -1, 10000})
        EXPECT_NE(refusalForCopies(copies).find(std::to_string(copies)), std::string::npos);
}

} // namespace
} // namespace host
