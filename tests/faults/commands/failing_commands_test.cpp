// Every kind of call failing in turn, through every command. Whatever fails, the command succeeds as if nothing had, or
// ends with exit code 1 and one line that says why, and no file is half of what it was or was to become.
#include <algorithm>
#include <cstdlib>
#include <optional>
#include <set>
#include <sstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <sys/wait.h>

#include "base/sqlite_database.h"
#include "faults/commands/command_runs.h"
#include "host/ftp/test_server.h"
#include "programs/cli/command_disk.h"

namespace zel::test {

namespace {

using failing::Kind;
using failing::Reply;
using failing::Request;
using failing::Tree;

struct KindCase {
    const char* name;
    Kind kind;
    bool from_then_on;
    bool only_names;
};
constexpr KindCase kKinds[] = {
    {"one allocation", Kind::kMemory, false, false},
    {"allocations for ever", Kind::kMemory, true, false},
    {"allocations for ever without nameless files", Kind::kMemory, true, true},
    {"one open", Kind::kOpen, false, false},
    {"opens for ever", Kind::kOpen, true, false},
    {"one read", Kind::kRead, false, false},
    {"reads for ever", Kind::kRead, true, false},
    {"one write", Kind::kWrite, false, false},
    {"writes for ever", Kind::kWrite, true, false},
    {"writes for ever without nameless files", Kind::kWrite, true, true},
    {"one sync", Kind::kSync, false, false},
    {"syncs for ever", Kind::kSync, true, false},
    {"one rename", Kind::kRename, false, false},
    {"renames for ever", Kind::kRename, true, false},
    {"one rename without nameless files", Kind::kRename, false, true},
    {"renames for ever without nameless files", Kind::kRename, true, true},
    {"one map", Kind::kMap, false, false},
    {"maps for ever", Kind::kMap, true, false},
    {"one thread", Kind::kThread, false, false},
    {"threads for ever", Kind::kThread, true, false},
};

/// Stands in a command's arguments for the address of a server that serves the disk.
constexpr const char* kServer = "SERVER";

/// A command, after a shell line that prepares the disk of CommandDisk for it.
struct CommandCase {
    const char* name;
    const char* before;
    std::vector<std::string> arguments;
};

bool IsDatabase(const std::string& bytes) {
    return bytes.starts_with("SQLite format 3");
}

/// The database's own files beside it, which the next program that opens it uses up.
bool BelongsToDatabase(const std::string& name) {
    return name.ends_with("-wal") || name.ends_with("-shm") || name.ends_with("-journal");
}

/// What a fetch leaves of a file, so that the same command resumes it.
bool IsResumable(const std::string& name) {
    return name.ends_with(".part");
}

/// Whether an output is complete, whatever it contains. An empty database of settings is one without settings.
bool IsWhole(const std::string& name, const std::string& bytes) {
    if (name.ends_with("settings.sqlite")) return bytes.empty();
    if (name.ends_with(".json") || name == "r") return nlohmann::json::accept(bytes);
    if (name.ends_with(".png")) return bytes.ends_with("IEND\xAE\x42\x60\x82");
    if (name.ends_with(".html")) return bytes.ends_with("</html>\n");
    if (name.ends_with("SHA256SUMS")) return bytes.ends_with('\n');
    if (!name.ends_with(".trace")) return false;
    std::istringstream lines(bytes);
    for (std::string line; std::getline(lines, line);) {
        if (!nlohmann::json::accept(line)) return false;
    }
    return bytes.ends_with('\n');
}

/// Every row as text, without what counts rows and tells the time. "damaged" for a file that SQLite can't use.
std::set<std::string> RowsOf(const std::filesystem::path& file) {
    using base::SqliteDatabase;
    SqliteDatabase database(file, SqliteDatabase::Opening::kExisting, std::chrono::milliseconds(0));
    base::SqliteStatement check = database.Prepare("PRAGMA integrity_check");
    if (!check.Next() || check.Text(0) != "ok") return {"damaged"};
    std::set<std::string> rows;
    base::SqliteStatement tables = database.Prepare(
        "SELECT m.name, (SELECT group_concat('quote(\"' || c.name || '\")', '||'',''||') FROM "
        "pragma_table_info(m.name) c"
        " WHERE c.name NOT IN ('id', 'recording', 'recorded_at')) FROM sqlite_master m"
        " WHERE m.type = 'table' AND m.name NOT LIKE 'search%' AND m.name NOT LIKE 'sqlite%'");
    while (tables.Next()) {
        const std::string table = tables.Text(0);
        base::SqliteStatement values =
            database.Prepare(("SELECT " + tables.Text(1) + " FROM \"" + table + '"').c_str());
        while (values.Next()) rows.insert(table + ": " + values.Text(0));
    }
    return rows;
}

class FailingCommand : public testing::TestWithParam<CommandCase> {
  protected:
    void Prepare();
    void RunAll(failing::CommandRuns& runs, const KindCase& kind);
    std::string Faults(const Reply& reply);

  private:
    std::string OutputFaults(int exit_code);
    std::string FileFaults(bool succeeded);
    std::string RowFaults(const std::string& name);

  protected:
    const CommandDisk m_disk;

  private:
    Tree m_before, m_good;
    std::map<std::string, std::set<std::string>> m_rows;  // of the databases, before and after a good run together
    std::string m_good_output;
    bool m_said = false;  // the run says what it lacks, such as a font
};

/// Some numbers of the calls, at equal distances. Another start for each command, since all begin alike.
std::vector<std::uint32_t> Points(Kind kind, std::uint32_t calls, const std::string& command) {
    const bool many = std::getenv("ZELTRANS_EVERY_FAILURE") != nullptr;
    std::uint32_t most = kind == Kind::kMemory ? (many ? 120 : 16) : (many ? 60 : 5);
    // The formats differ little in what they call.
    if (command.starts_with("export") && command != "export_json") most /= 3;
    const std::uint32_t step = std::max(1U, calls / most);
    std::vector<std::uint32_t> points;
    for (auto n = static_cast<std::uint32_t>(std::hash<std::string>()(command) % step); n < calls; n += step)
        points.push_back(n);
    return points;
}

std::string FailingCommand::RowFaults(const std::string& name) {
    std::string faults;
    const std::set<std::string> rows = RowsOf(m_disk / name);
    if (rows.contains("damaged")) faults += name + " is damaged; ";
    for (const std::string& row : rows) {
        if (!m_said && !m_rows[name].contains(row)) faults += name + " has the row " + row.substr(0, 200) + "; ";
    }
    return faults;
}

std::string FailingCommand::FileFaults(bool succeeded) {
    std::string faults;
    const Tree now = failing::ReadTree(m_disk / ".");
    for (const auto& [name, bytes] : now) {
        const auto before = m_before.find(name), good = m_good.find(name);
        if (BelongsToDatabase(name) || (!succeeded && IsResumable(name))) continue;
        if (before == m_before.end() && good == m_good.end()) {
            faults += "left " + name + "; ";
        } else if (IsDatabase(bytes)) {
            // A command stores settings before it works, and also when it fails.
            if (succeeded || !name.ends_with("settings.sqlite")) faults += RowFaults(name);
        } else {
            const bool is_old = before != m_before.end() && bytes == before->second;
            const bool is_new = good != m_good.end() && bytes == good->second;
            const bool is_another = IsWhole(name, bytes) && (m_said || !succeeded);
            if (!is_new && !is_another && (succeeded || !is_old))
                faults += "changed " + name + " to " + std::to_string(bytes.size()) + " bytes; ";
        }
    }
    for (const auto& [name, bytes] : succeeded ? m_good : m_before) {
        if (!now.contains(name) && !BelongsToDatabase(name) && (succeeded ? !m_said : m_good.contains(name)))
            faults += "lost " + name + "; ";
    }
    return faults;
}

std::string FailingCommand::OutputFaults(int exit_code) {
    std::istringstream lines(m_disk.Read("run.err"));
    int errors = 0, notes = 0, others = 0;
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with("Fontconfig ") || line.starts_with("Error in GnuTLS")) continue;
        ++(line.starts_with("zeltrans: ") ? errors : line.starts_with("note: ") ? notes : others);
    }
    const std::string output = m_disk.Read("run.out");
    const auto has = [&](const char* text) { return output.find(text) != std::string::npos; };
    m_said = notes != 0 || has("imported; ") || has(" interruption");
    if (exit_code == 1) return errors == 1 && others == 0 ? "" : "not one line; ";
    if (errors + others != 0) return "errors of success; ";
    return output == m_good_output || m_said ? "" : "other output; ";
}

std::string FailingCommand::Faults(const Reply& reply) {
    if (WIFSIGNALED(reply.status)) return "signal " + std::to_string(WTERMSIG(reply.status)) + "; ";
    const int exit_code = WEXITSTATUS(reply.status);
    if (exit_code > 1) return "exit code " + std::to_string(exit_code) + "; ";
    const std::string faults = OutputFaults(exit_code);
    return faults + FileFaults(exit_code == 0);
}

void FailingCommand::Prepare() {
    ASSERT_EQ(m_disk.Shell(GetParam().before).exit_code, 0) << m_disk.Read("run.err");
    m_before = failing::ReadTree(m_disk / ".");
    for (const auto& [name, bytes] : m_before) {
        if (IsDatabase(bytes)) m_rows[name] = RowsOf(m_disk / name);
    }
    failing::Restore(m_disk / ".", m_before);
}

void FailingCommand::RunAll(failing::CommandRuns& runs, const KindCase& kind) {
    const auto run = [&](std::uint32_t nth) {
        std::ofstream(m_disk / "run.out");
        std::ofstream(m_disk / "run.err");
        return runs.Run({kind.kind, nth, kind.from_then_on, kind.only_names});
    };
    const Reply untouched = run(~0U);
    ASSERT_EQ(untouched.status, 0) << m_disk.Read("run.err");
    if (m_good.empty()) {
        m_good = failing::ReadTree(m_disk / ".");
        m_good_output = m_disk.Read("run.out");
        for (const auto& [name, bytes] : m_good) {
            if (IsDatabase(bytes)) m_rows[name].merge(RowsOf(m_disk / name));
        }
    }
    const auto points = Points(kind.kind, untouched.calls, GetParam().name);
    std::map<std::string, std::vector<std::uint32_t>> found;
    for (const std::uint32_t nth : points) {
        failing::Restore(m_disk / ".", m_before);
        const std::string faults = Faults(run(nth));
        if (!faults.empty())
            found[faults + m_disk.Read("run.err") + m_disk.Read("run.out") + m_disk.Read("r")].push_back(nth);
    }
    failing::Restore(m_disk / ".", m_before);
    for (const auto& [faults, numbers] : found) {
        ADD_FAILURE() << kind.name << ", " << numbers.size() << " of " << points.size() << " numbers, such as "
                      << numbers.front() << ": " << faults.substr(0, 800);
    }
}

TEST_P(FailingCommand, LeavesFilesWholeAndSaysWhy) {
    Prepare();
    std::vector<std::string> arguments = GetParam().arguments;
    std::optional<TestServer> server;
    for (std::string& argument : arguments) {
        if (argument != kServer) continue;
        if (!ZELTRANS_HAS_PYFTPDLIB) GTEST_SKIP() << "python3-pyftpdlib is missing";
        argument = server.emplace(std::vector<std::string>{"server.py", (m_disk / "").string()}).Url("");
    }
    failing::CommandRuns runs(m_disk / ".", arguments);
    for (const KindCase& kind : kKinds) {
        // The library that finds their typeface uses memory that it didn't get, and takes another typeface when one of
        // its files can't be opened. The sample takes a second to draw.
        const std::string name = GetParam().name;
        const bool for_typefaces = kind.kind == Kind::kMemory || kind.kind == Kind::kOpen;
        if (for_typefaces && name == "export_contact_sheet") continue;
        // Its libraries, loaded late, end the process when nothing is left.
        if (kind.kind == Kind::kMemory && kind.from_then_on && name == "fetch") continue;
        if (name == "sample" && (kind.kind != Kind::kWrite || kind.only_names)) continue;
        RunAll(runs, kind);
        if (HasFatalFailure()) return;
    }
}

constexpr char kTwoMessages[] = "cp MESSAGES/.0012 MESSAGES/.0013; cp MACHINE/.0012 MACHINE/.0031; ";
constexpr char kLibrary[] =
    "cp MESSAGES/.0012 MESSAGES/.0013; cp MACHINE/.0012 MACHINE/.0031; zeltrans batch . 12 20 --library l";

CommandCase ExportAs(const char* name, const char* format) {
    return {name, kLibrary, {"export", "l", "12", "20", "--out", "e", "--format", format, "--jobs", "2"}};
}

INSTANTIATE_TEST_SUITE_P(
    Each, FailingCommand,
    testing::Values(
        CommandCase{"import",
                    "printf old >o.png",
                    {"import", "MESSAGES/.0012", "--png", "o.png", "--json", "o.json", "--trace", "o.trace"}},
        CommandCase{
            "batch_to_files", kTwoMessages, {"batch", ".", "12", "20", "--out", "o", "--jobs", "2", "--report", "r"}},
        CommandCase{"batch_to_a_library", kTwoMessages, {"batch", ".", "12", "20", "--library", "l", "--report", "r"}},
        ExportAs("export_png", "png"), ExportAs("export_json", "json"), ExportAs("export_html", "html"),
        ExportAs("export_tga", "tga"), ExportAs("export_contact_sheet", "sheet"),
        CommandCase{"font", "printf old >o.png", {"font", "MACHINE/.0012", "--png", "o.png", "--trace", "o.trace"}},
        CommandCase{"info", ":", {"info", "MESSAGES/.0012", "--json"}},
        CommandCase{"info_of_a_directory", ":", {"info", "."}},
        CommandCase{"library_list", kLibrary, {"library", "list", "l"}},
        CommandCase{"library_search", kLibrary, {"library", "search", "l", "A"}},
        CommandCase{"library_show", kLibrary, {"library", "show", "l", "12", "--png", "o.png", "--json", "o.json"}},
        CommandCase{"library_merge",
                    "zeltrans batch . 12 20 --library s --disk a && zeltrans batch . 12 12 --library l --disk b",
                    {"library", "merge", "l", "s"}},
        CommandCase{"library_remove", kLibrary, {"library", "remove", "l", "12"}},
        CommandCase{"settings_set", "zeltrans settings set FontDir 0 a", {"settings", "set", "FontDir", "0", "b"}},
        CommandCase{"settings", "zeltrans settings set FontDir 0 a", {"settings"}},
        CommandCase{"sample", ":", {"sample", "s"}}, CommandCase{"fetch", ":", {"fetch", kServer, "12", "--to", "f"}}),
    [](const auto& row) { return std::string(row.param.name); });

}  // namespace

}  // namespace zel::test
