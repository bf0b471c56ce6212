#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/sha256.h"
#include "base/whole_file.h"
#include "host/picture/png_reader.h"
#include "host/picture/png_writer.h"
#include "samples/scratch_directory.h"

namespace zel::test {

namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::StartsWith;
using testing::ThrowsMessage;

class FileBytes : public testing::Test {
  protected:
    std::size_t Names() const {
        return static_cast<std::size_t>(std::distance(std::filesystem::directory_iterator(m_scratch.Path()), {}));
    }
    samples_test::ScratchDirectory m_scratch;
    std::filesystem::path m_file = m_scratch.Path() / "file";
};

TEST_F(FileBytes, ReplaceTheFile) {
    base::WriteWholeFile(m_file, "long before");
    base::WriteWholeFile(m_file, std::string_view("a\0b", 3));
    EXPECT_EQ(samples_test::ReadAll(m_file), std::string("a\0b", 3));
    EXPECT_EQ(Names(), 1U);
}

TEST_F(FileBytes, LeaveNoUnfinishedFileWhereADirectoryHasTheName) {
    std::filesystem::create_directory(m_file);
    EXPECT_THAT([&] { base::WriteWholeFile(m_file, "x"); },
                ThrowsMessage<std::runtime_error>(AllOf(StartsWith(m_file.string()), HasSubstr("directory"))));
    EXPECT_EQ(Names(), 1U);
}

TEST_F(FileBytes, HaveTheKnownChecksums) {
    const std::string million(1000000, 'a');
    EXPECT_EQ(base::Sha256("abc"), "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
    base::WriteWholeFile(m_file, million);
    EXPECT_EQ(base::Sha256OfFile(m_file), "cdc76e5c9914fb9281a1c7e284d73e67f1809a48a497200e046d39ccc7112cd0");
    EXPECT_THROW(base::Sha256OfFile(m_scratch.Path()), std::runtime_error);
}

picture::Picture Gradient() {
    picture::Picture picture{5, 3, std::vector<std::uint8_t>(60)};
    for (std::size_t n = 0; n < picture.rgba.size(); ++n) picture.rgba[n] = static_cast<std::uint8_t>(n * 4);
    return picture;
}

TEST(PngBytes, DecodeToTheChannelsThatTheyContain) {
    const picture::Picture whole = Gradient(), back = picture::DecodePng(picture::EncodePng(whole));
    const picture::Picture colour = picture::DecodePng(picture::EncodePng(whole, {picture::PngChannels::kColour}));
    const picture::Picture alpha = picture::DecodePng(picture::EncodePng(whole, {picture::PngChannels::kAlpha}));
    EXPECT_EQ(back.rgba, whole.rgba);
    for (std::size_t n = 0; n < whole.rgba.size(); ++n) {
        EXPECT_EQ(colour.rgba[n], n % 4 == 3 ? 255 : whole.rgba[n]);
        EXPECT_EQ(alpha.rgba[n], n % 4 == 3 ? 255 : whole.rgba[n | 3]);
    }
}

TEST(PngBytes, ThatAreTruncatedAreRefused) {
    const std::string bytes = picture::EncodePng(Gradient());
    for (std::size_t size = 0; size + 16 < bytes.size(); ++size) {
        EXPECT_THROW(picture::DecodePng(std::string_view(bytes).substr(0, size)), std::runtime_error) << size;
    }
}

TEST(PngBytes, OfATooLargePictureAreRefusedBeforeAllocation) {
    const picture::Picture wide{picture::kLargestPngSide + 1, 1,
                                std::vector<std::uint8_t>((picture::kLargestPngSide + 1) * 4)};
    EXPECT_THAT([&] { picture::DecodePng(picture::EncodePng(wide)); },
                ThrowsMessage<std::runtime_error>(HasSubstr("8193 x 1 pixels")));
}

}  // namespace

}  // namespace zel::test
