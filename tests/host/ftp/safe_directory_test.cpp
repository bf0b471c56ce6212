#include "host/ftp/safe_directory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include "samples/scratch_directory.h"
#include "samples/write_file.h"

namespace zel::test {

namespace {

namespace fs = std::filesystem;
using ftp::LocalError;
using ftp::SafeDirectory;
using testing::ElementsAre;
using testing::EndsWith;
using testing::IsEmpty;

/// A fetch's directory "here", and beside it the file "outside", which nothing may touch.
class SafeDirectoryTest : public testing::Test {
  protected:
    SafeDirectoryTest() { samples::WriteWholeFile(Outside(), "mine"); }
    ~SafeDirectoryTest() override { EXPECT_EQ(samples_test::ReadAll(Outside()), "mine"); }

    fs::path Here() const { return m_scratch.Path() / "here"; }
    fs::path Outside() const { return m_scratch.Path() / "outside"; }

    std::vector<std::string> Names() const { return samples_test::NamesIn(Here()); }

    static std::vector<std::uint8_t> Bytes(std::string_view text) { return {text.begin(), text.end()}; }

    /// Leaves a part with some bytes, and returns its path.
    fs::path LeavePart(const std::string& name, const std::optional<ftp::PartKey>& key) {
        m_directory.OpenPart(name, key)->Append(Bytes("begun"));
        for (const std::string& entry : Names()) {
            if (entry.starts_with(name + ".") && entry.ends_with(".part")) return Here() / entry;
        }
        return {};
    }

    samples_test::ScratchDirectory m_scratch;
    const SafeDirectory m_directory{Here()};
    const ftp::PartKey m_key{.source = "host\n/DISK", .name = ".0001", .size = 9, .modified = "20200101000000"};
};

TEST_F(SafeDirectoryTest, OpensNoNameThatLeadsOutOfIt) {
    using namespace std::string_literals;
    for (const std::string& name :
         {""s, "."s, ".."s, "../outside"s, "a/b"s, "/etc/passwd"s, Outside().string(), "..\0x"s}) {
        EXPECT_EQ(m_directory.TypeOf(name), SafeDirectory::Type::kOther) << name;
        EXPECT_EQ(m_directory.Read(name, 100), std::nullopt) << name;
        EXPECT_THROW(m_directory.Below(name), LocalError) << name;
        EXPECT_THROW(m_directory.OpenPart(name, m_key), LocalError) << name;
    }
    EXPECT_THAT(Names(), IsEmpty());
}

TEST_F(SafeDirectoryTest, ReadsRegularFilesUpToTheLimitOnly) {
    samples::WriteWholeFile(Here() / "file", "12345");
    fs::create_symlink(Outside(), Here() / "link");
    fs::create_symlink("nowhere", Here() / "dangling");
    fs::create_directory(Here() / "directory");
    ASSERT_EQ(mkfifo((Here() / "pipe").c_str(), 0600), 0);
    EXPECT_EQ(m_directory.TypeOf("file"), SafeDirectory::Type::kFile);
    EXPECT_EQ(m_directory.Read("file", 5), Bytes("12345"));
    EXPECT_EQ(m_directory.Read("file", 4), std::nullopt);
    EXPECT_EQ(m_directory.TypeOf("missing"), SafeDirectory::Type::kMissing);
    EXPECT_EQ(m_directory.Read("missing", 5), std::nullopt);
    for (const char* name : {"link", "dangling", "directory", "pipe"}) {
        EXPECT_EQ(m_directory.TypeOf(name), SafeDirectory::Type::kOther) << name;
        EXPECT_EQ(m_directory.Read(name, 100), std::nullopt) << name;
    }
}

TEST_F(SafeDirectoryTest, OpensSubdirectoriesIgnoringCaseButNoLinks) {
    fs::create_directory(Here() / "messages");
    m_directory.Below("MESSAGES").OpenPart(".0001", m_key)->Finish(false);
    EXPECT_TRUE(fs::exists(Here() / "messages/.0001"));
    m_directory.Below("MACHINE");
    EXPECT_THAT(Names(), ElementsAre("MACHINE", "messages"));
    samples::WriteWholeFile(Here() / "file", "");
    fs::create_directory_symlink(m_scratch.Path(), Here() / "link");
    fs::create_directory_symlink("nowhere", Here() / "dangling");
    for (const char* name : {"file", "link", "LINK", "dangling"}) {
        EXPECT_THROW(m_directory.Below(name), LocalError) << name;
    }
}

TEST_F(SafeDirectoryTest, ResumesThePartOfTheSameRemoteFileOnly) {
    EXPECT_THAT(LeavePart(".0001", m_key), testing::Not(""));
    EXPECT_EQ(m_directory.OpenPart(".0001", m_key)->Size(), 5U);
    ftp::PartKey others[] = {m_key, m_key, m_key, m_key};
    others[0].source += '/';
    others[1].name = ".0002";
    others[2].size = 10;
    others[3].modified = "20200101000001";
    for (const ftp::PartKey& other : others) {
        const fs::path earlier = LeavePart(".0001", m_key);
        EXPECT_EQ(m_directory.OpenPart(".0001", other)->Size(), 0U);
        EXPECT_FALSE(fs::exists(earlier)) << "removed, since nothing will resume it";
    }
    LeavePart(".0001", std::nullopt);
    EXPECT_EQ(m_directory.OpenPart(".0001", std::nullopt)->Size(), 0U);
    // The part of ".0001.TN" isn't one of ".0001".
    const fs::path tn = LeavePart(".0001.TN", m_key);
    m_directory.OpenPart(".0001", m_key);
    EXPECT_TRUE(fs::exists(tn));
}

TEST_F(SafeDirectoryTest, WritesToNoPlantedPart) {
    const fs::path part = LeavePart(".0001", m_key);
    const auto plant = [&](auto create) {
        fs::remove(part);
        create();
        EXPECT_THROW(m_directory.OpenPart(".0001", m_key), LocalError);
    };
    plant([&] { fs::create_symlink(Outside(), part); });
    plant([&] { fs::create_hard_link(Outside(), part); });
    plant([&] { fs::create_directory(part); });
    plant([&] { ASSERT_EQ(mkfifo(part.c_str(), 0600), 0); });
}

TEST_F(SafeDirectoryTest, LocksAPartAgainstASecondFetch) {
    {
        const auto part = m_directory.OpenPart(".0001", m_key);
        EXPECT_THROW(m_directory.OpenPart(".0001", m_key), LocalError);
    }
    EXPECT_NO_THROW(m_directory.OpenPart(".0001", m_key));
}

TEST_F(SafeDirectoryTest, FinishReplacesAFileOnlyOnRequestAndNeverALinksTarget) {
    const auto finish = [&](bool overwrite) {
        const auto part = m_directory.OpenPart(".0001", m_key);
        part->Reset();
        part->Append(Bytes("fetched"));
        part->Finish(overwrite);
    };
    finish(false);
    EXPECT_THAT(Names(), ElementsAre(".0001"));
    EXPECT_EQ(samples_test::ReadAll(Here() / ".0001"), "fetched");
    samples::WriteWholeFile(Here() / ".0001", "older");
    EXPECT_THROW(finish(false), LocalError);
    EXPECT_EQ(samples_test::ReadAll(Here() / ".0001"), "older");
    EXPECT_THAT(Names(), ElementsAre(".0001", EndsWith(".part")));
    finish(true);
    EXPECT_EQ(samples_test::ReadAll(Here() / ".0001"), "fetched");
    fs::remove(Here() / ".0001");
    fs::create_symlink(Outside(), Here() / ".0001");
    EXPECT_THROW(finish(false), LocalError);
    finish(true);
    EXPECT_FALSE(fs::is_symlink(Here() / ".0001"));
    EXPECT_THAT(Names(), ElementsAre(".0001"));
}

TEST_F(SafeDirectoryTest, CannotBeMadeWhereAFileIs) {
    EXPECT_THROW(SafeDirectory(Outside() / "below"), LocalError);
    EXPECT_THROW(SafeDirectory{Outside()}, LocalError);
}

}  // namespace

}  // namespace zel::test
