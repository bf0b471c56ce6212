#pragma once

#include <cstdint>

namespace zel::message {

/// Hears of each section of a file as it is read, in file order; what shows a person where a file is broken. Readers
/// take a pointer to one that may be null.
class SectionObserver {
  public:
    /// @param name     the section's name in the format's own words.
    /// @param offset   of its first byte in the file.
    /// @param size     bytes that the section should have.
    /// @param present  bytes of them that the file has.
    virtual void OnSection(const char* name, std::uint64_t offset, std::uint64_t size, std::uint64_t present) = 0;

  protected:
    ~SectionObserver() = default;
};

}  // namespace zel::message
