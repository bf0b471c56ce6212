#include "host/fontkit/colour_sets.h"

#include <stdexcept>

#include "module/message/format/default_palette.h"
#include "module/message/format/message_loader.h"

namespace zel::fontkit {

namespace {

ColourSets SetsOf(const tag_palete& palette) {
    ColourSets sets;
    for (std::size_t set = 0; set < sets.size(); ++set) {
        for (std::size_t entry = 0; entry < sets[set].size(); ++entry) {
            const COLORREF colour = PackColour(palette.colour_sets[set][entry]);
            sets[set][entry] = {static_cast<std::uint8_t>(colour), static_cast<std::uint8_t>(colour >> 8),
                                static_cast<std::uint8_t>(colour >> 16)};
        }
    }
    return sets;
}

}  // namespace

ColourSets DefaultColourSets() {
    tag_palete palette{};
    message::FillDefaultPalette(palette);
    return SetsOf(palette);
}

ColourSets ColourSetsOfMessage(std::span<const std::uint8_t> message) {
    message::LoadedMessage loaded;
    const message::MessageOutcome outcome = message::LoadMessage(message, loaded);
    if (outcome == message::MessageOutcome::kRgbaFile) throw std::runtime_error("a picture has no colour sets");
    if (outcome != message::MessageOutcome::kRead || !loaded.palette)
        throw std::runtime_error("isn't a whole message, so its colour sets can't be used");
    return SetsOf(*loaded.palette);
}

std::string HexColour(font::RunColour colour) {
    constexpr char kDigits[] = "0123456789ABCDEF";
    std::string text = "#";
    for (const std::uint8_t sample : {colour.red, colour.green, colour.blue}) {
        text += kDigits[sample >> 4];
        text += kDigits[sample & 15];
    }
    return text;
}

}  // namespace zel::fontkit
