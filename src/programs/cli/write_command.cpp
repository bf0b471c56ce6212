#include "programs/cli/write_command.h"

#include <cerrno>
#include <filesystem>
#include <memory>
#include <stdexcept>
#include <string>
#include <system_error>
#include <vector>

#include <CLI/App.hpp>
#include <nlohmann/json.hpp>
#include <unistd.h>

#include "base/file_descriptor.h"
#include "base/regular_file.h"
#include "base/sha256.h"
#include "base/text.h"
#include "host/document/json_version.h"
#include "host/filejson/file_json.h"
#include "programs/cli/diagnostics.h"
#include "programs/cli/json_output.h"
#include "programs/cli/options.h"
#include "programs/cli/output_check.h"
#include "programs/cli/output_file.h"
#include "programs/cli/standard_input.h"

namespace zel::cli {

namespace {

struct WriteArguments {
    std::string document, to;
    bool exact = false, overwrite = false, json = false;

    /// Of the document, in texts.
    std::string Name() const { return IsStandardInput(document) ? kStandardInput : document; }
};

std::vector<std::uint8_t> ReadStandardInputUpTo(std::size_t most) {
    constexpr std::size_t kBlock = std::size_t{1} << 20;
    std::vector<std::uint8_t> bytes;
    while (bytes.size() < most) {
        const std::size_t before = bytes.size();
        bytes.resize(before + kBlock);
        const std::size_t count = base::ReadFully(STDIN_FILENO, bytes.data() + before, kBlock);
        bytes.resize(before + count);
        if (count == kBlock) continue;
        if (errno != 0) throw std::runtime_error("can't be read: " + std::generic_category().message(errno));
        break;
    }
    return bytes;
}

filejson::DocumentFile ReadDocument(const WriteArguments& arguments) {
    constexpr std::size_t kMost = filejson::kLargestDocument + 1;
    try {
        const std::vector<std::uint8_t> bytes = IsStandardInput(arguments.document)
                                                    ? ReadStandardInputUpTo(kMost)
                                                    : base::ReadFileBytes(arguments.document, kMost);
        return filejson::FileOfDocument({reinterpret_cast<const char*>(bytes.data()), bytes.size()});
    } catch (const std::runtime_error& error) {
        throw CommandError(arguments.Name() + ": " + error.what());
    }
}

std::string Sha256Of(const filejson::DocumentFile& file) {
    return base::Sha256({reinterpret_cast<const char*>(file.bytes.data()), file.bytes.size()});
}

/// Reports a file that isn't the one of which the document was made.
void CheckExact(filejson::DocumentFile& file) {
    if (!file.faults.IsEmpty()) return;
    if (!file.sha256) {
        file.faults.Add("/file/sha256", "is missing, so that --exact can't compare the file");
    } else if (*file.sha256 != Sha256Of(file)) {
        file.faults.Add("/file/sha256", "belongs to other bytes than the document gives: it was edited");
    }
}

void PrintFaults(const WriteArguments& arguments, const filejson::Faults& faults) {
    for (const filejson::Fault& fault : faults.Kept()) {
        PrintError(arguments.Name() + ": " + fault.place + ": " + fault.rule);
    }
    const std::uint64_t more = faults.Count() - faults.Kept().size();
    PrintError(arguments.Name() + ": " + base::Counted(faults.Count(), "fault") +
               (more > 0 ? ", of which " + std::to_string(more) + " are not listed" : "") + "; nothing was written");
}

void PrintResult(const WriteArguments& arguments, const filejson::DocumentFile& file) {
    const bool is_written = file.faults.IsEmpty();
    nlohmann::ordered_json faults = nlohmann::ordered_json::array();
    for (const filejson::Fault& fault : file.faults.Kept())
        faults.push_back({{"place", fault.place}, {"rule", fault.rule}});
    nlohmann::ordered_json result = {{"version", document::kJsonVersion},
                                     {"document", arguments.document},
                                     {"kind", TextOrNull(file.type)},
                                     {"file", nullptr},
                                     {"size", nullptr},
                                     {"sha256", nullptr},
                                     {"fault_count", file.faults.Count()},
                                     {"faults", std::move(faults)}};
    if (is_written) {
        result["file"] = arguments.to;
        result["size"] = file.bytes.size();
        result["sha256"] = Sha256Of(file);
    }
    PrintJson(result);
}

void CheckFiles(const WriteArguments& arguments) {
    CommandFiles files;
    files.may_write_disks = true;
    if (!IsStandardInput(arguments.document)) files.Read(arguments.document, "the document");
    files.Write(arguments.to, "--to");
    CheckOutputs(files);
    std::error_code error;
    if (arguments.to != "-" && !arguments.overwrite && std::filesystem::is_regular_file(arguments.to, error)) {
        throw CommandError(arguments.to + ": exists already; --overwrite replaces it");
    }
}

ExitCode RunWriteCommand(const WriteArguments& arguments) {
    CheckFiles(arguments);
    filejson::DocumentFile file = ReadDocument(arguments);
    if (arguments.exact) CheckExact(file);
    if (!file.faults.IsEmpty()) {
        PrintFaults(arguments, file.faults);
        if (arguments.json) PrintResult(arguments, file);
        return ExitCode::kNotDone;
    }
    WriteBinaryOutput(arguments.to, {reinterpret_cast<const char*>(file.bytes.data()), file.bytes.size()});
    if (arguments.json) PrintResult(arguments, file);
    PrintLine(arguments.Name() + ": a " + file.type + " of " + base::Counted(file.bytes.size(), "byte") + "; wrote " +
              arguments.to);
    return ExitCode::kDone;
}

}  // namespace

void AddWriteCommand(CLI::App& app, CommandRun& run) {
    const auto arguments = std::make_shared<WriteArguments>();
    CLI::App& command = *app.add_subcommand("write", "Makes a message file or a font file from a JSON document.");
    AddArgument(command, "DOCUMENT", arguments->document,
                "the document, of \"import --json\", \"batch --out\" or \"font --json\", as it is or edited; - is "
                "standard input");
    AddRequired(command, "--to", arguments->to, "FILE|-", "the file to write");
    command.add_flag("--overwrite", arguments->overwrite, "replace a file that exists");
    command.add_flag("--exact", arguments->exact, "write nothing but the very bytes that the document was made of");
    AddJson(command, arguments->json, "print the result, with the faults of the document, as a JSON object");
    AddVerbosity(command, false);
    AddExample(command, "zeltrans write 0012.json --to .0012");
    command.callback([arguments, &command, &run] {
        const std::optional<std::string> to = arguments->to;
        ReserveStandardOutputFor({{"--to", &to}}, arguments->json);
        run = [arguments] { return RunWriteCommand(*arguments); };
    });
}

}  // namespace zel::cli
