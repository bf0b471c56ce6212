#include "host/ftp/ftp_session.h"

#include <dlfcn.h>

namespace zel::ftp {

#ifdef ZELTRANS_FTP_LIBRARY

namespace {

/// Found through the program's run path. Never unloaded: the libraries it depends on do not support that.
/// @return null if it can't be loaded.
void* FtpLibrary() {
    static void* const library = dlopen(ZELTRANS_FTP_LIBRARY, RTLD_NOW | RTLD_LOCAL);
    return library;
}

}  // namespace

#endif

std::string CurlVersion() {
#ifdef ZELTRANS_FTP_LIBRARY
    void* const library = FtpLibrary();
    const auto version =
        reinterpret_cast<GetCurlVersion>(library != nullptr ? dlsym(library, kGetCurlVersion) : nullptr);
    return version != nullptr ? version() : "";
#else
    return {};
#endif
}

std::unique_ptr<FtpSession> MakeFtpSession(ServerOptions options, FtpSession::Cancelled cancelled, std::string& why) {
#ifdef ZELTRANS_FTP_LIBRARY
    void* const library = FtpLibrary();
    if (library == nullptr) {
        why = std::string("FTP is not available: cannot load ") + ZELTRANS_FTP_LIBRARY +
              " or a library that it depends on";
        return nullptr;
    }
    const auto make = reinterpret_cast<MakeCurlSession>(dlsym(library, kMakeCurlSession));
    if (make == nullptr) {
        why = std::string("FTP is not available: ") + ZELTRANS_FTP_LIBRARY + " belongs to another version";
        return nullptr;
    }
    return std::unique_ptr<FtpSession>(make(std::move(options), std::move(cancelled)));
#else
    static_cast<void>(options);
    static_cast<void>(cancelled);
    why = "FTP is not available: this build was made without libcurl";
    return nullptr;
#endif
}

}  // namespace zel::ftp
