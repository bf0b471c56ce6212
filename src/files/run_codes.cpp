#include "files/run_codes.h"

#include <algorithm>
#include <stdexcept>

namespace zel::files {
namespace {

struct Pixel {
    std::uint8_t face = 0;
    std::uint8_t edge = 0;
    bool operator==(const Pixel&) const = default;
};

/// A run of a single colour: a colour run if it is solid, otherwise blended with the empty pixel.
std::uint32_t OneColourRun(unsigned colour, unsigned level, unsigned count) {
    return level == 255 ? ColourRun(colour, level, count) : BlendedRun(colour, level, count);
}

void EncodeRun(Pixel pixel, unsigned count, RunCodes& codes) {
    if (pixel.face == 0 && pixel.edge == 0) {
        codes.push_back(BackgroundRun(count));
    } else if (pixel.face == 255 || pixel.edge == 0) {
        codes.push_back(OneColourRun(kFaceIndex, pixel.face, count));
    } else if (pixel.face == 0) {
        codes.push_back(OneColourRun(kEdgeIndex, pixel.edge, count));
    } else {
        codes.push_back(pixel.edge == 255 ? Stay(kEdgeIndex, 255) : BlendedStay(kEdgeIndex, pixel.edge));
        codes.push_back(BlendedRun(kFaceIndex, pixel.face, 1));
    }
}

bool IsTwoColoured(Pixel pixel) {
    return pixel.edge != 0 && pixel.face != 0 && pixel.face != 255;
}

void EncodeLine(std::span<const Pixel> line, RunCodes& codes) {
    while (!line.empty() && line.back() == Pixel{}) line = line.first(line.size() - 1);
    while (!line.empty()) {
        const std::size_t longest = IsTwoColoured(line[0]) ? 1 : std::min<std::size_t>(line.size(), kLongestRun);
        std::size_t count = 1;
        while (count < longest && line[count] == line[0]) ++count;
        EncodeRun(line[0], static_cast<unsigned>(count), codes);
        line = line.subspan(count);
    }
    codes.push_back(EndOfLine());
}

RunCodes Encode(const Coverage& face, const Coverage* edge) {
    RunCodes codes;
    std::vector<Pixel> line(face.width);
    for (unsigned y = 0; y < face.height; ++y) {
        for (unsigned x = 0; x < face.width; ++x) {
            line[x] = {face.At(x, y), edge != nullptr ? edge->At(x, y) : std::uint8_t{0}};
        }
        EncodeLine(line, codes);
    }
    codes.push_back(EndOfGlyph());
    return codes;
}

}  // namespace

RunCodes EncodeFace(const Coverage& face) {
    return Encode(face, nullptr);
}

RunCodes EncodeFaceAndEdge(const Coverage& face, const Coverage& edge) {
    if (face.width != edge.width || face.height != edge.height) {
        throw std::invalid_argument("EncodeFaceAndEdge: face and edge differ in size");
    }
    return Encode(face, &edge);
}

Bytes RunCodeBytes(std::span<const std::uint32_t> codes) {
    ByteWriter out;
    for (const std::uint32_t code : codes) out.U32(code);
    return out.Written();
}

}  // namespace zel::files
