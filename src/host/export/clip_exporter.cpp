#include "host/export/clip_exporter.h"

#include <array>
#include <atomic>
#include <cstdio>
#include <stdexcept>
#include <system_error>

#include <sys/stat.h>

#include "base/child_process.h"
#include "base/file_descriptor.h"
#include "host/export/clip_form.h"
#include "host/picture/png_writer.h"

namespace zel::exporter {

namespace {

/// A clip that is being made. Its frames are made one at a time.
struct Clip {
    picture::Picture picture;
    ClipForm form;
    ClipTiming timing;
    bool premultiplied = false;
};

/// The last line that a program wrote, without what could control a terminal.
std::string LastLine(const std::string& words) {
    const std::size_t end = words.find_last_not_of("\r\n ");
    if (end == std::string::npos) return {};
    const std::size_t begin = words.find_last_of("\r\n", end);
    std::string line = words.substr(begin == std::string::npos ? 0 : begin + 1, end - begin);
    for (char& c : line) {
        if (static_cast<unsigned char>(c) < ' ' || c == 0x7F) c = ' ';
    }
    return line;
}

/// Passes all frames to ffmpeg, which writes the clip.
void WriteClip(const Clip& clip, const std::filesystem::path& ffmpeg, int output) {
    base::ChildProcess process(ffmpeg, ClipArguments(clip.form, base::ChildProcess::kOutput), output);
    std::vector<std::uint8_t> frame(clip.picture.rgba.size());
    ClipTiming::Level present{-1, 1};
    bool is_read = true;
    for (int n = 0; n < clip.timing.Frames() && is_read; ++n) {
        const ClipTiming::Level level = clip.timing.LevelOf(n);
        if (level != present) FadeInto(clip.picture, level, clip.premultiplied, frame);
        present = level;
        is_read = process.Write({reinterpret_cast<const char*>(frame.data()), frame.size()});
    }
    const base::ChildProcess::End end = process.Finish();
    const std::string words = LastLine(end.words);
    if (!end.Succeeded()) {
        throw std::runtime_error(ffmpeg.string() + " failed (" + end.Text() + ")" +
                                 (words.empty() ? "" : ": " + words));
    }
    struct stat status {};
    if (!is_read || ::fstat(output, &status) != 0 || status.st_size == 0)
        throw std::runtime_error(ffmpeg.string() + " ended without a clip");
}

std::string FrameName(int number) {
    std::array<char, 16> text{};
    std::snprintf(text.data(), text.size(), "%05d.png", number);
    return text.data();
}

/// The pictures of a clip as PNG, made when they are written. Those that are the same are made once.
class FramePictures {
  public:
    FramePictures(Clip clip, const picture::PngForm& form) : m_clip(std::move(clip)), m_form(form) {
        m_frame = picture::ClearPicture(m_clip.form.width, m_clip.form.height);
    }

    const std::string& Png(int frame) {
        const ClipTiming::Level level = m_clip.timing.LevelOf(frame);
        if (level != m_present) {
            FadeInto(m_clip.picture, level, m_clip.premultiplied, m_frame.rgba);
            m_png = picture::EncodePng(m_frame, m_form);
            m_present = level;
        }
        return m_png;
    }

  private:
    const Clip m_clip;
    const picture::PngForm m_form;
    picture::Picture m_frame;
    ClipTiming::Level m_present{-1, 1};
    std::string m_png;
};

class ClipExporter : public Exporter {
  public:
    explicit ClipExporter(const ExportOptions& options) : m_options(options), m_ffmpeg(base::FindProgram("ffmpeg")) {}

    std::vector<ExportedFile> Export(ExportSubject& message) const override {
        Clip clip{message.Output(), {}, TimingOf(m_options, message.Source().standard), m_options.premultiplied};
        clip.form = {clip.picture.width, clip.picture.height, message.Source().standard, m_options.frame.has_value(),
                     m_options.codec};
        const std::string name =
            message.Stem() + '_' + NameOf(m_options.codec) + (m_options.premultiplied ? "_premultiplied" : "_straight");
        if (m_ffmpeg.empty()) return Sequence(std::move(clip), name);
        const auto shared = std::make_shared<const Clip>(std::move(clip));
        const auto write = [shared, name, this](int output) {
            try {
                WriteClip(*shared, m_ffmpeg, output);
            } catch (const std::runtime_error& error) {
                throw std::runtime_error(name + ".mov: " + error.what());
            }
        };
        return {{name + ".mov", {}, write}};
    }

    std::vector<ExportedFile> Finish(const Manifest& /*manifest*/) override {
        if (!m_lacks_ffmpeg) return {};
        throw std::runtime_error(
            "there is no ffmpeg on the PATH: instead of each clip, its frames were written as PNG, and a text file "
            "with the command line that makes the clip");
    }

  private:
    std::vector<ExportedFile> Sequence(Clip clip, const std::string& name) const {
        m_lacks_ffmpeg = true;
        const int frames = clip.timing.Frames();
        std::vector<ExportedFile> files = {
            {name + ".txt", ClipCommand(clip.form, frames, name, name + ".mov") + '\n', {}}};
        const auto pictures = std::make_shared<FramePictures>(
            std::move(clip), PngFormOf(m_options, picture::PngChannels::kColourAndAlpha));
        for (int n = 0; n < frames; ++n) {
            const auto write = [pictures, n](int output) {
                if (!base::WriteFully(output, pictures->Png(n)))
                    throw std::runtime_error(FrameName(n + 1) + ": " + std::generic_category().message(errno));
            };
            files.push_back({name + '/' + FrameName(n + 1), {}, write});
        }
        return files;
    }

    const ExportOptions m_options;
    const std::filesystem::path m_ffmpeg;
    /// Set by several threads.
    mutable std::atomic<bool> m_lacks_ffmpeg = false;
};

}  // namespace

std::unique_ptr<Exporter> MakeClipExporter(const ExportOptions& options) {
    return std::make_unique<ClipExporter>(options);
}

}  // namespace zel::exporter
