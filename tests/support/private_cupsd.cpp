#include "tests/support/private_cupsd.h"

#include <arpa/inet.h>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cups/cups.h>
#include <fcntl.h>
#include <grp.h>
#include <memory>
#include <netinet/in.h>
#include <pwd.h>
#include <sstream>
#include <stdexcept>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <system_error>
#include <thread>
#include <unistd.h>

namespace test_support {
namespace {

namespace fs = std::filesystem;
using std::chrono::milliseconds;
using std::chrono::steady_clock;

constexpr auto kStartDeadline = std::chrono::seconds(30);
constexpr auto kPollInterval = milliseconds(10);
constexpr int kPortAttempts = 5;
constexpr const char* kServiceUser = "lp"; // runs filters and backends where the server runs as root
const fs::path kSystemHelper = "/usr/lib/cups/daemon/cups-exec";

/// Folders of a server, below its own.
constexpr const char* kSubfolders[] = {
    "etc",        "etc/ppd",       "bin",   "bin/filter", "bin/backend", "bin/daemon", "bin/cgi-bin", "share",
    "share/mime", "share/banners", "cache", "state",      "spool",       "spool/tmp",  "log",         "records"};

[[noreturn]] void fail(const std::string& what) {
    throw std::runtime_error("private print server: " + what);
}

[[noreturn]] void failWithErrno(const std::string& what) {
    fail(what + ": " + std::generic_category().message(errno));
}

/// Asks until the answer is yes or the deadline is over; the last answer.
template <typename Condition>
bool becomesTrue(milliseconds deadline, Condition condition) {
    const auto end = steady_clock::now() + deadline;
    while (!condition()) {
        if (steady_clock::now() > end)
            return false;
        std::this_thread::sleep_for(kPollInterval);
    }
    return true;
}

int freeLoopbackPort() {
    const int descriptor = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t length = sizeof address;
    auto* generic = reinterpret_cast<sockaddr*>(&address);
    if (descriptor < 0 || ::bind(descriptor, generic, length) != 0 || ::getsockname(descriptor, generic, &length) != 0)
        failWithErrno("no loopback port");
    ::close(descriptor);
    return ntohs(address.sin_port);
}

passwd userNamed(const std::string& name) {
    const passwd* user = ::getpwnam(name.c_str());
    if (user == nullptr)
        fail("there is no user " + name);
    return *user;
}

/// Starts a program whose output goes to a file, as another user if one is given. It dies with this process.
pid_t spawn(const std::vector<std::string>& arguments, const fs::path& output, const passwd* user,
            const std::string& server) {
    std::vector<char*> argv;
    for (const std::string& argument : arguments)
        argv.push_back(const_cast<char*>(argument.c_str()));
    argv.push_back(nullptr);
    const pid_t child = ::fork();
    if (child != 0)
        return child;
    const int descriptor = ::open(output.c_str(), O_WRONLY | O_CREAT | O_APPEND, 0666);
    ::dup2(descriptor, STDOUT_FILENO);
    ::dup2(descriptor, STDERR_FILENO);
    ::setenv("CUPS_SERVER", server.c_str(), 1);
    if (user != nullptr && (::setgroups(0, nullptr) != 0 || ::setgid(user->pw_gid) != 0 || ::setuid(user->pw_uid) != 0))
        ::_exit(126);
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    ::execv(argv.front(), argv.data());
    ::_exit(127);
}

/// The PPD's text with every document going to the recording filter.
std::string withRecordingFilter(const std::string& ppd) {
    std::istringstream lines(ppd);
    std::string text;
    for (std::string line; std::getline(lines, line);)
        if (!line.starts_with("*cupsFilter") && !line.starts_with("*cupsPreFilter"))
            text += line + "\n";
    return text + "*cupsFilter: \"application/octet-stream 0 recording_filter\"\n";
}

} // namespace

PrivateCupsd::PrivateCupsd() : PrivateCupsd(Options{}) {}

PrivateCupsd::PrivateCupsd(const Options& options) {
    prepareFolder(options);
    start(options);
}

PrivateCupsd::~PrivateCupsd() {
    kill();
    // A printer that still waits has no server that ends it.
    if (const int gate = ::open((recordFolder() / "gate").c_str(), O_WRONLY | O_NONBLOCK | O_CLOEXEC); gate >= 0)
        ::close(gate);
}

std::string PrivateCupsd::socket() const {
    return folder() / "socket";
}

std::string PrivateCupsd::hostAndPort() const {
    return "127.0.0.1:" + std::to_string(port_);
}

fs::path PrivateCupsd::recordFolder() const {
    return folder() / "records";
}

std::string PrivateCupsd::errorLog() const {
    return contentsOf(folder() / "log/error");
}

void PrivateCupsd::prepareFolder(const Options& options) {
    for (const char* name : kSubfolders)
        fs::create_directory(folder() / name);
    const fs::path support = fs::path(CV_SOURCE_DIR) / "tests/support";
    fs::copy_file(support / "recording_filter.sh", folder() / "bin/filter/recording_filter");
    fs::copy_file(support / "recording_backend.sh", folder() / "bin/backend/recorder");
    fs::create_symlink(kSystemHelper, folder() / "bin/daemon/cups-exec");
    folder_.write("share/mime/mime.types", "application/octet-stream string(0,#CUPS-BANNER)\n"
                                           "application/vnd.cups-raw\n");
    for (const char* sheet : {"classified", "secret"}) // for "job-sheets"
        folder_.write(fs::path("share/banners") / sheet, "#CUPS-BANNER\n");
    folder_.write("share/mime/mime.convs", "");
    const fs::path gate = folder() / "records/gate";
    if (::mkfifo(gate.c_str(), 0600) != 0 || ::chmod(gate.c_str(), 0666) != 0)
        failWithErrno("cannot make " + gate.string());
    if (::geteuid() != 0)
        return;
    if (options.user.empty()) {
        const passwd service = userNamed(kServiceUser);
        if (::chown((folder() / "records").c_str(), service.pw_uid, service.pw_gid) != 0)
            failWithErrno("cannot give the records to " + std::string(kServiceUser));
        return;
    }
    const passwd owner = userNamed(options.user);
    for (const auto& entry : fs::recursive_directory_iterator(folder()))
        if (::lchown(entry.path().c_str(), owner.pw_uid, owner.pw_gid) != 0)
            failWithErrno("cannot give " + entry.path().string() + " to " + options.user);
    if (::chown(folder().c_str(), owner.pw_uid, owner.pw_gid) != 0)
        failWithErrno("cannot give " + folder().string() + " to " + options.user);
}

void PrivateCupsd::writeConfiguration(const Options& options) const {
    const std::string root = folder().string();
    folder_.write("etc/cupsd.conf", "Listen " + socket() + "\nListen " + hostAndPort() +
                                        "\nLogLevel info\nDirtyCleanInterval 0\nBrowsing No\nWebInterface No\n"
                                        "DefaultAuthType None\nIdleExitTimeout 0\n"
                                        "<Location />\n  Order allow,deny\n  Allow all\n</Location>\n"
                                        "<Policy default>\n  JobPrivateAccess all\n  JobPrivateValues none\n"
                                        "  <Limit All>\n    Order deny,allow\n    Allow all\n  </Limit>\n"
                                        "</Policy>\n" +
                                        options.configuration);
    std::string files = "FatalErrors all\nSetEnv CV_RECORDS " + root + "/records\n";
    constexpr std::pair<const char*, const char*> kPlaces[] = {
        {"ServerRoot", "etc"},     {"ServerBin", "bin"},     {"DataDir", "share"},      {"CacheDir", "cache"},
        {"StateDir", "state"},     {"RequestRoot", "spool"}, {"TempDir", "spool/tmp"},  {"AccessLog", "log/access"},
        {"ErrorLog", "log/error"}, {"PageLog", "log/page"},  {"DocumentRoot", "share"},
    };
    for (const auto& [directive, place] : kPlaces)
        files += std::string(directive) + " " + root + "/" + place + "\n";
    if (::geteuid() == 0 && options.user.empty())
        files += "User " + std::string(kServiceUser) + "\nGroup " + kServiceUser + "\n";
    folder_.write("etc/cups-files.conf", files);
}

bool PrivateCupsd::answers() const {
    const std::unique_ptr<http_t, void (*)(http_t*)> http(
        httpConnect2(socket().c_str(), 0, nullptr, AF_UNSPEC, HTTP_ENCRYPTION_NEVER, 1, 1000, nullptr), &httpClose);
    return http != nullptr;
}

void PrivateCupsd::start(const Options& options) {
    std::optional<passwd> user;
    if (::geteuid() == 0 && !options.user.empty())
        user = userNamed(options.user);
    for (int attempt = 0; attempt < kPortAttempts; ++attempt) { // the port may be taken until the server has it
        port_ = freeLoopbackPort();
        writeConfiguration(options);
        pid_ =
            spawn({"/usr/sbin/cupsd", "-f", "-c", folder() / "etc/cupsd.conf", "-s", folder() / "etc/cups-files.conf"},
                  folder() / "log/output", user ? &*user : nullptr, socket());
        if (pid_ < 0)
            failWithErrno("cannot start a process");
        bool ended = false;
        const bool up = becomesTrue(kStartDeadline, [this, &ended] {
            ended = ::waitpid(pid_, nullptr, WNOHANG) == pid_;
            return ended || answers();
        });
        if (up && !ended)
            return;
        if (ended)
            pid_ = -1;
        kill();
    }
    fail("it did not start: " + contentsOf(folder() / "log/output") + errorLog());
}

void PrivateCupsd::runClient(const std::vector<std::string>& arguments) const {
    const fs::path output = folder() / "client-output";
    const pid_t child = spawn(arguments, output, nullptr, socket());
    int status = 0;
    if (child < 0 || ::waitpid(child, &status, 0) != child || status != 0)
        fail(arguments.front() + " failed: " + contentsOf(output));
}

void PrivateCupsd::addQueue(const std::string& name, const fs::path& ppd, const Printer& printer) {
    const std::string text = contentsOf(ppd);
    if (text.empty())
        fail("cannot read the PPD " + ppd.string());
    const fs::path copy = folder() / "queue.ppd";
    folder_.write(copy, withRecordingFilter(text));
    const std::string address = "recorder:/filter/" + std::to_string(printer.filterStatus) +
                                (printer.reason.empty() ? "" : "/reason/" + printer.reason) +
                                (printer.waits ? "/waits" : "") + "/exit/" + std::to_string(printer.backendStatus);
    runClient({"/usr/sbin/lpadmin", "-p" + name, "-E", "-v", address, "-P", copy, "-o",
               printer.wantsCredentials ? "auth-info-required=username,password" : "auth-info-required=none"});
}

void PrivateCupsd::addQueueWithoutPpd(const std::string& name) {
    runClient({"/usr/sbin/lpadmin", "-p" + name, "-v", "recorder:/filter/0/exit/0"});
}

void PrivateCupsd::deleteQueue(const std::string& name) {
    runClient({"/usr/sbin/lpadmin", "-x" + name});
}

void PrivateCupsd::letPrint() const {
    int gate = -1;
    if (!becomesTrue(kStartDeadline, [this, &gate] { // no writer is let in before there is a reader
            gate = ::open((recordFolder() / "gate").c_str(), O_WRONLY | O_NONBLOCK | O_CLOEXEC);
            return gate >= 0;
        }))
        fail("no printer waits: " + errorLog());
    ::close(gate);
}

void PrivateCupsd::pauseQueue(const std::string& name) {
    runClient({"/usr/sbin/cupsdisable", name});
}

void PrivateCupsd::rejectJobs(const std::string& name) {
    runClient({"/usr/sbin/cupsreject", name});
}

void PrivateCupsd::kill() {
    if (pid_ < 0)
        return;
    ::kill(pid_, SIGKILL);
    ::waitpid(pid_, nullptr, 0);
    pid_ = -1;
}

void PrivateCupsd::freeze() {
    ::kill(pid_, SIGSTOP);
    int status = 0;
    ::waitpid(pid_, &status, WUNTRACED); // stopped for certain
}

void PrivateCupsd::thaw() {
    ::kill(pid_, SIGCONT);
}

std::optional<JobRecord> PrivateCupsd::waitForRecord(int jobId, milliseconds deadline) const {
    const fs::path stem = recordFolder() / ("job-" + std::to_string(jobId));
    const fs::path arguments = stem.string() + ".arguments";
    if (!becomesTrue(deadline, [&arguments] { return fs::exists(arguments); }))
        return std::nullopt;
    std::istringstream stream(contentsOf(arguments));
    std::vector<std::string> words;
    for (std::string word; std::getline(stream, word, '\0');)
        words.push_back(word);
    if (words.size() < 5)
        fail("the record " + arguments.string() + " is damaged");
    JobRecord record{words[1], words[2], words[3], words[4], {}, contentsOf(stem.string() + ".data")};
    cups_option_t* options = nullptr;
    const int count = cupsParseOptions(record.optionText.c_str(), 0, &options);
    for (int index = 0; index < count; ++index)
        record.options[options[index].name] = options[index].value;
    cupsFreeOptions(count, options);
    return record;
}

std::map<int, std::string> PrivateCupsd::jobStates() const {
    const std::unique_ptr<http_t, void (*)(http_t*)> http(
        httpConnect2(socket().c_str(), 0, nullptr, AF_UNSPEC, HTTP_ENCRYPTION_NEVER, 1, 1000, nullptr), &httpClose);
    cups_job_t* jobs = nullptr;
    const int count = cupsGetJobs2(http.get(), &jobs, nullptr, 0, CUPS_WHICHJOBS_ALL);
    if (count < 0)
        fail("it does not list its jobs");
    std::map<int, std::string> states;
    for (int index = 0; index < count; ++index)
        states[jobs[index].id] = ippEnumString("job-state", jobs[index].state);
    cupsFreeJobs(count, jobs);
    return states;
}

std::string PrivateCupsd::jobAttribute(int jobId, const std::string& name) const {
    const std::unique_ptr<http_t, void (*)(http_t*)> http(
        httpConnect2(socket().c_str(), 0, nullptr, AF_UNSPEC, HTTP_ENCRYPTION_NEVER, 1, 1000, nullptr), &httpClose);
    ipp_t* request = ippNewRequest(IPP_OP_GET_JOB_ATTRIBUTES);
    const std::string uri = "ipp://localhost/jobs/" + std::to_string(jobId);
    ippAddString(request, IPP_TAG_OPERATION, IPP_TAG_URI, "job-uri", nullptr, uri.c_str());
    ippAddString(request, IPP_TAG_OPERATION, IPP_TAG_NAME, "requesting-user-name", nullptr, cupsUser());
    const std::unique_ptr<ipp_t, void (*)(ipp_t*)> answer(cupsDoRequest(http.get(), request, "/"), &ippDelete);
    if (!answer || ippGetStatusCode(answer.get()) > IPP_STATUS_OK_CONFLICTING)
        fail("it does not tell of the job " + std::to_string(jobId));
    ipp_attribute_t* attribute = ippFindAttribute(answer.get(), name.c_str(), IPP_TAG_ZERO);
    std::string text;
    for (int index = 0; index < ippGetCount(attribute); ++index) {
        const char* word = ippGetString(attribute, index, nullptr);
        text += (index == 0 ? "" : ",") + (word != nullptr ? word : std::to_string(ippGetInteger(attribute, index)));
    }
    return text;
}

} // namespace test_support
