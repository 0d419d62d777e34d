#include "host/session/help_books.h"
#include "tests/support/scratch_folder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace host {
namespace {

namespace fs = std::filesystem;

/// A folder with a book of two languages: "index.html" in both, "more.html" in English only.
class HelpPages : public testing::Test {
protected:
    HelpPages() {
        for (const char* page : {"en/index.html", "en/more.html", "ja/index.html"})
            scratch.write(page, page);
        write(kBook);
    }

    void write(const std::string& json) const { scratch.write("book.json", json); }
    [[nodiscard]] std::string page(const std::string& anchor, const std::vector<std::string>& languages,
                                   const std::string& book = "Book") const {
        const auto found = books.pageForAnchor(anchor, book, languages);
        return found ? found->lexically_relative(folder).string() : "none";
    }

    static constexpr const char* kBook =
        R"({"name": "Book", "anchors": {"Start": "index.html", "More": "more.html"}, "languages": ["en", "ja"]})";
    const test_support::ScratchFolder scratch;
    const fs::path folder = scratch.path();
    HelpBooks books;
};

TEST_F(HelpPages, APageIsFoundInTheFirstLanguageThatTheBookHas) {
    ASSERT_TRUE(books.registerBook(folder));
    EXPECT_EQ(page("Start", {"ja", "en"}), "ja/index.html");
    EXPECT_EQ(page("Start", {"fr", "ja", "en"}), "ja/index.html");
    EXPECT_EQ(page("Start", {"en", "ja"}), "en/index.html");
    EXPECT_EQ(page("Start", {"ja_JP.UTF-8"}), "ja/index.html");
}

TEST_F(HelpPages, InOtherLanguagesTheBooksFirstOneIsShown) {
    ASSERT_TRUE(books.registerBook(folder));
    EXPECT_EQ(page("Start", {"fr"}), "en/index.html");
    EXPECT_EQ(page("Start", {}), "en/index.html");
}

TEST_F(HelpPages, WhatIsNotThereHasNoPage) {
    EXPECT_EQ(page("Start", {"en"}), "none");
    ASSERT_TRUE(books.registerBook(folder));
    EXPECT_EQ(page("Start", {"en"}, "Another Book"), "none");
    EXPECT_EQ(page("Nowhere", {"en"}), "none");
    EXPECT_EQ(page("More", {"ja"}), "none");
}

TEST_F(HelpPages, AFolderThatHoldsNoBookIsNotRegistered) {
    EXPECT_FALSE(books.registerBook(folder / "missing"));
    for (const char* text : {"", "{", "[]", "5", "{}", R"({"name": 5, "anchors": {}, "languages": []})",
                             R"({"name": "Book", "anchors": [], "languages": []})",
                             R"({"name": "Book", "anchors": {}, "languages": {}})"}) {
        SCOPED_TRACE(text);
        write(text);
        EXPECT_FALSE(books.registerBook(folder));
    }
    EXPECT_EQ(page("Start", {"en"}), "none");
}

TEST_F(HelpPages, PagesAndLanguagesStayWithinTheBook) {
    scratch.write("secret.html", "not of a language");
    write(R"({"name": "Book", "languages": ["..", "en/..", "", ".", 5, "en"],
              "anchors": {"Up": "../secret.html", "Root": "/etc/passwd", "Hidden": ".html", "Number": 5,
                          "Start": "index.html"}})");
    ASSERT_TRUE(books.registerBook(folder));
    for (const char* anchor : {"Up", "Root", "Hidden", "Number"})
        EXPECT_EQ(page(anchor, {"en"}), "none") << anchor;
    EXPECT_EQ(page("Start", {"..", "en/..", "."}), "en/index.html");
}

TEST_F(HelpPages, ABookWithoutLanguagesHasNoPages) {
    write(R"({"name": "Book", "anchors": {"Start": "index.html"}, "languages": []})");
    EXPECT_TRUE(books.registerBook(folder));
    EXPECT_EQ(page("Start", {"en"}), "none");
}

TEST_F(HelpPages, ABookThatIsRegisteredAgainStaysAsItWasRead) {
    ASSERT_TRUE(books.registerBook(folder));
    write(R"({"name": "Book", "anchors": {"Start": "more.html"}, "languages": ["en"]})");
    ASSERT_TRUE(books.registerBook(folder));
    EXPECT_EQ(page("Start", {"en"}), "en/index.html");
}

} // namespace
} // namespace host
