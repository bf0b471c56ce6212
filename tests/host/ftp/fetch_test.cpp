#include <cstdlib>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "host/ftp/fetch_fixture.h"

namespace zel::test {

namespace {

using testing::HasSubstr;

// Against a well-behaved server from a package.
class FromARealServer : public FtpFetch {
  protected:
    void SetUp() override {
        if (!ZELTRANS_HAS_PYFTPDLIB) GTEST_SKIP() << "python3-pyftpdlib or python3-openssl is missing";
    }
    void ServeWell(const std::vector<std::string>& options = {}) { Serve(options, "server.py"); }
};

TEST_F(FromARealServer, FetchesByActiveTransferToo) {
    ServeWell();
    m_options.passive = false;
    EXPECT_EQ(Describe(Fetch("2")), "MESSAGES/.0002 fetched, MACHINE/.0012 fetched, MACHINE/.0031 missing");
}

TEST_F(FromARealServer, MakesADiskWhenTheDirectoryIsMessages) {
    ServeWell();
    m_directory = "/MESSAGES";
    EXPECT_EQ(Describe(Fetch(".000*")),
              "MESSAGES/.0001 fetched, MESSAGES/.0002 fetched, MESSAGES/.0003 fetched, "
              "MACHINE/.0012 fetched, MACHINE/.0031 missing");
    for (const char* name : {"MESSAGES/.0001", "MESSAGES/.0002", "MESSAGES/.0003"})
        EXPECT_EQ(Fetched(name), Served(name)) << name;
    EXPECT_EQ(Fetched("MACHINE/.0012"), Served("MACHINE/.0012"));
}

TEST_F(FromARealServer, NotesAMessageWhoseFontsItCannotKnow) {
    ServeWell();
    m_directory = "/MESSAGES";
    samples::WriteWholeFile(Here() / "MESSAGES/.0001", "mine");
    std::filesystem::resize_file(Here() / "MESSAGES/.0001", (256U << 20) + 1);
    EXPECT_EQ(Describe(Fetch("1")), "MESSAGES/.0001 skipped");
    EXPECT_THAT(m_notes, HasSubstr(".0001: the local file can't be read back"));
}

TEST_F(FromARealServer, FetchesMessagesIntoALocalDirectoryMessages) {
    ServeWell();
    m_directory = "MESSAGES";
    m_to = "disk2/messages/";
    EXPECT_EQ(Describe(Fetch("1")), ".0001 fetched, MACHINE/.0012 fetched, MACHINE/.0031 missing");
    EXPECT_EQ(Fetched("disk2/messages/.0001"), Served("MESSAGES/.0001"));
    EXPECT_EQ(Fetched("disk2/MACHINE/.0012"), Served("MACHINE/.0012"));
}

TEST_F(FromARealServer, ReportsWhyItFailed) {
    ServeWell({"--user", "anna", "--password", "swordfish"});
    EXPECT_THAT(Fetch("1").failure, HasSubstr("refused (reply 530)"));
    m_options.user = "anna";
    m_password = "swordfish";
    EXPECT_THAT(Fetch("99").failure, HasSubstr("none of the requested files exists"));
    m_directory = "NOWHERE";
    EXPECT_THAT(Fetch("1").failure, HasSubstr("NOWHERE: no such directory on the server"));
    m_directory = "a\r\nDELE .0001";
    EXPECT_THAT(Fetch("1").failure, HasSubstr("contains a control character"));
    m_server.reset();
    m_directory.clear();
    EXPECT_THAT(Fetch("1").failure, HasSubstr("cannot connect to the server"));
}

TEST_F(FromARealServer, EncryptsAndChecksTheCertificateOnRequest) {
    const std::string pem = (m_scratch.Path() / "server.pem").string();
    const std::string make =
        "openssl req -x509 -newkey rsa:2048 -nodes -days 2 -subj /CN=localhost -addext "
        "subjectAltName=IP:127.0.0.1 -keyout '" +
        pem + ".key' -out '" + pem + ".crt' 2>/dev/null && cat '" + pem + ".key' '" + pem + ".crt' >'" + pem + "'";
    if (std::system(make.c_str()) != 0) GTEST_SKIP() << "openssl is missing";
    ServeWell({"--certificate", pem});
    m_options.tls = ftp::Tls::kOff;
    EXPECT_THAT(Fetch("1").failure, HasSubstr("refused"));
    m_options.tls = ftp::Tls::kRequire;
    EXPECT_THAT(Fetch("1").failure, HasSubstr("certificate is not valid"));
    m_options.certificates = pem + ".crt";
    EXPECT_THAT(Describe(Fetch("1")), HasSubstr("MESSAGES/.0001 fetched"));
    m_options.tls = ftp::Tls::kTry;
    m_options.certificates.clear();
    EXPECT_THAT(Describe(Fetch("2")), HasSubstr("MESSAGES/.0002 fetched"));
    ServeWell();
    m_options.tls = ftp::Tls::kRequire;
    EXPECT_THAT(Fetch("1").failure, HasSubstr("the server does not support TLS"));
}

}  // namespace

}  // namespace zel::test
