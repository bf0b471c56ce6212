#include "programs/cli/library_command.h"

#include <algorithm>
#include <limits>
#include <memory>
#include <set>
#include <vector>

#include <CLI/App.hpp>
#include <nlohmann/json.hpp>

#include "base/terminal_text.h"
#include "base/text.h"
#include "host/document/json_version.h"
#include "host/export/message_title.h"
#include "host/export/recording_json.h"
#include "host/library/library.h"
#include "module/contract/message_id.h"
#include "programs/cli/diagnostics.h"
#include "programs/cli/json_output.h"
#include "programs/cli/library_table.h"
#include "programs/cli/library_texts.h"
#include "programs/cli/number_selection.h"
#include "programs/cli/options.h"
#include "programs/cli/output_check.h"
#include "programs/cli/output_file.h"
#include "programs/cli/recording_text.h"
#include "programs/cli/run_options.h"
#include "programs/cli/shell_text.h"

namespace zel::cli {

namespace {

struct LibraryArguments {
    std::string library;
    std::vector<std::string> words;   // of a search
    std::vector<std::string> shards;  // of a merge
    int number = 0;
    std::vector<std::string> number_words;  // of a removal
    NumberSelection numbers;
    std::optional<std::string> disk, png;
    /// --json without a file.
    bool json = false;
    /// The file of --json.
    std::optional<std::string> document;
    std::optional<library::RecordingKey> after;
    /// Of a listing; 0 for all.
    int limit = 0;
    bool csv = false;
    std::optional<std::string> out;
};

std::string DiskName(const std::string& disk) {
    return disk.empty() ? "the unnamed disk" : '"' + base::TerminalText(disk) + '"';
}

// The recording of --disk, or of the only disk with that number.
library::RecordingKey KeyOf(library::Library& library, const LibraryArguments& arguments, int number) {
    std::vector<library::RecordingKey> found;
    std::string disks;
    std::vector<std::string> names;
    if (!arguments.disk) names = library.DisksWith(number);
    if (arguments.disk && library.Has({*arguments.disk, number})) names = {*arguments.disk};
    for (const std::string& disk : names) {
        found.push_back({disk, number});
        disks += (disks.empty() ? "" : ", ") + DiskName(disk);
    }
    const std::string what = arguments.library + ": message " + base::NumberedName(number);
    if (found.size() > 1) {
        throw CommandError(what + " is recorded from several disks; choose one with --disk: " + disks);
    }
    if (found.empty())
        throw CommandError(what + " is not recorded" + (arguments.disk ? " from " + DiskName(*arguments.disk) : ""));
    return found.front();
}

nlohmann::ordered_json EntryJson(const library::LibraryEntry& entry) {
    return {{"version", document::kJsonVersion},
            {"disk", entry.key.disk},
            {"number", entry.key.number},
            {"kind", exporter::KindName(entry.kind)},
            {"recorded_at", entry.recorded_at},
            {"source", entry.source},
            {"title", TextOrNull(exporter::TitleOf(entry.text))},
            {"text", entry.text},
            {"warning_count", entry.warnings}};
}

// @param which  the place of a part in a longer listing, such as "the first"; may be empty.
ExitCode PrintEntries(const LibraryArguments& arguments, const std::string& which,
                      const std::vector<library::LibraryEntry>& entries) {
    if (arguments.json) {
        for (const library::LibraryEntry& entry : entries) PrintJson(EntryJson(entry));
        return ExitCode::kDone;
    }
    const auto with_warnings = static_cast<std::size_t>(
        std::ranges::count_if(entries, [](const library::LibraryEntry& entry) { return entry.warnings != 0; }));
    PrintLine(arguments.library + ": " + which + base::Counted(entries.size(), "recording") +
              (with_warnings != 0 ? ", " + std::to_string(with_warnings) + " with warnings" : ""));
    PrintLines(LibraryTable(entries));
    return ExitCode::kDone;
}

// The limit of a query that finds out whether more than --limit recordings exist.
std::size_t OneMoreThan(int limit) {
    return limit == 0 ? library::ListPart().most : static_cast<std::size_t>(limit) + 1;
}

// Removes what is beyond --limit. @return whether there was more.
bool Limit(std::vector<library::LibraryEntry>& entries, int limit) {
    if (limit == 0 || entries.size() <= static_cast<std::size_t>(limit)) return false;
    entries.resize(static_cast<std::size_t>(limit));
    return true;
}

ExitCode ListLibrary(const LibraryArguments& arguments) {
    library::Library library(arguments.library, library::Access::kRead);
    std::vector<library::LibraryEntry> entries =
        library.List(arguments.disk, {arguments.after, OneMoreThan(arguments.limit)});
    const bool more = Limit(entries, arguments.limit);
    const char* const which = arguments.after ? (more ? "the next " : "the last ") : (more ? "the first " : "");
    const ExitCode exit_code = PrintEntries(arguments, entries.empty() ? "" : which, entries);
    if (more) {
        const library::RecordingKey& last = entries.back().key;
        PrintNote("the list continues with --after " + ShellQuoted(last.disk + '/' + base::NumberedName(last.number)));
    }
    return exit_code;
}

ExitCode SearchLibrary(const LibraryArguments& arguments) {
    std::string query;
    for (const std::string& word : arguments.words) query += word + ' ';
    std::vector<library::LibraryEntry> entries =
        library::Library(arguments.library, library::Access::kRead).Search(query, OneMoreThan(arguments.limit));
    const bool more = Limit(entries, arguments.limit);
    return PrintEntries(arguments, more ? "the best " : "", entries);
}

// An output that the recording does not contain is not written.
void WritePart(const std::optional<std::string>& path, const std::string& bytes, const char* what,
               OutputContent content, bool json) {
    if (!path) return;
    if (bytes.empty()) {
        PrintNote(std::string("the recording has no ") + what + "; " + *path + " was not written");
        return;
    }
    OutputFile file(*path, content);
    file.Write(bytes);
    file.Commit();
    if (*path == "-") return;
    const std::string line = "wrote " + *path;
    json ? PrintNote(line) : PrintLine(line);
}

void PrintRecordingJson(const LibraryArguments& arguments, const library::Recording& recording) {
    try {
        PrintJson(exporter::RecordingJson(recording));
    } catch (const std::runtime_error& error) {
        throw CommandError(arguments.library + ": message " + base::NumberedName(recording.number) + ": " +
                           error.what());
    }
}

ExitCode ShowRecording(const LibraryArguments& arguments) {
    CommandFiles files;
    files.ReadLibrary(arguments.library);
    files.Write(arguments.png, "--png");
    files.Write(arguments.document, "--json");
    CheckOutputs(files);
    library::Library library(arguments.library, library::Access::kRead);
    const std::optional<library::Recording> recording = library.Find(KeyOf(library, arguments, arguments.number));
    if (!recording) throw CommandError(arguments.library + ": another program removed the recording");
    if (arguments.json) {
        PrintRecordingJson(arguments, *recording);
    } else if (!arguments.png && !arguments.document) {
        PrintLines(base::TerminalText(arguments.library) + ": " + RecordingText(*recording));
    }
    WritePart(arguments.png, recording->picture, "picture", OutputContent::kBinary, arguments.json);
    WritePart(arguments.document, recording->document.empty() ? "" : recording->document + '\n', "document",
              OutputContent::kText, false);
    return ExitCode::kDone;
}

ExitCode MergeLibraries(const LibraryArguments& arguments) {
    CommandFiles files;
    files.WriteLibrary(arguments.library);
    for (const std::string& shard : arguments.shards) files.ReadLibrary(shard, "a library to be merged");
    CheckOutputs(files);
    // Each is opened first, so that a library is not made or changed by half of a merge.
    for (const std::string& shard : arguments.shards) library::Library(shard, library::Access::kRead);
    library::Library library(arguments.library, library::Access::kWrite);
    for (const std::string& shard : arguments.shards) {
        const library::MergeCount count = library.Merge(shard);
        PrintLine(shard + ": " + std::to_string(count.added) + " added, " + std::to_string(count.replaced) +
                  " replaced, " + std::to_string(count.unchanged) + " unchanged");
    }
    return ExitCode::kDone;
}

// Of a list, a number that is named alone must be recorded; of a range, at least one.
std::vector<library::RecordingKey> KeysToRemove(library::Library& library, const LibraryArguments& arguments) {
    std::set<int> recorded;
    for (const library::LibraryEntry& entry : library.List(arguments.disk)) recorded.insert(entry.key.number);
    std::vector<library::RecordingKey> keys;
    for (const Interval& interval : arguments.numbers.Intervals()) {
        if (interval.first == interval.last) {
            keys.push_back(KeyOf(library, arguments, interval.first));
            continue;
        }
        const auto end = recorded.upper_bound(interval.last);
        for (auto number = recorded.lower_bound(interval.first); number != end; ++number)
            keys.push_back(KeyOf(library, arguments, *number));
    }
    if (keys.empty()) {
        throw CommandError(arguments.library + ": no message of these numbers is recorded" +
                           (arguments.disk ? " from " + DiskName(*arguments.disk) : ""));
    }
    return keys;
}

ExitCode RemoveRecordings(const LibraryArguments& arguments) {
    // Looked up read-only first, so that a missing library is not created, and nothing is removed if one is missing.
    const std::vector<library::RecordingKey> keys = [&] {
        library::Library library(arguments.library, library::Access::kRead);
        return KeysToRemove(library, arguments);
    }();
    library::Library library(arguments.library, library::Access::kWrite);
    for (const library::RecordingKey& key : keys) {
        library.Remove(key);
        PrintLine(arguments.library + ": removed " + base::NumberedName(key.number) +
                  (key.disk.empty() ? "" : " from " + DiskName(key.disk)));
    }
    return ExitCode::kDone;
}

ExitCode WriteTexts(const LibraryArguments& arguments) {
    return WriteLibraryTexts({arguments.library, arguments.disk,
                              arguments.json ? TextsFormat::kJson : TextsFormat::kCsv, arguments.out.value_or("-")});
}

// @throws CLI::ValidationError for anything else than a number, such as 12 or .0012.
int NumberOf(const std::string& text, const std::string& option) {
    const std::string_view digits = WithoutLeadingDot(text);
    if (digits.empty() || CountDigits(digits) != digits.size() || MessageNumberOf(digits) > kLargestMessageNumber)
        throw CLI::ValidationError(option, '"' + text + "\" is not a number from 0 to 9999");
    return MessageNumberOf(digits);
}

void AddNumber(CLI::App& command, LibraryArguments& arguments) {
    const auto take = [&arguments](const std::string& text) { arguments.number = NumberOf(text, "NUMBER"); };
    command.add_option_function<std::string>("NUMBER", take, "the message's number, such as 12 or .0012")
        ->required()
        ->type_name("");
}

void AddLimit(CLI::App& command, LibraryArguments& arguments, const std::string& which) {
    AddInteger(command, "--limit", arguments.limit, std::numeric_limits<int>::max(), "N",
               "at most N recordings, " + which + " [all]");
}

void AddAfter(CLI::App& command, LibraryArguments& arguments) {
    const auto take = [&arguments](const std::string& text) {
        // A disk's name may have a slash, a number has none.
        const std::size_t slash = text.rfind('/');
        const std::size_t digits = slash == std::string::npos ? 0 : slash + 1;
        arguments.after = {text.substr(0, digits == 0 ? 0 : slash), NumberOf(text.substr(digits), "--after")};
    };
    command
        .add_option_function<std::string>("--after", take, "only recordings that follow this one, by disk and number")
        ->type_name("DISK/NUMBER");
}

void AddRecordingKey(CLI::App& command, LibraryArguments& arguments) {
    AddNumber(command, arguments);
    AddText(command, "--disk", arguments.disk, "NAME", "the name of the disk, if the number is recorded from several");
}

void AddEntriesJson(CLI::App& command, LibraryArguments& arguments) {
    AddJson(command, arguments.json, "print one JSON object per recording, each in one line");
}

// --json, with or without a file.
void AddRecordingJson(CLI::App& command, LibraryArguments& arguments) {
    const auto take = [&arguments](const std::string& path) {
        arguments.json = path.empty();
        if (!path.empty()) arguments.document = path;
    };
    command
        .add_option_function<std::string>(
            "--json", take,
            "print the recording as a JSON object; with FILE, write the message to it as a "
            "JSON document")
        ->expected(0, 1)
        ->type_name("[FILE|-]");
}

// A removal has no module to check FIRST LAST.
void CheckRemoval(LibraryArguments& arguments) {
    std::vector<std::string> words = arguments.number_words;
    if (words.size() == 2) words = {words[0] + "-" + words[1]};
    ParseNumbers(words, arguments.numbers);
}

void CheckTexts(const LibraryArguments& arguments) {
    if (arguments.json && arguments.csv) throw CLI::ExcludesError("--csv", "--json");
    if (!arguments.json && !arguments.csv) throw CLI::RequiredError("--csv or --json");
    if (arguments.out.value_or("-") == "-") ReserveStandardOutput();
}

void CheckShow(const LibraryArguments& arguments) {
    ReserveStandardOutputFor({{"--png", &arguments.png}, {"--json", &arguments.document}}, arguments.json);
}

// One subcommand of `library`, with the library's file as its first argument.
CLI::App& AddSubcommand(CLI::App& library, const std::string& name, const std::string& description,
                        const std::shared_ptr<LibraryArguments>& arguments, CommandRun& run,
                        ExitCode (*work)(const LibraryArguments&)) {
    CLI::App& command = *library.add_subcommand(name, description);
    AddArgument(command, "LIBRARY", arguments->library, "the library, a file that zeltrans batch has written");
    command.callback([arguments, &run, work] { run = [arguments, work] { return work(*arguments); }; });
    return command;
}

}  // namespace

void AddLibraryCommand(CLI::App& app, CommandRun& run) {
    const auto arguments = std::make_shared<LibraryArguments>();
    CLI::App& library = *app.add_subcommand(
        "library", "Lists, searches, shows, merges and removes recorded messages, and writes their texts.");
    library.require_subcommand(1);
    const auto add = [&](const std::string& name, const std::string& description,
                         ExitCode (*work)(const LibraryArguments&)) -> CLI::App& {
        return AddSubcommand(library, name, description, arguments, run, work);
    };
    CLI::App& list = add("list", "Lists the recordings by disk and number.", ListLibrary);
    AddText(list, "--disk", arguments->disk, "NAME", "only recordings from the disk of this name");
    AddLimit(list, *arguments, "the first ones");
    AddAfter(list, *arguments);
    AddEntriesJson(list, *arguments);

    CLI::App& search = add(
        "search", "Lists the recordings that contain all of the given words in their text, tab fields or file paths.",
        SearchLibrary);
    AddArgument(search, "WORDS", arguments->words, "words or beginnings of words");
    AddLimit(search, *arguments, "the best matches");
    AddEntriesJson(search, *arguments);

    CLI::App& show = add("show", "Shows one recording, or writes its picture or document to a file.", ShowRecording);
    AddRecordingKey(show, *arguments);
    AddPath(show, "--png", arguments->png, "FILE|-", "write the picture as PNG");
    AddRecordingJson(show, *arguments);
    show.parse_complete_callback([arguments] { CheckShow(*arguments); });

    CLI::App& texts = add(
        "texts", "Writes the texts and tab fields of all recordings as a table that zeltrans fill reads.", WriteTexts);
    AddText(texts, "--disk", arguments->disk, "NAME", "only recordings from the disk of this name");
    texts.add_flag("--csv", arguments->csv,
                   "write comma-separated values with a heading; a text that a spreadsheet would take for a formula "
                   "gets an apostrophe in front");
    AddJson(texts, arguments->json, "write one JSON object per text, each in one line");
    AddPath(texts, "--out", arguments->out, "FILE|-", "the file that is written [standard output]");
    texts.parse_complete_callback([arguments] { CheckTexts(*arguments); });

    CLI::App& merge = add("merge",
                          "Adds the recordings of other libraries. A recording that differs from the one of the same "
                          "disk and number replaces it.",
                          MergeLibraries);
    AddArgument(merge, "SHARD", arguments->shards, "the libraries whose recordings are added");
    AddVerbosity(merge, false);

    CLI::App& remove = add("remove", "Removes recordings.", RemoveRecordings);
    remove.add_option("NUMBERS", arguments->number_words, "the messages: a list such as 12 or 1,3,7-9, or FIRST LAST")
        ->required()
        ->expected(1, 2)
        ->type_name("");
    AddText(remove, "--disk", arguments->disk, "NAME",
            "the name of the disk, if the numbers are recorded from several");
    AddVerbosity(remove, false);
    remove.parse_complete_callback([arguments] { CheckRemoval(*arguments); });
    AddExample(library, "zeltrans library search messages.zellib headl");
}

}  // namespace zel::cli
