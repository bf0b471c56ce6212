#include "host/export/export_subject.h"

#include <algorithm>
#include <stdexcept>

#include "base/sha256.h"
#include "host/export/frame.h"
#include "host/export/utf8.h"
#include "host/picture/png_reader.h"

namespace zel::exporter {

namespace {

constexpr std::size_t kLongestDiskName = 40;
constexpr std::size_t kLongestTitle = 100;

constexpr bool IsPlain(char c) noexcept {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '-' || c == '_';
}

std::string PlainDiskName(const std::string& disk) {
    std::string name = disk.substr(0, kLongestDiskName);
    std::replace_if(
        name.begin(), name.end(), [](char c) { return !IsPlain(c); }, '_');
    return name == disk ? name : name + '-' + base::Sha256(disk).substr(0, 6);
}

}  // namespace

ExportSubject::ExportSubject(const library::Recording& recording)
    : m_recording(recording), m_stem(StemOf(recording.disk, recording.number)) {}

const picture::Picture& ExportSubject::Frame() {
    if (!m_frame) {
        if (m_recording.picture.empty()) throw std::runtime_error("there is no picture");
        m_frame = PlacedOnFrame(picture::DecodePng(m_recording.picture), ActiveLines(m_recording.standard));
    }
    return *m_frame;
}

std::string FourDigits(int number) {
    if (number < 0 || number > 9999) throw std::runtime_error("the number isn't 0 to 9999");
    const std::string digits = std::to_string(number);
    return std::string(4 - digits.size(), '0') + digits;
}

std::string StemOf(const std::string& disk, int number) {
    return (disk.empty() ? disk : PlainDiskName(disk) + '_') + FourDigits(number);
}

std::string TitleOf(const std::string& text) {
    std::string title;
    for (std::size_t begin = 0; begin < text.size();) {
        const std::size_t end = std::min(text.find('\n', begin), text.size());
        const std::vector<char32_t> line = CodePoints(std::string_view(text).substr(begin, end - begin));
        const auto first = std::find_if(line.begin(), line.end(), [](char32_t code) { return code != ' '; });
        const auto size = static_cast<std::size_t>(line.end() - first);
        if (size > 1 || (size == 1 && title.empty())) {
            title = Utf8({line.data() + (first - line.begin()), std::min(size, kLongestTitle)});
        }
        if (size > 1) break;
        begin = end + 1;
    }
    return title;
}

}  // namespace zel::exporter
