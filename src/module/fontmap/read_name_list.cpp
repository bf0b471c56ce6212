#include "module/fontmap/read_name_list.h"

#include <algorithm>
#include <cstring>

#include "module/state/module_state.h"
#include "platform/framework/cfile.h"

namespace zel::fontmap {

namespace {

/// What lies behind so many bytes isn't read; real lists have a thousandth of it.
constexpr ULONGLONG kLongestList = 256 << 20;
constexpr char kEndOfText = 26;

/// As the system reads a text: CR LF is LF, and the byte 26 ends it.
void TurnIntoText(std::string& bytes) {
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
    std::string bytes(static_cast<std::size_t>(std::min(file.GetLength(), kLongestList)), '\0');
    bytes.resize(file.Read(bytes.data(), static_cast<UINT>(bytes.size())));
    TurnIntoText(bytes);
    return std::make_shared<NameText>(std::move(bytes));
}

}  // namespace zel::fontmap
