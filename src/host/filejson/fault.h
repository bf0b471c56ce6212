#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace zel::filejson {

/// Something in a document that prevents its file from being written.
struct Fault {
    /// JSON pointer, such as "/file/rows/3/characters/7/x".
    std::string place;
    /// What is wrong, such as "1024 is above 1023".
    std::string rule;
};

/// The faults of a document, in the order in which they are found. The first ones are kept, all are counted.
class Faults {
  public:
    static constexpr std::size_t kMostKept = 10000;

    void Add(std::string place, std::string rule) {
        ++m_count;
        if (m_kept.size() < kMostKept) m_kept.push_back({std::move(place), std::move(rule)});
    }
    void Append(const Faults& more) {
        for (const Fault& fault : more.m_kept) Add(fault.place, fault.rule);
        m_count += more.m_count - more.m_kept.size();
    }
    const std::vector<Fault>& Kept() const noexcept { return m_kept; }
    std::uint64_t Count() const noexcept { return m_count; }
    bool IsEmpty() const noexcept { return m_count == 0; }

  private:
    std::vector<Fault> m_kept;
    std::uint64_t m_count = 0;
};

/// The place of a value in a document: a key or an index in another place. Its pointer is made when a fault needs it.
class Place {
  public:
    /// The document itself.
    Place() noexcept = default;
    /// @param parent, key  must outlive this object.
    Place(const Place& parent, std::string_view key) noexcept : m_parent(&parent), m_key(key) {}
    Place(const Place& parent, std::size_t index) noexcept : m_parent(&parent), m_index(index) {}

    std::string Pointer() const;

  private:
    const Place* m_parent = nullptr;
    std::string_view m_key{};
    std::size_t m_index = 0;
};

/// A key as a part of a JSON pointer, with the escapes that it needs.
std::string PointerKey(std::string_view key);

}  // namespace zel::filejson
