#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "host/ftp/fetch_fixture.h"

namespace zel::test {

namespace {

using testing::ElementsAre;
using testing::HasSubstr;

TEST_F(FtpFetch, FetchesTheExactBytesDespiteAHundredInterruptions) {
    for (unsigned number = 1; number <= 4; ++number)
        WriteRandom("MESSAGES/.000" + std::to_string(number), 300000, number);
    Serve({"--cuts", "100"});
    int interruptions = 0;
    for (int run = 0; run < 10 && !std::filesystem::exists(Here() / "MESSAGES/.0004"); ++run) {
        for (const ftp::FileReport& file : Fetch("*").files) interruptions += file.interruptions;
    }
    EXPECT_GE(interruptions, 100);
    for (const char* name : {"MESSAGES/.0001", "MESSAGES/.0002", "MESSAGES/.0003", "MESSAGES/.0004"}) {
        EXPECT_TRUE(Fetched(name) == Served(name)) << name;
    }
    EXPECT_THAT(Names("MESSAGES"), ElementsAre(".0001", ".0002", ".0003", ".0004"));
}

TEST_F(FtpFetch, ResumesAPartUnlessTheFileIsAnotherOrTheServerCannotContinue) {
    const struct {
        std::vector<std::string> options;
        std::optional<int> changed;  // the file, this number of hours later
        const char* outcome;
    } cases[] = {{{}, {}, "resumed"},
                 {{}, 0, "fetched"},
                 {{}, 1, "fetched"},
                 {{"--no-time"}, {}, "fetched"},
                 {{"--ignore-rest"}, {}, "fetched"},
                 {{"--refuse-rest"}, {}, "fetched"}};
    for (const auto& row : cases) {
        SCOPED_TRACE(testing::PrintToString(row.options));
        WriteRandom("MESSAGES/.0001", 800000, 1);
        Serve(row.options);
        m_received = 0;
        m_cancel_at = 200000;
        EXPECT_TRUE(Fetch("1").cancelled);
        EXPECT_THAT(Names("MESSAGES"), ElementsAre(testing::EndsWith(".part")));
        m_cancel_at = UINT64_MAX;
        const auto time = std::filesystem::last_write_time(Disk() / "MESSAGES/.0001");
        if (row.changed) {
            WriteRandom("MESSAGES/.0001", 800000, 2);
            std::filesystem::last_write_time(Disk() / "MESSAGES/.0001", time + std::chrono::hours(*row.changed));
        }
        EXPECT_EQ(Describe(Fetch("1")), std::string("MESSAGES/.0001 ") + row.outcome);
        EXPECT_TRUE(Fetched("MESSAGES/.0001") == Served("MESSAGES/.0001"));
        EXPECT_THAT(Names("MESSAGES"), ElementsAre(".0001"));
        std::filesystem::remove_all(Here());
    }
}

struct ServerFault {
    const char* name;
    std::vector<std::string> options;
    const char* reason;
};
class AgainstAServerThat : public FtpFetch, public testing::WithParamInterface<ServerFault> {};

TEST_P(AgainstAServerThat, FailsWithTheReasonAndLeavesNoFile) {
    m_limit = 100000;
    m_max_attempts = 1;
    Serve(GetParam().options);
    const ftp::FetchReport report = Fetch("1");
    EXPECT_FALSE(report.Done());
    EXPECT_THAT(report.files.empty() ? report.failure : report.files[0].reason, HasSubstr(GetParam().reason));
    EXPECT_FALSE(std::filesystem::exists(Here() / "MESSAGES/.0001"));
}
INSTANTIATE_TEST_SUITE_P(
    Each, AgainstAServerThat,
    testing::Values(ServerFault{"reports_too_small_a_size", {"--size", "100"}, "does not match the size"},
                    ServerFault{"reports_too_large_a_size", {"--size", "90000"}, "less than the size it reported"},
                    ServerFault{"reports_a_size_above_the_limit", {"--size", "200000"}, "too large for a message"},
                    ServerFault{"never_ends_a_listing", {"--endless", "--no-time"}, "does not match the size"},
                    ServerFault{"sends_no_greeting", {"--stall", "greeting"}, "timed out"},
                    ServerFault{"sends_no_reply", {"--stall", "reply"}, "timed out"},
                    ServerFault{"never_ends_its_greeting", {"--drip", "greeting"}, "timed out"},
                    ServerFault{"never_ends_a_reply", {"--drip", "reply"}, "timed out"},
                    ServerFault{"never_ends_the_last_reply", {"--drip", "end"}, "timed out"},
                    ServerFault{"stalls_in_the_data", {"--stall", "data"}, "timed out"}),
    [](const auto& row) { return std::string(row.param.name); });

TEST_F(FtpFetch, ConnectsToNoOtherHostForData) {
    Serve({"--elsewhere"});
    EXPECT_THAT(Describe(Fetch("1")), HasSubstr("MESSAGES/.0001 fetched"));
}

TEST_F(FtpFetch, AcceptsNoHostileName) {
    using namespace std::string_view_literals;
    samples::WriteWholeFile(m_scratch.Path() / "listing",
                            "type=file;size=1; ../.0001\r\ntype=file;size=1; /etc/passwd\r\n"
                            "type=file;size=1; .0001\0x\r\ntype=OS.unix=slink:/etc; .0002\r\n"
                            "type=file;size=1; a b\x1B[31m\r\ntype=dir; ..\r\n"sv);
    Serve({"--listing", (m_scratch.Path() / "listing").string()});
    EXPECT_THAT(Describe(Fetch("*")), HasSubstr("none of the requested"));
    EXPECT_THAT(m_notes, HasSubstr("names ignored that are not valid for a message or font, such as ../.0001"));
    EXPECT_FALSE(std::filesystem::exists(Here()));
}

TEST_F(FtpFetch, NeverReportsThePassword) {
    m_options.user = "anna";
    m_password = "swordfish";
    Serve({"--echo"});
    const ftp::FetchReport report = Fetch("1");
    EXPECT_THAT(report.failure, HasSubstr("user name or password refused (reply 530)"));
    EXPECT_THAT(report.failure, testing::Not(HasSubstr("swordfish")));
}

}  // namespace

}  // namespace zel::test
