#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "host/library/packed_file.h"
#include "module/contract/records/video_standard.h"

namespace zel::library {

enum class RecordingKind { kMessage, kRgbaObject, kRgbaBackground };

/// The video standard of an RGBA file, which names none: that with as many lines as its picture is high.
/// @param height  in pixels, 0 without a picture.
/// @param host    the standard of any other height.
constexpr VideoStandard RgbaStandard(int height, VideoStandard host) noexcept {
    return VideoStandardOf(height).value_or(host);
}

/// A file that a recording was made from. A changed checksum means that the recording is out of date.
struct SourceFile {
    /// Absolute, this system's.
    std::string path;
    /// Of a font; empty for the message's own file.
    std::optional<int> font_number;
    /// In bytes.
    std::uint64_t size = 0;
    /// 64 hexadecimal digits, lower case; empty for a font that was missing.
    std::string sha256;
};

/// Name and position of a tab field, in pixels of the picture.
struct RecordedField {
    std::string name;
    int left = 0, top = 0, right = 0, bottom = 0;
};

/// A message as the host stores it: everything that can be shown or exported without the disk that it came from. Texts
/// are UTF-8.
struct Recording {
    /// Distinguishes the messages of several disks; empty for the only one.
    std::string disk;
    /// 0 to 9999.
    int number = 0;
    RecordingKind kind = RecordingKind::kMessage;
    /// UTC, such as 2026-11-22T23:51:32Z.
    std::string recorded_at;
    /// The host's options that affect the result, as text; compared for equality only.
    std::string options;
    /// The message as a JSON document; may be empty for an RGBA file.
    std::string document;
    /// The searchable text: one line for each row.
    std::string text;
    /// Names of the fonts, in the order of their slots.
    std::vector<std::string> fonts;
    /// The tab fields.
    std::vector<RecordedField> fields;
    /// What a user should know: missing fonts, glyphs that could not be drawn.
    std::vector<std::string> warnings;
    /// The message's own file first, then the fonts.
    std::vector<SourceFile> sources;
    /// Contents of sources, as far as they are known; a library keeps each file once. Library::Find leaves them out.
    std::vector<SharedFile> files{};
    /// The message's own; of an RGBA picture, see RgbaStandard.
    VideoStandard standard = VideoStandard::kNtsc;
    /// Of the picture, in pixels; 0 without one.
    int width = 0, height = 0;
    /// PNG with straight alpha; empty without a picture.
    std::string picture;
};

/// Identifies a recording in a library.
struct RecordingKey {
    std::string disk;
    int number = 0;

    friend bool operator==(const RecordingKey&, const RecordingKey&) = default;
    friend auto operator<=>(const RecordingKey&, const RecordingKey&) = default;
};

}  // namespace zel::library
