#pragma once

#include <string>

#include "diskcopy/folder.h"

namespace zel::diskcopy {

/// A file that is being written in a folder, under a name that it gives up for its own once all of it is on the disk.
/// Without that it is removed. Private to the platform.
class Draft {
  public:
    /// One that a killed program has left behind is removed first.
    explicit Draft(const Folder& folder);
    ~Draft();
    Draft(const Draft&) = delete;
    Draft& operator=(const Draft&) = delete;

    /// Each returns false with errno set.
    bool IsOpen() const noexcept { return m_file.IsOpen(); }
    bool Write(const char* bytes, std::size_t size) noexcept;
    /// Puts the file into its place, instead of one that may be there.
    bool Commit(const std::string& name) noexcept;

    /// Gives it the times of another file, as far as that can be done.
    void TakeTimes(int descriptor) noexcept;

    static constexpr char kName[] = "zelcopy.part";

  private:
    const Folder& m_folder;
    Descriptor m_file;
    bool m_made = false;
};

}  // namespace zel::diskcopy
