#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <type_traits>
#include <utility>
#include <vector>

#include "platform/framework/cstring.h"
#include "platform/system/types.h"

/// Hash of a key: a number is shifted 4 bits to the right.
template <class ARG_KEY>
inline UINT HashKey(ARG_KEY key) {
    static_assert(std::is_integral_v<std::remove_cvref_t<ARG_KEY>>);
    return static_cast<UINT>(key >> 4);
}

/// Hash of a text, taken character by character.
template <>
inline UINT HashKey<const char*>(const char* key) {
    UINT hash = 0;
    for (; *key != '\0'; ++key) hash = hash * 33 + static_cast<unsigned char>(*key);
    return hash;
}

/// Map from keys to values. KEY and VALUE are what is kept, ARG_KEY and ARG_VALUE what is handed over; a look-up
/// compares the kept key with the argument and makes no KEY of it. Left out: removal of one key, iteration,
/// serialisation.
template <class KEY, class ARG_KEY, class VALUE, class ARG_VALUE>
class CMap {
  public:
    /// @param blockSize  entries that are allocated together.
    explicit CMap(int blockSize = 10) : m_blockSize(blockSize > 0 ? static_cast<std::size_t>(blockSize) : 10) {}

    CMap(const CMap&) = delete;
    CMap& operator=(const CMap&) = delete;

    /// Sets the number of buckets, 17 until then; only while the map is empty. The map makes more of them as it grows.
    void InitHashTable(UINT buckets, BOOL allocateNow = TRUE) {
        if (m_count != 0 || buckets == 0) return;
        m_firstBuckets = buckets;
        m_buckets.clear();
        if (allocateNow) m_buckets.resize(buckets);
    }

    int GetCount() const noexcept { return static_cast<int>(m_count); }
    BOOL IsEmpty() const noexcept { return m_count == 0; }

    /// Copies the value of `key` to `value`; FALSE, and `value` untouched, when the key isn't there.
    BOOL Lookup(ARG_KEY key, VALUE& value) const {
        const Entry* entry = Find(key, HashKey<ARG_KEY>(key));
        if (entry == nullptr) return FALSE;
        value = entry->value;
        return TRUE;
    }

    void SetAt(ARG_KEY key, ARG_VALUE value) { (*this)[key] = value; }

    /// The value of `key`, which is added first if it isn't there.
    VALUE& operator[](ARG_KEY key) {
        const UINT hash = HashKey<ARG_KEY>(key);
        if (Entry* entry = Find(key, hash)) return entry->value;
        Grow();
        Entry& added = NextEntry();
        added.key = key;
        added.hash = hash;
        Entry*& bucket = m_buckets[hash % m_buckets.size()];
        added.next = bucket;
        bucket = &added;
        ++m_count;
        return added.value;
    }

    void RemoveAll() noexcept {
        m_buckets.clear();
        m_blocks.clear();
        m_count = 0;
    }

  private:
    struct Entry {
        Entry* next = nullptr;
        UINT hash = 0;
        KEY key{};
        VALUE value{};
    };

    Entry* Find(ARG_KEY key, UINT hash) const {
        if (m_buckets.empty()) return nullptr;
        for (Entry* entry = m_buckets[hash % m_buckets.size()]; entry != nullptr; entry = entry->next) {
            if (entry->hash == hash && entry->key == key) return entry;
        }
        return nullptr;
    }

    Entry& NextEntry() {
        const std::size_t place = m_count % m_blockSize;
        if (place == 0) m_blocks.push_back(std::make_unique<Entry[]>(m_blockSize));
        return m_blocks.back()[place];
    }

    /// Makes the buckets at the first insertion, and twice as many once there are as many entries as buckets.
    void Grow() {
        if (m_buckets.empty()) m_buckets.resize(m_firstBuckets);
        if (m_count < m_buckets.size()) return;
        std::vector<Entry*> wider(m_buckets.size() * 2 + 1);
        for (Entry* entry : m_buckets) {
            while (entry != nullptr) {
                Entry* const next = std::exchange(entry->next, wider[entry->hash % wider.size()]);
                wider[entry->hash % wider.size()] = entry;
                entry = next;
            }
        }
        m_buckets.swap(wider);
    }

    std::vector<Entry*> m_buckets;
    std::vector<std::unique_ptr<Entry[]>> m_blocks;
    std::size_t m_blockSize;
    std::size_t m_firstBuckets = 17;
    std::size_t m_count = 0;
};
