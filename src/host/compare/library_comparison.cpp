#include "host/compare/library_comparison.h"

#include <algorithm>
#include <deque>
#include <stdexcept>

#include "host/compare/message_contents.h"
#include "host/compare/message_difference.h"
#include "host/document/document_reader.h"
#include "host/picture/png_reader.h"

namespace zel::compare {

namespace {

/// Recordings of a library in order, listed in parts of bounded size.
class RecordingCursor {
  public:
    RecordingCursor(library::Library& library, const std::optional<std::string>& disk)
        : m_library(library), m_disk(disk) {
        Fill();
    }

    /// Null after the last one.
    const library::RecordingKey* Key() const { return m_keys.empty() ? nullptr : &m_keys.front(); }
    void Next() {
        m_last = m_keys.front();
        m_keys.pop_front();
        if (m_keys.empty()) Fill();
    }

  private:
    void Fill() {
        constexpr std::size_t kPart = 256;
        for (const library::LibraryEntry& entry : m_library.List(m_disk, {m_last, kPart})) m_keys.push_back(entry.key);
    }

    library::Library& m_library;
    const std::optional<std::string>& m_disk;
    std::optional<library::RecordingKey> m_last;
    std::deque<library::RecordingKey> m_keys;
};

/// Whether both were made from the same bytes with the same options; unknown counts as no.
bool HaveSameOrigin(const library::Recording& a, const library::Recording& b) {
    return a.options == b.options && !a.sources.empty() &&
           std::ranges::equal(a.sources, b.sources,
                              [](const library::SourceFile& one, const library::SourceFile& other) {
                                  return one.font_number == other.font_number && one.sha256 == other.sha256 &&
                                         (one.size == 0 || !one.sha256.empty());
                              });
}

const char* KindName(library::RecordingKind kind) noexcept {
    if (kind == library::RecordingKind::kMessage) return "message";
    return kind == library::RecordingKind::kRgbaObject ? "RGBA picture as object" : "RGBA picture as background";
}

std::optional<picture::Picture> PictureOf(const library::Recording& recording) {
    if (recording.picture.empty()) return std::nullopt;
    return picture::DecodePng(recording.picture);
}

}  // namespace

FileComparison CompareRecordings(const library::Recording& a, const library::Recording& b, bool mark) {
    FileComparison comparison;
    comparison.kind = a.kind == library::RecordingKind::kMessage ? ComparedKind::kMessage : ComparedKind::kRgba;
    if (!mark && a.kind == b.kind && a.standard == b.standard && a.picture == b.picture && HaveSameOrigin(a, b))
        return comparison;
    try {
        if (a.kind != b.kind) {
            comparison.differences.push_back(
                {"message", "kind", {{}, {}, KindName(a.kind)}, {{}, {}, KindName(b.kind)}});
        } else if (a.kind == library::RecordingKind::kMessage) {
            comparison.differences = CompareContents(ContentsOf(document::ParseDocument(a.document)),
                                                     ContentsOf(document::ParseDocument(b.document)));
        }
        if (mark || a.picture != b.picture) {
            const auto picture_a = PictureOf(a), picture_b = PictureOf(b);
            const picture::Picture* const one = picture_a ? &*picture_a : nullptr;
            const picture::Picture* const other = picture_b ? &*picture_b : nullptr;
            comparison.picture = ComparePictures(one, other);
            if (mark) comparison.marked = MarkedPicture(one, other, *comparison.picture);
        }
    } catch (const std::bad_alloc&) {
        throw;
    } catch (const std::exception& error) {
        comparison.result = ComparisonResult::kTrouble;
        comparison.trouble = error.what();
        return comparison;
    }
    const bool same = comparison.differences.empty() && (!comparison.picture || comparison.picture->IsNone());
    comparison.result = same ? ComparisonResult::kSame : ComparisonResult::kDifferent;
    return comparison;
}

ItemCounts CompareLibraries(library::Library& a, library::Library& b, const std::optional<std::string>& disk,
                            const std::function<void(const LibraryItem&)>& take, const std::function<bool()>& stop) {
    ItemCounts counts;
    RecordingCursor cursor_a(a, disk), cursor_b(b, disk);
    while (cursor_a.Key() != nullptr || cursor_b.Key() != nullptr) {
        if (stop && stop()) break;
        LibraryItem item;
        item.in_a = cursor_a.Key() != nullptr && (cursor_b.Key() == nullptr || *cursor_a.Key() <= *cursor_b.Key());
        item.in_b = cursor_b.Key() != nullptr && (cursor_a.Key() == nullptr || *cursor_b.Key() <= *cursor_a.Key());
        item.key = item.in_a ? *cursor_a.Key() : *cursor_b.Key();
        if (item.in_a) cursor_a.Next();
        if (item.in_b) cursor_b.Next();
        if (!item.in_a || !item.in_b) {
            ++(item.in_a ? counts.only_in_a : counts.only_in_b);
            take(item);
            continue;
        }
        const std::optional<library::Recording> one = a.Find(item.key), other = b.Find(item.key);
        // Another program may remove a recording meanwhile.
        if (!one || !other) continue;
        item.comparison = CompareRecordings(*one, *other, false);
        counts.Add(item.comparison.result);
        take(item);
    }
    return counts;
}

}  // namespace zel::compare
