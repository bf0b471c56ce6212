// The list of typefaces: line by line, and through the module's map.
#include <map>
#include <string>

#include "module/fontmap/format/name_lists.h"
#include "module/fontmap/format/text_lines.h"
#include "module_environment.h"
#include "samples/name_lists.h"

using namespace zel;

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const fuzz::ModuleEnvironment environment;
    const std::string text = fuzz::AsText({data, size});
    std::map<std::string, std::string, std::less<>> entries;
    fontmap::TextLines lines(text);
    lines.SkipHeadings();
    while (const auto line = lines.Next()) {
        const auto entry = fontmap::ReadTypefaceLine(*line);
        if (entry) entries[std::string(entry->bitstream_name)] = entry->typeface;
    }
    environment.Put(samples::kTypefaceListName, {data, size});
    CZelTransDlg dialog(nullptr);
    fuzz::Require(dialog.MapTypeFace(), "the list is read");
    for (const auto& [name, typeface] : entries) {
        CString mapped;
        fuzz::Require(dialog.m_mapTypeFace.Lookup(name.c_str(), mapped) && mapped == typeface.c_str(),
                      "the last entry counts");
    }
    return 0;
}
