#include "toolkit/user_defaults.h"

#include "tests/toolkit/environment.h"

#include <gtest/gtest.h>

namespace toolkit {
namespace {

using toolkit_tests::EnvironmentVariable;

TEST(MemoryDefaults, AnUnknownDomainHoldsNothing) {
    EXPECT_EQ(MemoryUserDefaults().persistentDomainForName("com.corvane"), std::nullopt);
}

TEST(MemoryDefaults, ADomainHoldsWhatWasSetLast) {
    MemoryUserDefaults defaults;
    defaults.setPersistentDomainForName({{"a", Value(1)}, {"b", Value(2)}}, "com.corvane");
    defaults.setPersistentDomainForName({{"a", Value(3)}}, "com.corvane");
    EXPECT_EQ(defaults.persistentDomainForName("com.corvane"), (ValueMap{{"a", Value(3)}}));
    EXPECT_EQ(defaults.persistentDomainForName("com.other"), std::nullopt);
}

TEST(MemoryDefaults, SynchronizingSucceeds) {
    MemoryUserDefaults defaults;
    EXPECT_TRUE(defaults.synchronize());
    EXPECT_EQ(defaults.lastError(), "");
}

TEST(UserFolder, FollowsTheEnvironment) {
    const struct {
        const char *configuration, *home;
        std::optional<std::filesystem::path> expected;
    } kRows[] = {
        // XDG_CONFIG_HOME  HOME             folder
        {"/etc/xdg", "/home/user", "/etc/xdg/corvane-print"},
        {nullptr, "/home/user", "/home/user/.config/corvane-print"},
        {"", "/home/user", "/home/user/.config/corvane-print"},
        {"relative/path", "/home/user", "/home/user/.config/corvane-print"},
        {"/etc/xdg", nullptr, "/etc/xdg/corvane-print"},
        {nullptr, nullptr, std::nullopt},
        {nullptr, "", std::nullopt},
        {"relative", "relative", std::nullopt},
    };
    for (const auto& row : kRows) {
        const EnvironmentVariable configuration("XDG_CONFIG_HOME", row.configuration), home("HOME", row.home);
        SCOPED_TRACE(&row - kRows);
        EXPECT_EQ(FileUserDefaults::userFolder(), row.expected);
    }
}

} // namespace
} // namespace toolkit
