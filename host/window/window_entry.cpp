// What the module exports: the print dialog as a program opens it.

#include "host/window/print_dialog.h"

#include "host/command_line/dialog_request.h"
#include "toolkit/preferred_languages.h"
#include "toolkit/user_defaults.h"

#include <QApplication>

#include <cstdio>
#include <optional>

extern "C" __attribute__((visibility("default"))) const int CVPrintDialogInterfaceVersion =
    host::kDialogInterfaceVersion;

namespace {

constexpr int kDone = 0, kFailed = 1;
constexpr const char* kNotWritten = "corvane-print: The %s. Standard output cannot be written to its end: check the "
                                    "disk or the program that takes it.\n";

// The printers that are known without asking a server: the PPD that was given, then the samples.
std::vector<host::Printer> knownPrinters(const host::DialogRequest& request) {
    std::vector<host::Printer> printers = host::samplePrinters();
    if (request.ppd.empty())
        return printers;
    host::Printer given{.name = request.printer.empty() ? std::filesystem::path(request.ppd).stem().string()
                                                        : request.printer,
                        .ppdPath = request.ppd,
                        .ppdText = {},
                        .options = {},
                        .queue = {}};
    if (!request.printer.empty() && request.folder.empty())
        given.queue = host::QueueAddress{.server = request.server, .queue = request.printer};
    printers.insert(printers.begin(), std::move(given));
    return printers;
}

// As lp tells it. False where that cannot be written.
bool tellRequests(const host::PrintDialog& dialog, std::size_t documents) {
    for (const host::JobResult& result : dialog.printed())
        if (result.jobId != 0)
            std::printf("request id is %s-%d (%zu file(s))\n", dialog.destination().queue->queue.c_str(), result.jobId,
                        documents);
        else
            std::printf("%s\n", result.path.c_str());
    return std::fflush(stdout) == 0 && std::ferror(stdout) == 0;
}

} // namespace

extern "C" __attribute__((visibility("default"))) int CVRunPrintDialog(const host::DialogRequest& request) {
    static int argumentCount = 1;
    static char name[] = "corvane-print";
    static char* arguments[] = {name, nullptr};
    std::unique_ptr<QApplication> application;
    if (QCoreApplication::instance() == nullptr)
        application = std::make_unique<QApplication>(argumentCount, arguments);
    QGuiApplication::setApplicationDisplayName(QStringLiteral("Corvane Print"));

    std::unique_ptr<toolkit::UserDefaults> defaults;
    if (const auto folder = toolkit::FileUserDefaults::userFolder())
        defaults = std::make_unique<toolkit::FileUserDefaults>(*folder);
    else
        defaults = std::make_unique<toolkit::MemoryUserDefaults>();
    host::PrintDialog dialog(request, {.languages = toolkit::preferredLanguages(),
                                       .userDefaults = defaults.get(),
                                       .printers = knownPrinters(request),
                                       .looksForQueues = request.ppd.empty() || request.folder.empty()});
    const bool usable = dialog.exec() == QDialog::Rejected || !dialog.printed().empty();
    if (!request.isSilent && !tellRequests(dialog, request.documents.size())) {
        std::fprintf(stderr, kNotWritten,
                     dialog.destination().queue ? "job was sent" : "document was printed to the folder");
        return kFailed;
    }
    return usable ? kDone : kFailed;
}
