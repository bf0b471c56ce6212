#include <csignal>
#include <cstdio>

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <unistd.h>

#include "host/library/library.h"
#include "programs/cli/command_disk.h"
#include "programs/cli/terminal_session.h"

namespace zel::test {

namespace {

using nlohmann::json;
using testing::HasSubstr;
using testing::IsSupersetOf;

/// The recordings of a library, without the times.
std::vector<std::string> Contents(const std::filesystem::path& file) {
    std::vector<std::string> contents;
    library::Library library(file, library::Access::kRead);
    for (const library::LibraryEntry& entry : library.List()) {
        const library::Recording recording = library.Find(entry.key).value();
        std::string text = recording.disk + "|" + std::to_string(recording.number) + "|" + recording.options + "|" +
                           recording.document + "|" + recording.text + "|" + recording.picture;
        for (const library::SourceFile& source : recording.sources) text += "|" + source.path + " " + source.sha256;
        contents.push_back(std::move(text));
    }
    return contents;
}

TEST(BatchCommand, RecordsWritesAndReports) {
    const CommandDisk disk;
    disk.Shell("head -c 200 MESSAGES/.0012 > MESSAGES/.0013");
    const CommandResult result =
        disk.Shell("zeltrans batch . 12 0020 --library lib --disk '' --out 'a b' --report r.json");
    EXPECT_EQ(result.exit_code, 1);
    EXPECT_EQ(result.out,
              ".0012 imported; not found or not readable: font 31; a row ends where it is used\n"
              ".0013 failed: ./MESSAGES/.0013: the message file is damaged; \"zeltrans info\" shows where\n"
              ".0020 imported\n"
              "1 message with warnings:\n"
              "  .0012  not found or not readable: font 31; a row ends where it is used\n"
              "2 imported, 6 missing, 1 failed\n");
    EXPECT_EQ(result.err, "zeltrans: ./MESSAGES/.0013: the message file is damaged; \"zeltrans info\" shows where\n");
    json report = json::parse(disk.Read("r.json"));
    EXPECT_EQ(report["missing"], 6);
    EXPECT_EQ(report["failures"][0]["number"], 13);
    EXPECT_EQ(report["warnings"][0]["number"], 12);
    const library::Recording recording = library::Library(disk / "lib", library::Access::kRead).Find({"", 12}).value();
    EXPECT_THAT(recording.text, HasSubstr("NEWS"));
    EXPECT_EQ(report["warnings"][0]["texts"], json(recording.warnings));
    EXPECT_EQ(recording.picture, disk.Read("a b/0012.png"));
    EXPECT_EQ(recording.sources.size(), 3U) << "the message, its font, and the font that is missing";
    json written = json::parse(disk.Read("a b/0012.json"));
    EXPECT_EQ(written.erase("file"), 1u) << "no document of a library has it";
    EXPECT_EQ(json::parse(recording.document), written);
}

TEST(BatchCommand, NamesEachDiskAndCountsWhatItReplaces) {
    const CommandDisk disk;
    disk.Shell("mkdir -p x/news y/news; for d in x y; do cp -r MESSAGES MACHINE $d/news; done");
    struct {
        const char* arguments;
        const char* counts;
        const char* err;
        std::vector<std::string> disks;
    } const cases[] = {
        {"x/news 12 20", "2 imported, 7 missing, 0 failed\n", "", {"news"}},
        {"y/news 12 20",
         "2 imported, 7 missing, 0 failed\n",
         "note: y/news: recorded as the disk \"news (2)\", since the library has another of its name\n",
         {"news", "news (2)"}},
        {"./x/../x/news/ 12 12", "1 imported, 0 missing, 0 failed, 1 replaced\n", "", {"news", "news (2)"}},
        {"y/news 12 20 --disk news", "2 imported, 7 missing, 0 failed, 2 replaced\n", "", {"news", "news (2)"}},
        {". 12 12 --disk ''", "1 imported, 0 missing, 0 failed\n", "", {"", "news", "news (2)"}},
        {". 12 12 --resume",
         "0 imported, 0 missing, 0 failed, 1 unchanged\n",
         "note: .: recorded without a name, as before\n",
         {"", "news", "news (2)"}},
    };
    for (const auto& row : cases) {
        const CommandResult result =
            disk.Shell(std::string("zeltrans batch ") + row.arguments + " --library lib --report r");
        EXPECT_THAT(result.out, testing::EndsWith(row.counts)) << row.arguments;
        EXPECT_EQ(result.err, row.err) << row.arguments;
        EXPECT_EQ(library::Library(disk / "lib", library::Access::kRead).Disks(), row.disks) << row.arguments;
    }
    EXPECT_EQ(json::parse(disk.Read("r"))["replaced"], 0);
}

TEST(BatchCommand, ReportsABadDiskInOneLineAndLeavesNothing) {
    const struct {
        const char* before;  // shell
        const char* disk;
        const char* error;  // after "zeltrans: "
    } cases[] = {
        {"true", "nosuch", "nosuch: the disk does not exist\n"},
        {"echo x >file", "file",
         "file: it is neither a directory nor an archive that can be read (zip, tar, ISO 9660)\n"},
        {"mkdir -p d/MACHINE", "d", "d: the message directory /"},
        {"mkdir -p d/MESSAGES", "d", "d: the font directory /"},
        {"mkdir -p d/MACHINE; echo x >d/MESSAGES", "d", "d: the message directory /"},
        {"mkdir -p d/MACHINE; ln -s MESSAGES d/MESSAGES", "d", "d: the message directory /"},
    };
    for (const auto& row : cases) {
        SCOPED_TRACE(row.before);
        const CommandDisk disk;
        disk.Shell(row.before);
        const auto before = disk.Names();
        const std::string batch =
            std::string("zeltrans batch ") + row.disk + " 1 99 --library lib --out out --report report ";
        const CommandResult result = disk.Shell(batch);
        EXPECT_EQ(result.exit_code, 1);
        EXPECT_EQ(result.out, "");
        EXPECT_THAT(result.err, testing::StartsWith(std::string("zeltrans: ") + row.error));
        EXPECT_EQ(result.ErrorLines(), 1);
        const CommandResult traced = disk.Shell(batch + "--trace run.trace; code=$?; wc -l <run.trace; exit $code");
        EXPECT_EQ(traced.exit_code, 1);
        EXPECT_GT(std::stoi(traced.out), 1) << "the module runs for its trace";
        EXPECT_EQ(traced.ErrorLines(), 1);
        EXPECT_EQ(disk.Names(), before);
    }
}

TEST(BatchCommand, ReportsDirectoriesThatItMayNotRead) {
    for (const char* mode : {"000", "644"}) {
        const CommandDisk disk;
        const std::string zeltrans = disk.UnprivilegedCommand();
        if (zeltrans.empty()) GTEST_SKIP() << "permissions cannot be tested here";
        disk.Shell(std::string("chmod ") + mode + " MESSAGES");
        const auto before = disk.Names();
        CommandResult result = disk.Shell(zeltrans + " batch . 12 20 --library lib --report r");
        EXPECT_EQ(result.exit_code, 1);
        EXPECT_EQ(result.out, "");
        EXPECT_THAT(result.err, testing::StartsWith("zeltrans: .: the message directory /"));
        EXPECT_THAT(result.err, testing::EndsWith("/MESSAGES can't be read: Permission denied\n"));
        EXPECT_EQ(disk.Names(), before);
        result = disk.Shell(zeltrans + " import MESSAGES/.0012");
        EXPECT_EQ(result.err, "zeltrans: MESSAGES/.0012: the message file can't be opened: Permission denied\n");
    }
}

TEST(BatchCommand, NotesDirectoriesThatTheModuleIgnores) {
    const CommandDisk disk;
    const CommandResult result = disk.Shell("echo x >file; zeltrans batch . 12 12 --maps nosuch --fonts file");
    EXPECT_EQ(result.exit_code, 0);
    EXPECT_THAT(result.out, HasSubstr("not found or not readable: font 12, 31;")) << "without a library too";
    EXPECT_EQ(result.err,
              "note: --maps nosuch does not exist; no name lists are read\n"
              "note: --fonts file is not a directory; no fonts are found in it\n");
}

TEST(BatchCommand, GivesTheSameForAnyNumberOfJobs) {
    const CommandDisk disk;
    disk.Shell("for n in 21 22 23 24 25 26; do cp MESSAGES/.0012 MESSAGES/.00$n; done");
    disk.Shell("zeltrans batch . 1 30 --library one --jobs 1; zeltrans batch . 1 30 --library four --jobs 4");
    EXPECT_EQ(Contents(disk / "one").size(), 8U);
    EXPECT_EQ(Contents(disk / "one"), Contents(disk / "four"));
}

TEST(BatchCommand, ResumesOnlyWhatIsNotRecordedFromUnchangedFiles) {
    const struct {
        const char* change;   // shell
        const char* options;  // of the second run
        const char* counts;
    } cases[] = {
        {"touch MESSAGES/.0012 MACHINE/.0012", "", "0 imported, 7 missing, 0 failed, 2 unchanged"},
        {"rm out/0012.png", "", "0 imported, 7 missing, 0 failed, 2 unchanged"},
        {"printf x >> MESSAGES/.0012", "", "1 imported, 7 missing, 0 failed, 1 unchanged"},
        {"printf x >> MACHINE/.0012", "", "1 imported, 7 missing, 0 failed, 1 unchanged"},
        {"cp MACHINE/.0012 MACHINE/.0031", "", "1 imported"},  // a font that was missing
        {"true", "--tt-convert", "2 imported, 7 missing, 0 failed"},
        {"true", "--disk other", "2 imported, 7 missing, 0 failed"},
    };
    for (const auto& row : cases) {
        SCOPED_TRACE(std::string(row.change) + row.options);
        const CommandDisk disk;
        disk.Shell("zeltrans batch . 12 20 --library lib --out out");
        disk.Shell(row.change);
        const CommandResult result =
            disk.Shell(std::string("zeltrans batch . 12 20 --library lib --out out --resume ") + row.options);
        EXPECT_THAT(result.out, HasSubstr(row.counts));
        EXPECT_THAT(disk.Read("out/0012.png"), testing::StartsWith("\x89PNG"));
    }
}

TEST(BatchCommand, ContinuesARangeFromZero) {
    const CommandDisk disk;
    disk.Shell("cp MESSAGES/.0012 MESSAGES/.0001; zeltrans batch . 0 9 --library lib");
    const CommandResult result =
        disk.Shell("cp MESSAGES/.0012 MESSAGES/.0002; zeltrans batch . 0 9 --library lib --resume");
    EXPECT_EQ(result.exit_code, 0) << result.err;
    EXPECT_THAT(result.out, HasSubstr("1 imported, 8 missing, 0 failed, 1 unchanged"));
}

// Kills the command as soon as it has reported a number of imports; returns the reported message numbers. The pipe has
// room for some fifty lines, so that a longer batch cannot end before it is killed.
std::vector<int> KillAfter(std::size_t imports, const CommandDisk& disk, const std::string& arguments) {
    constexpr int kPipeBytes = 4096;
    int ends[2] = {};
    if (pipe2(ends, O_CLOEXEC) != 0 || fcntl(ends[1], F_SETPIPE_SZ, kPipeBytes) < 0)
        throw std::runtime_error("no pipe");
    const std::string script = disk.Script("exec " + CommandDisk::Quoted(ZELTRANS_COMMAND) + " " + arguments);
    const pid_t process = fork();
    if (process == 0) {
        dup2(ends[1], STDOUT_FILENO);
        execl("/bin/sh", "sh", "-c", script.c_str(), nullptr);
        _exit(127);
    }
    close(ends[1]);
    std::FILE* const output = fdopen(ends[0], "r");
    std::setvbuf(output, nullptr, _IONBF, 0);
    std::vector<int> numbers;
    char line[256];
    while (std::fgets(line, sizeof line, output) != nullptr) {
        int number = 0;
        if (std::sscanf(line, ".%d imported", &number) != 1) continue;
        numbers.push_back(number);
        if (numbers.size() == imports) kill(process, SIGKILL);
    }
    std::fclose(output);
    int status = 0;
    waitpid(process, &status, 0);
    EXPECT_TRUE(WIFSIGNALED(status)) << "it ended before it could be killed";
    return numbers;
}

TEST(BatchCommand, LosesNoReportedMessageWhenItIsKilled) {
    const CommandDisk disk;
    disk.Shell("for n in $(seq 1000 1159); do cp MESSAGES/.0012 MESSAGES/.$n; done; rm MESSAGES/.0020");
    disk.Shell("zeltrans batch . 12 1159 --library whole");
    const std::vector<std::string> whole = Contents(disk / "whole");
    ASSERT_EQ(whole.size(), 161U);
    const std::string batch = "batch . 12 1159 --library lib --resume --out out";
    for (const std::size_t imports : {1, 20}) {
        const std::vector<int> reported = KillAfter(imports, disk, batch);
        EXPECT_GE(reported.size(), imports);
        std::vector<int> recorded;
        library::Library library(disk / "lib", library::Access::kRead);
        for (const library::LibraryEntry& entry : library.List()) recorded.push_back(entry.key.number);
        EXPECT_THAT(recorded, IsSupersetOf(reported));
    }
    disk.Shell("zeltrans " + batch);
    EXPECT_EQ(Contents(disk / "lib"), whole);
    EXPECT_EQ(disk.Shell("ls out/*.png | wc -l; ls -A out | wc -l").out, "161\n322\n");
}

TEST(BatchCommand, RedrawsOneLineThatFitsIntoTheTerminal) {
    const CommandDisk disk;
    disk.Shell("head -c 200 MESSAGES/.0012 > MESSAGES/.0013");
    const std::string end =
        "1 message with warnings:\r\n"
        "  .0012  not found or not readable: font 31; a row ends where it is used\r\n"
        "2 imported, 6 missing, 1 failed\r\n";
    const std::string failed =
        ".0013 failed: ./MESSAGES/.0013: the message file is damaged; \"zeltrans info\" shows where\r\n";
    const struct {
        const char* setting;  // shell
        std::string begin, end;
    } cases[] = {
        {"TERM=xterm", "\r1 of 9: 1 imported, 0 missing, 0 failed; ", " \r" + failed + end},
        {"TERM=xterm NO_COLOR=1; stty cols 24", "\r1 of 9: 1 imported, ...\r", "\r" + failed + end},
        {"TERM=dumb", ".0012 imported; not found", failed + ".0020 imported\r\n" + end},
        {"TERM=xterm; unset TERM", ".0012 imported; not found", failed + ".0020 imported\r\n" + end},
    };
    for (const auto& row : cases) {
        TerminalSession terminal(disk, std::string("export ") + row.setting + "; zeltrans batch . 12 20 --library lib");
        EXPECT_EQ(terminal.Wait(), 1) << row.setting;
        EXPECT_THAT(terminal.Output(), testing::StartsWith(row.begin)) << row.setting;
        EXPECT_THAT(terminal.Output(), HasSubstr(row.end)) << row.setting;
        EXPECT_THAT(terminal.Output(), testing::Not(HasSubstr("\x1b"))) << row.setting;
        std::filesystem::remove(disk / "lib");
    }
}

TEST(BatchCommand, EndsByCtrlCWithItsShell) {
    const CommandDisk disk;
    disk.Shell("for n in $(seq 1000 1999); do ln -s .0012 MESSAGES/.$n; done; mkdir b; cp -r MESSAGES MACHINE b");
    TerminalSession terminal(disk, "trap : INT; " + CommandDisk::Quoted(ZELTRANS_COMMAND) +
                                       " batch . b --verbose --settings s; echo code $?");
    ASSERT_TRUE(terminal.WaitFor("imported"));
    terminal.Type("\x03");
    EXPECT_EQ(terminal.Wait(), 0);
    EXPECT_THAT(terminal.Output(), HasSubstr("zeltrans: .: stopped before the end of the range\r\n"));
    EXPECT_THAT(terminal.Output(), HasSubstr("\r\n1 of 2 disks: "));
    EXPECT_THAT(terminal.Output(), testing::EndsWith("code 130\r\n"));
}

TEST(BatchCommand, EndsCleanlyAtAnInterrupt) {
    const CommandDisk disk;
    disk.Shell("for n in $(seq 1000 1999); do ln -s .0012 MESSAGES/.$n; done");
    const CommandResult result =
        disk.Shell(CommandDisk::Quoted(ZELTRANS_COMMAND) +
                   " batch . 1000 1999 --library lib --settings s >o & pid=$!; "
                   "until grep -qs imported o; do sleep 0.01; done; kill -TERM $pid; wait $pid");
    EXPECT_EQ(result.exit_code, 128 + SIGTERM);
    EXPECT_THAT(disk.Read("o"), testing::ContainsRegex("\n[0-9]+ imported, 0 missing, 0 failed\n$"));
    EXPECT_THAT(result.err, testing::StartsWith("zeltrans: .: stopped before the end of the range\n"));
}

}  // namespace

}  // namespace zel::test
