#include "programs/desktop/recorded_disk.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <filesystem>
#include <stdexcept>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include "platform/script/memory_settings_store.h"
#include "programs/desktop/windows/main_window.h"
#include "samples/disk/demo_disk.h"

namespace zel::screen_test {

namespace {

namespace fs = std::filesystem;

const std::string kPrefix = "recorded_disk_";

/// Held by the process that makes the directory, until the end of the object.
class MakersLock {
  public:
    explicit MakersLock(const fs::path& file) : m_descriptor(::open(file.c_str(), O_CREAT | O_RDWR | O_CLOEXEC, 0600)) {
        if (m_descriptor < 0 || ::flock(m_descriptor, LOCK_EX) != 0) throw std::runtime_error(file.string());
    }
    ~MakersLock() { ::close(m_descriptor); }
    MakersLock(const MakersLock&) = delete;
    MakersLock& operator=(const MakersLock&) = delete;

  private:
    const int m_descriptor;
};

/// Imports a disk into a new library, as the program does.
void RecordInto(const fs::path& library, const fs::path& disk) {
    const QTemporaryDir settings;
    script::MemorySettingsStore store;
    seam::SetSettingsStore(&store);
    {
        desktop::MainWindow window({library.string(), settings.filePath(QStringLiteral("desktop.ini"))});
        window.Open({QFile::decodeName(disk.c_str())});
        constexpr int kTimeout_ms = 120000;
        if (!QTest::qWaitFor([&] { return !window.IsBusy(); }, kTimeout_ms)) throw std::runtime_error("import");
    }
    seam::SetSettingsStore(nullptr);
}

/// The library has its name when the directory is complete.
void Make(const fs::path& directory, const fs::path& library) {
    for (const fs::directory_entry& entry : fs::directory_iterator(directory.parent_path())) {
        if (entry.path().filename().string().starts_with(kPrefix)) fs::remove_all(entry.path());
    }
    fs::create_directories(directory);
    samples::WriteDemonstrationDisk(directory / "NEWS");
    RecordInto(directory / "making.zellib", directory / "NEWS");
    fs::rename(directory / "making.zellib", library);
}

}  // namespace

std::string RecordedDisk() {
    const fs::path program = fs::read_symlink("/proc/self/exe");
    const auto built = fs::last_write_time(program).time_since_epoch().count();
    const fs::path home = fs::path(ZELTRANS_TEST_FILES);
    const fs::path directory = home / (kPrefix + std::to_string(built));
    const fs::path library = directory / "library.zellib";
    if (fs::exists(library)) return directory.string();
    fs::create_directories(home);
    const MakersLock lock(home / "making.lock");
    if (!fs::exists(library)) Make(directory, library);
    return directory.string();
}

}  // namespace zel::screen_test
