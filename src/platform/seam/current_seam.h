#pragma once

#include <utility>

namespace zel::seam {

/// The implementation of a seam that is in use: the one that was set, or else a default, which is created at its first
/// use and outlives every module.
template <class Seam>
class CurrentSeam {
  public:
    /// @param seam  kept alive by the caller; null for the default.
    /// @return the previous one, null if that was the default.
    Seam* Set(Seam* seam) noexcept { return std::exchange(m_current, seam); }

    /// @param make  creates the default.
    void SetDefault(Seam* (*make)()) noexcept { m_make = make; }

    Seam& Get() {
        if (m_current != nullptr) return *m_current;
        static Seam& created = *m_make();
        return created;
    }

  private:
    Seam* m_current = nullptr;
    Seam* (*m_make)() = nullptr;
};

}  // namespace zel::seam
