#pragma once

#include <cstdint>
#include <optional>

namespace zel::files {

/// Why a file has no description.
enum class NoDescription : std::uint8_t {
    kNone,
    /// It is shorter than its headers: 152 bytes of a message, 2184 of a font.
    kShort,
    /// It has another file_type.
    kOtherType,
};

/// A file's description, or the reason why it has none.
template <class File>
struct Description {
    std::optional<File> file{};
    NoDescription reason = NoDescription::kNone;
    /// The file's type, if the file has at least four bytes.
    std::uint32_t file_type = 0;

    explicit operator bool() const noexcept { return file.has_value(); }
    const File& operator*() const noexcept { return *file; }
    const File* operator->() const noexcept { return &*file; }
};

/// Sets an optional field only if it differs from what a writer computes.
template <class T, class Number>
void SetUnlessComputed(std::optional<T>& field, Number value, Number computed) {
    if (value != computed) field = static_cast<T>(value);
}

}  // namespace zel::files
