#include "host/compare/file_comparison.h"

#include <filesystem>
#include <stdexcept>

#include "base/regular_file.h"
#include "host/compare/font_contents.h"
#include "host/compare/font_difference.h"
#include "host/compare/message_contents.h"
#include "host/compare/message_difference.h"
#include "host/document/message_warnings.h"
#include "host/picture/picture_composer.h"
#include "host/run/file_error.h"
#include "host/run/import_paths.h"
#include "host/run/import_run.h"
#include "module/contract/records/psos_header.h"
#include "module/message/format/message_loader.h"
#include "platform/system/files.h"

namespace zel::compare {

namespace {

/// Larger than any message or font.
constexpr std::size_t kLargestFile = std::size_t{80} << 20;

std::vector<std::uint8_t> BytesOf(const std::string& path) {
    try {
        return base::ReadFileBytes(path, kLargestFile);
    } catch (const std::bad_alloc&) {
        throw;
    } catch (const std::runtime_error& error) {
        throw std::runtime_error(path + ": " + error.what());
    }
}

/// @throws std::runtime_error for a file that is too large to be read. A sparse one could take minutes.
void CheckSize(const std::string& path) {
    std::error_code ignored;
    const std::uintmax_t size = std::filesystem::file_size(path, ignored);
    if (!ignored && size > kLargestFile)
        throw std::runtime_error(path + ": larger than 80 MiB, which no message or font is");
}

std::string WithArticle(ComparedKind kind) {
    return std::string(kind == ComparedKind::kRgba ? "an " : "a ") + NameOf(kind);
}

/// What an import makes of a file.
struct Imported {
    run::ImportOutcome outcome;
    std::optional<picture::Picture> picture;

    const picture::Picture* Picture() const { return picture ? &*picture : nullptr; }
};

class FilePair {
  public:
    FilePair(const std::string& a, const std::string& b, const ComparisonOptions& options)
        : m_a(a), m_b(b), m_options(options) {}

    FileComparison Take();

  private:
    void Compare();
    void CompareMessages();
    void CompareImports();
    void CompareFontFiles();
    Imported Import(const std::string& file);
    bool HaveSameFonts() const;

    const std::string& m_a;
    const std::string& m_b;
    const ComparisonOptions& m_options;
    FileComparison m_result;
};

FileComparison FilePair::Take() {
    try {
        Compare();
    } catch (const std::bad_alloc&) {
        throw;
    } catch (const std::runtime_error& error) {
        m_result.result = ComparisonResult::kTrouble;
        m_result.trouble = error.what();
        return std::move(m_result);
    }
    const bool same = m_result.differences.empty() && (!m_result.picture || m_result.picture->IsNone());
    m_result.result = !same                                                     ? ComparisonResult::kDifferent
                      : m_result.bytes && m_result.kind == ComparedKind::kOther ? ComparisonResult::kDifferent
                      : m_result.bytes                                          ? ComparisonResult::kSameButBytes
                                                                                : ComparisonResult::kSame;
    return std::move(m_result);
}

void FilePair::Compare() {
    CheckSize(m_a);
    CheckSize(m_b);
    const ByteDifference bytes = CompareBytes(m_a, m_b, true);
    if (bytes.count != 0) m_result.bytes = bytes;
    m_result.kind = KindOf(m_a);
    const ComparedKind other = KindOf(m_b);
    if (m_result.kind != other) {
        throw std::runtime_error(m_a + " is " + WithArticle(m_result.kind) + ", " + m_b + " is " + WithArticle(other));
    }
    const bool needs_import = m_options.mark || (m_options.fonts_may_differ && !HaveSameFonts());
    switch (m_result.kind) {
        case ComparedKind::kMessage:
            if (m_result.bytes) CompareMessages();
            if (m_result.bytes || needs_import) CompareImports();
            break;
        case ComparedKind::kRgba:
            if (m_result.bytes || m_options.mark) CompareImports();
            break;
        case ComparedKind::kFont:
            if (m_result.bytes || m_options.mark) CompareFontFiles();
            break;
        case ComparedKind::kOther:
            break;
    }
}

void FilePair::CompareMessages() {
    const auto contents = [](const std::string& path) {
        const std::vector<std::uint8_t> bytes = BytesOf(path);
        message::LoadedMessage message;
        if (message::LoadMessage(bytes, message) != message::MessageOutcome::kRead)
            throw std::runtime_error(path + ": " + run::ContentError("message", path));
        return ContentsOf(message);
    };
    m_result.differences = CompareContents(contents(m_a), contents(m_b));
}

Imported FilePair::Import(const std::string& file) {
    picture::PictureComposer composer;
    run::ImportRequest request;
    request.message = file;
    request.fonts = m_options.fonts;
    request.rgba = m_options.rgba;
    request.host = m_options.host;
    host::HostObserver* const observers[] = {&composer};
    Imported imported{run::RunImport(request, observers), {}};
    if (!imported.outcome.Done()) throw std::runtime_error(imported.outcome.failure);
    imported.picture = composer.TakePicture();
    if (!composer.RgbaError().empty()) m_result.warnings.push_back(file + ": " + composer.RgbaError());
    if (imported.outcome.message) {
        for (const std::string& warning : document::WarningsOf(*imported.outcome.message))
            m_result.warnings.push_back(warning);
    }
    return imported;
}

void FilePair::CompareImports() {
    const Imported a = Import(m_a), b = Import(m_b);
    m_result.picture = ComparePictures(a.Picture(), b.Picture());
    if (m_options.mark) m_result.marked = MarkedPicture(a.Picture(), b.Picture(), *m_result.picture);
}

void FilePair::CompareFontFiles() {
    FontFileBytes a(m_a), b(m_b);
    std::optional<FontDifference> difference = CompareFonts(a, b, m_options.mark);
    if (!difference) {
        const std::string& path = FontContents(a).IsRead() ? m_b : m_a;
        throw std::runtime_error(path + ": " + run::ContentError("font", path));
    }
    m_result.differences = std::move(difference->differences);
    m_result.marked = std::move(difference->picture);
}

/// Whether both imports look for fonts in the same directory.
bool FilePair::HaveSameFonts() const {
    if (m_options.fonts) return true;
    const auto fonts = [](const std::string& message) {
        return system::NativePath(run::ImportPathsOf(message, std::nullopt).font_directory.c_str());
    };
    std::error_code ignored;
    return std::filesystem::equivalent(fonts(m_a), fonts(m_b), ignored);
}

}  // namespace

const char* NameOf(ComparedKind kind) noexcept {
    switch (kind) {
        case ComparedKind::kMessage:
            return "message";
        case ComparedKind::kRgba:
            return "RGBA picture";
        case ComparedKind::kFont:
            return "font";
        case ComparedKind::kOther:
            break;
    }
    return "file";
}

ComparedKind KindOf(const std::string& file) {
    const std::uint32_t type = run::FileType(file).value_or(0);
    if (type == kMessageFileType) return ComparedKind::kMessage;
    if (type == kFontFileType) return ComparedKind::kFont;
    return IsRgbaFileType(type) ? ComparedKind::kRgba : ComparedKind::kOther;
}

FileComparison CompareFiles(const std::string& a, const std::string& b, const ComparisonOptions& options) {
    return FilePair(a, b, options).Take();
}

}  // namespace zel::compare
