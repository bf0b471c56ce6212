#pragma once

#include <functional>
#include <optional>
#include <string>

#include "host/ftp/fetch.h"
#include "host/ftp_service.h"

namespace zel::ftp {

/// A directory of the server, for the user to choose from.
struct RemoteView {
    /// Empty: the login directory, whose name the server does not report.
    std::string directory;
    Listing listing;
};

/// The user's choice from a view.
struct RemoteChoice {
    enum class Kind {
        /// Show the directory `name`; ".." is the parent.
        kOpen,
        /// Take the file `name`, or if that is empty the shown directory.
        kTake,
    };
    Kind kind = Kind::kTake;
    std::string name;
};

/// Lets the user choose; returns nothing if the user cancels.
using RemoteChooser = std::function<std::optional<RemoteChoice>(const RemoteView&)>;

struct FetchServiceOptions {
    Tls tls = Tls::kTry;
    /// As in ServerOptions, like the two below.
    std::string certificates;
    int connect_seconds = 15, stall_seconds = 30;
    /// Without one, a box shows the names and nothing is chosen.
    RemoteChooser chooser;
    /// Also observes each transfer; not owned, may be null.
    FetchObserver* observer = nullptr;
};

/// Lists and fetches for the module's FTP dialog. Boxes show errors and the result; with Skip Warnings only an error
/// that prevents the whole transfer. ESC cancels it.
class FetchService : public host::FtpService {
  public:
    explicit FetchService(FetchServiceOptions options) : m_options(std::move(options)) {}

    void Handle(CZelTransFTP& dialog) override;

  private:
    FetchServiceOptions m_options;
};

}  // namespace zel::ftp
