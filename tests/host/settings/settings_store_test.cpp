#include <csignal>
#include <fstream>
#include <utility>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include "host/settings/sqlite_settings_store.h"
#include "platform/script/memory_settings_store.h"
#include "platform/system/types.h"
#include "samples/scratch_directory.h"

namespace zel::test {

namespace {

using testing::HasSubstr;

class StoredSettings : public testing::Test {
  protected:
    std::filesystem::path File() const { return m_directory / "settings.sqlite"; }

    samples_test::ScratchDirectory m_scratch;
    std::filesystem::path m_directory = m_scratch.Path() / "a" / "b";
};

TEST_F(StoredSettings, AreStoredForTheNextProcess) {
    {
        settings::SqliteSettingsStore store(m_directory);
        EXPECT_TRUE(store.SetProfileInt("Section", "Number", -3));
        EXPECT_TRUE(store.SetProfileText("Section", "Text", std::string("\xE9 \\ \0x", 6)));
        EXPECT_TRUE(store.CreateKey("Software\\Lists"));
        EXPECT_TRUE(store.SetValue("Software\\Lists", "0", {1, {0, 255}}));
    }
    settings::SqliteSettingsStore store(m_directory);
    EXPECT_EQ(store.GetProfileInt("Section", "Number"), -3);
    EXPECT_EQ(store.GetProfileText("Section", "Text"), std::string("\xE9 \\ \0x", 6));
    EXPECT_EQ(store.GetValue("Software\\Lists", "0"), (seam::RegistryValue{1, {0, 255}}));
    EXPECT_EQ(store.Note(), "");
}

TEST_F(StoredSettings, HaveOneTypeEach) {
    settings::SqliteSettingsStore store(m_directory);
    store.SetProfileInt("S", "E", 1);
    EXPECT_EQ(store.GetProfileText("S", "E"), std::nullopt);
    store.SetProfileText("S", "E", "");
    EXPECT_EQ(store.GetProfileInt("S", "E"), std::nullopt);
    EXPECT_EQ(store.GetProfileText("S", "E"), "");
    EXPECT_EQ(store.GetProfileText("S", "other"), std::nullopt);
}

TEST_F(StoredSettings, KeepTheirKeysAsATree) {
    settings::SqliteSettingsStore store(m_directory);
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

/// A process that counts up in entries and values of its own, and reports each number once it is stored.
class Writer {
  public:
    Writer(const std::filesystem::path& directory, const std::string& name, int from) : m_name(name) {
        if (pipe(m_pipe) != 0) throw std::runtime_error("no pipe");
        m_child = fork();
        if (m_child == 0) Count(directory, from);
        close(m_pipe[1]);
    }
    ~Writer() {
        if (m_child > 0) Kill();
    }
    Writer(const Writer&) = delete;
    Writer& operator=(const Writer&) = delete;

    /// Waits for the process's first number. @return false when it ended without one.
    bool HasBegun() { return read(m_pipe[0], &m_reported, sizeof m_reported) == sizeof m_reported; }
    /// Kills the process. @return the last number that it reported.
    int Kill() {
        kill(m_child, SIGKILL);
        waitpid(std::exchange(m_child, -1), nullptr, 0);
        while (HasBegun()) {
        }
        close(m_pipe[0]);
        return m_reported;
    }

  private:
    [[noreturn]] void Count(const std::filesystem::path& directory, int from) const {
        settings::SqliteSettingsStore store(directory);
        store.CreateKey("Lists\\" + m_name);
        for (int n = from;; ++n, usleep(300)) {  // lets the other process write
            const auto byte = static_cast<BYTE>(n);
            if (!store.SetProfileInt(m_name, std::to_string(n), n) ||
                !store.SetValue("Lists\\" + m_name, "0", {1, {byte, byte}}) ||
                write(m_pipe[1], &n, sizeof n) != sizeof n)
                _exit(1);
        }
    }

    std::string m_name;
    int m_pipe[2];
    pid_t m_child;
    int m_reported = -1;
};

TEST_F(StoredSettings, SurviveTwoWritersThatAreKilledAtAnyMoment) {
    int stored[] = {-1, -1};
    for (int round = 0; round < 6; ++round) {  // in the first round both create the file
        Writer one(m_directory, "one", stored[0] + 1), other(m_directory, "other", stored[1] + 1);
        ASSERT_TRUE(one.HasBegun() && other.HasBegun());
        usleep(static_cast<useconds_t>(round * 3700));
        const int reported[] = {one.Kill(), other.Kill()};
        settings::SqliteSettingsStore store(m_directory);
        for (int writer = 0; writer < 2; ++writer) {
            const std::string name = writer == 0 ? "one" : "other";
            stored[writer] = reported[writer];
            for (int n = 0; n <= stored[writer]; ++n) ASSERT_EQ(store.GetProfileInt(name, std::to_string(n)), n);
            const auto value = store.GetValue("Lists\\" + name, "0");
            ASSERT_TRUE(value && value->bytes.size() == 2 && value->bytes[0] == value->bytes[1]) << "half a value";
            ASSERT_LE(static_cast<BYTE>(value->bytes[0] - static_cast<BYTE>(stored[writer])), 1) << "an older one";
        }
        ASSERT_EQ(store.Note(), "");
    }
}

TEST_F(StoredSettings, CanBeListedAndDeleted) {
    settings::SqliteSettingsStore sqlite(m_directory);
    script::MemorySettingsStore memory;
    for (seam::SettingsStore* store :
         {static_cast<seam::SettingsStore*>(&sqlite), static_cast<seam::SettingsStore*>(&memory)}) {
        store->SetProfileText("b", "Text", "t");
        store->SetProfileInt("A", "y", 2);
        store->SetProfileInt("a", "X", 1);
        std::string listed;
        for (const seam::ProfileEntry& entry : store->ProfileEntries())
            listed += entry.section + entry.entry + (entry.value.index() == 0 ? "# " : "$ ");
        EXPECT_EQ(listed, "aX# Ay# bText$ ");
        store->SetProfileInt("A", "x", 3);
        EXPECT_EQ(store->GetProfileInt("a", "X"), 3);
        store->CreateKey("K");
        for (const char* name : {"z", "Y"}) store->SetValue("K", name, {1, {}});
        EXPECT_EQ(store->ValueNames("k"), (std::vector<std::string>{"Y", "z"}));
        EXPECT_TRUE(store->DeleteProfileEntry("B", "TEXT"));
        EXPECT_FALSE(store->DeleteProfileEntry("B", "TEXT"));
        EXPECT_TRUE(store->DeleteValue("K", "Z"));
        EXPECT_FALSE(store->DeleteValue("no", "Z"));
        EXPECT_EQ(store->ProfileEntries().size(), 2u);
        EXPECT_EQ(store->ValueNames("K"), (std::vector<std::string>{"Y"}));
    }
}

TEST_F(StoredSettings, AreGoneFromTheFilesOnceRemovedOrReplaced) {
    const auto stored = [this] {
        return samples_test::ReadAll(File()) + samples_test::ReadAll(File().string() + "-wal");
    };
    settings::SqliteSettingsStore store(m_directory);
    store.CreateKey("K");
    store.SetProfileText("S", "Removed", "the first secret");
    store.SetProfileText("S", "Replaced", "the second secret");
    store.SetValue("K", "Removed",
                   {1, {'t', 'h', 'e', ' ', 't', 'h', 'i', 'r', 'd', ' ', 's', 'e', 'c', 'r', 'e', 't'}});
    EXPECT_THAT(stored(), HasSubstr("the first secret"));
    EXPECT_TRUE(store.DeleteProfileEntry("S", "Removed"));
    EXPECT_TRUE(store.SetProfileText("S", "Replaced", ""));
    EXPECT_TRUE(store.DeleteValue("K", "Removed"));
    EXPECT_THAT(stored(), testing::Not(HasSubstr("secret")));
}

TEST_F(StoredSettings, ReplaceAFileWithOverwrittenPages) {
    {
        settings::SqliteSettingsStore store(m_directory);
        store.SetProfileText("S", "E", std::string(5 << 20, 'x'));  // enough to leave the log for the file
    }
    for (const char* part : {"-wal", "-shm"}) std::filesystem::remove(File().string() + part);
    std::fstream(File(), std::ios::in | std::ios::out | std::ios::binary).seekp(4096) << std::string(8192, '\xA5');
    settings::SqliteSettingsStore store(m_directory);
    EXPECT_TRUE(store.SetProfileInt("S", "E", 1));
    EXPECT_THAT(store.Note(), HasSubstr("damaged-1"));
}

TEST_F(StoredSettings, OpenNoFileUntilTheFirstCall) {
    const settings::SqliteSettingsStore store(m_directory);
    EXPECT_FALSE(std::filesystem::exists(m_directory));
}

}  // namespace

}  // namespace zel::test
