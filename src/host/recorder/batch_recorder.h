#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "base/ordered_workers.h"
#include "host/host_observer.h"
#include "host/library/library.h"
#include "host/picture/picture_composer.h"
#include "host/recorder/make_recording.h"

namespace zel::recorder {

/// One number of a batch, recorded or not.
struct RecordedItem {
    host::BatchItem item;
    std::vector<std::string> warnings;
    /// The library had a recording of this disk and number.
    bool replaced = false;
};

struct RecorderOptions {
    RecordingContext context;
    /// File of the library to store recordings in.
    std::optional<std::string> library;
    /// Directory to write each picture (NUMBER.png) and document (NUMBER.json) to.
    std::optional<std::string> directory;
    /// The documents of the directory keep all bytes of their files.
    bool exact = false;
    /// Number of threads that encode pictures and write files. The results do not depend on it.
    std::size_t jobs = 1;
};

/// Records what a batch imports. The module's thread only makes copies; documents, pictures and checksums are made on
/// other threads, with a bounded number of messages waiting. Recordings are stored in order, in small chunks of one
/// transaction each.
class BatchRecorder : public host::HostObserver {
  public:
    /// @param done  called for each number in order, once it is stored, on another thread than the caller's.
    /// @throws LibraryError, std::runtime_error when the library or the directory can't be created.
    BatchRecorder(const RecorderOptions& options, FileDigests& digests, std::function<void(const RecordedItem&)> done);
    ~BatchRecorder() override;

    /// Composes the pictures. Must also be added as an observer, before this one.
    host::HostObserver& Pictures() noexcept { return m_pictures; }

    void OnMessage(const document::MessageRecord& message) override;
    /// @throws the error of an earlier recording that could not be stored.
    void OnBatchItem(const host::BatchItem& item) override;

    /// Waits until everything is stored. @throws as OnBatchItem.
    void Finish();

  private:
    struct Result {
        RecordedItem item;
        std::optional<library::Recording> recording;
    };

    Result Record(const host::BatchItem& item, ArrivedMessage arrived);
    void Take(Result result);
    void Store();
    /// The item of a recording of the chunk.
    RecordedItem& ItemOf(int number);

    const RecorderOptions m_options;
    FileDigests& m_digests;
    const std::function<void(const RecordedItem&)> m_done;
    picture::PictureComposer m_pictures;
    std::optional<ArrivedMessage> m_arrived;
    /// Used by the thread that takes the results, as soon as there are any.
    std::optional<library::Library> m_library;
    std::vector<library::Recording> m_chunk;
    /// To be reported when the chunk is stored.
    std::vector<RecordedItem> m_items;
    std::chrono::steady_clock::time_point m_stored_at;
    std::unique_ptr<base::OrderedWorkers<Result>> m_workers;
};

/// Writes the picture and the document of a recording, see RecorderOptions::directory. The document of a message gets
/// the key `file`, which libraries don't store.
/// @param message_file  this system's path of the message; the module gives no bytes of it, so it is read again.
/// @param exact         the document keeps all bytes of it.
/// @return warnings about what a document lacks.
/// @throws std::runtime_error with the file's name and the reason.
std::vector<std::string> WriteRecordingFiles(const library::Recording& recording, const std::string& message_file,
                                             bool exact, const std::string& directory);
/// Whether the files of a number exist.
bool HasRecordingFiles(int number, const std::string& directory, bool with_picture);

}  // namespace zel::recorder
