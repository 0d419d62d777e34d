#include "host/window/printers.h"

#include "host/session/program_files.h"
#include "printing/printer_description.h"

#include <QCoreApplication>

#include <algorithm>
#include <filesystem>

namespace host {
namespace {

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
        const auto text =
            entry.path().extension() == ".ppd" ? printing::PrinterDescription::readFile(path, reason) : std::nullopt;
        if (text)
            printers.push_back(
                {.name = printing::PrinterDescription::shortNicknameIn(*text).value_or(entry.path().stem().string()),
                 .ppdPath = path,
                 .ppdText = {},
                 .options = {},
                 .queue = {},
                 .isSample = true});
    }
    std::ranges::sort(printers, {}, &Printer::ppdPath);
    return printers;
}

template <typename Answer>
void PrinterSearch::ask(std::function<Answer()> question, std::function<void(const Answer&)> tell) {
    std::erase_if(requests_, [](const std::future<void>& request) {
        return request.wait_for(std::chrono::seconds(0)) == std::future_status::ready;
    });
    requests_.push_back(std::async(std::launch::async, [ended = ended_, question, tell] {
        QMetaObject::invokeMethod(
            QCoreApplication::instance(),
            [ended, tell, answer = question()] {
                if (!*ended)
                    tell(answer);
            },
            Qt::QueuedConnection);
    }));
}

void PrinterSearch::findQueues(const std::string& server, std::function<void(const Found&)> tell) {
    const auto givenUp = std::make_shared<std::string>();
    ask<Found>(
        [server, passwords = passwords_.prompt(Text::Continue, givenUp)] {
            const QueueList list = listQueues(server, kSearchLimits, passwords);
            Found found{.printers = {}, .error = list.error};
            for (const Queue& queue : list.queues)
                found.printers.push_back({.name = queueTitle(queue),
                                          .ppdPath = {},
                                          .ppdText = {},
                                          .options = queue.options,
                                          .queue = QueueAddress{.server = server, .queue = queue.name},
                                          .instance = queue.instance,
                                          .isDefault = queue.isDefault});
            return found;
        },
        [this, givenUp, tell = std::move(tell)](Found found) {
            found.error = passwords_.errorInWords(found.error, givenUp, Text::AskedByOpening);
            tell(found);
        });
}

void PrinterSearch::fetchPpdOf(const QueueAddress& address, std::function<void(const FetchedPpd&)> tell) {
    const auto givenUp = std::make_shared<std::string>();
    ask<FetchedPpd>([address, passwords = passwords_.prompt(
                                  Text::Continue, givenUp)] { return fetchPpd(address, kSearchLimits, passwords); },
                    [this, givenUp, tell = std::move(tell)](FetchedPpd ppd) {
                        ppd.error = passwords_.errorInWords(ppd.error, givenUp, Text::AskedByChoosing);
                        tell(ppd);
                    });
}

} // namespace host
