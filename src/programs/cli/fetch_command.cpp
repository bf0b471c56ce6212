#include "programs/cli/fetch_command.h"

#include <algorithm>
#include <memory>

#include <CLI/App.hpp>
#include <nlohmann/json.hpp>

#include "host/ftp/fetch.h"
#include "host/ftp/remote_url.h"
#include "programs/cli/choice_option.h"
#include "programs/cli/diagnostics.h"
#include "programs/cli/fetch_progress.h"
#include "programs/cli/ftp_password.h"
#include "programs/cli/interrupt.h"
#include "programs/cli/json_output.h"
#include "programs/cli/options.h"
#include "programs/cli/run_options.h"

namespace zel::cli {

namespace {

struct FetchArguments {
    std::string url, to;
    std::vector<std::string> words;  // of the selection
    std::optional<std::string> user, netrc, certificates;
    ftp::Tls tls = ftp::Tls::kTry;
    int connect_seconds = 15, stall_seconds = 30;
    bool active = false, overwrite = false, no_fonts = false, json = false;
};

/// The text of a selection: all names, one argument as it is, or the range of two.
std::string SelectionText(const std::vector<std::string>& words) {
    if (words.empty()) return "*";
    return words.size() == 1 ? words[0] : words[0] + "-" + words[1];
}

/// Why not every requested file is there.
std::string FailureOf(const ftp::FetchReport& report) {
    const std::size_t failed = report.Count(ftp::FileOutcome::kFailed);
    const auto first = std::ranges::find(report.files, ftp::FileOutcome::kFailed, &ftp::FileReport::outcome);
    const std::string text = first->name + ": " + first->reason;
    return failed == 1 ? text : std::to_string(failed) + " files failed, the first: " + text;
}

ExitCode RunFetchCommand(const FetchArguments& arguments) {
    std::string why;
    const ftp::RemoteUrl url = *ftp::ParseRemoteUrl(arguments.url, why);
    ftp::ServerOptions server;
    server.host = url.host;
    server.port = url.port;
    server.user = arguments.user.value_or(url.user);
    server.passive = !arguments.active;
    server.tls = arguments.tls;
    server.tls_from_start = url.tls_from_start;
    server.certificates = arguments.certificates.value_or("");
    server.connect_seconds = arguments.connect_seconds;
    server.stall_seconds = arguments.stall_seconds;
    if (!server.user.empty()) server.password = FindFtpPassword(server.host, server.user, arguments.netrc);

    PrintDetail("server " + server.host + (server.port == 0 ? "" : ":" + std::to_string(server.port)) + ", user " +
                (server.user.empty() ? "anonymous" : server.user) + ", directory " +
                (url.directory.empty() ? "of the login" : url.directory) + ", files " + SelectionText(arguments.words));
    HandleInterrupts();
    const auto session = ftp::MakeFtpSession(
        std::move(server), [] { return WasInterrupted(); }, why);
    if (!session) throw CommandError(why);
    FetchProgress progress(arguments.json);
    const ftp::FetchRequest request{.source = url.host + (url.port == 0 ? "" : ":" + std::to_string(url.port)),
                                    .directory = url.directory,
                                    .selection = *ftp::Selection::Parse(SelectionText(arguments.words), why),
                                    .to = arguments.to,
                                    .overwrite = arguments.overwrite,
                                    .fonts = !arguments.no_fonts,
                                    .listing_limits = {}};
    const ftp::FetchReport report = ftp::RunFetch(*session, request, progress);
    progress.Clear();
    if (arguments.json) PrintJson(FetchSummaryJson(report));
    if (!report.files.empty()) PrintLine(report.Summary());
    if (report.cancelled) {
        PrintError("interrupted; run the same command again to resume");
        return InterruptCode();
    }
    if (!report.failure.empty()) throw CommandError(report.failure);
    if (!report.Done()) throw CommandError(FailureOf(report));
    return ExitCode::kDone;
}

void AddOptions(CLI::App& command, FetchArguments& arguments) {
    const auto check_url = [](const std::string& text) {
        std::string why;
        return ftp::ParseRemoteUrl(text, why) ? std::string() : why;
    };
    constexpr int kMaxSeconds = 3600;
    AddArgument(command, "URL", arguments.url,
                "the server and its directory: ftp://HOST/DIR, or ftps:// for TLS from the start. DIR is relative to "
                "the login directory, or absolute if it begins with another slash")
        .check(check_url, "");
    AddNumbers(command, arguments.words, "all files")
        .description(
            "the messages: a list of numbers such as 12 or 1,3,7-9, FIRST LAST, a name, or a pattern such as '.00*' "
            "[all files]");
    AddRequired(command, "--to", arguments.to, "DIR", "the local directory for the files, created if it is missing");
    AddText(command, "--user", arguments.user, "NAME",
            "the user name for the login [the one in URL, or anonymous]. The password comes from the environment "
            "variable ZELTRANS_FTP_PASSWORD, from a netrc file, or from a prompt");
    AddPath(command, "--netrc", arguments.netrc, "FILE", "the netrc file with the password [~/.netrc]");
    AddChoice<ftp::Tls>(
        command, "--tls", arguments.tls,
        {{"off", ftp::Tls::kOff}, {"try", ftp::Tls::kTry}, {"require", ftp::Tls::kRequire}},
        "TLS encryption: off, if the server supports it (try), or always and with a valid certificate (require)");
    AddPath(command, "--ca", arguments.certificates, "FILE",
            "the file of the certificates that --tls require trusts [the system's]");
    command.add_flag("--active", arguments.active,
                     "use FTP's active mode, in which the server opens the data connections");
    command.add_flag("--overwrite", arguments.overwrite, "replace existing files");
    command.add_flag("--no-fonts", arguments.no_fonts, "do not fetch the fonts that the messages use");
    AddJson(command, arguments.json, "print one JSON object per file and a summary, each in one line");
    AddInteger(command, "--connect-timeout", arguments.connect_seconds, kMaxSeconds, "S",
               "the time limit for connecting, 1 to 3600 seconds [15]");
    AddInteger(command, "--stall-timeout", arguments.stall_seconds, kMaxSeconds, "S",
               "the time limit without data or a reply, 1 to 3600 seconds [30]");
}

void CheckOptions(const CLI::App& command, const FetchArguments& arguments) {
    std::string why;
    const std::string selection = SelectionText(arguments.words);
    if (!ftp::Selection::Parse(selection, why)) throw CLI::ValidationError("NUMBERS", why);
    const ftp::RemoteUrl url = *ftp::ParseRemoteUrl(arguments.url, why);
    Require(command, "--netrc", !arguments.user.value_or(url.user).empty(), "--user or a user in URL");
    Require(command, "--ca", arguments.tls == ftp::Tls::kRequire || url.tls_from_start, "--tls require or ftps://");
    if (url.tls_from_start && command.count("--tls") != 0 && arguments.tls != ftp::Tls::kRequire)
        throw CLI::ValidationError("--tls", "ftps:// always requires TLS");
    ReserveStandardOutputFor({}, arguments.json);
}

}  // namespace

void AddFetchCommand(CLI::App& app, CommandRun& run) {
    const auto arguments = std::make_shared<FetchArguments>();
    CLI::App& command =
        *app.add_subcommand("fetch", "Fetches messages and the fonts that they use from an FTP server.");
    AddOptions(command, *arguments);
    AddVerbosity(command, true);
    AddExample(command, "zeltrans fetch ftp://192.0.2.7/DISK 1-20 --to DISK");
    command.callback([arguments, &command, &run] {
        CheckOptions(command, *arguments);
        run = [arguments] { return RunFetchCommand(*arguments); };
    });
}

}  // namespace zel::cli
