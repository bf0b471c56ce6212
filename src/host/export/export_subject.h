#pragma once

#include <optional>
#include <string>

#include "host/library/recording.h"
#include "host/picture/picture.h"

namespace zel::exporter {

/// A message under export: what several formats need of it is made once. Used by one thread.
class ExportSubject {
  public:
    /// @param recording  kept alive by the caller.
    /// @throws std::runtime_error for a number beyond 9999.
    explicit ExportSubject(const library::Recording& recording);

    const library::Recording& Source() const noexcept { return m_recording; }

    /// What the names of the message's files begin with, see StemOf.
    const std::string& Stem() const noexcept { return m_stem; }

    /// The picture on its frame: 720 pixels and 486 or 576 lines, straight alpha.
    /// @throws std::runtime_error when there is none, or one that can't be read.
    const picture::Picture& Frame();

  private:
    const library::Recording& m_recording;
    std::string m_stem;
    std::optional<picture::Picture> m_frame;
};

/// @throws std::runtime_error for a number that isn't 0 to 9999.
std::string FourDigits(int number);

/// What a message's files are called, without their ending: its number with four digits, 0012, or after the disk's name
/// news_0012. Of the name letters, digits, - and _ are kept and everything else is _; a name that isn't kept whole gets
/// six digits of its checksum, so that two disks never share their files.
/// @throws std::runtime_error for a number that isn't 0 to 9999.
std::string StemOf(const std::string& disk, int number);

/// A message in words: the first line with more than one character, since a single one is mostly a piece of artwork;
/// without it the first that isn't empty. At most 100 characters, as valid UTF-8; empty without text.
std::string TitleOf(const std::string& text);

}  // namespace zel::exporter
