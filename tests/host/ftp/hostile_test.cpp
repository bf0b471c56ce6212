#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "host/ftp/fetch_fixture.h"

namespace zel::test {

namespace {

using testing::ElementsAre;
using testing::HasSubstr;

TEST_F(FtpFetch, BringsTheSourcesBytesThroughAHundredCuts) {
    for (unsigned number = 1; number <= 4; ++number)
        WriteRandom("MESSAGES/.000" + std::to_string(number), 300000, number);
    Serve({"--cuts", "100"});
    int cuts = 0;
    for (int run = 0; run < 10 && !std::filesystem::exists(Here() / "MESSAGES/.0004"); ++run) {
        for (const ftp::FileReport& file : Fetch("*").files) cuts += file.cuts;
    }
    EXPECT_GE(cuts, 100);
    for (const char* name : {"MESSAGES/.0001", "MESSAGES/.0002", "MESSAGES/.0003", "MESSAGES/.0004"}) {
        EXPECT_TRUE(Fetched(name) == Served(name)) << name;
    }
    EXPECT_THAT(Names("MESSAGES"), ElementsAre(".0001", ".0002", ".0003", ".0004"));
}

// Stops a fetch on its way, so that a part is left.
class AfterAStop : public FtpFetch {
  protected:
    void Stop(const std::vector<std::string>& options) {
        WriteRandom("MESSAGES/.0001", 800000, 1);
        Serve(options);
        m_cancel_at = 200000;
        const ftp::FetchReport report = Fetch("1");
        EXPECT_TRUE(report.cancelled);
        EXPECT_THAT(Names("MESSAGES"), ElementsAre(testing::EndsWith(".part")));
        m_cancel_at = UINT64_MAX;
        m_came = 0;
    }
    void ExpectWhole() {
        EXPECT_TRUE(Fetched("MESSAGES/.0001") == Served("MESSAGES/.0001"));
        EXPECT_THAT(Names("MESSAGES"), ElementsAre(".0001"));
    }
};

TEST_F(AfterAStop, GoesOnWhereItWas) {
    const std::string log = (m_scratch.Path() / "log").string();
    Stop({"--log", log});
    EXPECT_EQ(Told(Fetch("1")), "MESSAGES/.0001 resumed");
    ExpectWhole();
    EXPECT_THAT(samples_test::ReadAll(log), HasSubstr("\nREST "));
}
TEST_F(AfterAStop, BeginsAnewForAFileOfAnotherTime) {
    Stop({});
    WriteRandom("MESSAGES/.0001", 800000, 2);
    std::filesystem::last_write_time(Disk() / "MESSAGES/.0001",
                                     std::filesystem::file_time_type::clock::now() + std::chrono::hours(1));
    EXPECT_EQ(Told(Fetch("1")), "MESSAGES/.0001 fetched");
    ExpectWhole();
}
TEST_F(AfterAStop, BeginsAnewForAnotherFileOfTheSameTime) {
    Stop({});
    const auto time = std::filesystem::last_write_time(Disk() / "MESSAGES/.0001");
    WriteRandom("MESSAGES/.0001", 800000, 2);
    std::filesystem::last_write_time(Disk() / "MESSAGES/.0001", time);
    EXPECT_EQ(Told(Fetch("1")), "MESSAGES/.0001 fetched");
    ExpectWhole();
}
TEST_F(AfterAStop, BeginsAnewWithoutATime) {
    Stop({"--no-time"});
    EXPECT_EQ(Told(Fetch("1")), "MESSAGES/.0001 fetched");
    ExpectWhole();
}
TEST_F(AfterAStop, BeginsAnewWhereRestIsIgnored) {
    Stop({"--ignore-rest"});
    EXPECT_EQ(Told(Fetch("1")), "MESSAGES/.0001 fetched");
    ExpectWhole();
}
TEST_F(AfterAStop, BeginsAnewWhereRestIsRefused) {
    Stop({"--refuse-rest"});
    EXPECT_EQ(Told(Fetch("1")), "MESSAGES/.0001 fetched");
    ExpectWhole();
}

struct Trouble {
    const char* name;
    std::vector<std::string> options;
    const char* words;
};
void PrintTo(const Trouble& trouble, std::ostream* out) {
    *out << trouble.name;
}
class AgainstAServerThat : public FtpFetch, public testing::WithParamInterface<Trouble> {};

TEST_P(AgainstAServerThat, FailsWithTheReasonAndLeavesNoFile) {
    m_limit = 100000;
    m_tries = 1;
    Serve(GetParam().options);
    const ftp::FetchReport report = Fetch("1");
    EXPECT_FALSE(report.Done());
    EXPECT_THAT(report.files.empty() ? report.failure : report.files[0].reason, HasSubstr(GetParam().words));
    EXPECT_FALSE(std::filesystem::exists(Here() / "MESSAGES/.0001"));
}
INSTANTIATE_TEST_SUITE_P(
    Each, AgainstAServerThat,
    testing::Values(Trouble{"tells_too_small_a_size", {"--size", "100"}, "not the size that it named"},
                    Trouble{"tells_too_large_a_size", {"--size", "90000"}, "less than the size that it named"},
                    Trouble{"tells_a_size_beyond_the_limit", {"--size", "200000"}, "larger than a message"},
                    Trouble{"never_ends_a_listing", {"--endless", "--no-time"}, "not the size that it named"},
                    Trouble{"doesnt_greet", {"--stall", "greeting"}, "took too long"},
                    Trouble{"doesnt_reply", {"--stall", "reply"}, "took too long"},
                    Trouble{"stalls_in_the_data", {"--stall", "data"}, "took too long"}),
    [](const auto& row) { return std::string(row.param.name); });

TEST_F(FtpFetch, TakesNoDataFromAnotherHost) {
    Serve({"--elsewhere"});
    EXPECT_THAT(Told(Fetch("1")), HasSubstr("MESSAGES/.0001 fetched"));
}

TEST_F(FtpFetch, TakesNoHostileName) {
    using namespace std::string_view_literals;
    samples::WriteWholeFile(m_scratch.Path() / "listing",
                            "type=file;size=1; ../.0001\r\ntype=file;size=1; /etc/passwd\r\n"
                            "type=file;size=1; .0001\0x\r\ntype=OS.unix=slink:/etc; .0002\r\n"
                            "type=file;size=1; a b\x1B[31m\r\ntype=dir; ..\r\n"sv);
    Serve({"--listing", (m_scratch.Path() / "listing").string()});
    EXPECT_THAT(Told(Fetch("*")), HasSubstr("nothing of what"));
    EXPECT_THAT(m_notes, HasSubstr("names that no message or font can have, such as ../.0001"));
    EXPECT_FALSE(std::filesystem::exists(Here()));
}

TEST_F(FtpFetch, FollowsNoLinkThatWasPlanted) {
    const auto outside = m_scratch.Path() / "outside";
    samples::WriteWholeFile(outside, "mine");
    std::filesystem::create_directories(Here() / "MESSAGES");
    std::filesystem::create_symlink(outside, Here() / "MESSAGES/.0001");
    std::filesystem::create_directory_symlink(m_scratch.Path(), Here() / "MACHINE");
    Serve({});
    m_overwrite = true;
    const ftp::FetchReport report = Fetch("1-2");
    EXPECT_EQ(
        Told(report),
        Here().string() + ": MACHINE: is there and is no directory, MESSAGES/.0001 failed, MESSAGES/.0002 fetched");
    EXPECT_EQ(samples_test::ReadAll(outside), "mine");
    EXPECT_FALSE(std::filesystem::exists(m_scratch.Path() / ".0012"));
}

TEST_F(FtpFetch, TellsNothingOfThePassword) {
    m_options.user = "anna";
    m_password = "swordfish";
    Serve({"--echo"});
    const ftp::FetchReport report = Fetch("1");
    EXPECT_THAT(report.failure, HasSubstr("user or password was refused (reply 530)"));
    EXPECT_THAT(report.failure, testing::Not(HasSubstr("swordfish")));
}

}  // namespace

}  // namespace zel::test
