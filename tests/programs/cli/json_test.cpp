#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "host/settings/sqlite_settings_store.h"
#include "programs/cli/command_disk.h"
#include "support/json_forms.h"

namespace zel::test {

namespace {

using testing::HasSubstr;
using testing::IsEmpty;

struct JsonCase {
    const char* form;
    /// Its standard output is one value a line.
    const char* line;
};

/// A file name with a byte that isn't UTF-8.
constexpr char kPrepare[] =
    "zeltrans sample disk && head -c 1000 disk/MESSAGES/.0001 >cut && printf x >$'odd\\xFF' && "
    "printf x >disk/MESSAGES/.0030 && zeltrans import disk/MESSAGES/.0013 --tt-convert --maps disk --json text.json && "
    "zeltrans import MESSAGES/.0012 --json odd.json && zeltrans import MESSAGES/.0020 --rgba background --json "
    "rgba.json; "
    "zeltrans batch disk 0 30 --maps disk --library m.zellib --out out --report report.json --json >batch; "
    "zeltrans export m.zellib 1 30 --out files --format json --format sheet --json >summary";

constexpr JsonCase kJsonCases[] = {
    {"message-document",
     "for file in *.json out/*.json; do [ $file = report.json ] || tr -d '\\n' <$file; echo; done | grep ."},
    {"font-document", "for file in disk/MACHINE/.*[0-9]; do zeltrans font $file --json - | tr -d '\\n'; echo; done"},
    {"font-kit",
     "for font in 0015 0060; do zeltrans font disk/MACHINE/.$font --kit kits --otf -q; tr -d '\\n' <kits/$font.json; "
     "echo; done"},
    {"write-result",
     "zeltrans write text.json --to new --json; zeltrans write rgba.json --to no --json; "
     "echo '{\"version\":1,\"file\":{\"type\":1}}' | zeltrans write - --to no --json"},
    {"recording", "for file in files/disk_*.json; do tr -d '\\n' <$file; echo; done"},
    {"recording", "zeltrans library show m.zellib 14 --json; zeltrans library show --json m.zellib 20"},
    {"library-entry", "zeltrans library list m.zellib --json"},
    {"library-entry", "zeltrans library search --json m.zellib head"},
    {"batch-message", "grep '\"type\":\"message\"' batch"},
    {"batch-report", "tail -n 1 batch; tr -d '\\n' <report.json"},
    {"batch-reports", "zeltrans batch disk none -q --report - | tr -d '\\n'"},
    {"export-manifest", "tr -d '\\n' <files/manifest.json"},
    {"export-summary", "cat summary"},
    {"export-format", "zeltrans export --json --list-formats"},
    {"setting", "zeltrans settings --json --settings kept; zeltrans settings get FontDir 2 --json --settings kept"},
    {"inspection-report", "zeltrans info --json disk MACHINE MESSAGES cut odd* missing"},
    {"verification-line", "zeltrans verify --json disk MACHINE MESSAGES cut odd* missing"},
    {"fill-field", "zeltrans fill disk/MESSAGES/.0013 --list --json; zeltrans fill MESSAGES/.0012 --list --json"},
    {"fill-line",
     "printf 'NAME,X\\nAnn,x\\nBob \\342\\202\\254,x\\n' | zeltrans fill disk/MESSAGES/.0013 --data - --out filled "
     "--library f.zellib --json"},
    {"library-text", "zeltrans library texts m.zellib --json"},
    {"comparison", "zeltrans diff --json disk/MESSAGES/.0001 disk/MESSAGES/.0013"},
    {"comparison", "zeltrans diff --json disk ."},
    {"comparison", "zeltrans diff --json disk/MACHINE/.0012 MACHINE/.0012; zeltrans diff --json m.zellib m.zellib"},
    {"fetch-line", "zeltrans fetch ftp://127.0.0.1:1/ 1 --to here --json"},
};

class JsonOutput : public testing::Test {
  protected:
    JsonOutput() {
        settings::SqliteSettingsStore store(m_disk / "kept");
        store.SetProfileInt("ZELFTPSaveOptions", "DialogX", -12);
        store.SetProfileInt("ZELFTPSaveOptions", "Username", 3);
        store.SetProfileText("ZELFTPSaveOptions", "Password", "secret");
        store.SetProfileText("Other", "Entry\xFF", "text");
        m_disk.Shell("zeltrans settings set FontDir 2 'D:\\FONTS' --settings kept");
        m_disk.Shell("bash -c " + CommandDisk::Quoted(m_disk.Script(kPrepare)));
        for (const JsonCase& line : kJsonCases) {
            const CommandResult result = m_disk.Shell(line.line);
            EXPECT_THAT(result.out, Not(IsEmpty())) << line.line << result.err;
            EXPECT_THAT(result.out, Not(HasSubstr("secret")));
            AddLines(m_values, line.form, result.out);
        }
    }

    const CommandDisk m_disk;
    JsonForms m_values;
};

// All in one, since the outputs come from the same runs.
TEST_F(JsonOutput, HasTheFormsOfTheSchemasAndNoOther) {
    if (!kCanCheckJson) GTEST_SKIP() << "python3-jsonschema is missing";
    EXPECT_EQ(FaultsOf(m_values, m_disk), "");

    // A key more, a key less and another version are noticed in every form.
    JsonForms changed;
    for (auto form = m_values.begin(); form != m_values.end(); form = m_values.upper_bound(form->first)) {
        for (int change = 0; change < 3; ++change) {
            auto& value = changed.emplace(form->first, form->second)->second;
            if (change == 0) value["extra"] = 1;
            if (change == 1) value.erase(std::next(value.begin()));
            if (change == 2) value["version"] = 2;
        }
    }
    const std::string faults = FaultsOf(changed, m_disk);
    EXPECT_EQ(static_cast<std::size_t>(std::ranges::count(faults, '\n')), changed.size()) << faults;
}

TEST(JsonCommand, LeavesStandardOutputToTheJson) {
    const CommandDisk disk;
    disk.Shell("zeltrans batch . 12 20 --library m.zellib");
    struct Case {
        const char* line;
        int exit_code;
        const char* out;  // all of it
        const char* err;  // part of it
    };
    constexpr Case kOutputs[] = {
        {"zeltrans batch missing 1 2 --json", 1, "", "zeltrans: missing: "},
        {"zeltrans batch . 1 2 --json --trace -", 2, "", "--json excludes --trace -"},
        {"zeltrans export m.zellib 1 2 --out new --json --trace -", 2, "", "--json excludes --trace -"},
        {"zeltrans export m.zellib --json", 2, "", "--out is required"},
        {"zeltrans library search m.zellib nothing --json", 0, "", ""},
        {"zeltrans library show m.zellib 12 --json --png p.png | wc -l", 0, "1\n", "note: wrote p.png"},
        {"zeltrans settings --json --settings new", 0, "", ""},
        {"zeltrans info --json missing", 1,
         R"({"version":1,"name":"missing","kind":null,"verdict":"unreadable","reason":"No such file or directory",)"
         R"("size":null,"file_type":null,"sections":[],"defects":[],"remarks":[]})"
         "\n",
         "zeltrans: missing: No such file or directory\n"},
    };
    for (const Case& line : kOutputs) {
        const CommandResult result = disk.Shell(line.line);
        EXPECT_EQ(result.exit_code, line.exit_code) << line.line;
        EXPECT_EQ(result.out, line.out) << line.line;
        EXPECT_THAT(result.err, HasSubstr(line.err)) << line.line;
    }
}

TEST(JsonCommand, PartsTheColumnsOfARowAlike) {
    const CommandDisk disk;
    disk.Shell(
        "zeltrans sample disk; zeltrans batch disk 6 6 --library m.zellib --out out; zeltrans info --json "
        "disk/MESSAGES/.0006 >info; zeltrans library show m.zellib 6 --json >show");
    const auto document = nlohmann::json::parse(disk.Read("out/0006.json"));
    const auto report = nlohmann::json::parse(disk.Read("info"));
    std::string text;
    for (std::size_t row = 0; row < document["rows"].size(); ++row) {
        text += (row == 0 ? "" : "\n") + document["rows"][row]["text"].get<std::string>();
        std::string runs;
        for (const auto& run : report["message"]["rows"][row]["text"]) runs += run.get<std::string>();
        EXPECT_EQ(runs.find("HighLow"), std::string::npos);
        EXPECT_EQ(std::ranges::count(runs, ' '),
                  std::ranges::count(document["rows"][row]["text"].get<std::string>(), ' '));
    }
    EXPECT_THAT(text, HasSubstr("\nHigh Low\n"));
    EXPECT_EQ(nlohmann::json::parse(disk.Read("show"))["text"], text);
}

}  // namespace

}  // namespace zel::test
