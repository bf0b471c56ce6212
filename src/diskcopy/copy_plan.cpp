#include "diskcopy/copy_plan.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <string_view>

#include "module/contract/records/psos_header.h"
#include "platform/system/errors.h"
#include "platform/system/files.h"

namespace zel::diskcopy {

namespace {

/// The big-endian number at the beginning of a file, and the kind of file that it denotes.
struct FileType {
    std::uint32_t number;
    const char* kind;
    DiskFolder folder;
};
constexpr FileType kFileTypes[] = {
    {kFontFileType, "font", DiskFolder::kMachine},
    {kMessageFileType, "message", DiskFolder::kMessages},
    {kRgbaFileTypeA, "RGBA picture", DiskFolder::kMessages},
    {kRgbaFileTypeB, "RGBA picture", DiskFolder::kMessages},
};

const FileType* FindType(const std::array<std::uint8_t, 4>& bytes) noexcept {
    const std::uint32_t number =
        std::uint32_t{bytes[0]} << 24 | std::uint32_t{bytes[1]} << 16 | std::uint32_t{bytes[2]} << 8 | bytes[3];
    const auto* const found = std::find_if(std::begin(kFileTypes), std::end(kFileTypes),
                                           [&](const FileType& type) { return type.number == number; });
    return found != std::end(kFileTypes) ? found : nullptr;
}

bool IsControl(char c) noexcept {
    return static_cast<unsigned char>(c) < ' ' || c == 0x7F;
}

/// A name for display, without control characters.
std::string Printable(std::string name) {
    std::replace_if(name.begin(), name.end(), IsControl, '?');
    return name;
}

/// Whether a name can be part of a path in the module's form.
bool IsModuleName(const std::string& name) {
    return std::none_of(name.begin(), name.end(), [](char c) { return IsControl(c) || c == '\\'; });
}

/// The system's message for an error number, without the line end.
std::string SystemMessage(DWORD error) {
    char* text = nullptr;
    FormatMessageA(FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM, nullptr, error, 0,
                   reinterpret_cast<char*>(&text), 0, nullptr);
    std::string message = text != nullptr ? text : "Error " + std::to_string(error) + ".";
    LocalFree(text);
    message.erase(message.find_last_not_of("\r\n") + 1);
    return message;
}

/// Examines the files of the source's folders.
class Planner {
  public:
    explicit Planner(CopyPlan& plan) : m_plan(plan) {}

    /// Adds a folder's files. @param target  their folder in the target; null: by their type.
    void Add(Folder folder, const std::string& label, const DiskFolder* target) {
        m_plan.sources.push_back(std::move(folder));
        m_label = label;
        m_target = target;
        int error = 0;
        for (const std::string& name : m_plan.sources.back().Names(error)) Examine(name);
        if (error != 0) AddError(label, "the folder can't be read to its end: " + ErrorMessage(error));
    }

    void AddError(const std::string& label, const std::string& reason) {
        CopyItem& item = m_plan.items.emplace_back();
        item.label = label;
        item.error = reason;
    }

    void PassOver(const std::string& label, const char* reason) { m_plan.passed_over.push_back(label + ": " + reason); }

  private:
    void Examine(const std::string& name) {
        const std::string label = m_label.empty() ? Printable(name) : m_label + "\\" + Printable(name);
        const Folder& folder = m_plan.sources.back();
        struct stat status {};
        if (!folder.Status(name, status)) return AddError(label, "can't be read: " + ErrorMessage(errno));
        if (S_ISDIR(status.st_mode)) return;
        if (S_ISLNK(status.st_mode)) return PassOver(label, "it is a link");
        if (!S_ISREG(status.st_mode)) return PassOver(label, "it is no plain file");

        const base::FileDescriptor file = folder.OpenFile(name);
        std::array<std::uint8_t, 4> bytes{};
        const long got = file.IsOpen() ? ReadSome(file.Get(), bytes.data(), bytes.size()) : -1;
        if (got < 0) return AddError(label, "can't be read: " + ErrorMessage(errno));
        const FileType* const type = FindType(bytes);
        if (type == nullptr) {
            ++m_plan.other_files;
        } else if (!IsModuleName(name)) {
            PassOver(label, "no import can open a file of that name");
        } else {
            m_plan.items.push_back({m_plan.sources.size() - 1, name, label, type->kind,
                                    m_target != nullptr ? *m_target : type->folder,
                                    static_cast<std::uint64_t>(status.st_size), std::string()});
        }
    }

    CopyPlan& m_plan;
    std::string m_label;
    const DiskFolder* m_target = nullptr;
};

}  // namespace

std::string FolderPath(const std::string& path, const char* role) {
    if (path.empty()) throw CopyRefused(std::string("Name the ") + role + " folder.");
    if (const DWORD error = system::PathError(path.c_str()))
        throw CopyRefused(std::string("The ") + role + " " + path + " can't be used.\n" + SystemMessage(error));
    return system::NativePath(path.c_str());
}

CopyPlan PlanCopy(const std::string& source) {
    CopyPlan plan;
    plan.root = Folder::Open(FolderPath(source, "source"));
    const Folder& root = plan.root;
    if (!root.IsOpen()) throw CopyRefused("The source " + source + " can't be read.\n" + ErrorMessage(errno));
    Planner planner(plan);
    bool is_disk = false;
    for (const DiskFolder folder : {DiskFolder::kMessages, DiskFolder::kMachine}) {
        const std::string name = root.Find(kDiskFolderNames[static_cast<std::size_t>(folder)]);
        struct stat status {};
        if (name.empty() || !root.Status(name, status)) continue;
        if (S_ISLNK(status.st_mode)) planner.PassOver(name, "it is a link");
        if (!S_ISDIR(status.st_mode)) continue;
        is_disk = true;
        Folder files = root.OpenIn(name, false);
        if (files.IsOpen()) {
            planner.Add(std::move(files), name, &folder);
        } else {
            planner.AddError(name, "can't be read: " + ErrorMessage(errno));
        }
    }
    if (!is_disk) planner.Add(root.OpenIn(".", false), std::string(), nullptr);
    return plan;
}

}  // namespace zel::diskcopy
