#pragma once

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/framework/cmap.h"
#include "platform/framework/cstring.h"
#include "platform/system/types.h"

namespace zel {

// The maps from fonts to typefaces. A name list has thousands of names, of which an import looks up a few. So an entry
// stores the positions of its parts in the text of the list, and a look-up composes the name. Any other use of a map
// adds its entries to the framework's map first.

/// A part of a NameText.
struct TextSlice {
    std::uint32_t begin = 0;
    std::uint16_t size = 0;
};

/// A name that is in the text as it is, or that is composed of parts.
struct NameParts {
    enum class Form : std::uint8_t {
        /// `first`
        kWhole,
        /// "%s BT"
        kPlain,
        /// "%s %s BT"
        kStyled,
    };
    NameParts() = default;
    NameParts(Form name_form, TextSlice first, TextSlice second = {}) noexcept
        : first_begin(first.begin),
          second_begin(second.begin),
          first_size(first.size),
          second_size(second.size),
          form(name_form) {}
    TextSlice First() const noexcept { return {first_begin, first_size}; }
    TextSlice Second() const noexcept { return {second_begin, second_size}; }

    // Not two TextSlices, whose padding would make the many entries of a list larger.
    std::uint32_t first_begin = 0, second_begin = 0;
    std::uint16_t first_size = 0, second_size = 0;
    Form form = Form::kWhole;
};

/// The text of a list.
class NameText {
  public:
    /// @param list  less than 4 GiB.
    explicit NameText(std::string list = {}) noexcept : m_text(std::move(list)) {}

    std::string_view List() const noexcept { return m_text; }
    std::string_view Of(TextSlice slice) const noexcept { return {m_text.data() + slice.begin, slice.size}; }

    /// @param part  a part of a line of List.
    TextSlice SliceOf(std::string_view part) const noexcept {
        if (part.empty()) return {};
        return {static_cast<std::uint32_t>(part.data() - m_text.data()), static_cast<std::uint16_t>(part.size())};
    }

    CString Compose(const NameParts& parts) const {
        std::string name(Of(parts.First()));
        if (parts.form == NameParts::Form::kStyled) (name += ' ') += Of(parts.Second());
        if (parts.form != NameParts::Form::kWhole) name += " BT";
        return ToCString(name);
    }

    static CString ToCString(std::string_view text) { return {text.data(), static_cast<int>(text.size())}; }

  private:
    std::string m_text;
};

/// From Bitstream numbers to names.
class NumberedNames : public CMap<WORD, WORD, CString, const char*> {
  public:
    using Map = CMap<WORD, WORD, CString, const char*>;
    using Map::Map;

    BOOL Lookup(WORD key, CString& value) const {
        if (!IsDeferred()) return Map::Lookup(key, value);
        if (key >= m_places.size() || m_places[key] == 0) return FALSE;
        value = m_text->Compose(m_names[m_places[key] - 1]);
        return TRUE;
    }
    INT_PTR GetCount() const { return IsDeferred() ? static_cast<INT_PTR>(m_names.size()) : Map::GetCount(); }
    BOOL IsEmpty() const { return GetCount() == 0; }

    /// Names added from now on are parts of this text.
    /// @param entries  expected number of entries.
    void UseText(std::shared_ptr<const NameText> text, std::size_t entries) {
        if (IsEmpty()) {
            RemoveAll();
            Clear();
            m_names.reserve(std::min(entries, kUsualKeys));
            Defer();
        } else {
            Complete();
        }
        m_text = std::move(text);
    }
    void Add(WORD key, const NameParts& name) {
        if (!IsDeferred()) return SetAt(key, m_text->Compose(name));
        if (key >= m_places.size()) m_places.resize(key < kUsualKeys ? kUsualKeys : std::size_t{key} + 1);
        if (m_places[key] == 0) {
            m_names.push_back(name);
            m_places[key] = static_cast<std::uint32_t>(m_names.size());
        } else {
            m_names[m_places[key] - 1] = name;
        }
    }

  protected:
    void AddDeferred() override {
        InitHashTable(static_cast<UINT>(std::max<std::size_t>(m_names.size(), GetHashTableSize())));
        for (std::size_t key = 0; key < m_places.size(); ++key) {
            if (m_places[key] != 0) SetAt(static_cast<WORD>(key), m_text->Compose(m_names[m_places[key] - 1]));
        }
        Clear();
    }

  private:
    // A number in a list has four digits.
    static constexpr std::size_t kUsualKeys = 10000;

    void Clear() noexcept {
        m_names = {};
        m_places = {};
    }

    std::shared_ptr<const NameText> m_text;
    std::vector<NameParts> m_names;
    // By number: its place among the names, from 1; 0 for none.
    std::vector<std::uint32_t> m_places;
};

/// From names to names. Keys are compared exactly. Until it is completed, an open-addressed hash table: it is filled
/// for each dialog, which takes a fifth of the time of std::unordered_map with a node for each name, or a tenth if that
/// copies its keys (bench/name_lists.cpp).
class NamedNames : public CMap<CString, const char*, CString, const char*> {
  public:
    using Map = CMap<CString, const char*, CString, const char*>;
    using Map::Map;

    BOOL Lookup(const char* key, CString& value) const {
        if (!IsDeferred()) return Map::Lookup(key, value);
        const std::uint32_t place = m_slots[Find(key)];
        if (place == 0) return FALSE;
        value = m_text->Compose(m_entries[place - 1].name);
        return TRUE;
    }
    INT_PTR GetCount() const { return IsDeferred() ? static_cast<INT_PTR>(m_entries.size()) : Map::GetCount(); }
    BOOL IsEmpty() const { return GetCount() == 0; }

    /// Keys and names added from now on are parts of this text.
    /// @param entries  expected number of entries.
    void UseText(std::shared_ptr<const NameText> text, std::size_t entries) {
        if (IsEmpty()) {
            RemoveAll();
            Clear();
            m_entries.reserve(entries);
            MakeSlots(entries);
            Defer();
        } else {
            Complete();
        }
        m_text = std::move(text);
    }

    /// What Add does with a key that the map has already.
    enum class IfPresent { kReplace, kKeep };
    void Add(TextSlice key, const NameParts& name, IfPresent if_present) {
        if (!IsDeferred()) return AddCompleted(NameText::ToCString(m_text->Of(key)), name, if_present);
        if (m_entries.size() >= m_capacity) MakeSlots(m_entries.size() * 2);
        std::uint32_t& place = m_slots[Find(m_text->Of(key))];
        if (place == 0) {
            m_entries.push_back({key, name});
            place = static_cast<std::uint32_t>(m_entries.size());
        } else if (if_present == IfPresent::kReplace) {
            m_entries[place - 1].name = name;
        }
    }

  protected:
    void AddDeferred() override {
        InitHashTable(static_cast<UINT>(std::max<std::size_t>(m_entries.size(), GetHashTableSize())));
        for (const Entry& entry : m_entries)
            SetAt(NameText::ToCString(m_text->Of(entry.key)), m_text->Compose(entry.name));
        Clear();
    }

  private:
    struct Entry {
        TextSlice key;
        NameParts name;
    };

    void AddCompleted(const CString& key, const NameParts& name, IfPresent if_present) {
        CString present;
        if (if_present == IfPresent::kReplace || !Map::Lookup(key, present)) SetAt(key, m_text->Compose(name));
    }

    void Clear() noexcept {
        m_entries = {};
        m_slots = {};
    }

    static std::uint64_t WordAt(const char* text) noexcept {
        std::uint64_t word = 0;
        std::memcpy(&word, text, sizeof word);
        return word;
    }

    /// Reads 16 characters at a time; the last 16 may overlap those before, and so do the two halves of a short text.
    static std::uint32_t HashOf(std::string_view text) noexcept {
        constexpr std::uint64_t kFactor = 0x9E3779B97F4A7C15U;  // 2 to the 64 divided by the golden ratio
        constexpr std::uint64_t kOther = 0xC2B2AE3D27D4EB4FU;   // odd, and not close to it
        constexpr std::size_t kWord = sizeof(std::uint64_t);
        std::uint64_t hash = text.size();
        const auto mix = [&hash](std::uint64_t first, std::uint64_t second) {
            hash = (hash ^ first) * kFactor + second * kOther;
            hash ^= hash >> 32;
        };
        if (text.size() >= 2 * kWord) {
            const char* const last = text.data() + text.size() - kWord;
            for (const char* at = text.data(); at + kWord < last; at += 2 * kWord) mix(WordAt(at), WordAt(at + kWord));
            mix(WordAt(last - kWord), WordAt(last));
        } else if (text.size() >= kWord) {
            mix(WordAt(text.data()), WordAt(text.data() + text.size() - kWord));
        } else {
            std::uint64_t word = 0;
            for (const char c : text) word = word << 8 | static_cast<unsigned char>(c);
            mix(word, 0);
        }
        return static_cast<std::uint32_t>(hash * kFactor >> 32);
    }

    /// Slot of a key, or the empty slot for it. To be called only while the map is deferred: half of its slots are
    /// empty.
    std::size_t Find(std::string_view key) const noexcept {
        std::size_t at = HashOf(key) & m_mask;
        while (m_slots[at] != 0 && m_text->Of(m_entries[m_slots[at] - 1].key) != key) at = (at + 1) & m_mask;
        return at;
    }

    void MakeSlots(std::size_t entries) {
        const std::size_t capacity = std::bit_ceil(std::max<std::size_t>(entries, 8));
        m_slots = std::vector<std::uint32_t>(capacity * 2);
        m_capacity = capacity;
        m_mask = capacity * 2 - 1;
        for (std::uint32_t place = 1; place <= m_entries.size(); ++place)
            m_slots[Find(m_text->Of(m_entries[place - 1].key))] = place;
    }

    std::shared_ptr<const NameText> m_text;
    std::vector<Entry> m_entries;
    // By hash: the place of the entry, from 1; 0 for none.
    std::vector<std::uint32_t> m_slots;
    // Number of slots, a power of 2, less 1.
    std::size_t m_mask = 0;
    // Entries that the slots have room for.
    std::size_t m_capacity = 0;
};

}  // namespace zel
