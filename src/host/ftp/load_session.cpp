#include <dlfcn.h>

#include "host/ftp/ftp_session.h"

namespace zel::ftp {

std::unique_ptr<FtpSession> MakeFtpSession(ServerOptions options, FtpSession::Cancelled cancelled, std::string& why) {
#ifdef ZELTRANS_FTP_LIBRARY
    // Looked for by the program's own run path; it stays loaded, as the libraries below it don't like to go.
    static void* const library = dlopen(ZELTRANS_FTP_LIBRARY, RTLD_NOW | RTLD_LOCAL);
    if (library == nullptr) {
        why = std::string("FTP can't be used here: ") + ZELTRANS_FTP_LIBRARY + " or a library below it is missing";
        return nullptr;
    }
    const auto make = reinterpret_cast<MakeCurlSession>(dlsym(library, kMakeCurlSession));
    if (make == nullptr) {
        why = std::string("FTP can't be used here: ") + ZELTRANS_FTP_LIBRARY + " is another version's";
        return nullptr;
    }
    return std::unique_ptr<FtpSession>(make(std::move(options), std::move(cancelled)));
#else
    static_cast<void>(options);
    static_cast<void>(cancelled);
    why = "this build has no FTP: libcurl was missing when it was made";
    return nullptr;
#endif
}

}  // namespace zel::ftp
