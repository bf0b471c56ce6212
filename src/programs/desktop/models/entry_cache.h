#pragma once

#include <cstddef>
#include <functional>
#include <list>
#include <span>
#include <vector>

#include "host/library/library_entry.h"

namespace zel::desktop {

/// The entries of a table of recordings, read in blocks where they are looked at. Few blocks are kept.
class EntryCache {
  public:
    /// Returns the entries of these recordings in their order, without those that do not exist any more.
    using Read = std::function<std::vector<library::LibraryEntry>(std::span<const library::RecordingId> ids)>;

    explicit EntryCache(Read read) : m_read(std::move(read)) {}

    /// The entry of a row; with the key alone if the recording was removed or replaced after the table was read. Valid
    /// until the next call.
    const library::LibraryEntry& At(const library::LibraryTable& table, std::size_t row);
    /// To be called when the table has changed.
    void Clear() { m_blocks.clear(); }

  private:
    struct Block {
        std::size_t first = 0;
        std::vector<library::LibraryEntry> entries;
    };
    void Fill(const library::LibraryTable& table, Block& block);

    const Read m_read;
    /// The one that was used last is the first.
    std::list<Block> m_blocks;
};

}  // namespace zel::desktop
