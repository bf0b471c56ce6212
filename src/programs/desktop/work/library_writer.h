#pragma once

#include <atomic>
#include <functional>
#include <memory>
#include <mutex>
#include <string>

#include "host/library/library.h"
#include "host/recorder/make_recording.h"
#include "host/recorder/ordered_workers.h"

namespace zel::desktop {

/// Records messages in a library on other threads, each in a transaction of its own. What was given is kept when the
/// object goes.
class LibraryWriter {
  public:
    /// Hears of one recording once it is kept; called on another thread.
    using Kept = std::function<void(const library::RecordingKey&)>;
    /// Hears, once and on another thread, what kept a recording from being kept; nothing is recorded any more then.
    using Failed = std::function<void(const std::string&)>;

    /// @throws LibraryError when the library can't be opened or made.
    LibraryWriter(const std::string& library, Kept kept, Failed failed);
    ~LibraryWriter() { Finish(); }
    LibraryWriter(const LibraryWriter&) = delete;
    LibraryWriter& operator=(const LibraryWriter&) = delete;

    /// Waits while many recordings are under way. @return false when nothing is recorded any more.
    bool Record(recorder::ArrivedMessage arrived, recorder::RecordingContext context);

    /// Waits until everything is kept. @return why something isn't; empty when all is.
    std::string Finish();

    /// How many are kept.
    int Count() const noexcept { return m_count; }

    recorder::FileDigests& Digests() noexcept { return m_digests; }

  private:
    void Keep(const library::Recording& recording);

    library::Library m_library;  // of the thread that takes recordings
    const Kept m_kept;
    const Failed m_failed;
    recorder::FileDigests m_digests;
    std::atomic<int> m_count = 0;
    std::mutex m_mutex;
    std::string m_failure;
    std::unique_ptr<recorder::OrderedWorkers<library::Recording>> m_workers;
};

}  // namespace zel::desktop
