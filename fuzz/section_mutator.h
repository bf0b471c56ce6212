#pragma once

#include <random>

#include "fuzz_target.h"
#include "module/message/format/section_observer.h"
#include "samples/byte_writer.h"

namespace zel::fuzz {

using Random = std::minstd_rand;

/// A number below `end`, which isn't 0.
std::size_t Below(Random& random, std::size_t end);

/// A value that readers stumble over: the limits of the formats' fields and counts, and a neighbour of each.
unsigned HostileValue(Random& random);

/// How a mutator sees one of the two binary formats.
struct Format {
    /// Tells the observer the sections that a file has.
    void (*observe)(Input file, message::SectionObserver& sections);
    /// A new file of sections that are valid, with hostile values in them.
    samples::Bytes (*describe)(Random& random);
};

/// Changes a file within one of its sections, so that the sections behind it keep their places; now and then cuts it
/// in one, changes it anywhere, or takes a new file instead.
std::size_t MutateSections(const Format& format, std::uint8_t* data, std::size_t size, std::size_t max_size,
                           unsigned seed);

}  // namespace zel::fuzz
