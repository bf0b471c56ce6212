#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "host/export/export_options.h"
#include "host/library/recording.h"
#include "host/picture/picture.h"

namespace zel::exporter {

/// A message that is exported. Work that several formats share is done once. One thread uses it.
class ExportSubject {
  public:
    /// @param recording  kept alive by the caller.
    /// @param options    for Output.
    /// @throws std::runtime_error for a number beyond 9999.
    explicit ExportSubject(const library::Recording& recording, const ExportOptions& options = {});
    /// @param stem  the beginning of the names of its files, instead of that of StemOf.
    ExportSubject(const library::Recording& recording, std::string stem, const ExportOptions& options);

    const library::Recording& Source() const noexcept { return m_recording; }

    /// The beginning of the names of the message's files.
    const std::string& Stem() const noexcept { return m_stem; }

    /// The names of the files of other formats that the message has in the directory, as far as they are known.
    const std::vector<std::string>& FilesBeside() const noexcept { return m_files_beside; }
    void SetFilesBeside(std::vector<std::string> files) { m_files_beside = std::move(files); }

    /// What a user is told of a file that is written but lacks something, a line without the message's name.
    void AddNote(std::string note) { m_notes.push_back(std::move(note)); }
    std::vector<std::string> TakeNotes() { return std::exchange(m_notes, {}); }

    /// The picture in a frame of the message's video standard, straight alpha.
    /// @throws std::runtime_error if there is no picture, or if it can't be read.
    const picture::Picture& Frame();

    /// That picture as PNG: the recorded file itself when it has the frame's size.
    /// @throws std::runtime_error as Frame.
    std::string FramePng();

    /// The picture in the frame of the options, with their colour in clear pixels; straight alpha.
    /// @throws std::runtime_error as Frame, and for a frame that is too small.
    const picture::Picture& Output();

  private:
    const library::Recording& m_recording;
    std::string m_stem;
    const ExportOptions m_options;
    std::vector<std::string> m_files_beside;
    std::vector<std::string> m_notes;
    std::optional<picture::Picture> m_frame, m_output;
};

}  // namespace zel::exporter
