#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "base/ordered_workers.h"
#include "files/byte_writer.h"
#include "host/export/exporter.h"
#include "host/export/manifest.h"
#include "host/library/library.h"
#include "host/picture/picture_composer.h"
#include "host/recorder/make_recording.h"
#include "programs/cli/fill_arguments.h"
#include "programs/cli/fill_result.h"
#include "programs/cli/scratch_messages.h"

namespace zel::cli {

/// A filled message.
struct FilledMessage {
    FillResult result;
    files::Bytes bytes;
    /// Under which it is recorded.
    int number = 0;
    /// Of the file of --write.
    std::string file_name;
};

/// Where filled messages come from.
struct FillSource {
    /// The directory under which they are recorded, absolute: the table, or the form.
    std::string path;
    /// Of the fonts, this system's path.
    std::string font_directory;
    /// Warnings of the form, which aren't repeated for each message.
    std::vector<std::string> known_warnings;
};

/// Makes the outputs of filled messages: message files, and pictures, documents and recordings from their import, as
/// for any other message. Files and recordings that exist are kept, unless --overwrite is given.
class FillOutputs {
  public:
    /// @param arguments  kept alive by the caller.
    /// @param done       called for each message in order, on another thread if there are several jobs.
    /// @throws CommandError, std::runtime_error if a directory or the library can't be made.
    FillOutputs(const FillArguments& arguments, FillSource source, std::function<void(const FillResult&)> done);
    ~FillOutputs();

    /// Of the messages that follow.
    void SetKnownWarnings(std::vector<std::string> warnings) { m_source.known_warnings = std::move(warnings); }

    /// Makes the outputs of a message.
    void Give(FilledMessage message);
    /// Reports a record without outputs, in its turn.
    void Report(FillResult result);

    /// What a run has made of all its messages together.
    struct Range {
        int files = 0;
        /// One line each.
        std::vector<std::string> failures;
    };
    /// Waits for all outputs, and writes those of the whole run.
    Range Finish();

  private:
    struct Work;
    struct Outcome;

    void Import(Work& work);
    Outcome Do(Work work);
    void Export(const library::Recording& recording, Outcome& outcome);
    void Take(Outcome outcome);
    void Collect(Outcome& outcome);
    void Store();
    void Write(const std::string& directory, const exporter::ExportedFile& file) const;
    void WriteRangeFiles(const std::vector<exporter::ExportedFile>& files);

    const FillArguments& m_arguments;
    FillSource m_source;
    const std::function<void(const FillResult&)> m_done;
    std::unique_ptr<ScratchMessages> m_scratch;
    recorder::RecordingContext m_context;
    recorder::FileDigests m_digests;
    picture::PictureComposer m_pictures;
    std::vector<std::unique_ptr<exporter::Exporter>> m_exporters;
    bool m_wants_thumbnails = false, m_has_index = false;
    /// Names and titles of the pages, if there is an index of them.
    exporter::Manifest m_manifest;
    Range m_range;
    /// Which recordings exist; asked on the caller's thread.
    std::unique_ptr<library::Library> m_existing;
    /// Used by the thread that takes the results.
    std::unique_ptr<library::Library> m_library;
    std::vector<library::Recording> m_chunk;
    std::vector<FillResult> m_waiting;
    std::unique_ptr<base::OrderedWorkers<Outcome>> m_workers;
};

/// Why a text can't be the name of outputs; empty if it can.
std::string OutputNameError(const FillArguments& arguments, const std::string& name);

/// The names of files that a run of the command may write to the directory of --out.
bool IsFilledFile(const FillArguments& arguments, std::string_view name);

}  // namespace zel::cli
