#include "programs/desktop/work/library_writer.h"

#include <algorithm>
#include <thread>
#include <utility>

#include "programs/desktop/common/library_wait.h"

namespace zel::desktop {

namespace {

constexpr std::size_t kQueuedPerThread = 4;

std::size_t Threads() {
    return std::clamp(std::thread::hardware_concurrency(), 1U, 8U);
}

}  // namespace

LibraryWriter::LibraryWriter(const std::string& library, Recorded recorded, Failed failed)
    : m_library(library, library::Access::kWrite, kLibraryWait),
      m_recorded(std::move(recorded)),
      m_failed(std::move(failed)),
      m_workers(std::make_unique<base::OrderedWorkers<library::Recording>>(
          Threads(), Threads() * kQueuedPerThread, [this](const library::Recording& recording) { Store(recording); })) {
}

void LibraryWriter::Store(const library::Recording& recording) {
    try {
        m_library.Record({&recording, 1});
    } catch (const std::exception& error) {
        {
            const std::lock_guard lock(m_mutex);
            m_failure = error.what();
        }
        m_failed(error.what());
        throw;
    }
    ++m_count;
    if (!recording.warnings.empty()) {
        const std::lock_guard lock(m_mutex);
        m_warnings.push_back({{recording.disk, recording.number}, recording.warnings});
    }
    m_recorded({recording.disk, recording.number});
}

bool LibraryWriter::Record(recorder::ArrivedMessage arrived, recorder::RecordingContext context) {
    context.with_files = true;
    try {
        m_workers->Give([this, arrived = std::move(arrived), context = std::move(context)] {
            return recorder::MakeRecording(arrived, context, m_digests);
        });
        return true;
    } catch (const std::exception&) {
        // m_failed was called.
        return false;
    }
}

std::vector<MessageWarnings> LibraryWriter::TakeWarnings() {
    const std::lock_guard lock(m_mutex);
    return std::exchange(m_warnings, {});
}

std::string LibraryWriter::Finish() {
    if (m_workers) {
        try {
            m_workers->Finish();
        } catch (const std::exception& error) {
            const std::lock_guard lock(m_mutex);
            if (m_failure.empty()) m_failure = error.what();
        }
        m_workers.reset();
    }
    const std::lock_guard lock(m_mutex);
    return m_failure;
}

}  // namespace zel::desktop
