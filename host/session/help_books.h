#pragma once

#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace host {

/// Help books that are known to a dialog. A book is a folder with `book.json`: its "name", the "anchors" (a page for
/// each), and the "languages", each of which has a folder of pages.
class HelpBooks {
public:
    /// Makes the book at this path known; false where it is no book. A known book is not read again.
    bool registerBook(const std::filesystem::path& path);
    /// The page of the anchor in the first of these languages that the book has, else in its own first language.
    /// nullopt where the book is not registered, or lacks the anchor or the page.
    [[nodiscard]] std::optional<std::filesystem::path> pageForAnchor(std::string_view anchor, std::string_view book,
                                                                     const std::vector<std::string>& languages) const;

private:
    struct Book {
        std::filesystem::path folder;
        std::map<std::string, std::string, std::less<>> anchors;
        std::vector<std::string> languages;
    };
    std::map<std::string, Book, std::less<>> books_;
};

} // namespace host
