// The file of the user's answers, where the disk, the folder or another process is against it: never lost, never half
// written. The alerts go on as if nothing were stored, and the next writing tries again.

#include "tests/support/child_process.h"
#include "tests/support/scratch_folder.h"

#include "toolkit/user_defaults.h"

#include <climits>
#include <csignal>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <set>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using namespace test_support;
using toolkit::FileUserDefaults;
using toolkit::Value;
using toolkit::ValueMap;

constexpr const char* kDomain = "com.corvane.print.pde.CVInkQuality12";
constexpr const char* kFile = "com.corvane.print.pde.CVInkQuality12.json";

class Preferences : public testing::Test {
protected:
    [[nodiscard]] std::filesystem::path folder() const { return scratch.path() / "corvane-print"; }
    [[nodiscard]] std::filesystem::path file() const { return folder() / kFile; }

    // One answer, stored as a panel stores it.
    bool storeAnswer(const std::string& key, const Value& value) const {
        FileUserDefaults defaults(folder());
        ValueMap domain = defaults.persistentDomainForName(kDomain).value_or(ValueMap());
        domain.insert_or_assign(key, value);
        defaults.setPersistentDomainForName(std::move(domain), kDomain);
        return defaults.synchronize();
    }
    [[nodiscard]] std::optional<ValueMap> stored() const {
        return FileUserDefaults(folder()).persistentDomainForName(kDomain);
    }
    [[nodiscard]] std::set<std::string> filesInTheFolder() const {
        std::set<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(folder()))
            names.insert(entry.path().filename());
        return names;
    }

    ScratchFolder scratch;
};

TEST_F(Preferences, ADiskThatFillsUpAtAnyByteLeavesTheOldFileWhole) {
    ASSERT_TRUE(storeAnswer("Landscape Instruction", false));
    const std::string before = contentsOf(file());
    const std::set<std::string> files = filesInTheFolder();
    const std::size_t needed = before.size() + std::string(",\n  \"Portrait Instruction\": false").size();
    for (std::size_t room = 0; room < needed; ++room) {
        SCOPED_TRACE(room);
        EXPECT_TRUE(succeeded(startProcess([&] {
            ::signal(SIGXFSZ, SIG_IGN); // writing fails instead
            const rlimit limit{.rlim_cur = room, .rlim_max = room};
            return ::setrlimit(RLIMIT_FSIZE, &limit) == 0 && !storeAnswer("Portrait Instruction", false);
        })));
        ASSERT_EQ(contentsOf(file()), before);
        ASSERT_EQ(filesInTheFolder(), files); // nothing is left behind
    }
    EXPECT_TRUE(storeAnswer("Portrait Instruction", false));
    EXPECT_EQ(contentsOf(file()).size(), needed);
}

TEST_F(Preferences, AFileThatIsCutShortAnywhereIsSetAsideAndWrittenAnew) {
    ASSERT_TRUE(storeAnswer("Landscape Instruction", false));
    const std::string whole = contentsOf(file());
    for (std::size_t length = 0; length + 2 < whole.size(); ++length) { // without the brace and the line's end
        SCOPED_TRACE(length);
        std::filesystem::resize_file(file(), length);
        EXPECT_EQ(stored(), std::nullopt); // every alert is shown
        ASSERT_TRUE(storeAnswer("Manual Instruction", false));
        EXPECT_EQ(stored(), (ValueMap{{"Manual Instruction", false}}));
        EXPECT_EQ(contentsOf(file().string() + ".damaged"), whole.substr(0, length));
        std::ofstream(file(), std::ios::binary) << whole;
    }
}

TEST_F(Preferences, AFileThatGoesWhileAnAlertIsShownIsWrittenAgain) {
    ASSERT_TRUE(storeAnswer("Landscape Instruction", false));
    FileUserDefaults defaults(folder());
    ValueMap domain = defaults.persistentDomainForName(kDomain).value();
    std::filesystem::remove_all(folder());
    domain.insert_or_assign("Portrait Instruction", false);
    defaults.setPersistentDomainForName(std::move(domain), kDomain);
    ASSERT_TRUE(defaults.synchronize());
    EXPECT_EQ(stored(), (ValueMap{{"Portrait Instruction", false}})); // what another process removed stays removed
}

TEST_F(Preferences, AConfigurationFolderThatIsALinkElsewhereIsFollowed) {
    std::filesystem::create_directories(scratch.path() / "elsewhere");
    std::filesystem::create_directory_symlink(scratch.path() / "elsewhere", folder());
    ASSERT_TRUE(storeAnswer("Landscape Instruction", false));
    EXPECT_TRUE(std::filesystem::is_symlink(folder()));
    EXPECT_EQ(contentsOf(scratch.path() / "elsewhere" / kFile), contentsOf(file()));
    EXPECT_EQ(stored(), (ValueMap{{"Landscape Instruction", false}}));
}

TEST_F(Preferences, AConfigurationFolderThatIsALinkToNowhereIsReported) {
    std::filesystem::create_directory_symlink(scratch.path() / "nowhere", folder());
    EXPECT_EQ(stored(), std::nullopt);
    EXPECT_FALSE(storeAnswer("Landscape Instruction", false));
    EXPECT_TRUE(std::filesystem::is_symlink(folder()));
}

TEST_F(Preferences, TwoProcessesThatWriteAtOnceLoseNothingAndAReaderNeverSeesHalfAFile) {
    constexpr int kAnswers = 60;
    ASSERT_TRUE(storeAnswer("first", true));
    std::vector<pid_t> writers;
    for (const char* name : {"a", "b"})
        writers.push_back(startProcess([&] {
            bool sound = true;
            for (int answer = 0; answer < kAnswers; ++answer)
                sound = storeAnswer(name + std::to_string(answer), answer) && sound;
            return sound;
        }));
    int status = 0, reads = 0;
    for (std::size_t ended = 0; ended < writers.size();) {
        ASSERT_TRUE(nlohmann::json::parse(contentsOf(file()), nullptr, false).is_object());
        ++reads;
        if (::waitpid(writers[ended], &status, WNOHANG) == writers[ended]) {
            EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
            ++ended;
        }
    }
    EXPECT_EQ(stored().value().size(), 2U * kAnswers + 1);
    RecordProperty("reads", reads);
}

TEST_F(Preferences, AProcessThatIsKilledWhileItWritesLeavesAWholeFileAndNothingForLong) {
    constexpr int kKilled = 40;
    ASSERT_TRUE(storeAnswer("first", true));
    for (int round = 0; round < kKilled; ++round) {
        const auto before = std::filesystem::last_write_time(file());
        const pid_t writer = startProcess([&] {
            for (int answer = 0; answer < INT_MAX; ++answer)
                storeAnswer("answer", answer);
            return true;
        });
        while (std::filesystem::last_write_time(file()) == before) { // it is in the midst of it
        }
        ::kill(writer, SIGKILL);
        EXPECT_TRUE(WIFSIGNALED(statusOf(writer)));
        const auto json = nlohmann::json::parse(contentsOf(file()), nullptr, false);
        ASSERT_TRUE(json.is_object());
        EXPECT_EQ(json["first"], true);
    }
    EXPECT_TRUE(storeAnswer("last", true)); // a lock ends with its process
    // and what the killed ones were writing goes
    EXPECT_EQ(filesInTheFolder(), (std::set<std::string>{kFile, std::string(kFile) + ".lock"}));
}

} // namespace
