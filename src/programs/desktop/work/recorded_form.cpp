#include "programs/desktop/work/recorded_form.h"

#include <filesystem>
#include <stdexcept>
#include <string_view>

#include "base/regular_file.h"
#include "base/sha256.h"
#include "files/message_reader.h"
#include "programs/desktop/work/message_files.h"

namespace zel::desktop {

namespace {

namespace fs = std::filesystem;

constexpr const char* kImportAgain = " Import it again, then change it.";

/// The bytes of a file from which a recording was made.
/// @throws std::runtime_error if they are not there any more.
files::Bytes BytesOf(const library::SourceFile& source) {
    files::Bytes bytes;
    try {
        bytes = base::ReadFileBytes(source.path, static_cast<std::size_t>(source.size));
    } catch (const std::runtime_error& error) {
        throw std::runtime_error(source.path + ": " + error.what() + '.');
    }
    std::error_code ignored;
    const std::string_view text(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    if (fs::file_size(source.path, ignored) != source.size || base::Sha256(text) != source.sha256)
        throw std::runtime_error(source.path + " has changed since the message was imported." + kImportAgain);
    return bytes;
}

bool WasMissing(const library::SourceFile& source) {
    return source.sha256.empty() && source.size == 0;
}

fill::FontSet FontsOf(const library::Recording& recording, const files::MessageFile& message) {
    fill::FontSet fonts;
    for (const library::SourceFile& source : recording.sources) {
        if (!source.font_number || WasMissing(source)) continue;
        std::optional<fill::FontMetrics> font;
        for (std::size_t slot = 0; slot < fonts.size(); ++slot) {
            if (message.header.font_numbers[slot] != *source.font_number || fonts[slot]) continue;
            if (!font) font = fill::MeasureFont(BytesOf(source), *source.font_number);
            fonts[slot] = font;
        }
    }
    return fonts;
}

/// The directory of the first font that was found; without one, the usual directory.
std::string FontDirectoryOf(const library::Recording& recording) {
    for (const library::SourceFile& source : recording.sources) {
        if (source.font_number && !WasMissing(source)) return fs::path(source.path).parent_path().string();
    }
    return DirectoriesOf(recording.sources.front().path).fonts;
}

}  // namespace

RecordedForm ReadRecordedForm(const library::Recording& recording) {
    if (recording.kind != library::RecordingKind::kMessage) throw std::runtime_error("A picture has no tab fields.");
    if (recording.sources.empty()) throw std::runtime_error("The library does not name the file of this message.");
    const library::SourceFile& source = recording.sources.front();
    files::Description<files::MessageFile> message = files::ReadMessage(BytesOf(source));
    if (!message) throw std::runtime_error(source.path + " is not a message.");
    if (message->size)
        throw std::runtime_error(source.path + " ends before its last section does, so that it cannot be filled.");
    fill::FontSet fonts = FontsOf(recording, *message);
    RecordedForm result{
        fill::MakeForm(std::move(*message.file), std::move(fonts)), source.path, FontDirectoryOf(recording), {}};
    for (const library::SourceFile& font : recording.sources) {
        if (font.font_number && !WasMissing(font)) result.font_files.push_back(font.path);
    }
    if (result.form.fields.empty()) throw std::runtime_error("This message has no tab fields.");
    return result;
}

}  // namespace zel::desktop
