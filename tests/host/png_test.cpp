#include <cstring>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <png.h>

#include "host/picture/png_writer.h"
#include "samples/scratch_directory.h"

namespace zel::test {

namespace {

using testing::HasSubstr;
using testing::StartsWith;

picture::Picture Gradient(int height) {
    picture::Picture picture{4, height, std::vector<std::uint8_t>(static_cast<std::size_t>(height) * 16)};
    for (std::size_t n = 0; n < picture.rgba.size(); ++n) picture.rgba[n] = static_cast<std::uint8_t>(n * 7);
    return picture;
}

std::vector<std::uint8_t> ReadPixels(const std::filesystem::path& file) {
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    if (png_image_begin_read_from_file(&image, file.c_str()) == 0) return {};
    image.format = PNG_FORMAT_RGBA;
    std::vector<std::uint8_t> pixels(PNG_IMAGE_SIZE(image));
    png_image_finish_read(&image, nullptr, pixels.data(), 0, nullptr);
    return pixels;
}

class Png : public testing::Test {
  protected:
    std::string Written(int height) {
        picture::WritePng(m_file, Gradient(height));
        return samples_test::ReadAll(m_file);
    }
    samples_test::ScratchDirectory m_scratch;
    std::filesystem::path m_file = m_scratch.Path() / "picture.png";
};

TEST_F(Png, KeepsThePixels) {
    Written(486);
    EXPECT_EQ(ReadPixels(m_file), Gradient(486).rgba);
}

TEST_F(Png, HasThePixelAspectRatio) {
    // pHYs: pixels across and down for one length, no unit. A pixel of 10:11 fits 11 times across and 10 times
    // down.
    using namespace std::string_literals;
    EXPECT_THAT(Written(486), HasSubstr("\0\0\0\x09pHYs\0\0\0\x0B\0\0\0\x0A\0"s));
    EXPECT_THAT(Written(576), HasSubstr("\0\0\0\x09pHYs\0\0\0\x0B\0\0\0\x0C\0"s));
}

TEST_F(Png, LeavesNoFileWhenItCanNotBeWritten) {
    const std::filesystem::path nowhere = m_scratch.Path() / "none" / "picture.png";
    try {
        picture::WritePng(nowhere, Gradient(486));
        FAIL() << "no exception";
    } catch (const std::runtime_error& error) {
        EXPECT_THAT(error.what(), StartsWith(nowhere.string() + ": "));
        EXPECT_THAT(error.what(), HasSubstr("No such file"));
    }
    std::filesystem::create_directory(m_file);  // the name is taken by a directory
    EXPECT_THROW(picture::WritePng(m_file, Gradient(486)), std::runtime_error);
    EXPECT_FALSE(std::filesystem::exists(m_file.string() + ".part"));
}

}  // namespace

}  // namespace zel::test
