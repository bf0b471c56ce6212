#pragma once

#include "module/message/format/byte_source.h"

class CFile;

namespace zel::message {

/// A CFile as the source of a loader.
class CFileBytes final : public FileBytes {
  public:
    /// @param file  open for reading; must outlive the object. Reading moves its position.
    explicit CFileBytes(CFile& file) noexcept : m_file(file) {}

    std::uint64_t Size() const noexcept override;
    std::size_t Read(std::uint64_t offset, std::span<std::uint8_t> out) override;

  private:
    CFile& m_file;
};

}  // namespace zel::message
