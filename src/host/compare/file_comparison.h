#pragma once

#include <optional>
#include <string>
#include <vector>

#include "host/compare/difference.h"
#include "host/compare/file_bytes.h"
#include "host/compare/picture_difference.h"
#include "host/reference_host.h"
#include "host/run/dialog_script.h"

namespace zel::compare {

/// What a file is, by the type at its beginning.
enum class ComparedKind { kMessage, kRgba, kFont, kOther };
/// "message", "RGBA picture", "font" or "file".
const char* NameOf(ComparedKind kind) noexcept;

enum class ComparisonResult {
    kSame,
    /// The bytes differ, and nothing that an import makes of them.
    kSameButBytes,
    kDifferent,
    /// The files can't be compared.
    kTrouble,
};

/// How files are compared. Paths are this system's.
struct ComparisonOptions {
    /// Font directory of both; empty: MACHINE beside each message's directory.
    std::optional<std::string> fonts{};
    run::RgbaAnswer rgba = run::RgbaAnswer::kObject;
    host::HostOptions host{};
    /// A picture with the differences marked is made.
    bool mark = false;
    /// Messages with the same bytes may have other fonts, so that their pictures are compared.
    bool fonts_may_differ = true;
};

/// Two files compared.
struct FileComparison {
    ComparedKind kind = ComparedKind::kOther;
    ComparisonResult result = ComparisonResult::kSame;
    /// Of kTrouble: one line with the file's name and the reason.
    std::string trouble{};
    Differences differences{};
    /// Of the pictures that the import makes; empty if none is made.
    std::optional<PictureDifference> picture{};
    /// Of files whose bytes differ.
    std::optional<ByteDifference> bytes{};
    /// See ComparisonOptions::mark.
    std::optional<picture::Picture> marked{};
    /// What a user should know of the imports: a line each.
    std::vector<std::string> warnings{};
};

/// Compares two messages, fonts or RGBA pictures by what an import makes of them. Files of two kinds can't be compared;
/// of files that are neither, only the bytes are. Imports use the current SettingsStore.
/// @throws std::bad_alloc
FileComparison CompareFiles(const std::string& a, const std::string& b, const ComparisonOptions& options);

/// The kind of a file that can be read.
ComparedKind KindOf(const std::string& file);

}  // namespace zel::compare
