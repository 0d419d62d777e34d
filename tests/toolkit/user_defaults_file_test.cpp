#include "toolkit/user_defaults.h"

#include "tests/support/child_process.h"
#include "tests/support/scratch_folder.h"

#include <functional>
#include <gmock/gmock.h>
#include <grp.h>
#include <nlohmann/json.hpp>
#include <set>
#include <sys/stat.h>
#include <unistd.h>

namespace toolkit {
namespace {

using namespace test_support;
using testing::HasSubstr;

constexpr const char* kDomain = "com.corvane.test";

class FileDefaults : public testing::Test {
protected:
    [[nodiscard]] std::filesystem::path folder() const { return scratch.path() / "corvane-print"; }
    [[nodiscard]] std::filesystem::path file() const { return folder() / (std::string(kDomain) + ".json"); }
    void writeFile(std::string_view contents) const {
        scratch.write(std::filesystem::path("corvane-print") / file().filename(), contents);
    }
    [[nodiscard]] nlohmann::json fileAsJson() const {
        return nlohmann::json::parse(contentsOf(file()), nullptr, false);
    }
    bool store(ValueMap domain) {
        defaults.setPersistentDomainForName(std::move(domain), kDomain);
        return defaults.synchronize();
    }
    // As another process of the same user sees and changes the preferences.
    [[nodiscard]] bool anotherProcessSets(const char* key, Value value) const {
        return succeeded(startProcess([&] {
            FileUserDefaults other(folder());
            ValueMap domain = other.persistentDomainForName(kDomain).value_or(ValueMap());
            domain.insert_or_assign(key, std::move(value));
            other.setPersistentDomainForName(std::move(domain), kDomain);
            return other.synchronize();
        }));
    }
    // Whether the work succeeds for a user whom the files' permissions bind: root writes everywhere.
    static bool succeedsForAnOrdinaryUser(const std::function<bool()>& work) {
        constexpr uid_t kNobody = 65534;
        return succeeded(startProcess([&] {
            if (::geteuid() == 0 && (::setgroups(0, nullptr) != 0 || ::setgid(kNobody) != 0 || ::setuid(kNobody) != 0))
                return false;
            return work();
        }));
    }
    [[nodiscard]] std::set<std::string> filesBesideTheLock() const {
        std::set<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(folder()))
            if (entry.path().extension() != ".lock")
                names.insert(entry.path().filename());
        return names;
    }

    ScratchFolder scratch;
    FileUserDefaults defaults{folder()};
};

TEST_F(FileDefaults, AMissingFileHoldsNothing) {
    EXPECT_EQ(defaults.persistentDomainForName(kDomain), std::nullopt);
    EXPECT_FALSE(std::filesystem::exists(folder()));
}

TEST_F(FileDefaults, WhatWasSetIsReadBackBeforeItIsWritten) {
    defaults.setPersistentDomainForName({{"a", Value(1)}}, kDomain);
    EXPECT_EQ(defaults.persistentDomainForName(kDomain), (ValueMap{{"a", Value(1)}}));
    EXPECT_FALSE(std::filesystem::exists(file()));
}

TEST_F(FileDefaults, SynchronizingMakesTheFolderAndWritesOneFileForTheDomain) {
    ASSERT_TRUE(store({{"Landscape Instruction", Value(false)}}));
    EXPECT_EQ(fileAsJson(), nlohmann::json({{"Landscape Instruction", false}}));
    EXPECT_EQ(filesBesideTheLock(), std::set<std::string>({file().filename()}));
}

TEST_F(FileDefaults, ANewProcessReadsEveryKindOfValue) {
    const ValueMap domain{{"flag", Value(true)},
                          {"integer", Value(-5)},
                          {"real", Value(0.1)},
                          {"text", Value("\xE6\x97\xA5")},
                          {"list", Value(ValueList{Value(1)})},
                          {"map", Value(ValueMap{{"a", Value("b")}})}};
    ASSERT_TRUE(store(domain));
    EXPECT_EQ(FileUserDefaults(folder()).persistentDomainForName(kDomain), domain);
}

TEST_F(FileDefaults, EachDomainHasItsFile) {
    defaults.setPersistentDomainForName({{"a", Value(1)}}, "com.corvane.one");
    defaults.setPersistentDomainForName({{"a", Value(2)}}, "com.corvane.two");
    ASSERT_TRUE(defaults.synchronize());
    EXPECT_EQ(filesBesideTheLock(), std::set<std::string>({"com.corvane.one.json", "com.corvane.two.json"}));
}

TEST_F(FileDefaults, ADomainsNameNeverLeadsOutOfTheFolder) {
    defaults.setPersistentDomainForName({{"a", Value(1)}}, "../outside/domain");
    ASSERT_TRUE(defaults.synchronize());
    EXPECT_EQ(filesBesideTheLock().size(), 1u);
    EXPECT_FALSE(std::filesystem::exists(scratch.path() / "outside"));
    EXPECT_EQ(FileUserDefaults(folder()).persistentDomainForName("../outside/domain"), (ValueMap{{"a", Value(1)}}));
}

TEST_F(FileDefaults, TheFileIsReplacedWholeAndNeverWrittenInPlace) {
    writeFile(R"({"a":1})");
    std::ifstream reader(file()); // has the old file open while the new one is written
    ASSERT_TRUE(store({{"a", Value(2)}, {"b", Value(3)}}));
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(reader), {}), R"({"a":1})");
    EXPECT_EQ(fileAsJson(), nlohmann::json({{"a", 2}, {"b", 3}}));
}

TEST_F(FileDefaults, AFailedWritingLeavesNoTemporaryFile) {
    std::filesystem::create_directories(file()); // a folder in the file's place, which cannot be set aside either
    scratch.write(std::filesystem::path("corvane-print") / (file().filename().string() + ".damaged"), "older");
    EXPECT_FALSE(store({{"a", Value(1)}}));
    EXPECT_THAT(defaults.lastError(), HasSubstr(file().string()));
    EXPECT_EQ(filesBesideTheLock(),
              std::set<std::string>({file().filename(), file().filename().string() + ".damaged"}));
}

TEST_F(FileDefaults, WhatAnotherProcessAddedMeanwhileIsKept) {
    writeFile(R"({"mine":1})");
    defaults.setPersistentDomainForName({{"mine", Value(2)}}, kDomain);
    ASSERT_TRUE(anotherProcessSets("theirs", Value("kept")));
    ASSERT_TRUE(defaults.synchronize());
    EXPECT_EQ(fileAsJson(), nlohmann::json({{"mine", 2}, {"theirs", "kept"}}));
}

TEST_F(FileDefaults, WhatAnotherProcessAddedBetweenReadingAndSettingIsKept) {
    writeFile(R"({"mine":1})");
    ValueMap domain = defaults.persistentDomainForName(kDomain).value();
    ASSERT_TRUE(anotherProcessSets("theirs", Value("kept")));
    domain.insert_or_assign("mine", Value(2));
    ASSERT_TRUE(store(std::move(domain)));
    EXPECT_EQ(fileAsJson(), nlohmann::json({{"mine", 2}, {"theirs", "kept"}}));
}

TEST_F(FileDefaults, WhatAnotherProcessChangedIsKeptWhereThisOneDidNotChangeIt) {
    writeFile(R"({"same":1,"mine":1})");
    defaults.setPersistentDomainForName({{"same", Value(1)}, {"mine", Value(2)}}, kDomain);
    ASSERT_TRUE(anotherProcessSets("same", Value(9)));
    ASSERT_TRUE(defaults.synchronize());
    EXPECT_EQ(fileAsJson(), nlohmann::json({{"same", 9}, {"mine", 2}}));
}

TEST_F(FileDefaults, WhereBothProcessesChangedAnEntryTheLastOneWins) {
    writeFile(R"({"both":1})");
    defaults.setPersistentDomainForName({{"both", Value(2)}}, kDomain);
    ASSERT_TRUE(anotherProcessSets("both", Value(3)));
    ASSERT_TRUE(defaults.synchronize());
    EXPECT_EQ(fileAsJson(), nlohmann::json({{"both", 2}}));
}

TEST_F(FileDefaults, AnEntryThatWasTakenOutIsRemoved) {
    writeFile(R"({"kept":1,"removed":2})");
    ASSERT_TRUE(store({{"kept", Value(1)}}));
    EXPECT_EQ(fileAsJson(), nlohmann::json({{"kept", 1}}));
}

TEST_F(FileDefaults, AfterSynchronizingTheFileIsReadAgain) {
    ASSERT_TRUE(store({{"a", Value(1)}}));
    ASSERT_TRUE(anotherProcessSets("a", Value(7)));
    EXPECT_EQ(defaults.persistentDomainForName(kDomain), (ValueMap{{"a", Value(7)}}));
}

TEST_F(FileDefaults, ProcessesThatWriteAtOnceLoseNothing) {
    constexpr int kProcesses = 4, kEntries = 10;
    std::vector<pid_t> children;
    for (int process = 0; process < kProcesses; ++process)
        children.push_back(startProcess([this, process] {
            bool sound = true;
            for (int entry = 0; entry < kEntries; ++entry) {
                FileUserDefaults own(folder());
                ValueMap domain = own.persistentDomainForName(kDomain).value_or(ValueMap());
                domain.insert_or_assign(std::to_string(process) + "." + std::to_string(entry), Value(entry));
                own.setPersistentDomainForName(std::move(domain), kDomain);
                sound = own.synchronize() && sound;
            }
            return sound;
        }));
    for (const pid_t child : children)
        EXPECT_TRUE(succeeded(child));
    EXPECT_EQ(fileAsJson().size(), static_cast<std::size_t>(kProcesses * kEntries));
}

TEST_F(FileDefaults, ADamagedFileCountsAsEmptyAndStaysUntilTheFirstWriting) {
    for (const char* contents : {"", "{", "[1]", "\"text\"", "{\"a\":1} x", "{\"a\":\"\xFF\"}", "\x00\x01"}) {
        SCOPED_TRACE(contents);
        writeFile(contents);
        EXPECT_EQ(defaults.persistentDomainForName(kDomain), std::nullopt);
        EXPECT_EQ(contentsOf(file()), contents);
    }
}

TEST_F(FileDefaults, ADamagedFileIsSetAsideBeforeTheFirstWriting) {
    writeFile("{\"a\":1");
    ASSERT_TRUE(store({{"b", Value(2)}}));
    EXPECT_EQ(contentsOf(file().string() + ".damaged"), "{\"a\":1");
    EXPECT_EQ(fileAsJson(), nlohmann::json({{"b", 2}}));
}

TEST_F(FileDefaults, AFileOfMoreThanAMegabyteCountsAsDamaged) {
    const std::string huge = "{\"a\":\"" + std::string(1 << 20, 'x') + "\"}";
    writeFile(huge);
    EXPECT_EQ(defaults.persistentDomainForName(kDomain), std::nullopt);
    ASSERT_TRUE(store({{"b", Value(2)}}));
    EXPECT_EQ(std::filesystem::file_size(file().string() + ".damaged"), huge.size());
}

TEST_F(FileDefaults, ADeeplyNestedFileIsSurvived) {
    constexpr std::size_t kDepth = 200'000;
    writeFile("{\"a\":" + std::string(kDepth, '[') + std::string(kDepth, ']') + "}");
    EXPECT_TRUE(succeeded(startProcess([this] {
        FileUserDefaults other(folder());
        other.setPersistentDomainForName({{"b", Value(2)}}, kDomain);
        return other.synchronize();
    })));
}

TEST_F(FileDefaults, ASymbolicLinkStaysALinkAndItsTargetIsWritten) {
    std::filesystem::create_directories(folder());
    scratch.write("elsewhere/preferences.json", R"({"a":1})");
    std::filesystem::create_symlink(scratch.path() / "elsewhere/preferences.json", file());
    ASSERT_TRUE(store({{"a", Value(2)}}));
    EXPECT_TRUE(std::filesystem::is_symlink(file()));
    EXPECT_EQ(contentsOf(scratch.path() / "elsewhere/preferences.json"), contentsOf(file()));
    EXPECT_EQ(fileAsJson(), nlohmann::json({{"a", 2}}));
}

TEST_F(FileDefaults, AFolderThatCannotBeMadeIsReported) {
    scratch.write("corvane-print", "a file in the folder's place");
    EXPECT_FALSE(store({{"a", Value(1)}}));
    EXPECT_THAT(defaults.lastError(), HasSubstr(file().string()));
}

TEST_F(FileDefaults, WhatCouldNotBeWrittenIsWrittenTheNextTime) {
    scratch.write("corvane-print", "a file in the folder's place");
    ASSERT_FALSE(store({{"a", Value(1)}}));
    std::filesystem::remove(folder());
    EXPECT_TRUE(defaults.synchronize());
    EXPECT_EQ(defaults.lastError(), "");
    EXPECT_EQ(fileAsJson(), nlohmann::json({{"a", 1}}));
}

TEST_F(FileDefaults, ADomainThatFailsDoesNotHinderAnother) {
    std::filesystem::create_directories(folder());
    std::filesystem::create_directories(folder() / "a.json");
    scratch.write("corvane-print/a.json.damaged", "older");
    defaults.setPersistentDomainForName({{"k", Value(1)}}, "a");
    defaults.setPersistentDomainForName({{"k", Value(2)}}, "b");
    EXPECT_FALSE(defaults.synchronize());
    EXPECT_EQ(FileUserDefaults(folder()).persistentDomainForName("b"), (ValueMap{{"k", Value(2)}}));
}

TEST_F(FileDefaults, AReadOnlyFolderIsReportedAndItsFileStays) {
    writeFile(R"({"a":1})");
    std::filesystem::permissions(scratch.path(), std::filesystem::perms(0755));
    std::filesystem::permissions(file(), std::filesystem::perms(0644));
    std::filesystem::permissions(folder(), std::filesystem::perms(0555));
    EXPECT_TRUE(succeedsForAnOrdinaryUser([this] {
        const bool read = defaults.persistentDomainForName(kDomain) == ValueMap{{"a", Value(1)}};
        return read && !store({{"a", Value(2)}}) && defaults.lastError().find(file().string()) != std::string::npos;
    }));
    EXPECT_EQ(contentsOf(file()), R"({"a":1})");
    std::filesystem::permissions(folder(), std::filesystem::perms(0755));
}

TEST_F(FileDefaults, AReadOnlyFileInAWritableFolderIsReplacedByAWritableOne) {
    writeFile(R"({"a":1})");
    std::filesystem::permissions(scratch.path(), std::filesystem::perms(0755));
    std::filesystem::permissions(file(), std::filesystem::perms(0444));
    std::filesystem::permissions(folder(), std::filesystem::perms(0777));
    EXPECT_TRUE(succeedsForAnOrdinaryUser([this] { return store({{"a", Value(2)}}); }));
    EXPECT_EQ(fileAsJson(), nlohmann::json({{"a", 2}}));
    EXPECT_EQ(std::filesystem::status(file()).permissions(), std::filesystem::perms(0600));
}

TEST_F(FileDefaults, WhatAKilledProcessLeftGoesWithTheNextWritingAndNothingElseDoes) {
    const std::string name = file().filename();
    std::set<std::string> others = {name + ".damaged",
                                    name + ".backup",
                                    name + ".part-short",
                                    name + ".part-longer7",
                                    name + ".part-not-me",
                                    name + "_part-AbC123",
                                    "part-AbC123",
                                    "x" + name + ".part-AbC123",
                                    "com.corvane.other.json.part-AbC123"};
    for (const std::string& other : others)
        scratch.write(std::filesystem::path("corvane-print") / other, "other");
    std::filesystem::create_directory(folder() / (name + ".part-folder"));
    std::filesystem::create_symlink(folder() / "part-AbC123", folder() / (name + ".part-a1link"));
    for (const char* random : {".part-AbC123", ".part-zzzzzz", ".part-000000", ".part-AZaz09"})
        scratch.write(std::filesystem::path("corvane-print") / (name + random), "{");
    ASSERT_TRUE(store({{"a", Value(1)}}));
    others.insert({name, name + ".part-folder", name + ".part-a1link"});
    EXPECT_EQ(filesBesideTheLock(), others);
}

TEST_F(FileDefaults, BesideTheTargetOfALinkNothingIsRemoved) { // another process may write there under another lock
    scratch.write("elsewhere/preferences.json", "{}");
    scratch.write("elsewhere/preferences.json.part-AbC123", "{");
    std::filesystem::create_directories(folder());
    std::filesystem::create_symlink(scratch.path() / "elsewhere/preferences.json", file());
    ASSERT_TRUE(store({{"a", Value(1)}}));
    EXPECT_TRUE(std::filesystem::exists(scratch.path() / "elsewhere/preferences.json.part-AbC123"));
}

TEST_F(FileDefaults, TheFileIsTheUsersAlone) {
    ASSERT_TRUE(store({{"a", Value(1)}}));
    EXPECT_EQ(std::filesystem::status(file()).permissions(), std::filesystem::perms(0600));
}

} // namespace
} // namespace toolkit
