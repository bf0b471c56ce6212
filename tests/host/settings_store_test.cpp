#include <csignal>
#include <fstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include "host/sqlite_settings_store.h"
#include "samples/scratch_directory.h"
#include "samples/write_file.h"

namespace {

using testing::HasSubstr;

class StoredSettings : public testing::Test {
  protected:
    std::filesystem::path File() const { return m_directory / "settings.sqlite"; }

    void RemoveLog() const {
        for (const char* part : {"-wal", "-shm"}) std::filesystem::remove(File().string() + part);
    }

    samples_test::ScratchDirectory m_scratch;
    std::filesystem::path m_directory = m_scratch.Path() / "a" / "b";
};

TEST_F(StoredSettings, AreThereForTheNextProcess) {
    {
        SqliteSettingsStore store(m_directory);
        EXPECT_TRUE(store.SetProfileInt("Section", "Number", -3));
        EXPECT_TRUE(store.SetProfileText("Section", "Text", std::string("\xE9 \\ \0x", 6)));
        EXPECT_TRUE(store.CreateKey("Software\\Lists"));
        EXPECT_TRUE(store.SetValue("Software\\Lists", "0", {1, {0, 255}}));
    }
    SqliteSettingsStore store(m_directory);
    EXPECT_EQ(store.GetProfileInt("Section", "Number"), -3);
    EXPECT_EQ(store.GetProfileText("Section", "Text"), std::string("\xE9 \\ \0x", 6));
    EXPECT_EQ(store.GetValue("Software\\Lists", "0"), (RegistryValue{1, {0, 255}}));
    EXPECT_EQ(store.Note(), "");
}

TEST_F(StoredSettings, AreOfOneKindEach) {
    SqliteSettingsStore store(m_directory);
    store.SetProfileInt("S", "E", 1);
    EXPECT_EQ(store.GetProfileText("S", "E"), std::nullopt);
    store.SetProfileText("S", "E", "");
    EXPECT_EQ(store.GetProfileInt("S", "E"), std::nullopt);
    EXPECT_EQ(store.GetProfileText("S", "E"), "");
    EXPECT_EQ(store.GetProfileText("S", "other"), std::nullopt);
}

TEST_F(StoredSettings, AreFoundWithoutRegardToCase) {
    SqliteSettingsStore store(m_directory);
    store.SetProfileInt("Section", "Entry", 1);
    store.SetProfileInt("SECTION", "entry", 2);
    EXPECT_EQ(store.GetProfileInt("sECTION", "eNTRY"), 2);
    store.CreateKey("Software");
    EXPECT_TRUE(store.KeyExists("software"));
}

TEST_F(StoredSettings, KeepTheirKeysAsATree) {
    SqliteSettingsStore store(m_directory);
    EXPECT_TRUE(store.KeyExists(""));
    EXPECT_FALSE(store.KeyHasSubKeys(""));
    EXPECT_FALSE(store.SetValue("a\\b", "name", {1, {}}));
    EXPECT_TRUE(store.CreateKey("a\\b"));
    EXPECT_TRUE(store.KeyExists("a"));
    EXPECT_TRUE(store.KeyHasSubKeys("A"));
    EXPECT_FALSE(store.KeyHasSubKeys("a\\b"));
    EXPECT_TRUE(store.SetValue("a\\b", "name", {1, {}}));
    EXPECT_TRUE(store.DeleteKey("a\\b"));
    EXPECT_EQ(store.GetValue("a\\b", "name"), std::nullopt);
    EXPECT_FALSE(store.DeleteKey("a\\b"));
    EXPECT_TRUE(store.KeyExists("a"));
}

TEST_F(StoredSettings, AreSharedByTwoStores) {
    SqliteSettingsStore one(m_directory), other(m_directory);
    for (int n = 0; n < 5; ++n) {
        ASSERT_TRUE(one.SetProfileInt("S", "one", n));
        ASSERT_TRUE(other.SetProfileInt("S", "other", n));
        ASSERT_EQ(one.GetProfileInt("S", "other"), n);
        ASSERT_EQ(other.GetProfileInt("S", "one"), n);
    }
}

TEST_F(StoredSettings, SurviveAWriterThatIsKilled) {
    SqliteSettingsStore(m_directory).SetProfileInt("S", "E", 0);
    const pid_t child = fork();
    if (child == 0) {
        SqliteSettingsStore store(m_directory);
        for (int n = 1;; ++n, usleep(500)) store.SetProfileInt("S", "E", n);
    }
    SqliteSettingsStore store(m_directory);
    while (store.GetProfileInt("S", "E").value_or(0) < 3) usleep(1000);
    kill(child, SIGKILL);
    waitpid(child, nullptr, 0);
    EXPECT_GE(store.GetProfileInt("S", "E").value_or(-1), 3);
    EXPECT_TRUE(store.SetProfileInt("S", "E", 1));
    EXPECT_EQ(store.Note(), "");
}

TEST_F(StoredSettings, BeginAfreshBesideADamagedFile) {
    const std::string_view damage = "this was a database once, and it is not any more, whatever its name may say";
    samples::WriteWholeFile(File(), damage);
    for (const char* aside : {"settings.sqlite.damaged-1", "settings.sqlite.damaged-2"}) {
        SqliteSettingsStore store(m_directory);
        EXPECT_TRUE(store.SetProfileInt("S", "E", 1));
        EXPECT_EQ(store.GetProfileInt("S", "E"), 1);
        EXPECT_THAT(store.Note(), HasSubstr(aside));
        EXPECT_EQ(samples_test::ReadAll(m_directory / aside), damage);
        samples::WriteWholeFile(File(), damage);
        RemoveLog();
    }
}

TEST_F(StoredSettings, BeginAfreshWhenPagesOfTheFileAreOverwritten) {
    {
        SqliteSettingsStore store(m_directory);
        store.SetProfileText("S", "E", std::string(5 << 20, 'x'));  // enough to leave the log for the file
    }
    RemoveLog();
    std::fstream(File(), std::ios::in | std::ios::out | std::ios::binary).seekp(4096) << std::string(8192, '\xA5');
    SqliteSettingsStore store(m_directory);
    EXPECT_TRUE(store.SetProfileInt("S", "E", 1));
    EXPECT_THAT(store.Note(), HasSubstr("damaged-1"));
}

TEST_F(StoredSettings, TellWhyTheyCanNotBeStored) {
    samples::WriteWholeFile(m_scratch.Path() / "a", std::string_view("a file, not a directory"));
    SqliteSettingsStore store(m_directory);
    EXPECT_FALSE(store.SetProfileInt("S", "E", 1));
    EXPECT_EQ(store.GetProfileInt("S", "E"), std::nullopt);
    EXPECT_THAT(store.Note(), HasSubstr("settings.sqlite: settings can't be stored: "));
}

TEST_F(StoredSettings, CostNothingUntilTheyAreAskedFor) {
    const SqliteSettingsStore store(m_directory);
    EXPECT_FALSE(std::filesystem::exists(m_directory));
}

}  // namespace
