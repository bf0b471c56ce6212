#include "module/fontmap/read_name_list.h"

#include <algorithm>

#include "module/fontmap/format/text_lines.h"
#include "module/state/module_state.h"
#include "platform/framework/cfile.h"

namespace zel::fontmap {

std::shared_ptr<NameText> ReadNameList(const char* file_name, std::string& path) {
    path = std::string(g_szMapDir) + file_name;
    CFile file;
    if (!file.Open(path.c_str(), CFile::modeRead | CFile::shareDenyNone)) return nullptr;
    std::string bytes(static_cast<std::size_t>(std::min<ULONGLONG>(file.GetLength(), kMaxListSize)), '\0');
    bytes.resize(file.Read(bytes.data(), static_cast<UINT>(bytes.size())));
    ConvertToText(bytes);
    return std::make_shared<NameText>(std::move(bytes));
}

}  // namespace zel::fontmap
