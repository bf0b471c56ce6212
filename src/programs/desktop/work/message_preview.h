#pragma once

#include <QTemporaryDir>
#include <optional>
#include <string>

#include "files/byte_writer.h"
#include "host/library/recording.h"
#include "host/recorder/make_recording.h"
#include "host/reference_host.h"

namespace zel::desktop {

/// Imports bytes of a message as its file would be imported, for a picture of a message that is not stored yet. It is
/// used by the module's thread. The bytes pass through a directory that no other user can read.
class MessagePreview {
  public:
    /// @param file            the message file whose place the bytes take, absolute and in this system's form.
    /// @param font_directory  in this system's form.
    MessagePreview(std::string file, std::string font_directory, host::HostOptions options);

    struct Result {
        std::optional<recorder::ArrivedMessage> arrived;
        /// Why nothing arrived; else empty.
        std::string failure;
    };
    Result Import(const files::Bytes& message);

    /// The recording of an import. Its paths are those of the message file and its fonts.
    library::Recording RecordingOf(recorder::ArrivedMessage arrived, const library::RecordingKey& key) const;

  private:
    recorder::Relocation Place() const;

    const std::string m_file;
    const std::string m_font_directory;
    const host::HostOptions m_options;
    QTemporaryDir m_directory;
};

}  // namespace zel::desktop
