#pragma once

#include <QString>

#include <string>
#include <utility>
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
    PasswordWanted,
    PasswordNotTaken,
    PasswordNotGiven,
    AskedByOpening,
    AskedByChoosing,
    AskedByPrinting,
    UserName,
    Password,
    Continue,
    PrintingCancelled,
    NotPrinted,
    KeptChoices,
    PrintedWithNote,
    NoDocument,
    PrinterCannotBeUsed,
    ActionFailed,
    ViewIncomplete,
    Quoted,  // a name in quotation marks
    Caption, // a name before the control that it stands for
    Undo,
    Undone,
    Defaults,
    DefaultsBack,
    ScaledTo,
    NotScaled,
    RememberChoices,
    ChoicesForgotten,
    NotRemembered,
    OneDocument,
    Documents,
    OnePage,
    NumberOfPages,
    FirstPage,
    NotReadable,
    GivenOptions,
    BytesSent,
    Presets,
    Preset,
    PresetName,
    NewPresetName,
    NoPresets,
    PresetsNeedQueue,
    AsksFirst, // a title before more is asked
    SavePreset,
    RenamePreset,
    DeletePreset,
    PresetForEveryone,
    PresetNeedsName,
    BadPresetName,
    ReplacePreset,
    Replace,
    PresetExists,
    DeletedForGood,
    PresetSaved,
    PresetRenamed,
    PresetDeleted,
    ThePreset,
    PresetChosen,
    NoSuchPreset,
    QueueNotFound,
    QueueWithoutPpd,
    ReadingPrinter,
    PpdChanged,
    JobPrinted,
    JobPrinting,
    JobPrintingSides,
    JobWaits,
    JobWaitsBecause,
    JobStopped, // "%1": ServersWords, or nothing; so for the other jobs and the queue
    JobFailed,
    JobCancelled,
    JobHeld,
    JobHeldUntil,
    JobHeldForPassword,
    JobUnknown,
    QueuePaused,
    QueuePausedBecause,
    ServersWords,
    AndBecause,
    OutOfPaper, // this and what follows: why a job waits
    PaperNeeded,
    PaperJam,
    InputTrayMissing,
    OutputTrayFull,
    OutputTrayMissing,
    OutOfInk,
    OutOfToner,
    WasteInkFull,
    CoverOpen,
    DoorOpen,
    PrinterOpen,
    Offline,
    NoAnswer,
    NotReached,
    SwitchedOff,
    DriverIncomplete,
    ServerDiskFull,
    Count, // how many there are
};

/// A language that the window speaks: English, or one that has a catalogue.
class Language {
public:
    static const Language English;

    explicit Language(std::string code) : code_(std::move(code)) {}
    /// As the catalogues are named: "ja", "zh_CN".
    [[nodiscard]] const std::string& code() const { return code_; }
    friend bool operator==(const Language&, const Language&) = default;

private:
    std::string code_;
};

inline const Language Language::English{"en"};

/// The first of these languages that the window speaks, else English. They are given as codes, tags or locales.
Language windowLanguage(const std::vector<std::string>& languages);

/// The text in the language; in English where its catalogue lacks it. "%1", "%2" ... are places for QString::arg().
QString windowText(Text text, const Language& language);

} // namespace host
