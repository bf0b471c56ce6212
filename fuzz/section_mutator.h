#pragma once

#include <random>

#include "files/byte_writer.h"
#include "fuzz_target.h"
#include "module/message/format/section_observer.h"

namespace zel::fuzz {

using Random = std::minstd_rand;

/// A random number below `end`, which isn't 0.
std::size_t Below(Random& random, std::size_t end);

/// A boundary value of the formats' fields and counts, or a neighbour of one.
unsigned HostileValue(Random& random);

/// One of the two binary formats.
struct Format {
    /// Reports the sections of a file to the observer.
    void (*observe)(Input file, message::SectionObserver& sections);
    /// Returns a new file of valid sections with boundary values.
    files::Bytes (*describe)(Random& random);
};

/// Changes a file within one of its sections, so that later sections keep their positions. Sometimes truncates the file
/// in a section, changes it anywhere, or replaces it with a new one.
/// @return the new size in bytes.
std::size_t MutateSections(const Format& format, std::uint8_t* data, std::size_t size, std::size_t max_size,
                           unsigned seed);

}  // namespace zel::fuzz
