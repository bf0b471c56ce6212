#pragma once

#include <map>
#include <string>
#include <vector>

#include "host/export/export_formats.h"
#include "host/picture/png_reader.h"
#include "host/picture/png_writer.h"

namespace zel::test {

/// A picture in which colours and alpha take all values; some of its transparent pixels have a colour.
inline picture::Picture Colourful(int width = 720, int height = 486) {
    picture::Picture picture{width, height, {}};
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            for (const int value : {x * 7 + y, x + y * 3, x * y, y < 40 ? 0 : x}) {
                picture.rgba.push_back(static_cast<std::uint8_t>(value));
            }
        }
    }
    return picture;
}

/// A message with that picture.
inline library::Recording Recorded(int number = 12, const picture::Picture& picture = Colourful()) {
    library::Recording recording;
    recording.number = number;
    recording.document = R"({"kind":"message"})";
    recording.standard = VideoStandardOf(picture.height).value_or(VideoStandard::kNtsc);
    recording.width = picture.width;
    recording.height = picture.height;
    recording.picture = picture::EncodePng(picture);
    return recording;
}

/// The files of a format for one message, by their names.
inline std::map<std::string, std::string> Exported(std::string_view format, const library::Recording& recording,
                                                   const exporter::ExportOptions& options = {}) {
    exporter::ExportSubject subject(recording, options);
    std::map<std::string, std::string> files;
    for (const exporter::ExportFormat& entry : exporter::ExportFormats()) {
        if (entry.name != format) continue;
        for (exporter::ExportedFile& file : entry.make(options)->Export(subject))
            files[file.name] = std::move(file.bytes);
    }
    return files;
}

}  // namespace zel::test
