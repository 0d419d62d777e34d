#include "host/window/printers.h"

#include "host/session/program_files.h"
#include "printing/printer_description.h"

#include <QCoreApplication>
#include <QObject>
#include <QPointer>

#include <algorithm>
#include <atomic>
#include <filesystem>
#include <mutex>

namespace host {
namespace {

constexpr std::size_t kMostQueues = 200; // whose PPDs are fetched
// Short enough to wait for when the window closes meanwhile.
constexpr JobLimits kLimits = {.connect = std::chrono::seconds(3), .response = std::chrono::seconds(5)};

std::string queueTitle(const Queue& queue) {
    std::string title = queue.instance.empty() ? queue.name : queue.name + "/" + queue.instance;
    if (!queue.description.empty() && queue.description != queue.name)
        title += " (" + queue.description + ")";
    return title;
}

} // namespace

std::vector<Printer> samplePrinters() {
    std::error_code error;
    std::vector<Printer> printers;
    for (const auto& entry : std::filesystem::directory_iterator(folderOfSamplePrinters(), error)) {
        const std::string path = entry.path().string();
        std::string reason;
        const auto description =
            entry.path().extension() == ".ppd" ? printing::PrinterDescription::openFile(path, {"en"}, reason) : nullptr;
        if (description != nullptr)
            printers.push_back({.name = description->shortNickname().value_or(entry.path().stem().string()),
                                .ppdPath = path,
                                .ppdText = {},
                                .options = {},
                                .queue = {},
                                .isSample = true});
    }
    std::ranges::sort(printers, {}, &Printer::ppdPath);
    return printers;
}

// What the window's thread and the searching one both know. The receiver is looked at in its own thread only.
struct PrinterSearch::Shared {
    std::atomic<bool> ended = false;
    QPointer<QObject> receiver;
    std::function<void(const Found&)> tell;
    std::mutex telling; // no telling is posted once the search has ended
};

PrinterSearch::~PrinterSearch() {
    if (shared_ == nullptr)
        return;
    {
        const std::lock_guard lock(shared_->telling);
        shared_->ended = true;
    }
    thread_.join();
}

void PrinterSearch::start(const std::string& server, const std::string& preferred, QObject& receiver,
                          std::function<void(const Found&)> tell) {
    shared_ = std::make_shared<Shared>();
    shared_->receiver = &receiver;
    shared_->tell = std::move(tell);
    thread_ = std::thread([shared = shared_, server, preferred] {
        const auto post = [&](Found found) {
            const std::lock_guard lock(shared->telling);
            if (shared->ended)
                return;
            QMetaObject::invokeMethod(
                QCoreApplication::instance(),
                [shared, found = std::move(found)] {
                    if (!shared->ended && shared->receiver != nullptr)
                        shared->tell(found);
                },
                Qt::QueuedConnection);
        };
        QueueList list = listQueues(server, kLimits);
        const auto rank = [&](const Queue& queue) { return queue.name == preferred ? 0 : queue.isDefault ? 1 : 2; };
        std::ranges::stable_sort(list.queues, {}, rank);
        if (list.queues.size() > kMostQueues)
            list.queues.resize(kMostQueues);
        std::string error = list.error;
        for (const Queue& queue : list.queues) {
            if (shared->ended)
                return;
            const QueueAddress address{.server = server, .queue = queue.name};
            FetchedPpd ppd = fetchPpd(address, kLimits);
            if (!ppd.error.empty())
                error = ppd.error;
            if (!ppd.error.empty() || ppd.text.empty())
                continue;
            post({.printers = {{.name = queueTitle(queue),
                                .ppdPath = {},
                                .ppdText = std::move(ppd.text),
                                .options = queue.options,
                                .queue = address,
                                .instance = queue.instance,
                                .isDefault = queue.isDefault}},
                  .error = {}});
        }
        post({.printers = {}, .error = error, .isLast = true});
    });
}

} // namespace host
