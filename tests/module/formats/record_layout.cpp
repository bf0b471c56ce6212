#include "module/formats/record_layout.h"

#include <stdexcept>

#include <yaml-cpp/yaml.h>

namespace zel::formats_test {
namespace {

// Types b1 to b64 are bits; u1 to u8, s1 to s8 and whatever has a size of its own are whole bytes.
struct Width {
    std::size_t bits = 0;
    bool whole_bytes = true;
};

Width WidthOf(const YAML::Node& field) {
    if (field["if"]) throw std::runtime_error("the field isn't always there");
    std::size_t count = 1;
    if (const auto repeat = field["repeat"]) {
        if (repeat.as<std::string>() != "expr") throw std::runtime_error("the field has no fixed count");
        count = field["repeat-expr"].as<std::size_t>();
    }
    if (const auto size = field["size"]) return {8 * count * size.as<std::size_t>()};
    const auto type = field["type"].as<std::string>();
    const auto number = std::stoul(type.substr(1));
    if (type[0] == 'b') return {count * number, false};
    if (type[0] == 'u' || type[0] == 's') return {8 * count * number};
    throw std::runtime_error("type " + type + " has no fixed size");
}

}  // namespace

RecordLayout LayoutOf(const std::string& path, const std::string& type) {
    const auto seq = YAML::LoadFile(path)["types"][type]["seq"];
    if (!seq.IsSequence()) throw std::runtime_error(path + " has no type " + type);
    RecordLayout layout;
    for (const auto& field : seq) {
        const auto name = field["id"].as<std::string>();
        const Width width = WidthOf(field);
        if (width.whole_bytes && layout.bits % 8 != 0) throw std::runtime_error(name + " begins within a byte");
        layout.fields.push_back({name, layout.bits, width.bits});
        layout.bits += width.bits;
    }
    return layout;
}

}  // namespace zel::formats_test
