#include "host/jobs/folder_submission.h"

#include "host/jobs/document.h"
#include "host/jobs/job_text.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <span>
#include <string_view>
#include <system_error>
#include <unistd.h>

namespace host {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kPieceBytes = 1 << 16;
constexpr int kMaximumNumber = 1'000'000;      // of a name that is taken
constexpr std::size_t kMaximumStemBytes = 200; // leaves room, in a name of 255 bytes, for a number
constexpr std::size_t kMaximumExtensionBytes = 40;

std::string systemMessage(int number) {
    return std::generic_category().message(number);
}

/// A file's name, in two parts between which a number fits.
struct FileName {
    std::string stem;
    std::string extension;

    std::string numbered(int number) const {
        return stem + (number == 1 ? "" : "-" + std::to_string(number)) + extension;
    }
};

constexpr std::string_view kTicketStem = "ticket";

FileName ticketName() {
    return {std::string(kTicketStem), ".json"};
}

/// The copy's name: the document's own, as plain text, and never one that looks like a ticket's.
FileName copyName(const std::string& documentPath) {
    const fs::path name(documentName(documentPath));
    FileName copy{name.stem().string(), name.extension().string()};
    if (copy.extension.size() > kMaximumExtensionBytes)
        copy = {name.string(), {}};
    copy.stem = plainText(copy.stem, kMaximumStemBytes);
    if (copy.stem.find_first_not_of('.') == std::string::npos) // "." and ".." are folders
        copy.stem = "document";
    if (copy.stem.starts_with(kTicketStem) && copy.extension == ".json")
        copy.stem.insert(0, "document-");
    return copy;
}

/// A file that is written under a name of its own and gets the right one when it is complete. Removed if it never does.
class NewFile {
public:
    explicit NewFile(const fs::path& folder) : folder_(folder) {
        int attempt = 0;
        do {
            temporary_ = folder_ / (".job-" + std::to_string(::getpid()) + "-" + std::to_string(attempt) + ".part");
            descriptor_ = ::open(temporary_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        } while (descriptor_ < 0 && errno == EEXIST && ++attempt < kMaximumNumber);
        if (descriptor_ >= 0)
            return;
        errno_ = errno;
        temporary_.clear();
    }
    ~NewFile() {
        close();
        if (!temporary_.empty())
            ::unlink(temporary_.c_str());
    }
    NewFile(const NewFile&) = delete;
    NewFile& operator=(const NewFile&) = delete;

    int error() const { return errno_; } ///< the first failure's errno, or 0

    void write(std::string_view bytes) {
        while (errno_ == 0 && !bytes.empty()) {
            const ssize_t count = ::write(descriptor_, bytes.data(), bytes.size());
            if (count >= 0)
                bytes.remove_prefix(static_cast<std::size_t>(count));
            else if (errno != EINTR)
                errno_ = errno;
        }
    }

    /// Puts the complete file in its place, under the first free name. Empty if that failed: error() tells why.
    fs::path place(const FileName& name) {
        if (errno_ == 0 && ::fsync(descriptor_) != 0 && errno != EINVAL) // EINVAL: a file system without it
            errno_ = errno;
        close();
        for (int number = 1; errno_ == 0 && number <= kMaximumNumber; ++number) {
            fs::path target = folder_ / name.numbered(number);
            if (renameWithoutReplacing(target)) {
                temporary_.clear();
                return target;
            }
            if (errno != EEXIST)
                errno_ = errno;
        }
        return {};
    }

private:
    void close() {
        if (descriptor_ >= 0 && ::close(std::exchange(descriptor_, -1)) != 0 && errno_ == 0)
            errno_ = errno;
    }

    bool renameWithoutReplacing(const fs::path& target) const {
        if (::renameat2(AT_FDCWD, temporary_.c_str(), AT_FDCWD, target.c_str(), RENAME_NOREPLACE) == 0)
            return true;
        if (errno != EINVAL && errno != ENOSYS)
            return false;
        // Some file systems, NFS among them, cannot do this in one step.
        if (::link(temporary_.c_str(), target.c_str()) != 0)
            return false;
        ::unlink(temporary_.c_str());
        return true;
    }

    fs::path folder_;
    fs::path temporary_;
    int descriptor_ = -1;
    int errno_ = 0;
};

JobResult failed(std::string error) {
    return {false, 0, {}, std::move(error), {}};
}

std::string unwritable(const std::string& folder, int number) {
    return "The job cannot be written to the folder " + quotedText(folder) + " (" + systemMessage(number) +
           "): choose a folder with free space in which you may write.";
}

std::string refusalForTicket(const JobRequest& request) {
    const auto bad = std::ranges::find_if(request.options, [](const JobOption& option) {
        return option.name.empty() || !isUtf8(option.name) || !isUtf8(option.value);
    });
    if (bad != request.options.end())
        return "The option " + quotedText(bad->name) + " has no name or is not UTF-8 text: correct it or leave it out.";
    return refusalForCopies(request.copies);
}

std::string ticketText(const JobRequest& request, const std::string& documentCopy) {
    nlohmann::ordered_json ticket;
    ticket["title"] = jobTitle(request);
    ticket["copies"] = request.copies;
    ticket["document"] = documentCopy;
    ticket["options"] = nlohmann::ordered_json::object();
    for (const JobOption& option : request.options)
        ticket["options"][option.name] = option.value;
    return ticket.dump(2) + "\n";
}

/// Copies the document into the file. Empty, or the sentence that says why it failed; a failure of the file itself is
/// left to the file's error().
std::string copyDocument(Document& document, NewFile& file, const std::string& folder, const JobProgress& progress) {
    std::array<char, kPieceBytes> piece;
    std::uint64_t copied = 0;
    while (file.error() == 0) {
        const std::ptrdiff_t count = document.read(piece);
        if (count < 0)
            return document.error();
        if (count == 0)
            break;
        file.write({piece.data(), static_cast<std::size_t>(count)});
        copied += static_cast<std::uint64_t>(count);
        if (progress && !progress(copied, document.size()))
            return "The job for the folder " + quotedText(folder) + " was given up while its document was copied.";
    }
    return {};
}

} // namespace

JobResult submitToFolder(const std::string& folder, const JobRequest& request, const JobProgress& progress) {
    if (folder.empty() || folder.find('\0') != std::string::npos)
        return failed("No folder was named: choose the one to print to.");
    Document document;
    std::string error = refusalForTicket(request);
    if (error.empty())
        error = document.open(request.documentPath);
    if (!error.empty())
        return failed(std::move(error));

    std::error_code status;
    fs::create_directories(folder, status);
    if (status || !fs::is_directory(folder, status))
        return failed(unwritable(folder, status ? status.value() : ENOTDIR));

    NewFile copy(folder);
    error = copyDocument(document, copy, folder, progress);
    if (!error.empty())
        return failed(std::move(error));
    const fs::path copyPath = copy.place(copyName(request.documentPath));
    if (copyPath.empty())
        return failed(unwritable(folder, copy.error()));

    NewFile ticket(folder);
    ticket.write(ticketText(request, copyPath.filename().string()));
    const fs::path ticketPath = ticket.place(ticketName());
    if (ticketPath.empty()) {
        ::unlink(copyPath.c_str());
        return failed(unwritable(folder, ticket.error()));
    }
    return {true, 0, ticketPath.string(), {}, {}};
}

} // namespace host
