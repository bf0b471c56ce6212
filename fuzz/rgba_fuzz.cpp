// RGBA files: a picture of the size in the file, or a reason.
#include <string>

#include <sys/mman.h>
#include <unistd.h>

#include "fuzz_target.h"
#include "host/picture/rgba_file.h"

using namespace zel;

namespace {

/// A file gives the same result as its bytes.
void CheckFile(fuzz::Input bytes, const picture::RgbaPicture& read) {
    static const int file = ::memfd_create("rgba", MFD_CLOEXEC);
    fuzz::Require(::ftruncate(file, 0) == 0 && ::pwrite(file, bytes.data(), bytes.size(), 0) >= 0, "a file in memory");
    const picture::RgbaPicture again = picture::ReadRgbaFile("/proc/self/fd/" + std::to_string(file));
    fuzz::Require(again.error == read.error && again.picture.has_value() == read.picture.has_value(), "one outcome");
    fuzz::Require(!read.picture || again.picture->rgba == read.picture->rgba, "one picture");
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const picture::RgbaPicture read = picture::ConvertRgbaFile({data, size});
    CheckFile({data, size}, read);
    fuzz::Require(read.picture.has_value() == read.error.empty(), "a picture or a reason");
    if (!read.picture) return 0;
    const picture::Picture& picture = *read.picture;
    fuzz::Require(picture.width > 0 && picture.width <= picture::kLargestRgbaSide && picture.height > 0 &&
                      picture.height <= picture::kLargestRgbaSide,
                  "a size in range");
    fuzz::Require(picture.rgba.size() == picture::PixelBytes(picture.width, picture.height), "four bytes a pixel");
    fuzz::Require(picture.rgba.size() < size, "the pixels came from the file");
    return 0;
}
