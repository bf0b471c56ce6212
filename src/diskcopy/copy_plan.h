#pragma once

#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <vector>

#include "diskcopy/folder.h"

namespace zel::diskcopy {

/// What a copy would do, found out without writing anything. Private to the platform.

/// The work can't begin; what() is for the user.
class CopyRefused : public std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// The folders of a disk.
enum class DiskFolder : std::size_t { kMessages, kMachine };
inline constexpr const char* kDiskFolderNames[] = {"MESSAGES", "MACHINE"};

struct CopyItem {
    std::size_t source = 0;  // index of its folder in CopyPlan::sources
    std::string name;
    std::string label;  // for people: its folder, if it has one on the disk, and its name
    const char* kind = "";
    DiskFolder target = DiskFolder::kMessages;
    std::uint64_t size = 0;  // bytes
    std::string trouble;     // why it can't be copied; empty when it can
};

struct CopyPlan {
    Folder root;                           // what the user has named
    std::vector<Folder> sources;           // where the files lie
    std::vector<CopyItem> items;           // folder by folder, in byte order
    std::vector<std::string> passed_over;  // links, devices and the like, each with the reason
    std::size_t other_files = 0;           // neither messages nor fonts
};

/// Looks through a disk, which is a folder with MESSAGES or MACHINE in it (in any case), or else through one folder's
/// files. Message and font files are known by the number at their beginning. Of one folder, fonts are bound for MACHINE
/// and the others for MESSAGES; a disk's files keep their folder. Links are not followed.
/// @param source  a path in the module's form.
/// @throws CopyRefused when the source is no folder that can be read.
CopyPlan PlanCopy(const std::string& source);

/// This system's path of a folder that the user has named.
/// @param role  "source" or "target", for the refusal.
/// @throws CopyRefused for no path at all, one that is too long, or a drive that isn't there.
std::string FolderPath(const std::string& path, const char* role);

}  // namespace zel::diskcopy
