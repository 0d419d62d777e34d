#pragma once

#include <QString>

#include <string>
#include <vector>

namespace host {

/// The window's own texts. What stands on the panels and in their alerts comes from the bundle.
enum class Text {
    WindowTitle,
    Print,
    Cancel,
    Close,
    Back,
    More,
    ShowWarnings,
    WarningsShown,
    WarningsKept,
    Help,
    NoHelp,
    General,
    Summary,
    Printer,
    SamplePrinter,
    LookingForPrinters,
    NoPrinter,
    Folder,
    ChooseFolder,
    Paper,
    FreeSize,
    Width,
    Height,
    Unit,
    Millimetres,
    Inches,
    Points,
    SizeLimits,
    Copies,
    Pages,
    AllPages,
    BadPages,
    TwoSided,
    Output,
    ColorMatching,
    DriverMatches,
    ApplicationMatches,
    BecauseYouChose,
    IsNow,
    NotMarked,
    Separator,
    CannotBeTogether,
    And,
    NotAvailable,
    ChoicesNotAvailable,
    Option,
    Choice,
    Changed,
    ChangedMark,
    NothingToShow,
    CopySummary,
    SummaryCopied,
    Printing,
    PrintingDocument,
    CancellingPrint,
    PrintingCancelled,
    NotPrinted,
    KeptChoices,
    PrintedWithNote,
    NoDocument,
    PrinterCannotBeUsed,
    ActionFailed,
    ViewIncomplete,
    Count, // how many there are
};

/// The languages that the window speaks.
enum class Language { English, Japanese };

/// The first of these language codes that the window speaks, else English.
Language windowLanguage(const std::vector<std::string>& languages);

/// The text in the language. "%1", "%2" ... are places for QString::arg().
QString windowText(Text text, Language language);

} // namespace host
