#pragma once

#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <vector>

#include "diskcopy/folder.h"

namespace zel::diskcopy {

/// A copy can't begin. what() is shown to the user.
class CopyRefused : public std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// The folders of a disk.
enum class DiskFolder : std::size_t { kMessages, kMachine };
inline constexpr const char* kDiskFolderNames[] = {"MESSAGES", "MACHINE"};

/// A file to copy.
struct CopyItem {
    /// Index of its folder in CopyPlan::sources.
    std::size_t source = 0;
    std::string name;
    /// For display: the folder, if it is on a disk, and the name.
    std::string label;
    const char* kind = "";
    DiskFolder target = DiskFolder::kMessages;
    /// In bytes.
    std::uint64_t size = 0;
    /// Why it can't be copied; empty if it can.
    std::string error;
};

/// The files that a run would copy.
struct CopyPlan {
    /// The folder that the user named.
    Folder root;
    /// The folders of the files.
    std::vector<Folder> sources;
    /// By folder, then in byte order of the names.
    std::vector<CopyItem> items;
    /// A line for each link, device or other name that is ignored, with the reason.
    std::vector<std::string> passed_over;
    /// Number of files that are neither messages nor fonts.
    std::size_t other_files = 0;
};

/// Finds the files to copy without writing anything: those of a disk, which is a folder with MESSAGES or MACHINE (in
/// any case), or those of a single folder. The number at a file's beginning gives its type. The files of a disk keep
/// their folder; those of a single folder go to MACHINE if they are fonts, otherwise to MESSAGES. Links are not
/// followed.
/// @param source  a path in the module's form.
/// @throws CopyRefused when the source is not a readable folder.
CopyPlan PlanCopy(const std::string& source);

/// This system's path of a folder that the user named.
/// @param path  in the module's form.
/// @param role  "source" or "target", for the exception's text.
/// @throws CopyRefused for an empty path, one that is too long, or an unknown drive.
std::string FolderPath(const std::string& path, const char* role);

}  // namespace zel::diskcopy
