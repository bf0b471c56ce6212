#pragma once

#include <optional>
#include <string>
#include <vector>

#include <nlohmann/json_fwd.hpp>

#include "host/recorder/batch_recorder.h"
#include "host/recorder/disk_names.h"
#include "programs/cli/batch_arguments.h"
#include "programs/cli/batch_disk.h"
#include "programs/cli/batch_progress.h"
#include "programs/cli/run_observers.h"

namespace zel::cli {

/// What the disks of one batch share.
struct BatchSession {
    recorder::FileDigests digests;
    /// Of the library.
    recorder::DiskNames names;
    /// Names of the folders of pictures.
    std::vector<std::string> folders;
    /// There is more than one, so that each is named and has a folder.
    bool has_several_disks = false;
};

/// The batch of one disk.
class DiskBatch {
  public:
    /// Opens the trace, so that one that cannot be written is reported before the module runs.
    /// @param arguments, session  kept alive by the caller.
    DiskBatch(const BatchArguments& arguments, BatchSession& session, BatchDisk disk);

    /// Imports and records the messages, and prints results.
    /// @throws std::runtime_error in one line, if not everything was done.
    void Run();

    /// Whether the module has run to its end or until it was stopped.
    bool HasRun() const noexcept { return m_has_run; }
    const BatchProgress& Progress() const noexcept { return m_progress; }
    /// The summary as JSON.
    nlohmann::ordered_json Report() const;

  private:
    void NameDisk();
    void ChooseDirectory();
    void CheckDirectory() const;
    void SkipRecorded();
    run::BatchOutcome RunModule();
    void Add(recorder::RecordedItem item);
    std::string UsualName() const;
    /// The directory of the messages, absolute and as it is recorded.
    std::string RecordedDirectory() const;
    void ReportLeftOut();
    void ThrowFailure(const run::BatchOutcome& outcome) const;

    bool Records() const { return m_arguments.Records() && m_disk_error.empty(); }

    const BatchArguments& m_arguments;
    BatchSession& m_session;
    const BatchDisk m_disk;
    run::BatchRequest m_request;
    /// Why no message can be imported. The module runs for its trace only then.
    const std::string m_disk_error;
    RunObservers m_observers;
    recorder::RecorderOptions m_recorder_options;
    BatchProgress m_progress;
    /// Messages of the disk whose names contain no number.
    std::vector<std::string> m_left_out;
    bool m_has_run = false, m_stopped = false;
};

/// Checks that the outputs of a batch destroy no input.
/// @param directory  of the pictures and documents of a disk; empty if there are none, or if it is not known yet.
/// @throws CommandError
void CheckBatchFiles(const BatchArguments& arguments, const std::optional<std::string>& directory);

}  // namespace zel::cli
