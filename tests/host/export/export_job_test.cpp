#include "host/export/export_job.h"

#include <fstream>
#include <sstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "base/sha256.h"
#include "host/export/recordings.h"
#include "samples/scratch_directory.h"

namespace zel::test {

namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;
using testing::ThrowsMessage;

class Job : public testing::Test {
  protected:
    exporter::ExportSummary Run(const std::filesystem::path& directory, const std::vector<std::string>& formats,
                                const std::vector<library::Recording>& recordings, int jobs = 1) {
        exporter::ExportJob job(directory, formats, {}, jobs);
        for (const library::Recording& recording : recordings) job.Export(recording);
        return job.Finish();
    }

    static std::map<std::string, std::string> FilesIn(const std::filesystem::path& directory) {
        std::map<std::string, std::string> files;
        for (const auto& entry : std::filesystem::directory_iterator(directory)) {
            files[entry.path().filename()] = entry.is_directory() ? "" : samples_test::ReadAll(entry.path());
        }
        return files;
    }

    samples_test::ScratchDirectory m_scratch;
    const std::filesystem::path m_out = m_scratch.Path() / "deep" / "out";
};

TEST_F(Job, WritesTheSameFilesWithAnyNumberOfJobs) {
    std::vector<library::Recording> recordings;
    for (int n = 1; n <= 32; ++n) recordings.push_back(Recorded(n, Colourful(8 + n, 8)));
    recordings.back().disk = "z";
    const std::vector<std::string> formats = {"json", "html", "sheet"};
    const exporter::ExportSummary alone = Run(m_out, formats, recordings);
    EXPECT_THAT(alone.failures, IsEmpty());
    EXPECT_EQ(alone.messages, 32);
    const auto files = FilesIn(m_out);
    EXPECT_EQ(files.size(), 32U * 2 + 2 + 1 + 2);  // two sheets, the index, manifest.json and SHA256SUMS
    EXPECT_EQ(static_cast<int>(files.size()), alone.files);
    EXPECT_TRUE(files.contains("contact-sheet-002.png") && files.contains("z_0032.html"));
    EXPECT_THAT(files.at("index.html"), HasSubstr("<a href=\"z_0032.html\">"));
    Run(m_scratch.Path() / "four", formats, recordings, 4);
    EXPECT_EQ(FilesIn(m_scratch.Path() / "four"), files);
}

/// The names in SHA256SUMS, after a check of their sums.
std::vector<std::string> ListedNames(const std::filesystem::path& directory) {
    std::istringstream lines(samples_test::ReadAll(directory / "SHA256SUMS"));
    std::vector<std::string> names;
    for (std::string sum, name; lines >> sum >> name; names.push_back(name)) {
        EXPECT_EQ(base::Sha256OfFile(directory / name), sum) << name;
    }
    return names;
}

TEST_F(Job, KeepsTheListsOfWhatIsThere) {
    const picture::Picture small = Colourful(8, 8);
    Run(m_out, {"html", "json"}, {Recorded(2, small), Recorded(5, small), Recorded(7, small)});
    std::filesystem::remove(m_out / "0007.json");
    library::Recording changed = Recorded(5, small);
    changed.text = "changed";
    Run(m_out, {"html"}, {Recorded(3, small), changed});
    EXPECT_THAT(ListedNames(m_out), ElementsAre("0002.html", "0002.json", "0003.html", "0005.html", "0005.json",
                                                "0007.html", "index.html", "manifest.json"));
    const std::string index = samples_test::ReadAll(m_out / "index.html");
    EXPECT_THAT(index,
                AllOf(HasSubstr("0002.html"), HasSubstr("0003.html"), HasSubstr("changed"), HasSubstr("0007.html")));
    Run(m_out, {"png"}, {Recorded(9, small)});
    EXPECT_THAT(ListedNames(m_out), testing::SizeIs(9));
    const auto manifest = nlohmann::json::parse(samples_test::ReadAll(m_out / "manifest.json"));
    EXPECT_EQ(manifest["formats"], nlohmann::json({"png", "html", "json"}));
    EXPECT_EQ(manifest["messages"].size(), 5U);
    EXPECT_EQ(samples_test::ReadAll(m_out / "index.html"), index);
}

TEST_F(Job, ReplacesTheFailuresOfTheFormatsThatItRepeats) {
    library::Recording bare = Recorded(1, Colourful(8, 8));
    const std::string picture = std::exchange(bare.picture, {});
    Run(m_out, {"json", "png", "tga"}, {bare});
    bare.picture = picture;
    Run(m_out, {"png"}, {bare});
    const auto manifest = nlohmann::json::parse(samples_test::ReadAll(m_out / "manifest.json"));
    EXPECT_EQ(manifest["messages"][0]["failures"], nlohmann::json({"tga: there is no picture"}));
    EXPECT_THAT(ListedNames(m_out), ElementsAre("0001.png", "0001.json", "manifest.json"));
}

TEST_F(Job, LeavesAForeignManifestAlone) {
    const std::string sum(64, 'a');
    const auto with_file = [&](const std::string& name, const std::string& checksum) {
        return R"({"formats":[],"premultiplied":false,"messages":[],"files":[{"name":")" + name +
               R"(","size":1,"sha256":")" + checksum + R"("}]})";
    };
    std::filesystem::create_directories(m_out);
    for (const std::string& text :
         {std::string(), std::string("{}"),
          std::string(R"({"version":2,"formats":[],"premultiplied":false,"messages":[],"files":[]})"),
          std::string("[1"), std::string(R"({"name":"App","start_url":"/"})"),
          std::string(R"({"formats":[],"premultiplied":false,"messages":[{"number":"x"}],"files":[]})"),
          with_file("../x", sum), with_file("", sum), with_file("a\\nb", sum), with_file("a", "0")}) {
        std::ofstream(m_out / "manifest.json") << text;
        EXPECT_THAT([&] { exporter::ExportJob(m_out, {"json"}, {}); },
                    ThrowsMessage<std::runtime_error>(HasSubstr("manifest.json: is not the manifest of an export")))
            << text;
        EXPECT_EQ(samples_test::ReadAll(m_out / "manifest.json"), text);
    }
    std::ofstream(m_out / "manifest.json") << with_file("gone", sum);
    EXPECT_THAT(Run(m_out, {"json"}, {Recorded(1)}).failures, IsEmpty());
}

TEST_F(Job, DoesNotMixPicturesOfTwoKinds) {
    const exporter::ExportOptions straight{}, multiplied{.premultiplied = true}, framed{.frame = {{1920, 1080}}};
    const exporter::ExportOptions mixer{.key_names = exporter::KeyNames::kMixer};
    struct {
        const char* first;
        exporter::ExportOptions first_options;
        const char* second;
        exporter::ExportOptions second_options;
        const char* reason;
    } const cases[] = {
        {"png", straight, "key-fill", straight, nullptr},
        {"key-fill", straight, "png", straight, "fills of key-fill"},
        {"key-fill", mixer, "png", straight, nullptr},
        {"tga", straight, "png", multiplied, "straight colours"},
        {"png", multiplied, "tga", straight, "premultiplied colours"},
        {"png", framed, "png", straight, "the frame 1920x1080 pillar"},
        {"tga", straight, "png", framed, "the frame of their standard"},
        {"json", multiplied, "png", framed, nullptr},
        {"png", multiplied, "json", framed, nullptr},
    };
    int n = 0;
    for (const auto& row : cases) {
        const std::filesystem::path directory = m_scratch.Path() / std::to_string(++n);
        exporter::ExportJob first(directory, {row.first}, row.first_options);
        first.Export(Recorded(1, Colourful(8, 8)));
        first.Finish();
        const auto second = [&] {
            exporter::ExportJob job(directory, {row.second}, row.second_options);
            job.Export(Recorded(1, Colourful(8, 8)));
            job.Finish();
        };
        if (row.reason == nullptr) {
            const auto files = FilesIn(directory);
            EXPECT_NO_THROW(second()) << n;
            for (const auto& [name, bytes] : files) {
                if (!name.ends_with(".png")) continue;
                EXPECT_EQ(FilesIn(directory)[name], bytes) << n << ' ' << name;
            }
        } else {
            EXPECT_THAT(second, ThrowsMessage<std::runtime_error>(HasSubstr(row.reason))) << n;
        }
    }
}

TEST_F(Job, ContinuesAfterAMessageThatFails) {
    std::vector<library::Recording> recordings = {Recorded(1), Recorded(2),     Recorded(3),
                                                  Recorded(3), Recorded(10000), Recorded(4)};
    recordings[0].picture.clear();
    recordings[1].picture.resize(100);
    const exporter::ExportSummary summary = Run(m_out, {"png", "json", "sheet"}, recordings, 2);
    EXPECT_THAT(summary.failures,
                testing::UnorderedElementsAre(
                    "0001: png: there is no picture", StartsWith("0002: png: "), StartsWith("0002: thumbnail: "),
                    "3: another message has the file name 0003", "10000: the number isn't 0 to 9999"));
    EXPECT_EQ(summary.failed_messages, 4);
    const auto files = FilesIn(m_out);
    EXPECT_TRUE(files.contains("0002.json") && files.contains("0004.png") && !files.contains("0002.png"));
}

TEST_F(Job, ReportsAFileThatCouldNotBeWritten) {
    std::filesystem::create_directories(m_out / "0001.json");
    const exporter::ExportSummary summary = Run(m_out, {"json"}, {Recorded(1), Recorded(2)});
    EXPECT_THAT(summary.failures, ElementsAre(AllOf(StartsWith("0001: json: " + (m_out / "0001.json").string()),
                                                    HasSubstr("Is a directory"))));
    EXPECT_EQ(FilesIn(m_out).size(), 4U);
}

}  // namespace

}  // namespace zel::test
