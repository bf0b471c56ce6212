#pragma once

#include <cstdint>

namespace zel::message {

/// Receives the position of each section while a loader reads a file, in file order. The inspector uses it to show
/// where a file is damaged.
class SectionObserver {
  public:
    /// @param name     the section's name as docs/formats.md has it; a string literal.
    /// @param offset   position of its first byte in the file.
    /// @param size     size in bytes that the section should have.
    /// @param present  number of these bytes that the file contains.
    virtual void OnSection(const char* name, std::uint64_t offset, std::uint64_t size, std::uint64_t present) = 0;

  protected:
    ~SectionObserver() = default;
};

}  // namespace zel::message
