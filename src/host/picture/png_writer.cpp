#include "host/picture/png_writer.h"

#include <stdexcept>

#include "base/whole_file.h"
#include "host/picture/fast_png.h"
#include "host/picture/small_png.h"

namespace zel::picture {

std::string EncodePng(const Picture& picture, PngForm form) {
    try {
        return form.effort == PngEffort::kSmall ? EncodeSmallPng(picture, form) : EncodeFastPng(picture, form);
    } catch (const std::runtime_error& error) {
        throw std::runtime_error(std::string("PNG encoding failed: ") + error.what());
    }
}

void WritePng(const std::filesystem::path& file, const Picture& picture, PngForm form) {
    std::string bytes;
    try {
        bytes = EncodePng(picture, form);
    } catch (const std::runtime_error& error) {
        throw std::runtime_error(file.string() + ": could not be written: " + error.what());
    }
    base::WriteWholeFile(file, bytes);
}

}  // namespace zel::picture
