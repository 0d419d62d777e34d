#include "host/window/job_words.h"

#include <QStringList>

#include <algorithm>
#include <iterator>
#include <utility>

namespace host {
namespace {

constexpr std::pair<Hindrance, Text> kHindrances[] = {
    {Hindrance::OutOfPaper, Text::OutOfPaper},
    {Hindrance::PaperNeeded, Text::PaperNeeded},
    {Hindrance::PaperJam, Text::PaperJam},
    {Hindrance::InputTrayMissing, Text::InputTrayMissing},
    {Hindrance::OutputTrayFull, Text::OutputTrayFull},
    {Hindrance::OutputTrayMissing, Text::OutputTrayMissing},
    {Hindrance::OutOfInk, Text::OutOfInk},
    {Hindrance::OutOfToner, Text::OutOfToner},
    {Hindrance::WasteInkFull, Text::WasteInkFull},
    {Hindrance::CoverOpen, Text::CoverOpen},
    {Hindrance::DoorOpen, Text::DoorOpen},
    {Hindrance::PrinterOpen, Text::PrinterOpen},
    {Hindrance::Offline, Text::Offline},
    {Hindrance::NoAnswer, Text::NoAnswer},
    {Hindrance::NotReached, Text::NotReached},
    {Hindrance::SwitchedOff, Text::SwitchedOff},
    {Hindrance::DriverIncomplete, Text::DriverIncomplete},
    {Hindrance::ServerDiskFull, Text::ServerDiskFull},
};
static_assert(std::size(kHindrances) == static_cast<std::size_t>(Hindrance::Count));

QString hindrancesInWords(const std::vector<Hindrance>& hindrances, const Language& language) {
    QStringList all;
    for (const Hindrance each : hindrances)
        all << windowText(std::ranges::find(kHindrances, each, &std::pair<Hindrance, Text>::first)->second, language);
    return all.join(windowText(Text::AndBecause, language));
}

// Of a job that is neither held nor over.
QString unfinishedInWords(const JobStatus& status, const QString& serversWords, const Language& language) {
    const QString hindrances = hindrancesInWords(status.hindrances, language);
    if (status.isQueuePaused)
        return hindrances.isEmpty() ? windowText(Text::QueuePaused, language).arg(serversWords)
                                    : windowText(Text::QueuePausedBecause, language).arg(hindrances);
    if (status.stage == JobStage::Stopped)
        return windowText(Text::JobStopped, language).arg(serversWords);
    if (!hindrances.isEmpty())
        return windowText(Text::JobWaitsBecause, language).arg(hindrances);
    if (status.stage == JobStage::Waiting)
        return windowText(Text::JobWaits, language);
    return status.impressions > 0 ? windowText(Text::JobPrintingSides, language).arg(status.impressions)
                                  : windowText(Text::JobPrinting, language);
}

} // namespace

QString statusInWords(const JobStatus& status, const Language& language) {
    const QString serversWords =
        status.serversWords.empty()
            ? QString()
            : windowText(Text::ServersWords, language).arg(QString::fromStdString(status.serversWords));
    switch (status.stage) {
    case JobStage::Unknown:
        return windowText(Text::JobUnknown, language);
    case JobStage::Held:
        if (status.wantsPassword)
            return windowText(Text::JobHeldForPassword, language);
        return status.heldUntil.empty()
                   ? windowText(Text::JobHeld, language).arg(serversWords)
                   : windowText(Text::JobHeldUntil, language).arg(QString::fromStdString(status.heldUntil));
    case JobStage::Cancelled:
        return windowText(Text::JobCancelled, language);
    case JobStage::Failed:
        return windowText(Text::JobFailed, language).arg(serversWords);
    case JobStage::Printed:
        return windowText(Text::JobPrinted, language);
    case JobStage::Waiting:
    case JobStage::Printing:
    case JobStage::Stopped:
        break;
    }
    return unfinishedInWords(status, serversWords, language);
}

} // namespace host
