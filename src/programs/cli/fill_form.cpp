#include "programs/cli/fill_form.h"

#include <cstdint>
#include <stdexcept>
#include <utility>

#include "base/regular_file.h"
#include "files/message_reader.h"
#include "host/document/message_warnings.h"
#include "host/run/import_paths.h"
#include "inspect/inspect.h"
#include "platform/system/files.h"
#include "programs/cli/command.h"

namespace zel::cli {

namespace {

std::vector<std::uint8_t> Bytes(const std::string& file) {
    try {
        return base::ReadFileBytes(file, inspect::kLargestFile);
    } catch (const std::runtime_error& error) {
        throw CommandError(file + ": " + error.what());
    }
}

fill::FontSet FontsOf(const document::MessageRecord& message) {
    fill::FontSet fonts;
    for (std::size_t slot = 0; slot < fonts.size(); ++slot) {
        if (!message.fonts[slot]) continue;
        const std::string file = system::NativePath(message.fonts[slot]->file_name.c_str());
        fonts[slot] = fill::MeasureFont(Bytes(file), message.header.font_numbers[slot]);
    }
    return fonts;
}

}  // namespace

std::string MessageFileOf(const run::ImportRequest& request) {
    const std::string found = run::FindMessageFile(run::ImportPathsOf(request.message, request.fonts));
    return found.empty() ? request.message : found;
}

files::MessageFile ReadFormFile(const std::string& file) {
    files::Description<files::MessageFile> message = files::ReadMessage(Bytes(file));
    if (!message) throw CommandError(file + ": is no message");
    if (message->size) throw CommandError(file + ": ends before its last section does, so that it can't be filled");
    return std::move(*message.file);
}

OpenedForm OpenForm(const run::ImportRequest& request) {
    const run::ImportOutcome outcome = run::RunImport(request);
    if (!outcome.Done()) throw CommandError(outcome.failure);
    if (!outcome.message || outcome.message->rgba)
        throw CommandError(request.message + ": is an RGBA picture, which has no fields");
    OpenedForm opened;
    opened.file = system::NativePath(outcome.message->file.c_str());
    opened.warnings = document::WarningsOf(*outcome.message);
    opened.form = fill::MakeForm(ReadFormFile(opened.file), FontsOf(*outcome.message));
    opened.form.font_directory =
        system::NativePath(run::ImportPathsOf(request.message, request.fonts).font_directory.c_str());
    return opened;
}

}  // namespace zel::cli
