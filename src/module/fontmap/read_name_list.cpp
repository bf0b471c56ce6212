#include "module/fontmap/read_name_list.h"

#include <algorithm>
#include <cstring>

#include "module/state/module_state.h"
#include "platform/framework/cfile.h"

namespace zel::fontmap {

namespace {

/// The rest of a longer list is ignored. A list of 10,000 lines has less than a MiB.
constexpr ULONGLONG kMaxListSize = 4 << 20;
constexpr char kEndOfText = 26;

/// Converts the bytes of a file to text as the module's home system does: CR LF becomes LF, and byte 26 ends the text.
void ConvertToText(std::string& bytes) {
    bytes.resize(std::min(bytes.find(kEndOfText), bytes.size()));
    char* const end = bytes.data() + bytes.size();
    char* out = static_cast<char*>(std::memchr(bytes.data(), '\r', bytes.size()));
    if (out == nullptr) return;
    for (const char* in = out; in != end; ++in) {
        if (*in != '\r' || in + 1 == end || in[1] != '\n') *out++ = *in;
    }
    bytes.resize(static_cast<std::size_t>(out - bytes.data()));
}

}  // namespace

std::shared_ptr<NameText> ReadNameList(const char* file_name, std::string& path) {
    path = std::string(g_szMapDir) + file_name;
    CFile file;
    if (!file.Open(path.c_str(), CFile::modeRead | CFile::shareDenyNone)) return nullptr;
    std::string bytes(static_cast<std::size_t>(std::min(file.GetLength(), kMaxListSize)), '\0');
    bytes.resize(file.Read(bytes.data(), static_cast<UINT>(bytes.size())));
    ConvertToText(bytes);
    return std::make_shared<NameText>(std::move(bytes));
}

}  // namespace zel::fontmap
