#pragma once

#include <array>
#include <cstdint>
#include <deque>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <nlohmann/json.hpp>

#include "files/byte_writer.h"
#include "host/filejson/fault.h"
#include "host/filejson/key_writer.h"

namespace zel::filejson {

using Json = nlohmann::ordered_json;

/// What all readers of one document share.
struct ReadingState {
    Faults faults{};
    /// Bytes that the document may still give.
    std::uint64_t bytes_left;
};

/// Reads the keys of one object, see key_writer.h. Every fault is reported; its value then has its fallback.
class KeyReader {
  public:
    static constexpr bool kReads = true;

    /// @param json, place, state  must outlive this object. A value that is no object is a fault, and has no keys.
    KeyReader(const Json& json, const Place& place, ReadingState& state);

    template <class T>
    void Required(std::string_view key, T& value, std::uint64_t most) {
        if (const Json* json = Find(key)) {
            value = static_cast<T>(NumberOf(*json, key, 0, most));
        } else if (HasObject()) {
            AddFault(key, "is missing");
        }
    }
    template <class T>
    void Number(std::string_view key, T& value, std::uint64_t most, std::uint64_t fallback = 0) {
        const Json* json = Find(key);
        value = static_cast<T>(json != nullptr ? NumberOf(*json, key, 0, most) : static_cast<std::int64_t>(fallback));
    }
    template <class T>
    void Rare(std::string_view key, T& value, std::uint64_t most, std::uint64_t fallback = 0) {
        Number(key, value, most, fallback);
    }
    void Signed(std::string_view key, int& value) {
        const Json* json = Find(key);
        value = json != nullptr ? static_cast<int>(NumberOf(*json, key, kLeastWord, kMostWord)) : 0;
    }
    template <class T>
    void Optional(std::string_view key, std::optional<T>& value, std::int64_t least, std::uint64_t most) {
        if (const Json* json = Find(key)) value = static_cast<T>(NumberOf(*json, key, least, most));
    }
    void Flag(std::string_view key, bool& value, bool fallback = false);
    void Text(std::string_view key, std::string& field, std::size_t width);
    template <class T, std::size_t N>
    void Numbers(std::string_view key, std::array<T, N>& values) {
        const Json* json = Find(key);
        if (json == nullptr) return;
        if (!json->is_array() || json->size() != N) {
            AddFault(key, "must be an array of " + std::to_string(N) + " numbers");
            return;
        }
        const Place place(m_place, key);
        for (std::size_t n = 0; n < N; ++n) {
            values[n] = static_cast<T>(NumberAt((*json)[n], Place(place, n), 0, std::numeric_limits<T>::max()));
        }
    }
    void Bytes(std::string_view key, files::Bytes& bytes, PassedOver = PassedOver::kNo);

    template <class Keys>
    void Object(std::string_view key, const Keys& keys) {
        const Json* json = Find(key);
        if (json == nullptr) return;
        const Place place(m_place, key);
        KeyReader reader(*json, place, m_state);
        keys(reader);
        reader.Finish();
    }
    template <class Record, class Keys>
    void Part(std::string_view key, std::optional<Record>& record, const Keys& keys) {
        if (Find(key) != nullptr) Object(key, [&](KeyReader& io) { keys(io, record.emplace()); });
    }
    template <class Record, class Keys>
    void List(std::string_view key, std::vector<Record>& records, std::size_t most, const Keys& keys) {
        const Json* json = FindList(key, most);
        if (json == nullptr) return;
        const Place place(m_place, key);
        const std::size_t count = std::min(json->size(), most);
        for (std::size_t n = 0; n < count; ++n) {
            const Place at(place, n);
            KeyReader reader((*json)[n], at, m_state);
            keys(reader, records.emplace_back(), n, count);
            reader.Finish();
        }
    }

    /// The value of a key, which is then known; null if the object doesn't have it.
    const Json* Find(std::string_view key);
    /// The array of a key, reported if it is none or has more than `most` elements; null if there is none.
    const Json* FindList(std::string_view key, std::size_t most);
    /// The text of a key; empty if it is missing or, which is reported, no text.
    std::optional<std::string> FindText(std::string_view key);
    /// The Latin-1 of a text; empty, and reported, if it has other characters.
    std::optional<std::string> Latin1(std::string_view key, const std::string& text);
    /// The number of a value, reported if it is none or out of range.
    std::int64_t NumberAt(const Json& json, const Place& place, std::int64_t least, std::uint64_t most);

    void AddFault(std::string_view key, std::string rule) {
        m_state.faults.Add(Place(m_place, key).Pointer(), std::move(rule));
    }
    /// A fault of the object itself.
    void AddFault(std::string rule) { m_state.faults.Add(m_place.Pointer(), std::move(rule)); }
    const Place& Where() const noexcept { return m_place; }
    ReadingState& State() noexcept { return m_state; }
    bool HasObject() const noexcept { return m_json.is_object(); }

    /// Reports the keys that nothing has read.
    void Finish();

  private:
    static constexpr std::int64_t kLeastWord = -32768, kMostWord = 32767;

    std::int64_t NumberOf(const Json& json, std::string_view key, std::int64_t least, std::uint64_t most) {
        return NumberAt(json, Place(m_place, key), least, most);
    }
    bool TakeBytes(std::uint64_t size, std::string_view key);

    const Json& m_json;
    const Place& m_place;
    ReadingState& m_state;
    std::vector<std::string_view> m_known;
    /// Of the texts that were read; the views above refer to them.
    std::deque<std::string> m_rest_keys;
};

}  // namespace zel::filejson
