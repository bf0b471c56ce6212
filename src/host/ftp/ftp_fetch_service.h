#pragma once

#include <functional>
#include <optional>
#include <string>

#include "host/ftp/fetch.h"
#include "host/ftp_service.h"

namespace zel::ftp {

/// A directory of the server, as a user sees it who chooses from it.
struct RemoteView {
    std::string directory;  ///< empty: the one of the login, whose name the server didn't tell.
    Listing listing;
};

/// What the user does with a view.
struct RemoteChoice {
    enum class Kind {
        kOpen,  ///< shows the directory `name`; ".." is the one above.
        kTake,  ///< takes the file `name`, or with an empty name the directory that is shown.
    };
    Kind kind = Kind::kTake;
    std::string name;
};

/// Lets the user choose; nothing when the user would rather not.
using RemoteChooser = std::function<std::optional<RemoteChoice>(const RemoteView&)>;

struct FetchServiceOptions {
    Tls tls = Tls::kTry;
    std::string certificates;  ///< as ServerOptions.
    int connect_seconds = 15, stall_seconds = 30;
    RemoteChooser chooser;              ///< without one, a box shows the names, and nothing is chosen.
    FetchObserver* observer = nullptr;  ///< hears of a transfer as well; not owned, may be null.
};

/// Answers the dialog of the FTP copy by fetching. Boxes tell what went wrong and how it ended; with Skip Warnings only
/// that nothing could be done at all. ESC stops it.
class FetchService : public host::FtpService {
  public:
    explicit FetchService(FetchServiceOptions options) : m_options(std::move(options)) {}

    void Handle(CZelTransFTP& dialog) override;

  private:
    FetchServiceOptions m_options;
};

}  // namespace zel::ftp
