// Live templates and OGraf graphics of recordings.
#include <regex>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "base/base64.h"
#include "base/deflate.h"
#include "base/sha256.h"
#include "host/export/live_subject.h"
#include "host/export/recordings.h"
#include "host/export/zip_archive.h"
#include "host/live/ograf_package.h"
#include "support/sample_files.h"

namespace zel::test {

namespace {

using Json = nlohmann::ordered_json;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

std::string Text(const files::Bytes& bytes) {
    return {bytes.begin(), bytes.end()};
}

/// A recording of the message with its font 12; its font 31 was missing.
library::Recording RecordedFrom(const files::MessageFile& message) {
    library::Recording recording = Recorded();
    recording.text = "NEWS\nat nine";
    recording.recorded_at = "2026-11-22T23:51:32Z";
    recording.files = {library::PackFile(Text(files::WriteMessage(message))),
                       library::PackFile(Text(files::WriteFont(GoodFont())))};
    recording.sources = {{"/disk/MESSAGES/.0012", {}, recording.files[0]->size, recording.files[0]->sha256},
                         {"/disk/MACHINE/.0012", 12, recording.files[1]->size, recording.files[1]->sha256},
                         {"/disk/MACHINE/.0031", 31, 0, {}}};
    return recording;
}

/// GoodMessage with one field more, in font 12.
files::MessageFile Form(const std::string& name = "PLACE") {
    files::MessageFile message = GoodMessage();
    message.tabs->fields.push_back({.tab_start = 93, .tab_end = 193, .tab_name = name, .tab_row = 0, .tab_font = 0});
    return message;
}

std::string TemplateOf(const library::Recording& recording, const exporter::ExportOptions& options = {}) {
    return Exported("template", recording, options).at("0012.html");
}

/// The contents of the elements that a pattern begins.
std::vector<std::string> ElementsOf(const std::string& page, const std::string& begin, const std::string& end) {
    std::vector<std::string> found;
    for (std::size_t at = page.find(begin); at != std::string::npos; at = page.find(begin, at + 1)) {
        const std::size_t from = page.find('>', at) + 1;
        found.push_back(page.substr(from, page.find(end, from) - from));
    }
    return found;
}

std::string FailureOf(const library::Recording& recording) {
    try {
        TemplateOf(recording);
    } catch (const std::runtime_error& error) {
        return error.what();
    }
    return {};
}

TEST(Template, HasDefinitionsOfTheFieldsThatCanBeFilled) {
    exporter::ExportOptions options;
    options.fit = exporter::Fit::kPixel;
    options.fade_in = {400, false};
    options.fade_out = {25, true};
    const std::string page = TemplateOf(RecordedFrom(Form()), options);
    const std::vector<std::string> scripts = ElementsOf(page, "<script", "</script>");
    ASSERT_EQ(scripts.size(), 4U);
    const Json definition = Json::parse(scripts[0]);
    EXPECT_EQ(definition["properties"].dump(),
              R"({"f2":{"type":"string","gddType":"single-line","title":"PLACE","default":"NEWS","maxLength":63}})");
    EXPECT_THAT(scripts[1], StartsWith("window.SPXGCTemplateDefinition = {"));
    EXPECT_THAT(scripts[1],
                HasSubstr(R"("DataFields":[{"field":"f2","ftype":"textfield","title":"PLACE","value":"NEWS"}])"));
    const Json form = Json::parse(scripts[2]);
    EXPECT_EQ(form["fit"], "pixel");
    EXPECT_EQ(form["fade"].dump(), R"({"in":400,"out":834})");
    EXPECT_EQ(form["title"], "0012 NEWS");
    EXPECT_THAT(form["fields"][0]["fault"], HasSubstr("font 31 was not found"));
    EXPECT_EQ(form["fields"][1]["fault"], "no font of the message has the limits of row 2");
    EXPECT_EQ(page.find("://"), std::string::npos);
}

TEST(Template, NotesTheFieldsThatItLeavesOut) {
    const library::Recording recording = RecordedFrom(Form());
    exporter::ExportSubject subject(recording);
    exporter::LiveFormOf(subject);
    EXPECT_THAT(subject.TakeNotes(),
                ElementsAre(HasSubstr("field f0 \"NAME\" can't be filled and is left out: font 31"),
                            HasSubstr("field f1 can't be filled and is left out: no font")));
}

TEST(Template, HasItsOwnScriptsAloneWhateverTheTexts) {
    library::Recording recording = RecordedFrom(Form("</script><!--"));
    recording.text = "</script>\xE2\x80\xA8<script>alert(1)</script>\xFF";
    const std::string page = TemplateOf(recording);
    const std::vector<std::string> scripts = ElementsOf(page, "<script", "</script>");
    ASSERT_EQ(scripts.size(), 4U);
    EXPECT_EQ(page.find("<!--"), std::string::npos);
    EXPECT_EQ(page.find("\xE2\x80\xA8"), page.find("<title>") + sizeof "<title>0012 &lt;/script>" - 1);
    EXPECT_EQ(Json::parse(scripts[0])["properties"]["f2"]["title"], "</script><!--");
    const auto allowed = [&](const std::string& text) {
        return page.find("'sha256-" + base::Base64(base::Sha256Raw(text)) + "'") != std::string::npos;
    };
    EXPECT_TRUE(allowed(scripts[1]) && allowed(scripts[3]));
    EXPECT_TRUE(allowed(ElementsOf(page, "<style", "</style>").at(0)));
    EXPECT_THAT(page, HasSubstr("default-src 'none'"));
}

TEST(Template, NeedsTheFilesOfTheMessageAndItsGlyphs) {
    library::Recording recording = RecordedFrom(Form());
    library::Recording without_font = recording, without_message = recording, in_text_form = recording,
                       large = recording, damaged = recording;
    without_font.files.pop_back();
    without_message.files.erase(without_message.files.begin());
    large.files.pop_back();
    large.sources[1].size = library::kLargestKeptFile + 1;
    in_text_form.document = R"({"rows":[{"row":0}],"characters":[{"row":0,"text":"N","form":"text"}]})";
    library::PackedFile cut = *damaged.files[0];
    cut.stream.pop_back();
    damaged.files[0] = std::make_shared<const library::PackedFile>(cut);
    EXPECT_THAT(FailureOf(without_font), HasSubstr("doesn't keep font 12: record the disk again"));
    EXPECT_THAT(FailureOf(without_message), HasSubstr("doesn't keep the message's file: record the disk again"));
    EXPECT_THAT(FailureOf(large), HasSubstr("font 12 has more than the 16 MiB that a library keeps"));
    EXPECT_THAT(FailureOf(in_text_form), HasSubstr("record it without --tt-convert"));
    EXPECT_THAT(FailureOf(damaged), HasSubstr("is damaged"));
    EXPECT_EQ(FailureOf(recording), "");
}

TEST(Template, OfAnRgbaFileShowsItsPicture) {
    library::Recording recording = Recorded();
    recording.kind = library::RecordingKind::kRgbaBackground;
    const Json form = Json::parse(ElementsOf(TemplateOf(recording), "<script", "</script>").at(2));
    EXPECT_THAT(form.value("picture", ""), StartsWith("data:image/png;base64,"));
    EXPECT_TRUE(form["rows"].empty() && form["fields"].empty());
}

TEST(Ograf, IsAFolderAndTheSameAsAnArchive) {
    const auto files = Exported("ograf", RecordedFrom(Form()));
    std::vector<std::string> names;
    for (const auto& [name, bytes] : files) names.push_back(name);
    EXPECT_THAT(names, ElementsAre("0012.zip", "0012/0012.ograf.json", "0012/graphic.mjs", "0012/thumbnail.png"));
    // The first file of the archive, by its local header.
    const std::string& archive = files.at("0012.zip");
    const auto number = [&](std::size_t at, std::size_t bytes) {
        std::size_t value = 0;
        for (std::size_t n = bytes; n-- > 0;) value = value << 8 | static_cast<std::uint8_t>(archive[at + n]);
        return value;
    };
    const std::size_t begin = 30 + number(26, 2);
    EXPECT_EQ(archive.substr(30, number(26, 2)), "graphic.mjs");
    EXPECT_EQ(base::Inflated(std::string_view(archive).substr(begin, number(18, 4)), number(22, 4)),
              files.at("0012/graphic.mjs"));
    EXPECT_THAT(files.at("0012/graphic.mjs"), StartsWith("const zeltransForm = {"));
    const Json manifest = Json::parse(files.at("0012/0012.ograf.json"));
    EXPECT_EQ(manifest["main"], "graphic.mjs");
    EXPECT_EQ(manifest["schema"]["properties"]["f2"]["default"], "NEWS");
    EXPECT_EQ(manifest["thumbnails"][0]["file"], "thumbnail.png");
}

TEST(Ograf, HasAnotherVersionWithOtherContents) {
    std::set<std::string> versions;
    const auto add = [&](const library::Recording& recording, const exporter::ExportOptions& options = {}) {
        const Json manifest = Json::parse(Exported("ograf", recording, options).at("0012/0012.ograf.json"));
        versions.insert(manifest["version"]);
        const std::string element = manifest["id"].get<std::string>() + "-v" + manifest["version"].get<std::string>();
        EXPECT_TRUE(std::regex_match(element, std::regex("[a-z][a-z0-9._-]*"))) << element;
    };
    add(RecordedFrom(Form()));
    add(RecordedFrom(Form()));
    EXPECT_EQ(versions.size(), 1U);
    EXPECT_THAT(*versions.begin(), StartsWith("20261122.235132."));
    add(RecordedFrom(Form("OTHER")));
    add(RecordedFrom(Form()), {.fade_in = {12, true}});
    library::Recording hostile = RecordedFrom(Form());
    hostile.recorded_at = "UPPER 1";
    add(hostile);
    EXPECT_EQ(versions.size(), 4U);
}

TEST(Ograf, HasAnIdOfItsOwnForEachStem) {
    EXPECT_EQ(live::OgrafId("news_0012"), "zeltrans.news_0012");
    std::set<std::string> ids;
    for (const char* stem : {"news_0012", "News_0012", "NEWS_0012", "a b", "a_b", "a/b", "\xC3\xA9"}) {
        EXPECT_TRUE(std::regex_match(live::OgrafId(stem), std::regex("zeltrans[.][a-z0-9._-]+"))) << stem;
        EXPECT_TRUE(ids.insert(live::OgrafId(stem)).second) << stem;
    }
}

}  // namespace

}  // namespace zel::test
