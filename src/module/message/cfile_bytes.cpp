#include "module/message/cfile_bytes.h"

#include "platform/framework/cfile.h"

namespace zel::message {

std::uint64_t CFileBytes::Size() const noexcept {
    return m_file.GetLength();
}

std::size_t CFileBytes::Read(std::uint64_t offset, std::span<std::uint8_t> out) {
    m_file.Seek(static_cast<LONGLONG>(offset), CFile::begin);
    return m_file.Read(out.data(), static_cast<UINT>(out.size()));
}

}  // namespace zel::message
