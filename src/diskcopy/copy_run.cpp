#include "diskcopy/copy_run.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <filesystem>
#include <memory>
#include <utility>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include "base/file_descriptor.h"
#include "base/whole_file.h"
#include "platform/system/files.h"
#include "platform/system/types.h"

namespace zel::diskcopy {

namespace {

/// One folder of the target, opened or created for its first file.
struct TargetFolder {
    bool tried = false;
    Folder folder;
    /// Why it can't be used; empty if it can.
    std::string error;
};

/// Gives a file the times of another one, as far as the system allows.
void CopyTimes(int from, int to) noexcept {
    struct stat status {};
    if (::fstat(from, &status) != 0) return;
    const timespec times[] = {status.st_atim, status.st_mtim};
    ::futimens(to, times);
}

class Run {
  public:
    Run(const CopyPlan& plan, const CopyRequest& request)
        : m_plan(plan), m_request(request), m_path(FolderPath(request.target, "target")) {}

    CopyOutcome Execute() {
        OpenTarget();
        CopyOutcome outcome;
        outcome.records.resize(m_plan.items.size());
        for (std::size_t i = 0; i < m_plan.items.size() && outcome.end == CopyEnd::kDone; ++i) {
            if (m_request.stop()) {
                outcome.end = CopyEnd::kStopped;
                break;
            }
            m_request.begin(i);
            outcome.end = CopyOne(m_plan.items[i], outcome.records[i]);
        }
        for (const TargetFolder& target : m_folders) {
            if (target.folder.IsOpen()) ::fsync(target.folder.Get());
        }
        return outcome;
    }

  private:
    [[noreturn]] void Refuse(const std::string& reason) const {
        throw CopyRefused("The target " + m_request.target + " can't be used.\n" + reason);
    }

    /// Checks that the target isn't the source before creating anything.
    void OpenTarget() {
        m_root = Folder::Open(m_path);
        if (m_root.IsOpen()) {
            RefuseSource(m_root);
            for (const char* name : kDiskFolderNames) RefuseSource(m_root.OpenIn(m_root.Find(name), true));
        } else {
            std::error_code error;
            std::filesystem::create_directories(m_path, error);
            if (error) Refuse(error.message());
            m_root = Folder::Open(m_path);
            if (!m_root.IsOpen()) Refuse(ErrorMessage(errno));
        }
        if (::flock(m_root.Get(), LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK)
            Refuse("Another copy to it is under way.");
    }

    void RefuseSource(const Folder& target) const {
        const auto is_target = [&](const Folder& source) { return target.IsOpen() && source.IsSame(target); };
        if (is_target(m_plan.root) || std::any_of(m_plan.sources.begin(), m_plan.sources.end(), is_target))
            Refuse("It is the source itself: the files would be copied onto themselves.");
    }

    CopyEnd CopyOne(const CopyItem& item, CopyRecord& record) {
        record.reason = item.error.empty() ? CopyUnlessPresent(item, record) : item.error;
        if (!record.reason.empty() && record.result == CopyResult::kNotReached && !m_stopped)
            record.result = CopyResult::kFailed;
        if (m_stopped) return CopyEnd::kStopped;
        return m_disk_full ? CopyEnd::kDiskFull : CopyEnd::kDone;
    }

    /// @return why the file wasn't copied; empty if it was.
    std::string CopyUnlessPresent(const CopyItem& item, CopyRecord& record) {
        const TargetFolder& target = FolderFor(item.target);
        if (!target.error.empty()) return target.error;
        const std::string existing = target.folder.Find(item.name);
        struct stat status {};
        if (!existing.empty() && target.folder.Status(existing, status)) {
            if (!S_ISREG(status.st_mode) && !S_ISLNK(status.st_mode)) return "what is there is no file";
            if (!m_request.overwrite) {
                record.result = CopyResult::kSkipped;
                return "it is there already";
            }
        }
        const std::string name = existing.empty() ? item.name : existing;
        const char* const folder = kDiskFolderNames[static_cast<std::size_t>(item.target)];
        if (system::ModulePath(Join(Join(m_path, folder), name)).size() >= MAX_PATH)
            return "its path would be longer than 259 characters";
        return Copy(item, target.folder, name, record);
    }

    std::string Copy(const CopyItem& item, const Folder& folder, const std::string& name, CopyRecord& record) {
        const base::FileDescriptor source = m_plan.sources[item.source].OpenFile(item.name);
        if (!source.IsOpen()) return "can't be read: " + ErrorMessage(errno);
        base::UnfinishedFile target(folder.Get(), name, kTemporaryName);
        if (!target.IsOpen()) return WriteError();
        std::uint64_t copied = 0;
        for (;;) {
            const long got = ReadSome(source.Get(), m_piece.data(), m_piece.size());
            if (got < 0) return "can't be read: " + ErrorMessage(errno);
            if (got == 0) break;
            if (!target.Write({m_piece.data(), static_cast<std::size_t>(got)})) return WriteError();
            copied += static_cast<std::uint64_t>(got);
            if (static_cast<std::size_t>(got) == m_piece.size() && m_request.stop()) {
                m_stopped = true;
                return "stopped while it was being copied";
            }
        }
        CopyTimes(source.Get(), target.Descriptor());
        if (!target.Sync() || !target.Commit()) return WriteError();
        record.result = CopyResult::kCopied;
        record.bytes = copied;
        return {};
    }

    /// The message for errno after a failed write.
    std::string WriteError() {
        const int error = errno;
        m_disk_full = error == ENOSPC || error == EDQUOT;
        return "can't be written: " + ErrorMessage(error);
    }

    const TargetFolder& FolderFor(DiskFolder which) {
        const auto index = static_cast<std::size_t>(which);
        TargetFolder& target = m_folders[index];
        if (std::exchange(target.tried, true)) return target;
        std::string name = m_root.Find(kDiskFolderNames[index]);
        bool made = true;
        if (name.empty()) {
            name = kDiskFolderNames[index];
            made = ::mkdirat(m_root.Get(), name.c_str(), 0777) == 0 && ::fsync(m_root.Get()) == 0;
        }
        if (made) target.folder = m_root.OpenIn(name, true);
        if (!target.folder.IsOpen()) target.error = name + " " + WriteError();
        return target;
    }

    const CopyPlan& m_plan;
    const CopyRequest& m_request;
    std::string m_path;
    Folder m_root;
    std::array<TargetFolder, std::size(kDiskFolderNames)> m_folders;
    std::array<char, 1 << 16> m_piece;
    bool m_stopped = false;
    bool m_disk_full = false;
};

}  // namespace

CopyOutcome RunCopy(const CopyPlan& plan, const CopyRequest& request) {
    return std::make_unique<Run>(plan, request)->Execute();
}

}  // namespace zel::diskcopy
