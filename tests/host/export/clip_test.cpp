#include <cstdlib>
#include <fstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "host/export/clip_form.h"
#include "host/export/export_job.h"
#include "host/export/recordings.h"
#include "samples/scratch_directory.h"

namespace zel::test {

namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

/// Exports with a program in the place of ffmpeg.
class ClipJob : public testing::Test {
  protected:
    ClipJob() { std::filesystem::create_directory(m_bin); }
    ~ClipJob() override { ::setenv("PATH", m_path.c_str(), 1); }

    void SetFfmpeg(const std::string& script) {
        const std::filesystem::path program = m_bin / "ffmpeg";
        std::ofstream(program) << "#!/bin/sh\n" << script;
        std::filesystem::permissions(program, std::filesystem::perms::owner_all);
    }

    exporter::ExportSummary Run(const exporter::ExportOptions& options, int height = 486) {
        // A relative directory is not searched.
        ::setenv("PATH", (".:nothing:" + m_bin.string()).c_str(), 1);
        exporter::ExportJob job(m_out, {"clip"}, options, 2);
        job.Export(Recorded(1, Colourful(720, height)));
        return job.Finish();
    }

    std::string Read(const std::string& name) const { return samples_test::ReadAll(m_out / name); }

    const std::string m_path = std::getenv("PATH");
    samples_test::ScratchDirectory m_scratch;
    const std::filesystem::path m_out = m_scratch.Path() / "out", m_bin = m_scratch.Path() / "bin";
};

TEST_F(ClipJob, PassesEachFrameToFfmpeg) {
    SetFfmpeg("echo \"$@\" > " + (m_bin / "arguments").string() + "; exec /bin/cat >&3");
    exporter::ExportOptions options{.premultiplied = true};
    options.fade_in = {4, true};
    options.hold = {100, false};  // 3 frames
    options.fade_out = {2, true};
    EXPECT_THAT(Run(options).failures, IsEmpty());
    const picture::Picture picture = Colourful();
    const double levels[] = {0, 0.25, 0.5, 0.75, 1, 1, 1, 0.5, 0};
    std::string expected;
    for (const double level : levels) {
        for (std::size_t n = 0; n < picture.rgba.size(); n += 4) {
            const double alpha = std::floor(picture.rgba[n + 3] * level + 0.5);
            for (std::size_t c = n; c < n + 3; ++c)
                expected += static_cast<char>(std::floor(picture.rgba[c] * alpha / 255 + 0.5));
            expected += static_cast<char>(alpha);
        }
    }
    EXPECT_TRUE(Read("0001_qtrle_premultiplied.mov") == expected);
    EXPECT_THAT(samples_test::ReadAll(m_bin / "arguments"),
                AllOf(HasSubstr("-video_size 720x486 -framerate 30000/1001 -i pipe:0"),
                      HasSubstr("setsar=10/11,setfield=bff"), HasSubstr("-c:v qtrle -pix_fmt argb")));
    EXPECT_THAT(Read("SHA256SUMS"), HasSubstr("  0001_qtrle_premultiplied.mov\n"));
}

TEST_F(ClipJob, LeavesNoClipOfAProgramThatFails) {
    const struct {
        const char* script;
        const char* reason;
    } cases[] = {
        {"echo begun >&3; echo first >&2; printf 'no\\033 codec\\n' >&2; exit 3", "failed (exit code 3): no  codec"},
        {"/bin/cat > /dev/null; echo x >&3; kill -9 $$", "failed (signal 9)"},
        {"exit 0", "ended without a clip"},
        {"/bin/cat > /dev/null", "ended without a clip"},
        {"n=0; while [ $n -lt 9000 ]; do n=$((n + 1)); echo many words >&2; done; exit 1", "(exit code 1): many words"},
    };
    for (const auto& row : cases) {
        SetFfmpeg(row.script);
        EXPECT_THAT(Run({}).failures,
                    ElementsAre(AllOf(HasSubstr("0001: clip: 0001_qtrle_straight.mov: "), HasSubstr(row.reason))))
            << row.script;
        EXPECT_FALSE(std::filesystem::exists(m_out / "0001_qtrle_straight.mov"));
    }
}

TEST_F(ClipJob, WritesPicturesAndTheCommandWithoutFfmpeg) {
    exporter::ExportOptions options{.codec = exporter::ClipCodec::kProRes};
    options.fade_in = {2, true};
    options.hold = {3, true};
    EXPECT_THAT(Run(options, 576).failures, ElementsAre(HasSubstr("clip: there is no ffmpeg on the PATH")));
    EXPECT_THAT(
        Read("0001_prores_straight.txt"),
        AllOf(HasSubstr("ffmpeg -framerate 25 -start_number 1 -i file:0001_prores_straight/%05d.png -frames:v 5 "),
              HasSubstr("setsar=12/11,setfield=tff,"), HasSubstr(" file:0001_prores_straight.mov\n")));
    picture::Picture clear = Colourful(720, 576);
    for (std::size_t n = 3; n < clear.rgba.size(); n += 4) clear.rgba[n] = 0;
    EXPECT_EQ(picture::DecodePng(Read("0001_prores_straight/00001.png")).rgba, clear.rgba);
    EXPECT_EQ(picture::DecodePng(Read("0001_prores_straight/00005.png")).rgba, Colourful(720, 576).rgba);
    EXPECT_FALSE(std::filesystem::exists(m_out / "0001_prores_straight/00006.png"));
    EXPECT_THAT(Read("SHA256SUMS"), HasSubstr("  0001_prores_straight/00003.png\n"));
}

TEST(ClipCommand, QuotesNamesAndSquarePixelsHaveNoFields) {
    const exporter::ClipForm form{1920, 1080, VideoStandard::kNtsc, true, exporter::ClipCodec::kProRes};
    EXPECT_THAT(exporter::ClipCommand(form, 7, "-50% 'a'", "-50% 'a'.mov"),
                AllOf(HasSubstr(R"( -i 'file:-50%% '\''a'\''/%05d.png' )"), HasSubstr(R"('file:-50% '\''a'\''.mov')"),
                      HasSubstr("setsar=1/1,setfield=prog,scale=out_color_matrix=bt709")));
}

TEST(Durations, AreFramesOrTimes) {
    const struct {
        const char* text;
        int ntsc, pal;  // frames; -1: not a time
    } cases[] = {
        {"0", 0, 0},
        {"12", 12, 12},
        {"1s", 30, 25},
        {"0.5s", 15, 13},
        {"1.001s", 30, 25},
        {"400ms", 12, 10},
        {"1ms", 1, 1},
        {"0s", 0, 0},
        {"600s", 17982, 15000},
        {"18000", 18000, 18000},
        {"601s", -1, -1},
        {"600.001s", -1, -1},
        {"600001ms", -1, -1},
        {"18001", -1, -1},
        {"", -1, -1},
        {"s", -1, -1},
        {"ms", -1, -1},
        {"-1", -1, -1},
        {"-1s", -1, -1},
        {"1.s", -1, -1},
        {"1.0001s", -1, -1},
        {"+1", -1, -1},
        {"1 s", -1, -1},
        {"1h", -1, -1},
        {"99999999999", -1, -1},
        {"1.-1s", -1, -1},
    };
    for (const auto& row : cases) {
        const auto duration = exporter::ParseDuration(row.text);
        EXPECT_EQ(duration ? duration->Frames(VideoStandard::kNtsc) : -1, row.ntsc) << row.text;
        EXPECT_EQ(duration ? duration->Frames(VideoStandard::kPal) : -1, row.pal) << row.text;
    }
}

}  // namespace

}  // namespace zel::test
