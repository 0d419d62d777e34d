#include "host/window/window_texts.h"

#include "host/session/program_files.h"
#include "toolkit/preferred_languages.h"
#include "toolkit/text_catalogue.h"

#include <filesystem>
#include <iterator>
#include <map>
#include <memory>
#include <system_error>

namespace host {
namespace {

struct Row {
    Text text;
    const char* english;
};

constexpr Row kTexts[] = {
    // text, English; the other languages are in resources/texts/window, where the English text is the key
    {Text::WindowTitle, "Print: %1"},
    {Text::Print, "Print"},
    {Text::Cancel, "Cancel"},
    {Text::Close, "Close"},
    {Text::Back, "Back"},
    {Text::More, "More"},
    {Text::ShowWarnings, "Show all warnings again"},
    {Text::WarningsShown, "All warnings are shown again."},
    {Text::WarningsKept, "The warnings stay hidden: %1"},
    {Text::Help, "Help"},
    {Text::NoHelp, "There is no help page here. Open Print Setting or Color Setting and press F1."},
    {Text::General, "General"},
    {Text::Summary, "Summary"},
    {Text::Printer, "Printer"},
    {Text::SamplePrinter, "%1 (sample, prints to a folder)"},
    {Text::LookingForPrinters, "Looking for printers…"},
    {Text::NoPrinter, "No printer can be used here. Choose one with a PPD on the General page."},
    {Text::Folder, "Print to folder"},
    {Text::ChooseFolder, "Browse…"},
    {Text::Paper, "Paper"},
    {Text::FreeSize, "Free size…"},
    {Text::Width, "Width"},
    {Text::Height, "Height"},
    {Text::Unit, "Unit"},
    {Text::Millimetres, "mm"},
    {Text::Inches, "in"},
    {Text::Points, "pt"},
    {Text::SizeLimits, "Width %1 to %2, height %3 to %4"},
    {Text::Copies, "Copies"},
    {Text::Pages, "Pages"},
    {Text::AllPages, "All, or for example 1-4, 7"},
    {Text::BadPages, "Pages are numbers and ranges, such as \"1-4, 7\". Leave the field empty to print all of them."},
    {Text::TwoSided, "Two-sided"},
    {Text::Output, "Output"},
    {Text::ColorMatching, "Colors matched by"},
    {Text::DriverMatches, "Printer driver"},
    {Text::ApplicationMatches, "Application"},
    {Text::BecauseYouChose, "Because you chose %1: %2"},
    {Text::IsNow, "%1 is now %2"},
    {Text::NotMarked, "not set"},
    {Text::Separator, ", "},
    {Text::CannotBeTogether, "“%1” cannot be used together with %2."},
    {Text::And, " and "},
    {Text::NotAvailable, "Not available with the other choices as they are now."},
    {Text::ChoicesNotAvailable, "Not available now: %1"},
    {Text::Option, "Option"},
    {Text::Choice, "Choice"},
    {Text::Changed, "Changed"},
    {Text::ChangedMark, "● changed"},
    {Text::NothingToShow, "This printer has no settings to list."},
    {Text::CopySummary, "Copy"},
    {Text::SummaryCopied, "The summary has been copied."},
    {Text::Printing, "Printing"},
    {Text::PrintingDocument, "Sending “%1”…"},
    {Text::CancellingPrint, "Cancelling…"},
    {Text::PasswordWanted, "A user name and a password are wanted: %1"},
    {Text::PasswordNotTaken, "They were not accepted. Please try again."},
    {Text::PasswordNotGiven, "The printer was not reached, because no user name and password were given: %1."},
    {Text::AskedByOpening, "To be asked again, close this window and print anew."},
    {Text::AskedByChoosing, "To be asked again, choose the printer anew."},
    {Text::AskedByPrinting, "To be asked again, print anew."},
    {Text::UserName, "User name"},
    {Text::Password, "Password"},
    {Text::Continue, "Continue"},
    {Text::PrintingCancelled, "Printing was cancelled."},
    {Text::NotPrinted, "The document was not printed."},
    {Text::KeptChoices, "Your choices are kept. Change what is wrong and print again."},
    {Text::PrintedWithNote, "The document was sent."},
    {Text::NoDocument, "There is no document to print."},
    {Text::PrinterCannotBeUsed, "The printer cannot be used: %1"},
    {Text::ActionFailed, "That could not be carried out: %1"},
    {Text::ViewIncomplete, "This panel cannot be shown: %1"},
    {Text::Quoted, "“%1”"},
    {Text::Caption, "%1:"},
    {Text::Undo, "Undo"},
    {Text::Undone, "The step has been undone."},
    {Text::Defaults, "Defaults"},
    {Text::DefaultsBack, "All choices are the printer's own defaults again."},
    {Text::ScaledTo, "Scale to paper"},
    {Text::NotScaled, "No, keep the document's size"},
    {Text::RememberChoices, "Remember these choices for this printer"},
    {Text::ChoicesForgotten, "The remembered choices have been forgotten."},
    {Text::NotRemembered, "The choices could not be remembered: %1"},
    {Text::OneDocument, "1 document"},
    {Text::Documents, "%1 documents"},
    {Text::OnePage, "1 page"},
    {Text::NumberOfPages, "%1 pages"},
    {Text::FirstPage, "The first page"},
    {Text::NotReadable, "It cannot be shown here, but it can be printed."},
    {Text::GivenOptions, "the options that were given"},
    {Text::BytesSent, "%1 of %2"},
    {Text::Presets, "Presets"},
    {Text::Preset, "Preset"},
    {Text::PresetName, "Name"},
    {Text::NewPresetName, "New name"},
    {Text::NoPresets, "No presets yet"},
    {Text::PresetsNeedQueue, "Presets are kept for print queues: choose one as the printer."},
    {Text::AsksFirst, "%1…"},
    {Text::SavePreset, "Save preset"},
    {Text::RenamePreset, "Rename preset"},
    {Text::DeletePreset, "Delete preset"},
    {Text::PresetForEveryone, "It is kept for every user of this computer."},
    {Text::PresetNeedsName, "A preset needs a name: give it one."},
    {Text::BadPresetName, "A name has no blanks, quotes, “/”, “\\”, “#” or “=”, and at most 127 bytes: change it."},
    {Text::ReplacePreset, "There is a preset “%1” already. Replace it?"},
    {Text::Replace, "Replace"},
    {Text::PresetExists, "There is a preset “%1” already: choose another name."},
    {Text::DeletedForGood, "A preset that was deleted cannot be brought back."},
    {Text::PresetSaved, "The preset “%1” has been saved."},
    {Text::PresetRenamed, "The preset “%1” is called “%2” now."},
    {Text::PresetDeleted, "The preset “%1” has been deleted."},
    {Text::ThePreset, "the preset “%1”"},
    {Text::PresetChosen, "The choices of the preset “%1” have been made."},
    {Text::NoSuchPreset, "The queue “%1” has no preset “%2”: choose another one."},
    {Text::QueueNotFound, "There is no queue “%1”: choose another printer."},
    {Text::QueueWithoutPpd, "“%1” has no PPD, so there is nothing to choose here: print without the dialog "
                            "(--no-dialog), or choose another printer."},
    {Text::ReadingPrinter, "Reading the printer’s options…"},
    {Text::PpdChanged,
     "The printer’s options have changed on its server, so nothing was sent. Check your choices and print again."},
    {Text::JobPrinted, "The job was printed."},
    {Text::JobPrinting, "The job is printing."},
    {Text::JobPrintingSides, "The job is printing, sides so far: %1."},
    {Text::JobWaits, "The job waits for its turn."},
    {Text::JobWaitsBecause, "The job waits because %1."},
    {Text::JobStopped, "The job is stopped%1: look at the server's messages, and cancel it or print it again."},
    {Text::JobFailed, "The job failed%1: look at the server's messages before you print again."},
    {Text::JobCancelled, "The job was cancelled."},
    {Text::JobHeld, "The job is held until it is released%1."},
    {Text::JobHeldUntil, "The job is held until “%1”."},
    {Text::JobHeldForPassword, "The job is held until a user's name and password are given for its printer."},
    {Text::JobUnknown, "The job is not known to its server any more: it was printed or removed."},
    {Text::QueuePaused, "The queue is paused%1: the job waits until it is resumed."},
    {Text::QueuePausedBecause, "The queue is paused because %1: the job waits until it is resumed."},
    {Text::ServersWords, " (%1)"},
    {Text::AndBecause, ", and "},
    {Text::OutOfPaper, "the printer is out of paper"},
    {Text::PaperNeeded, "the printer waits for paper"},
    {Text::PaperJam, "paper is jammed in the printer"},
    {Text::InputTrayMissing, "the printer's paper tray is missing"},
    {Text::OutputTrayFull, "the printer's output tray is full"},
    {Text::OutputTrayMissing, "the printer's output tray is missing"},
    {Text::OutOfInk, "the printer is out of ink"},
    {Text::OutOfToner, "the printer is out of toner"},
    {Text::WasteInkFull, "the printer's waste ink tank is full"},
    {Text::CoverOpen, "the printer's cover is open"},
    {Text::DoorOpen, "the printer's door is open"},
    {Text::PrinterOpen, "the printer is open"},
    {Text::Offline, "the printer is off or not connected"},
    {Text::NoAnswer, "the printer does not answer"},
    {Text::NotReached, "the printer is not reached yet"},
    {Text::SwitchedOff, "the printer is switched off"},
    {Text::DriverIncomplete, "the queue's driver is not installed completely"},
    {Text::ServerDiskFull, "the print server's disk is full"},
};

static_assert(std::size(kTexts) == static_cast<std::size_t>(Text::Count));
static_assert(
    [] {
        for (std::size_t index = 0; index < std::size(kTexts); ++index)
            if (static_cast<std::size_t>(kTexts[index].text) != index)
                return false;
        return true;
    }(),
    "the rows stand in the order of the names");

constexpr const char* kCatalogue = "corvane-print";
constexpr const char* kCatalogueFile = "corvane-print.mo";

// Read once. Only the window's thread asks for texts.
const toolkit::TextTable& catalogueOf(const Language& language) {
    static std::map<std::string, std::unique_ptr<toolkit::TextTable>> catalogues;
    std::unique_ptr<toolkit::TextTable>& catalogue = catalogues[language.code()];
    if (catalogue == nullptr)
        catalogue = toolkit::openTextCatalogues(folderOfWindowTexts(), kCatalogue, {language.code()});
    return *catalogue;
}

} // namespace

Language windowLanguage(const std::vector<std::string>& languages) {
    for (const std::string& language : languages) {
        const std::string code = toolkit::languageCode(language);
        std::error_code missing;
        if (code == Language::English.code())
            return Language::English;
        if (!code.empty() && std::filesystem::is_regular_file(folderOfWindowTexts() / code / kCatalogueFile, missing))
            return Language(code);
    }
    return Language::English;
}

QString windowText(Text text, const Language& language) {
    const char* english = kTexts[static_cast<std::size_t>(text)].english;
    if (language == Language::English)
        return QString::fromUtf8(english);
    return QString::fromStdString(catalogueOf(language).textForKey(english).value_or(english));
}

} // namespace host
