#include "host/recorder/batch_recorder.h"

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <stdexcept>
#include <utility>

#include "base/text.h"
#include "base/whole_file.h"
#include "host/document/indented_json.h"
#include "host/filejson/file_json.h"
#include "platform/system/files.h"

namespace zel::recorder {

namespace {

/// Limits of a chunk: the number of its recordings, and the time since the last chunk. Each transaction waits for the
/// disk.
constexpr std::size_t kLargestChunk = 12;
constexpr auto kLongestWait = std::chrono::milliseconds(200);
/// Fewest messages that may wait for a thread or be worked on; otherwise one for each thread. Each contains a picture
/// of 1.4 MB.
constexpr std::size_t kFewestUnfinished = 2;
/// Largest number of recordings that wait while a chunk is stored. Most have 60 KB.
constexpr std::size_t kWaitingForLibrary = 6;

std::filesystem::path FileOf(int number, const std::string& directory, const char* extension) {
    return std::filesystem::path(directory) / (base::FourDigits(number) + extension);
}

void MakeDirectory(const std::string& directory) {
    std::error_code error;
    std::filesystem::create_directories(directory, error);
    if (error) throw std::runtime_error(directory + ": " + error.message());
}

std::string WithFileKey(const std::string& document, const std::string& message_file, bool exact,
                        std::vector<std::string>& warnings) {
    try {
        const filejson::FileKey file = filejson::FileJsonOf(message_file, exact);
        if (file.left_out != 0) warnings.push_back("the document " + filejson::LeftOutNote(file.left_out));
        return filejson::WithFile(document, file.json);
    } catch (const std::runtime_error& error) {
        warnings.push_back(std::string("the document has no key \"file\": the message can't be read again: ") +
                           error.what());
        return document;
    }
}

/// The options with what follows from the others.
RecorderOptions Completed(RecorderOptions options) {
    options.context.with_files = options.library.has_value();
    return options;
}

}  // namespace

std::vector<std::string> WriteRecordingFiles(const library::Recording& recording, const std::string& message_file,
                                             bool exact, const std::string& directory) {
    std::vector<std::string> warnings;
    if (!recording.picture.empty())
        base::WriteWholeFile(FileOf(recording.number, directory, ".png"), recording.picture);
    const bool has_file = recording.kind == library::RecordingKind::kMessage;
    const std::string document =
        has_file ? WithFileKey(recording.document, message_file, exact, warnings) : recording.document;
    base::WriteWholeFile(FileOf(recording.number, directory, ".json"), document::IndentedJson(document) + "\n");
    return warnings;
}

bool HasRecordingFiles(int number, const std::string& directory, bool with_picture) {
    std::error_code error;
    return std::filesystem::exists(FileOf(number, directory, ".json"), error) &&
           (!with_picture || std::filesystem::exists(FileOf(number, directory, ".png"), error));
}

BatchRecorder::BatchRecorder(const RecorderOptions& options, FileDigests& digests,
                             std::function<void(const RecordedItem&)> done)
    : m_options(Completed(options)),
      m_digests(digests),
      m_done(std::move(done)),
      m_stored_at(std::chrono::steady_clock::now()) {
    if (options.library) m_library.emplace(*options.library, library::Access::kWrite);
    if (options.directory) MakeDirectory(*options.directory);
    const base::WorkerLimits limits{std::max(options.jobs, kFewestUnfinished), kWaitingForLibrary};
    m_workers = std::make_unique<base::OrderedWorkers<Result>>(options.jobs, limits,
                                                               [this](Result result) { Take(std::move(result)); });
}

BatchRecorder::~BatchRecorder() = default;

void BatchRecorder::OnMessage(const document::MessageRecord& message) {
    m_arrived = ArrivedMessage{0, message, m_pictures.TakePicture(), m_pictures.RgbaError()};
}

void BatchRecorder::OnBatchItem(const host::BatchItem& item) {
    if (item.outcome != host::ItemOutcome::kRecorded || !m_arrived) {
        m_workers->Give([item] { return Result{{item, {}, false}, std::nullopt}; });
        return;
    }
    m_arrived->number = item.number;
    m_workers->Give(
        [this, item, arrived = std::move(*m_arrived)]() mutable { return Record(item, std::move(arrived)); });
    m_arrived.reset();
}

BatchRecorder::Result BatchRecorder::Record(const host::BatchItem& item, ArrivedMessage arrived) {
    library::Recording recording = MakeRecording(arrived, m_options.context, m_digests);
    if (arrived.picture) m_pictures.GiveBack(std::move(*arrived.picture));
    std::vector<std::string> warnings = recording.warnings;
    if (m_options.directory) {
        const std::string file = system::NativePath(arrived.message.file.c_str());
        std::ranges::move(WriteRecordingFiles(recording, file, m_options.exact, *m_options.directory),
                          std::back_inserter(warnings));
    }
    return {{item, std::move(warnings), false}, std::move(recording)};
}

void BatchRecorder::Take(Result result) {
    m_items.push_back(std::move(result.item));
    if (m_library && result.recording) m_chunk.push_back(std::move(*result.recording));
    const bool due = m_chunk.size() >= kLargestChunk || std::chrono::steady_clock::now() - m_stored_at > kLongestWait;
    if (m_chunk.empty() || due) Store();
}

void BatchRecorder::Store() {
    if (!m_chunk.empty()) {
        const std::vector<bool> replaced = m_library->Record(m_chunk);
        for (std::size_t n = 0; n < m_chunk.size(); ++n) {
            if (replaced[n]) ItemOf(m_chunk[n].number).replaced = true;
        }
    }
    m_chunk.clear();
    for (const RecordedItem& item : std::exchange(m_items, {})) m_done(item);
    m_stored_at = std::chrono::steady_clock::now();
}

RecordedItem& BatchRecorder::ItemOf(int number) {
    return *std::ranges::find(m_items, number, [](const RecordedItem& item) { return item.item.number; });
}

void BatchRecorder::Finish() {
    m_workers->Finish();
    Store();
}

}  // namespace zel::recorder
