#pragma once

#include <fstream>
#include <memory>
#include <random>

#include <gtest/gtest.h>

#include "host/ftp/fetch.h"
#include "host/ftp/test_server.h"
#include "samples/scratch_directory.h"
#include "samples/write_file.h"
#include "support/sample_files.h"

namespace zel::test {

/// A small disk to serve, "disk" in a scratch directory: the messages .0001 to .0003 use the fonts 12 and 31, of which
/// only 12 exists. Files are fetched to "here".
class FtpFetch : public testing::Test, public ftp::FetchObserver {
  protected:
    FtpFetch() {
        const auto message = files::WriteMessage(GoodMessage());
        for (const char* name : {".0001", ".0002", ".0003"})
            samples::WriteWholeFile(Disk() / "MESSAGES" / name, message);
        samples::WriteWholeFile(Disk() / "MACHINE/.0012", files::WriteFont(GoodFont()));
    }

    std::filesystem::path Disk() const { return m_scratch.Path() / "disk"; }
    std::filesystem::path Here() const { return m_scratch.Path() / "here"; }

    /// A file of pseudo-random bytes.
    void WriteRandom(const std::string& name, std::size_t size, unsigned seed) const {
        std::minstd_rand random(seed);
        files::Bytes bytes(size);
        for (auto& byte : bytes) byte = static_cast<std::uint8_t>(random() >> 8);
        samples::WriteWholeFile(Disk() / name, bytes);
    }

    void Serve(std::vector<std::string> options, const char* script = "hostile_server.py") {
        options.insert(options.begin(), {script, Disk().string()});
        m_server = std::make_unique<TestServer>(options);
        m_options.port = m_server->Port();
    }

    ftp::FetchReport Fetch(const std::string& what) {
        ftp::ServerOptions options;
        options.host = "127.0.0.1";
        options.port = m_options.port;
        options.user = m_options.user;
        options.password = ftp::Secret(m_password);
        options.passive = m_options.passive;
        options.tls = m_options.tls;
        options.certificates = m_options.certificates;
        options.stall_seconds = 1;
        options.connect_seconds = 2;
        std::string why;
        const auto session = ftp::MakeFtpSession(
            std::move(options), [this] { return Cancelled(); }, why);
        EXPECT_TRUE(session) << why;
        ftp::FetchRequest request{.source = "127.0.0.1",
                                  .directory = m_directory,
                                  .selection = ftp::Selection::Parse(what, why).value(),
                                  .to = m_to.empty() ? Here() : Here() / m_to,
                                  .overwrite = m_overwrite,
                                  .fonts = true,
                                  .file_limit = m_limit,
                                  .listing_limits = {},
                                  .max_attempts_without_progress = m_max_attempts,
                                  .pause = std::chrono::milliseconds(1)};
        return ftp::RunFetch(*session, request, *this);
    }

    std::string Fetched(const std::string& name) const { return samples_test::ReadAll(Here() / name); }
    std::string Served(const std::string& name) const { return samples_test::ReadAll(Disk() / name); }

    /// The failure, and each file with its outcome: "MESSAGES/.0001 fetched, ...".
    static std::string Describe(const ftp::FetchReport& report) {
        constexpr const char* kOutcomes[] = {"fetched", "resumed", "overwritten", "skipped", "missing", "failed"};
        std::string text = report.failure;
        for (const ftp::FileReport& file : report.files) {
            text += (text.empty() ? "" : ", ") + file.name + " " + kOutcomes[static_cast<int>(file.outcome)];
        }
        return text;
    }

    std::vector<std::string> Names(const std::string& directory) const {
        return samples_test::NamesIn(Here() / directory);
    }

    void OnProgress(const std::string&, std::uint64_t bytes, std::uint64_t) override { m_received = bytes; }
    void OnNote(const std::string& text) override { m_notes += text + "\n"; }
    bool Cancelled() override { return m_received >= m_cancel_at; }

    samples_test::ScratchDirectory m_scratch;
    std::unique_ptr<TestServer> m_server;
    ftp::ServerOptions m_options;
    std::string m_password, m_directory, m_notes;
    /// Local directory, relative to Here().
    std::string m_to;
    std::uint64_t m_limit = ftp::kLargestRemoteFile, m_received = 0, m_cancel_at = UINT64_MAX;
    int m_max_attempts = 3;
    bool m_overwrite = false;
};

}  // namespace zel::test
