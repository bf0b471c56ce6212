// The list of Bitstream fonts: line by line, and through the module's maps.
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
    std::map<std::uint16_t, std::string> entries;
    fontmap::TextLines lines(text);
    lines.SkipHeadings();
    fontmap::BitstreamLineReader reader;
    fontmap::BitstreamEntry entry;
    while (const auto line = lines.Next()) {
        fuzz::Require(line->size() <= fontmap::TextLines::kMaxLine, "a line's length");
        if (!reader.Read(*line, entry)) continue;
        fuzz::Require(entry.number <= 9999, "a number");
        std::string& name = entries[entry.number];
        name = entry.indented ? std::string(entry.family) + " " : std::string();
        name.append(entry.name).append(" BT");
    }
    environment.Put(samples::kBitstreamListName, {data, size});
    CZelTransDlg dialog(nullptr);
    fuzz::Require(dialog.MapBitStreamFont(), "the list is read");
    fuzz::Require(dialog.m_mapBitStreamId.GetCount() == static_cast<INT_PTR>(entries.size()),
                  "one entry for each number");
    for (const auto& [number, name] : entries) {
        CString mapped;
        fuzz::Require(dialog.m_mapBitStreamId.Lookup(number, mapped) && mapped == name.c_str(),
                      "the last entry counts");
    }
    return 0;
}
