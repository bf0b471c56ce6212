#include "programs/desktop/work/message_preview.h"

#include <QFile>
#include <filesystem>
#include <string_view>
#include <utility>

#include "base/whole_file.h"
#include "host/run/import_run.h"
#include "programs/desktop/work/arrival.h"
#include "programs/desktop/work/temporary_settings.h"

namespace zel::desktop {

namespace fs = std::filesystem;

MessagePreview::MessagePreview(std::string file, std::string font_directory, host::HostOptions options)
    : m_file(std::move(file)), m_font_directory(std::move(font_directory)), m_options(std::move(options)) {}

recorder::Relocation MessagePreview::Place() const {
    return {QFile::encodeName(m_directory.path()).toStdString(), fs::path(m_file).parent_path().string()};
}

MessagePreview::Result MessagePreview::Import(const files::Bytes& message) {
    Result result;
    if (!m_directory.isValid()) {
        result.failure = m_directory.errorString().toStdString();
        return result;
    }
    const recorder::Relocation place = Place();
    run::ImportRequest request;
    request.message = place.from + '/' + fs::path(m_file).filename().string();
    request.fonts = m_font_directory;
    request.host = m_options;
    const std::string_view bytes(reinterpret_cast<const char*>(message.data()), message.size());
    if (const std::error_code error = base::TryWriteWholeFile(request.message, bytes, base::Durability::kUnsynced)) {
        result.failure = request.message + ": " + error.message();
        return result;
    }
    picture::PictureComposer pictures;
    Arrival arrival(pictures);
    host::HostObserver* const observers[] = {&pictures, &arrival};
    const TemporarySettings settings;
    const run::ImportOutcome outcome = run::RunImport(request, observers);
    result.failure = place.InText(outcome.failure);
    if (outcome.Done()) result.arrived = std::move(arrival.arrived);
    if (!result.arrived && result.failure.empty()) result.failure = m_file + ": no message arrived";
    return result;
}

library::Recording MessagePreview::RecordingOf(recorder::ArrivedMessage arrived,
                                               const library::RecordingKey& key) const {
    arrived.number = key.number;
    // Its own for each call: the same file has other bytes each time.
    recorder::FileDigests digests;
    recorder::RecordingContext context;
    context.disk = key.disk;
    context.font_directory = m_font_directory;
    context.options = recorder::DescribeOptions(m_options, digests);
    context.relocation = Place();
    return recorder::MakeRecording(arrived, context, digests);
}

}  // namespace zel::desktop
