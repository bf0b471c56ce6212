#include "host/export/bag.h"

#include <fstream>
#include <sstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/sha256.h"
#include "host/export/export_job.h"
#include "host/export/recordings.h"
#include "samples/scratch_directory.h"

namespace zel::test {

namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::ThrowsMessage;

class BagJob : public testing::Test {
  protected:
    exporter::ExportSummary Run(const std::vector<std::string>& formats, int number, bool bag = true) {
        exporter::ExportJob job(m_out, formats, {.bag = bag});
        job.Export(Recorded(number, Colourful(8, 8)));
        return job.Finish();
    }
    std::string Read(const std::string& name) const { return samples_test::ReadAll(m_out / name); }
    void Write(const std::string& name, const std::string& text) const { std::ofstream(m_out / name) << text; }

    /// The names in a list of sums. Those whose sum is wrong are followed by "!".
    std::vector<std::string> Listed(const std::string& list) const {
        std::istringstream lines(Read(list));
        std::vector<std::string> names;
        for (std::string line; std::getline(lines, line);) {
            const std::string name = line.substr(66);
            const bool is_right = base::Sha256OfFile(m_out / name) == line.substr(0, 64);
            names.push_back(is_right ? name : name + "!");
        }
        return names;
    }

    samples_test::ScratchDirectory m_scratch;
    const std::filesystem::path m_out = m_scratch.Path() / "out";
};

TEST_F(BagJob, ListsEveryFile) {
    const exporter::ExportSummary summary = Run({"site", "json"}, 1);
    EXPECT_THAT(summary.failures, IsEmpty());
    EXPECT_EQ(summary.files, 11);
    EXPECT_THAT(Listed("manifest-sha256.txt"),
                ElementsAre("data/0001.json", "data/SHA256SUMS", "data/index.html", "data/manifest.json",
                            "data/pages/0001.html", "data/pictures/0001.png", "data/thumbnails/0001.png"));
    EXPECT_THAT(Listed("tagmanifest-sha256.txt"), ElementsAre("bagit.txt", "bag-info.txt", "manifest-sha256.txt"));
    EXPECT_EQ(Read("bagit.txt"), "BagIt-Version: 1.0\nTag-File-Character-Encoding: UTF-8\n");
    std::uintmax_t bytes = 0;
    for (const std::string& file : Listed("manifest-sha256.txt")) bytes += std::filesystem::file_size(m_out / file);
    EXPECT_THAT(Read("bag-info.txt"), HasSubstr("\nPayload-Oxum: " + std::to_string(bytes) + ".7\n"));
}

TEST_F(BagJob, ASecondExportKeepsWhatIsThere) {
    Run({"json"}, 1);
    Run({"json"}, 2);
    Write("bag-info.txt",
          "Source-Organization: Archive\nBagging-Date: 2001-01-01\n  continued\nContact-Name: Ada\n  Byron\n");
    Write("data/notes.txt", "a person's own");
    Write("data/0001.json", "changed since");
    Run({"json"}, 3);
    EXPECT_THAT(Listed("manifest-sha256.txt"), ElementsAre("data/0001.json!", "data/0002.json", "data/0003.json",
                                                           "data/SHA256SUMS", "data/manifest.json", "data/notes.txt"));
    EXPECT_THAT(Listed("tagmanifest-sha256.txt"), ElementsAre("bagit.txt", "bag-info.txt", "manifest-sha256.txt"));
    EXPECT_THAT(
        Read("bag-info.txt"),
        AllOf(testing::StartsWith("Source-Organization: Archive\nContact-Name: Ada\n  Byron\nBag-Software-Agent: "),
              testing::Not(HasSubstr("2001"))));
}

TEST_F(BagJob, RefusesOtherDirectories) {
    const auto bag = [this] { Run({"json"}, 1); };
    std::filesystem::create_directory(m_out);
    Write("file", "");
    EXPECT_THAT(bag, ThrowsMessage<std::runtime_error>(HasSubstr("out: is neither empty nor a bag with an export")));
    std::filesystem::remove(m_out / "file");
    bag();
    EXPECT_THAT([&] { Run({"json"}, 2, false); }, ThrowsMessage<std::runtime_error>(HasSubstr("out: is in a bag")));
    EXPECT_THAT([&] { exporter::ExportJob(m_out / "data", {"json"}, {}); },
                ThrowsMessage<std::runtime_error>(HasSubstr("data: is in a bag")));
    Write("manifest-md5.txt", "");
    EXPECT_THAT(bag, ThrowsMessage<std::runtime_error>(HasSubstr("manifest-md5.txt: another program's list")));
}

}  // namespace

}  // namespace zel::test
