#include "tests/host/jobs/plain_user.h"

#include <array>
#include <fstream>
#include <grp.h>
#include <pwd.h>
#include <sched.h>
#include <stdexcept>
#include <sys/mount.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace test_support {
namespace {

constexpr int kFinished = 0;
constexpr int kStillRoot = 1;

void become(const std::string& name) {
    const passwd* user = ::getpwnam(name.c_str());
    if (user == nullptr || ::setgroups(0, nullptr) != 0 || ::setgid(user->pw_gid) != 0 || ::setuid(user->pw_uid) != 0)
        ::_exit(kStillRoot);
}

} // namespace

std::string plainUser() {
    return ::geteuid() == 0 ? "nobody" : "";
}

std::string asPlainUser(const std::function<std::string()>& function) {
    std::array<int, 2> channel{};
    if (::pipe(channel.data()) != 0)
        throw std::runtime_error("no pipe");
    const pid_t child = ::fork();
    if (child == 0) {
        if (!plainUser().empty())
            become(plainUser());
        const std::string answer = function();
        const ssize_t written = ::write(channel[1], answer.data(), answer.size());
        ::_exit(written == static_cast<ssize_t>(answer.size()) ? kFinished : kStillRoot);
    }
    ::close(channel[1]);
    std::string answer;
    std::array<char, 4096> buffer;
    for (ssize_t count = 0; (count = ::read(channel[0], buffer.data(), buffer.size())) > 0;)
        answer.append(buffer.data(), static_cast<std::size_t>(count));
    ::close(channel[0]);
    int status = -1;
    ::waitpid(child, &status, 0);
    if (status != 0)
        throw std::runtime_error("the plain user's process failed");
    return answer;
}

bool mountSmallFileSystem(const std::filesystem::path& folder, std::size_t bytes) {
    const std::string user = std::to_string(::geteuid()), group = std::to_string(::getegid());
    ::prctl(PR_SET_DUMPABLE, 1); // a process that changed its user may not write its own maps
    if (::unshare(CLONE_NEWUSER | CLONE_NEWNS) != 0)
        return false;
    std::ofstream("/proc/self/setgroups") << "deny";
    std::ofstream("/proc/self/uid_map") << user << " " << user << " 1";
    std::ofstream("/proc/self/gid_map") << group << " " << group << " 1";
    const std::string options = "mode=700,size=" + std::to_string(bytes) + ",uid=" + user + ",gid=" + group;
    return ::mount("none", folder.c_str(), "tmpfs", 0, options.c_str()) == 0;
}

} // namespace test_support
