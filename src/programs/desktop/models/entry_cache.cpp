#include "programs/desktop/models/entry_cache.h"

#include <algorithm>

namespace zel::desktop {

namespace {

/// About as many as fit on a screen, and screens enough to scroll back and forth.
constexpr std::size_t kBlockSize = 64, kMaxBlocks = 16;

}  // namespace

const library::LibraryEntry& EntryCache::At(const library::LibraryTable& table, std::size_t row) {
    const std::size_t first = row / kBlockSize * kBlockSize;
    const auto found = std::ranges::find(m_blocks, first, &Block::first);
    if (found != m_blocks.end()) {
        m_blocks.splice(m_blocks.begin(), m_blocks, found);
    } else {
        if (m_blocks.size() == kMaxBlocks) m_blocks.pop_back();
        m_blocks.push_front({first, {}});
        Fill(table, m_blocks.front());
    }
    return m_blocks.front().entries[row - first];
}

void EntryCache::Fill(const library::LibraryTable& table, Block& block) {
    const std::size_t end = std::min(block.first + kBlockSize, table.rows.size());
    std::vector<library::RecordingId> ids;
    for (std::size_t row = block.first; row < end; ++row) {
        const library::LibraryTable::Row& recording = table.rows[row];
        ids.push_back(recording.id);
        library::LibraryEntry& entry = block.entries.emplace_back();
        entry.id = recording.id;
        entry.key = table.KeyOf(recording);
    }
    auto entry = block.entries.begin();
    for (library::LibraryEntry& read : m_read(ids)) {
        while (entry != block.entries.end() && entry->id != read.id) ++entry;
        if (entry == block.entries.end()) break;
        // A later recording may have the number of a removed one.
        if (entry->key == read.key) *entry = std::move(read);
    }
}

}  // namespace zel::desktop
