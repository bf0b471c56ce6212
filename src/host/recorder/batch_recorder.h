#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "host/host_observer.h"
#include "host/library/library.h"
#include "host/recorder/make_recording.h"
#include "host/recorder/ordered_workers.h"

namespace zel::recorder {

/// One number of a batch, recorded or not.
struct RecordedItem {
    host::BatchItem item;
    std::vector<std::string> warnings;
};

struct RecorderOptions {
    RecordingContext context;
    std::optional<std::string> library;    ///< file that recordings go to.
    std::optional<std::string> directory;  ///< where a picture (NUMBER.png) and a document (NUMBER.json) of each go.
    std::size_t jobs = 1;                  ///< threads that encode pictures and write files; what is kept is the same.
};

/// Records what a batch imports. The module's thread only takes copies; documents, pictures and checksums are made on
/// other threads, in order, and no more of them than a few a thread wait at a time. Recordings are kept in small
/// chunks, a transaction each.
class BatchRecorder : public host::HostObserver {
  public:
    /// @param done  hears of each number in order, once it is kept, on another thread than the caller's.
    /// @throws LibraryError, std::runtime_error when there is no place to record to.
    BatchRecorder(const RecorderOptions& options, FileDigests& digests, std::function<void(const RecordedItem&)> done);
    ~BatchRecorder() override;

    /// To be observers too, before this one.
    host::HostObserver& Pictures() noexcept { return m_pictures; }

    void OnMessage(const document::MessageRecord& message) override;
    /// @throws what kept an earlier recording from being kept.
    void OnBatchItem(const host::BatchItem& item) override;

    /// Returns when all is kept. @throws as OnBatchItem.
    void Finish();

  private:
    struct Result {
        RecordedItem item;
        std::optional<library::Recording> recording;
    };

    Result Record(const host::BatchItem& item, ArrivedMessage arrived);
    void Take(Result result);
    void Keep();

    const RecorderOptions m_options;
    FileDigests& m_digests;
    const std::function<void(const RecordedItem&)> m_done;
    picture::PictureComposer m_pictures;
    std::optional<ArrivedMessage> m_arrived;
    std::optional<library::Library> m_library;  // of the thread that takes results, once there are any
    std::vector<library::Recording> m_chunk;
    std::vector<RecordedItem> m_items;  // to be told once the chunk is kept
    std::chrono::steady_clock::time_point m_kept_at;
    std::unique_ptr<OrderedWorkers<Result>> m_workers;
};

/// Writes the picture and the document of a recording, as RecorderOptions::directory tells.
/// @throws std::runtime_error with the file's name and the reason.
void WriteRecordingFiles(const library::Recording& recording, const std::string& directory);
/// Whether both are there.
bool HasRecordingFiles(int number, const std::string& directory, bool with_picture);

}  // namespace zel::recorder
