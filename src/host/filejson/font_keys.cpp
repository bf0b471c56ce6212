#include "host/filejson/font_keys.h"

namespace zel::filejson {

void EncodingPartKeys(KeyWriter& io, const EncodingPart& part) {
    if (!part.code) {
        io.Bytes("bytes", part.bytes, PassedOver::kYes);
        return;
    }
    CodeKeys(io, *part.code);
    io.Flag("faulty", !part.IsWhole());
    io.Json().Key("lines").Open('[');
    for (const std::string& line : LinesOfCodes(part.codes)) io.Json().Bytes(line);
    io.Json().Close(']');
}

void EncodingPartKeys(KeyReader& io, EncodingPart& part) {
    io.Bytes("bytes", part.bytes);
    if (!io.HasObject() || !part.bytes.empty() || io.Find("bytes") != nullptr) return;
    CodeKeys(io, part.code.emplace(), kLastCharCode);
    bool faulty = false;
    io.Flag("faulty", faulty);
    const Json* lines = io.FindList("lines", kLargestFile);
    if (lines == nullptr) return;
    const Place place(io.Where(), "lines");
    bool is_sound = true;
    for (std::size_t n = 0; n < lines->size(); ++n) {
        const Json& line = (*lines)[n];
        const auto fault = [&](const std::string& rule) {
            io.State().faults.Add(Place(place, n).Pointer(), rule);
            is_sound = false;
        };
        if (!line.is_string()) {
            fault("is not a text");
            continue;
        }
        const std::string_view wrong = AppendCodes(line.get_ref<const std::string&>(), part.codes);
        if (!wrong.empty()) fault('"' + std::string(wrong.substr(0, 40)) + "\" is no run code");
    }
    if (is_sound && !faulty && !part.IsWhole()) {
        io.AddFault("lines", "the glyph must end with \".\", and nothing may follow it");
    }
}

}  // namespace zel::filejson
