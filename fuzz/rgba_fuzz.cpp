// RGBA files: a picture of the size that the file tells, or a reason.
#include "fuzz_target.h"
#include "host/rgba_file.h"

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const RgbaPicture read = ConvertRgbaFile({data, size});
    fuzz::Require(read.picture.has_value() == read.trouble.empty(), "a picture or a reason");
    if (!read.picture) return 0;
    const Picture& picture = *read.picture;
    fuzz::Require(picture.width > 0 && picture.width <= kLargestRgbaSide && picture.height > 0 &&
                      picture.height <= kLargestRgbaSide,
                  "a size in range");
    fuzz::Require(
        picture.rgba.size() == static_cast<std::size_t>(picture.width) * static_cast<std::size_t>(picture.height) * 4,
        "four bytes a pixel");
    fuzz::Require(picture.rgba.size() < size, "the pixels came from the file");
    return 0;
}
