#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "files/byte_writer.h"
#include "host/document/json_line.h"

/// Each record of a file has one list of its keys: a function that takes a KeyWriter and a const record, or a KeyReader
/// and a record. Both classes have the same members, so that what is written can be read.
///
/// | call      | value                                                     | written              | missing when read |
/// |-----------|-----------------------------------------------------------|----------------------|--------------------|
/// | Required  | a number, 0 to `most`                                     | always               | a fault | | Number
/// | likewise                                                  | always               | the fallback       | | Rare |
/// likewise                                                  | unless the fallback  | the fallback       | | Signed | a
/// signed word                                             | always               | 0                  | | Optional  |
/// a number that need not be there                           | if there             | none               | | Flag | a
/// boolean                                                 | unless the fallback  | the fallback       | | Text      |
/// a text field of `width` bytes; what follows its first zero | if there             | empty              | | | is a
/// key of its own, which ends in "_rest"                |                      |                    | | Numbers   | an
/// array of numbers                                       | unless all zero      | zeros              | | Bytes     |
/// bytes, see PassedOver                                     | unless empty         | empty              | | Object |
/// further keys                                              | always               | their fallbacks    | | Part | an
/// optional record                                        | if there             | none               | | List      |
/// records                                                   | always               | empty              |
namespace zel::filejson {

/// Whether nothing reads some bytes. Such bytes may be left out of a document.
enum class PassedOver { kNo, kYes };

class KeyWriter {
  public:
    static constexpr bool kReads = false;

    /// @param json   has an open object.
    /// @param exact  keep all bytes.
    KeyWriter(document::JsonLine& json, bool exact) noexcept : m_json(json), m_exact(exact) {}

    template <class T>
    void Required(std::string_view key, const T& value, std::uint64_t) {
        m_json.Number(key, +value);
    }
    template <class T>
    void Number(std::string_view key, const T& value, std::uint64_t, std::uint64_t = 0) {
        m_json.Number(key, +value);
    }
    template <class T>
    void Rare(std::string_view key, const T& value, std::uint64_t, std::uint64_t fallback = 0) {
        if (value != fallback) m_json.Number(key, +value);
    }
    void Signed(std::string_view key, int value) { m_json.Number(key, value); }
    template <class T>
    void Optional(std::string_view key, const std::optional<T>& value, std::int64_t, std::uint64_t) {
        if (value) m_json.Number(key, +*value);
    }
    void Flag(std::string_view key, bool value, bool fallback = false) {
        if (value != fallback) m_json.Key(key).Bool(value);
    }
    void Text(std::string_view key, const std::string& field, std::size_t width);
    template <class T, std::size_t N>
    void Numbers(std::string_view key, const std::array<T, N>& values) {
        if (std::ranges::all_of(values, [](T value) { return value == 0; })) return;
        m_json.Key(key).Open('[');
        for (const T value : values) m_json.Number(+value);
        m_json.Close(']');
    }
    void Bytes(std::string_view key, const files::Bytes& bytes, PassedOver passed_over = PassedOver::kNo);

    template <class Keys>
    void Object(std::string_view key, const Keys& keys) {
        m_json.Key(key).Open('{');
        keys(*this);
        m_json.Close('}');
    }
    template <class Record, class Keys>
    void Part(std::string_view key, const std::optional<Record>& record, const Keys& keys) {
        if (record) Object(key, [&](KeyWriter& io) { keys(io, *record); });
    }
    template <class Record, class Keys>
    void List(std::string_view key, const std::vector<Record>& records, std::size_t, const Keys& keys) {
        m_json.Key(key).Open('[');
        for (std::size_t n = 0; n < records.size(); ++n) {
            m_json.Open('{');
            keys(*this, records[n], n, records.size());
            m_json.Close('}');
        }
        m_json.Close(']');
    }

    document::JsonLine& Json() noexcept { return m_json; }
    /// Bytes that were left out so far.
    std::uint64_t LeftOut() const noexcept { return m_left_out; }

  private:
    document::JsonLine& m_json;
    bool m_exact;
    /// Bytes passed over that are kept.
    std::size_t m_kept = 0;
    std::uint64_t m_left_out = 0;
};

}  // namespace zel::filejson
