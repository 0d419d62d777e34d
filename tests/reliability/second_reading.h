#pragma once

/// The tables of papers, qualities and sizes, written down a second time without a look at the panel, in another shape:
/// by name where the panel has a list for each question, by cell where it has a list for each row, and as a map of the
/// plane where it has an order of cases. What both say must agree.

#include <set>
#include <string>
#include <vector>

namespace second_reading {

// -- Papers -----------------------------------------------------------------------------------------------------------

enum PaperQuestion : char {
    kPostcard = 'c',
    kTray2 = 't',
    kLandscape = 'l',
    kPortrait = 'p',
    kManualFeed = 'm',
    kJapaneseEnvelope = 'e',
};
inline constexpr PaperQuestion kPaperQuestions[] = {kPostcard, kTray2,      kLandscape,
                                                    kPortrait, kManualFeed, kJapaneseEnvelope};

/// The letters of the questions that a paper-size keyword answers with yes.
std::string questionsOfPaper(const std::string& keyword);
/// Every base size of which a keyword is the borderless variant (several: "A4.Fullbleed.Fullbleed").
std::set<std::string> basesOfBorderlessPaper(const std::string& keyword);
/// Every name that stands in a table above, each with the endings that the two ways of matching treat differently.
std::vector<std::string> papersAndTheirLikes();
bool isPlainPaper(const std::string& media);

// -- Qualities --------------------------------------------------------------------------------------------------------

/// The media types of the table, then some that are in none.
std::vector<std::string> mediaAndTheirLikes();
/// In the order in which they are offered.
std::vector<std::string> allowedQualities(const std::string& media, bool twoSided, bool disc);
/// The media type that an unlisted one is changed into; empty for a listed one.
std::string replacementOfMedia(const std::string& media, bool disc);
std::string defaultQuality(const std::string& media, const std::string& paper);

// -- Sizes ------------------------------------------------------------------------------------------------------------

/// A printer's limits of a free size, in points.
struct SizeLimits {
    float minWidth, maxWidth, maxHeight;
};

/// The alert that a size gets: 'L'andscape, 'P'ortrait, 'M'anual feed, 'U'nsupported. Whole points.
char alertForSize(int width, int height, const SizeLimits& limits);

} // namespace second_reading
