#include "host/jobs/presets.h"

#include "host/jobs/queues.h"
#include "tests/host/jobs/plain_user.h"
#include "tests/host/jobs/queue_test.h"

#include <algorithm>
#include <cstdlib>
#include <future>
#include <sys/stat.h>
#include <unistd.h>

namespace host {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;
using testing::UnorderedElementsAre;

/// A home and a system's folder of the test's own. Plain users' operations run in a process of a plain user.
class Presets : public testing::Test {
protected:
    Presets() {
        std::filesystem::permissions(folder_.path(), std::filesystem::perms(0777));
        ::setenv("HOME", folder_.path().c_str(), 1);
        ::setenv("CUPS_SERVERROOT", folder_.path().c_str(), 1);
    }
    ~Presets() override { ::unsetenv("CUPS_SERVERROOT"); }

    /// By a plain user, in his own file.
    static std::string save(const std::string& name, const std::vector<JobOption>& options) {
        return test_support::asPlainUser([&] { return savePreset({.queue = "Office", .name = name}, options); });
    }
    static std::string rename(const std::string& name, const std::string& newName) {
        return test_support::asPlainUser([&] { return renamePreset({.queue = "Office", .name = name}, newName); });
    }
    static std::string remove(const std::string& name) {
        return test_support::asPlainUser([&] { return deletePreset({.queue = "Office", .name = name}); });
    }
    std::filesystem::path file() const { return folder_.path() / ".cups" / "lpoptions"; }
    std::string lines() const { return test_support::contentsOf(file()); }
    void write(const std::string& lines) const {
        std::filesystem::create_directory(file().parent_path());
        std::filesystem::permissions(file().parent_path(), std::filesystem::perms(0777));
        folder_.write(".cups/lpoptions", lines);
    }

    const test_support::ScratchFolder folder_;
};

TEST_F(Presets, AreInstancesInTheUsersFile) {
    EXPECT_EQ(save("photo", {{"CVMediaType", "Glossy"}, {"copies", "2"}}), "");
    EXPECT_EQ(lines(), "Dest Office/photo CVMediaType=Glossy copies=2\n");
    EXPECT_EQ(save("photo", {{"CVMediaType", "Plain"}}), "");
    EXPECT_EQ(lines(), "Dest Office/photo CVMediaType=Plain\n");
}

TEST_F(Presets, LeaveEveryOtherLineAsItStands) {
    write("# mine\nDefault Elsewhere a=1\nDest Office  b=2\nDest Gone/photo  c=3\ndest office/PHOTO d=4\nx\n");
    EXPECT_EQ(save("photo", {{"e", "5"}}), "");
    EXPECT_EQ(lines(),
              "# mine\nDefault Elsewhere a=1\nDest Office  b=2\nDest Gone/photo  c=3\nDest Office/photo e=5\nx\n");
    EXPECT_EQ(remove("photo"), "");
    EXPECT_EQ(lines(), "# mine\nDefault Elsewhere a=1\nDest Office  b=2\nDest Gone/photo  c=3\nx\n");
}

TEST_F(Presets, KeepTheirOptionsUnderAnotherName) {
    write("Default Office/photo a='x y' b=2\nDest Office/draft c=3\n");
    EXPECT_EQ(rename("photo", "album"), "");
    EXPECT_EQ(lines(), "Default Office/album a='x y' b=2\nDest Office/draft c=3\n");
    EXPECT_EQ(rename("draft", "DRAFT"), "");
    EXPECT_EQ(lines(), "Default Office/album a='x y' b=2\nDest Office/DRAFT c=3\n");
}

TEST_F(Presets, RefuseWhatIsNotThereAndWhatIsTaken) {
    const std::string before = "Dest Office/photo a=1\nDest Office/draft b=2\n";
    write(before);
    EXPECT_THAT(rename("nothing", "album"), HasSubstr("no preset \"nothing\""));
    EXPECT_THAT(rename("photo", "draft"), HasSubstr("has a preset \"draft\" already"));
    EXPECT_THAT(remove("nothing"), HasSubstr("no preset \"nothing\""));
    EXPECT_EQ(lines(), before);
}

TEST_F(Presets, RefuseNamesThatNoInstanceCanHave) {
    for (const std::string& name :
         {std::string(), std::string("a b"), std::string("a/b"), std::string("a#"), std::string("a=b"),
          std::string("a\nDefault x"), std::string(128, 'n'), std::string("\xff")}) {
        SCOPED_TRACE(testing::PrintToString(name));
        EXPECT_NE(save(name, {{"a", "1"}}), "");
        EXPECT_NE(rename("photo", name), "");
        EXPECT_NE(remove(name), "");
    }
    EXPECT_NE(savePreset({.queue = "a b", .name = "x", .owner = PresetOwner::Everyone}, {}), "");
    EXPECT_FALSE(std::filesystem::exists(file()));
}

TEST_F(Presets, RefuseOptionsThatNoJobCouldHave) {
    EXPECT_THAT(save("photo", {{"a\nDest x", "1"}}), HasSubstr("name"));
    EXPECT_THAT(save("photo", {{"a", "1\nDefault x"}}), HasSubstr("control characters"));
    EXPECT_THAT(save("photo", {{"copies", "two"}}), HasSubstr("copies"));
    EXPECT_THAT(save("photo", {{"a", std::string(9000, 'x')}}), HasSubstr("more options"));
    EXPECT_FALSE(std::filesystem::exists(file()));
}

TEST_F(Presets, OfRootAreEveryones) {
    const PresetName everyones{.queue = "Office", .name = "photo", .owner = PresetOwner::Everyone};
    EXPECT_EQ(savePreset(everyones, {{"a", "1"}}), "");
    EXPECT_EQ(test_support::contentsOf(folder_.path() / "lpoptions"), "Dest Office/photo a=1\n");
    struct stat status {};
    ASSERT_EQ(::stat((folder_.path() / "lpoptions").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, 0644U);
    EXPECT_EQ(deletePreset(everyones), "");
    const std::string own = savePreset({.queue = "Office", .name = "photo"}, {{"a", "1"}});
    if (::geteuid() == 0)
        EXPECT_THAT(own, AllOf(HasSubstr("root"), HasSubstr("--system")));
    else
        EXPECT_EQ(own, "");
}

TEST_F(Presets, AFileThatMayNotBeWrittenStaysAsItIs) {
    std::filesystem::create_directory(folder_.path() / "closed");
    ::setenv("CUPS_SERVERROOT", (folder_.path() / "closed").c_str(), 1);
    folder_.write("closed/lpoptions", "Dest Office/photo a=1\n");
    std::filesystem::permissions(folder_.path() / "closed", std::filesystem::perms(0555));
    const std::string failure = test_support::asPlainUser(
        [] { return deletePreset({.queue = "Office", .name = "photo", .owner = PresetOwner::Everyone}); });
    std::filesystem::permissions(folder_.path() / "closed", std::filesystem::perms(0755));
    EXPECT_THAT(failure, AllOf(StartsWith("The presets in"), HasSubstr("Permission denied")));
    EXPECT_EQ(test_support::contentsOf(folder_.path() / "closed" / "lpoptions"), "Dest Office/photo a=1\n");
    EXPECT_THAT(test_support::namesIn(folder_.path() / "closed"), ElementsAre("lpoptions"));
}

TEST_F(Presets, AFileBehindALinkIsChangedInItsPlace) {
    write("");
    std::filesystem::rename(file(), folder_.path() / "kept");
    std::filesystem::create_symlink(folder_.path() / "kept", file());
    EXPECT_EQ(save("photo", {{"a", "1"}}), "");
    EXPECT_TRUE(std::filesystem::is_symlink(file()));
    EXPECT_EQ(test_support::contentsOf(folder_.path() / "kept"), "Dest Office/photo a=1\n");
}

TEST_F(Presets, SavedByManyAtOnceAreAllKept) {
    std::vector<std::future<std::string>> savings;
    for (int number = 0; number < 8; ++number)
        savings.push_back(std::async(std::launch::async, [number] {
            return savePreset({.queue = "Office", .name = "p" + std::to_string(number), .owner = PresetOwner::Everyone},
                              {});
        }));
    for (auto& saving : savings)
        EXPECT_EQ(saving.get(), "");
    const std::string kept = test_support::contentsOf(folder_.path() / "lpoptions");
    EXPECT_EQ(std::ranges::count(kept, '\n'), 8);
}

/// "photo user a=1 b=2", or "photo everyone ...".
std::vector<std::string> listed(const PresetList& list) {
    std::vector<std::string> texts;
    for (const Preset& preset : list.presets) {
        std::string& text = texts.emplace_back(preset.name.name);
        text += preset.name.owner == PresetOwner::User ? " user" : " everyone";
        for (const JobOption& option : preset.options)
            text += " " + option.name + "=" + option.value;
    }
    return texts;
}

TEST_F(Presets, AreListedFromBothFilesWithoutAServer) {
    folder_.write("lpoptions", "Dest Office/photo a=1 b=2\nDest Office/text c=3\nDest Other/photo d=4\n");
    write(
        "Default Office x=0\nDest Office/PHOTO b=5 # b=6\ndest OFFICE/album e='f g' h=i\\#j#k\nDest Office/a'b l=7\n");
    EXPECT_EQ(listPresets("Office").error, "");
    EXPECT_THAT(listed(listPresets("Office")),
                ElementsAre("PHOTO user a=1 b=5", "album user e=f g h=i#j", "text everyone c=3"));
    EXPECT_THAT(listed(listPresets("Nobody")), ElementsAre());
}

TEST_F(Presets, AreListedAsTheyWereSaved) {
    const std::vector<JobOption> options = {{"a", "it's \"so\""}, {"b", "c\\d#e#f"}, {"copies", "3"}, {"g", "h  i"}};
    ASSERT_EQ(savePreset({.queue = "Office", .name = "odd", .owner = PresetOwner::Everyone}, options), "");
    EXPECT_THAT(listed(listPresets("Office")), ElementsAre("odd everyone a=it's \"so\" b=c\\d#e#f copies=3 g=h  i"));
}

TEST_F(Presets, AFileThatCannotBeReadIsToldAndTheOtherOneListed) {
    folder_.write("lpoptions", "Dest Office/photo a=1\n");
    std::filesystem::create_directories(file());
    EXPECT_THAT(listPresets("Office").error, AllOf(StartsWith("The presets in"), HasSubstr("no regular file")));
    EXPECT_THAT(listed(listPresets("Office")), ElementsAre("photo everyone a=1"));
}

using PresetsOfAQueue = QueueTest;

TEST_F(PresetsOfAQueue, AreSeenByThePrintingLibrary) {
    const std::vector<JobOption> options = {{"a", "it's \"so\""}, {"b", "c\\d#e#f"}, {"copies", "3"}, {"g", "h  i"}};
    ::setenv("CUPS_SERVERROOT", folder_.path().c_str(), 1);
    ASSERT_EQ(savePreset({.queue = kQueue, .name = "odd", .owner = PresetOwner::Everyone}, options), "");
    // The library reads its environment once in each thread.
    const QueueList list = std::async(std::launch::async, [] { return listQueues(server().socket()); }).get();
    ::unsetenv("CUPS_SERVERROOT");
    const auto preset = std::ranges::find(list.queues, "odd", &Queue::instance);
    ASSERT_NE(preset, list.queues.end()) << list.error;
    std::vector<std::string> texts;
    for (const JobOption& option : preset->options)
        texts.push_back(option.name + "=" + option.value);
    EXPECT_THAT(texts, UnorderedElementsAre("a=it's \"so\"", "b=c\\d#e#f", "copies=3", "g=h  i"));
}

} // namespace
} // namespace host
