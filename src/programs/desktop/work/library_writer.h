#pragma once

#include <atomic>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "base/ordered_workers.h"
#include "host/library/library.h"
#include "host/recorder/make_recording.h"
#include "programs/desktop/work/message_warnings.h"

namespace zel::desktop {

/// Records messages in a library on other threads, each in its own transaction. The destructor waits until all are
/// recorded.
class LibraryWriter {
  public:
    /// Called on another thread when a recording is in the library.
    using Recorded = std::function<void(const library::RecordingKey&)>;
    /// Called once, on another thread, with the reason why a recording failed. Nothing is recorded after that.
    using Failed = std::function<void(const std::string&)>;

    /// @throws LibraryError when the library cannot be opened or created.
    LibraryWriter(const std::string& library, Recorded recorded, Failed failed);
    ~LibraryWriter() { Finish(); }
    LibraryWriter(const LibraryWriter&) = delete;
    LibraryWriter& operator=(const LibraryWriter&) = delete;

    /// Queues a message. Blocks while the queue is full.
    /// @return false when recording has failed.
    bool Record(recorder::ArrivedMessage arrived, recorder::RecordingContext context);

    /// Waits until all queued messages are recorded.
    /// @return the reason why recording failed; else empty.
    std::string Finish();

    /// Number of messages recorded.
    int Count() const noexcept { return m_count; }

    /// Moves out the warnings of the messages recorded so far.
    std::vector<MessageWarnings> TakeWarnings();

    recorder::FileDigests& Digests() noexcept { return m_digests; }

  private:
    void Store(const library::Recording& recording);

    /// Used by the thread that writes.
    library::Library m_library;
    const Recorded m_recorded;
    const Failed m_failed;
    recorder::FileDigests m_digests;
    std::atomic<int> m_count = 0;
    std::mutex m_mutex;
    std::string m_failure;
    std::vector<MessageWarnings> m_warnings;
    std::unique_ptr<base::OrderedWorkers<library::Recording>> m_workers;
};

}  // namespace zel::desktop
