#pragma once

#include <memory>
#include <new>
#include <type_traits>

#include "platform/framework/cobject.h"
#include "platform/framework/exceptions.h"
#include "platform/framework/position.h"

/// Hash of a key of a CMap. A program may specialise it for its own types.
template <class ARG_KEY>
inline UINT HashKey(ARG_KEY key) {
    if constexpr (std::is_pointer_v<ARG_KEY>) {
        return static_cast<UINT>(reinterpret_cast<UINT_PTR>(key) >> 4);
    } else {
        return static_cast<UINT>(key) >> 4;
    }
}
/// Hash of a text.
/// @param key  not null.
template <>
inline UINT HashKey<const char*>(const char* key) {
    UINT hash = 0;
    for (; *key != '\0'; ++key) hash = hash * 33 + static_cast<unsigned char>(*key);
    return hash;
}

/// Whether two keys are equal. A program may specialise it for its own types.
template <class TYPE, class ARG_TYPE>
inline BOOL CompareElements(const TYPE* first, const ARG_TYPE* second) {
    return *first == *second;
}

/// A hash map. KEY and VALUE are the types of its keys and values; ARG_KEY and ARG_VALUE are the types of arguments
/// that become keys and values. The number of buckets does not change while the map has associations. The order of
/// associations is unspecified. Functions that allocate throw CMemoryException. Not provided: pointers to associations.
template <class KEY, class ARG_KEY, class VALUE, class ARG_VALUE>
class CMap : public CObject {
  public:
    /// @param blockSize  ignored: each association is allocated separately.
    explicit CMap([[maybe_unused]] int blockSize = 10) {}
    ~CMap() override { DeleteAll(); }

    INT_PTR GetCount() const {
        Complete();
        return m_count;
    }
    INT_PTR GetSize() const { return GetCount(); }
    BOOL IsEmpty() const { return GetCount() == 0; }

    /// @return FALSE, and `value` unchanged, if there is no such key.
    BOOL Lookup(ARG_KEY key, VALUE& value) const {
        Complete();
        Association* const* const place = Find(key, HashKey<ARG_KEY>(key));
        if (place == nullptr) return FALSE;
        value = (*place)->value;
        return TRUE;
    }

    /// The value of a key, valid until the key is removed. A new key is added with a default value.
    VALUE& operator[](ARG_KEY key) {
        Complete();
        const UINT hash = HashKey<ARG_KEY>(key);
        if (Association* const* const place = Find(key, hash)) return (*place)->value;
        if (m_buckets == nullptr) MakeBuckets(m_bucketCount);
        Association*& first = m_buckets[hash % m_bucketCount];
        auto* const added = new (std::nothrow) Association{first, hash, KEY(key), VALUE()};
        if (added == nullptr) AfxThrowMemoryException();
        first = added;
        ++m_count;
        return added->value;
    }

    /// Sets the value of a key, which is added if it is new.
    void SetAt(ARG_KEY key, ARG_VALUE value) { (*this)[key] = value; }

    /// @return FALSE if there is no such key.
    BOOL RemoveKey(ARG_KEY key) {
        Complete();
        Association** const place = Find(key, HashKey<ARG_KEY>(key));
        if (place == nullptr) return FALSE;
        Association* const removed = *place;
        *place = removed->next;
        delete removed;
        --m_count;
        return TRUE;
    }

    /// Empties the map and frees its buckets.
    void RemoveAll() {
        m_incomplete = false;
        DeleteAll();
    }

    /// Sets the number of buckets of an empty map, 17 by default. Ignored for 0 and for a map with associations.
    /// @param allocNow  FALSE: the buckets are allocated with the first association.
    void InitHashTable(UINT hashSize, BOOL allocNow = TRUE) {
        if (hashSize == 0 || !IsEmpty()) return;
        m_buckets.reset();
        m_bucketCount = hashSize;
        if (allocNow) MakeBuckets(hashSize);
    }
    UINT GetHashTableSize() const noexcept { return m_bucketCount; }

    /// Begins a walk over all associations. Null for an empty map.
    POSITION GetStartPosition() const { return IsEmpty() ? nullptr : BeforeStart(); }

    /// Copies the next association of a walk and advances the position, which is null after the last association. The
    /// key may then be removed; other changes of the map end the walk.
    /// @param position  not null.
    void GetNextAssoc(POSITION& position, KEY& key, VALUE& value) const {
        const Association* const current =
            position == BeforeStart() ? FirstFrom(0) : reinterpret_cast<const Association*>(position);
        if (current == nullptr) return;
        const Association* const next =
            current->next != nullptr ? current->next : FirstFrom(current->hash % m_bucketCount + 1);
        position = ToPosition(next);
        key = current->key;
        value = current->value;
    }

  protected:
    /// Marks the associations of an empty map as incomplete: a derived class has more, which it looks up itself. Any
    /// member of this class calls AddDeferred first.
    void Defer() noexcept { m_incomplete = true; }
    bool IsDeferred() const noexcept { return m_incomplete; }
    void Complete() const {
        if (m_incomplete) const_cast<CMap*>(this)->CompleteNow();
    }
    /// Adds the derived class's associations by SetAt. After an exception the map is empty and marked again.
    virtual void AddDeferred() {}

  private:
    struct Association {
        Association* next;
        UINT hash;
        KEY key;
        VALUE value;
    };

    static POSITION ToPosition(const void* pointer) noexcept {
        return reinterpret_cast<POSITION>(const_cast<void*>(pointer));
    }
    /// The address of the map is that of no association.
    POSITION BeforeStart() const noexcept { return ToPosition(this); }

    const Association* FirstFrom(UINT bucket) const noexcept {
        while (m_buckets != nullptr && bucket < m_bucketCount && m_buckets[bucket] == nullptr) ++bucket;
        return m_buckets != nullptr && bucket < m_bucketCount ? m_buckets[bucket] : nullptr;
    }

    /// The pointer in its bucket's list to the association of a key; null for none.
    Association** Find(ARG_KEY key, UINT hash) const {
        if (m_buckets == nullptr) return nullptr;
        Association** place = &m_buckets[hash % m_bucketCount];
        while (*place != nullptr && ((*place)->hash != hash || !CompareElements(&(*place)->key, &key)))
            place = &(*place)->next;
        return *place != nullptr ? place : nullptr;
    }

    void MakeBuckets(UINT count) {
        m_buckets.reset(new (std::nothrow) Association*[count]());
        if (m_buckets == nullptr) AfxThrowMemoryException();
    }

    void CompleteNow() {
        m_incomplete = false;
        try {
            AddDeferred();
        } catch (...) {
            DeleteAll();
            m_incomplete = true;
            throw;
        }
    }

    void DeleteAll() noexcept {
        for (UINT bucket = 0; m_buckets != nullptr && bucket < m_bucketCount; ++bucket) {
            while (Association* const first = m_buckets[bucket]) {
                m_buckets[bucket] = first->next;
                delete first;
            }
        }
        m_buckets.reset();
        m_count = 0;
    }

    /// Null until the first association. Each is the head of a list.
    std::unique_ptr<Association*[]> m_buckets;
    UINT m_bucketCount = 17;
    INT_PTR m_count = 0;
    bool m_incomplete = false;
};
