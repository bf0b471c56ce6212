#include "host/archive/archive_stream.h"

#include <stdexcept>

#include <dlfcn.h>

namespace zel::archive {

const char kArchiveKinds[] = "zip, tar, ISO 9660";

std::unique_ptr<ArchiveStream> OpenArchiveStream(const base::FileDescriptor& file) {
#ifdef ZELTRANS_ARCHIVE_LIBRARY
    // Found through the program's run path. Never unloaded.
    static void* const library = dlopen(ZELTRANS_ARCHIVE_LIBRARY, RTLD_NOW | RTLD_LOCAL);
    const auto make =
        library != nullptr ? reinterpret_cast<MakeArchiveStream>(dlsym(library, kMakeArchiveStream)) : nullptr;
    if (make == nullptr) {
        throw std::runtime_error("archives can't be read: cannot load " ZELTRANS_ARCHIVE_LIBRARY
                                 " or a library that it depends on");
    }
    return std::unique_ptr<ArchiveStream>(make(file.Get()));
#else
    static_cast<void>(file);
    throw std::runtime_error("archives can't be read: this build was made without libarchive");
#endif
}

}  // namespace zel::archive
