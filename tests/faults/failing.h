#pragma once

#include <cstddef>
#include <cstdint>

/// Lets calls of the system fail in turn: this program has allocation, open and read of its own, which the module and
/// the platform beneath it call.
namespace zel::failing {

enum class Call { kAllocation, kOpen, kRead };

/// From here to its end, the call number `nth` of a kind fails, counted from 0, or it and all that follow.
class Armed {
  public:
    Armed(Call call, std::uint64_t nth, bool from_then_on) noexcept;
    ~Armed();
    Armed(const Armed&) = delete;
    Armed& operator=(const Armed&) = delete;

    bool Fired() const noexcept;
    /// Number of calls of this kind since the construction.
    std::uint64_t Count() const noexcept;
};

/// What a test does itself fails never and isn't counted.
class Paused {
  public:
    Paused() noexcept;
    ~Paused();
    Paused(const Paused&) = delete;
    Paused& operator=(const Paused&) = delete;
};

/// Blocks of memory that are allocated now.
std::int64_t LiveBlocks() noexcept;
/// The largest single allocation since the last call, bytes.
std::size_t TakeLargestAllocation() noexcept;

}  // namespace zel::failing
