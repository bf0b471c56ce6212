#pragma once

#include <string>

namespace zel::exporter {

/// Four digits, such as 0012.
/// @throws std::runtime_error for a number that isn't 0 to 9999.
std::string FileNumber(int number);

/// The name of a message's files without suffix and extension: its number with four digits, 0012, or after the disk's
/// name, news_0012. In the name of a disk everything but ASCII letters, digits, - and _ becomes _. A name that is
/// changed, or longer than 40 bytes, gets six digits of its checksum, so that two disks never share a file.
/// @throws std::runtime_error for a number that isn't 0 to 9999.
std::string StemOf(const std::string& disk, int number);

}  // namespace zel::exporter
