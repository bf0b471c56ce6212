#include <fstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "host/export/export_job.h"
#include "host/export/recordings.h"
#include "host/export/site_index.h"
#include "samples/scratch_directory.h"

namespace zel::test {

namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::ThrowsMessage;

/// Texts that would be markup, in every place that has one.
constexpr const char* kHostile = "</script><script>alert(1)</script><img src=x onerror=alert(2)>\"'&";

library::Recording Message(int number, const std::string& text) {
    library::Recording recording = Recorded(number, Colourful(8, 8));
    recording.text = text;
    recording.sources = {{"/box/" + text + "/MESSAGES/.0001", {}, 1, {}}};
    return recording;
}

library::Recording HostileMessage() {
    library::Recording recording = Message(1, kHostile);
    recording.disk = kHostile;
    recording.fonts = {kHostile};
    recording.fields = {{kHostile, 1, 2, 3, 4}};
    recording.warnings = {kHostile};
    return recording;
}

class Site : public testing::Test {
  protected:
    exporter::ExportSummary Run(const std::vector<std::string>& formats,
                                const std::vector<library::Recording>& recordings) {
        exporter::ExportJob job(m_out, formats, {}, 2);
        for (const library::Recording& recording : recordings) job.Export(recording);
        return job.Finish();
    }
    std::string Read(const std::string& name) const { return samples_test::ReadAll(m_out / name); }
    std::vector<exporter::SiteEntry> Entries() const {
        return exporter::ReadSiteIndex(Read("index.html")).value_or(std::vector<exporter::SiteEntry>());
    }
    std::vector<int> Numbers() const {
        std::vector<int> numbers;
        for (const auto& entry : Entries()) numbers.push_back(entry.key.number);
        return numbers;
    }

    samples_test::ScratchDirectory m_scratch;
    const std::filesystem::path m_out = m_scratch.Path() / "out";
};

TEST_F(Site, WritesEveryTextAsText) {
    EXPECT_THAT(Run({"site", "json"}, {HostileMessage()}).failures, IsEmpty());
    for (const auto& file : std::filesystem::recursive_directory_iterator(m_out)) {
        if (file.path().extension() != ".html") continue;
        const std::string page = samples_test::ReadAll(file.path());
        EXPECT_THAT(page, AllOf(Not(HasSubstr("<script>alert")), Not(HasSubstr("<img")), Not(HasSubstr("://")),
                                HasSubstr("default-src 'none'; img-src 'self' file:;")))
            << file.path();
    }
    ASSERT_EQ(Entries().size(), 1U);
    const exporter::SiteEntry entry = Entries().front();
    EXPECT_EQ(entry.text, kHostile);
    EXPECT_EQ(entry.key.disk, kHostile);
    EXPECT_THAT(entry.fonts, ElementsAre(kHostile));
    EXPECT_THAT(entry.fields, ElementsAre(kHostile));
    EXPECT_EQ(entry.source, "/box/" + std::string(kHostile) + "/MESSAGES/.0001");
}

TEST_F(Site, ListsWhatTheExportMadeBesideIt) {
    Run({"png"}, {Message(1, "one")});
    Run({"site", "json"}, {Message(1, "one")});
    EXPECT_THAT(Read("pages/0001.html"),
                AllOf(HasSubstr("href=\"../pictures/0001.png\""), HasSubstr("href=\"../0001.png\""),
                      HasSubstr("href=\"../0001.json\""), HasSubstr("<li>one</li>"), HasSubstr("<dt>Number</dt>")));
}

TEST_F(Site, ASecondExportKeepsTheMessagesThatAreThere) {
    Run({"site"}, {Message(1, "one"), Message(2, "two"), Message(3, "three")});
    std::filesystem::remove(m_out / "pages/0003.html");
    Run({"site"}, {Message(2, "changed"), Message(4, "four")});
    Run({"png"}, {Message(5, "no page")});
    EXPECT_THAT(Numbers(), ElementsAre(1, 2, 4));
    EXPECT_EQ(Entries()[1].text, "changed");
    EXPECT_THAT(Read("SHA256SUMS"), AllOf(HasSubstr("  pages/0001.html\n"), HasSubstr("  thumbnails/0004.png\n")));
}

TEST_F(Site, LeavesAnotherIndexAlone) {
    std::filesystem::create_directory(m_out);
    std::ofstream(m_out / "index.html") << "mine";
    const auto site = [&] { Run({"site"}, {Message(1, "one")}); };
    EXPECT_THAT(site, ThrowsMessage<std::runtime_error>(HasSubstr("index.html: is not the index of a site")));
    EXPECT_EQ(Read("index.html"), "mine");
    std::filesystem::remove(m_out / "index.html");
    Run({"html"}, {Message(1, "one")});
    EXPECT_THAT(site, ThrowsMessage<std::runtime_error>(HasSubstr("the index.html of html")));
}

TEST_F(Site, IsTheIndexOfThePagesBesideIt) {
    for (int number = 1; number <= 2; ++number) Run({"html", "site"}, {Message(number, "text")});
    EXPECT_THAT(Numbers(), ElementsAre(1, 2));
    EXPECT_THAT(Read("pages/0002.html"), HasSubstr("href=\"../0002.html\""));
    EXPECT_THAT([&] { Run({"html"}, {Message(3, "text")}); },
                ThrowsMessage<std::runtime_error>(HasSubstr("the index.html of site")));
}

TEST(SiteIndex, RefusesDataThatNoSiteHas) {
    const std::string begin = "<script type=\"application/json\" id=\"data\">";
    for (
        const std::string& data :
        {std::string(), std::string("{}"), std::string("[[["),
         std::string(R"({"messages":[[0,1,"t",[],[],0,"",true,""]]})"),
         std::string(
             R"({"disks":[{"name":""}],"fonts":[],"fields":[],"folders":[""],"messages":[[0,1,"t",[7],[],0,"",true,""]]})"),
         std::string(R"({"disks":[],"fonts":[],"fields":[],"folders":[],"messages":[[-1,"x"]]})")}) {
        EXPECT_FALSE(exporter::ReadSiteIndex(begin + data + "</script>")) << data;
    }
    EXPECT_FALSE(exporter::ReadSiteIndex("<html>"));
}

TEST(SiteIndex, OfTenThousandMessagesIsBelowFiveMegabytes) {
    std::vector<exporter::SiteEntry> entries;
    for (int n = 0; n < 10000; ++n) {
        exporter::SiteEntry entry{{"news", n}, "Tonight's headlines number " + std::to_string(n), {}, {}, {}, {}, true};
        for (int row = 0; row < 7; ++row)
            entry.text += "Ferry fares frozen until spring " + std::to_string(n * row) + "\n";
        entry.fonts = {"Lantern 28", "Lantern Shade 32", "Grotesk " + std::to_string(n % 50)};
        entry.fields = {"NAME", "TOWN"};
        entry.source = "/archive/boxes/1994/news/MESSAGES/." + std::to_string(n);
        entries.push_back(std::move(entry));
    }
    const std::string page = exporter::SiteIndex(entries);
    EXPECT_LT(page.size(), 5U << 20);
    EXPECT_EQ(exporter::ReadSiteIndex(page)->size(), entries.size());
}

}  // namespace

}  // namespace zel::test
