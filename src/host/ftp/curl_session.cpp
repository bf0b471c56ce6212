#include <algorithm>
#include <chrono>
#include <csignal>
#include <ctime>
#include <memory>
#include <new>
#include <string_view>
#include <utility>

#include <curl/curl.h>

#include "host/ftp/curl_result.h"
#include "host/ftp/ftp_session.h"

namespace zel::ftp {

namespace {

// Blocks SIGPIPE, which a write to a closed connection raises, on this thread.
class BrokenPipeIgnored {
  public:
    BrokenPipeIgnored() {
        sigset_t pipe;
        sigemptyset(&pipe);
        sigaddset(&pipe, SIGPIPE);
        pthread_sigmask(SIG_BLOCK, &pipe, &m_before);
    }
    ~BrokenPipeIgnored() {
        sigset_t pipe;
        sigemptyset(&pipe);
        sigaddset(&pipe, SIGPIPE);
        const timespec no_wait{};
        if (sigismember(&m_before, SIGPIPE) == 0) {
            while (sigtimedwait(&pipe, nullptr, &no_wait) > 0) {
            }
        }
        pthread_sigmask(SIG_SETMASK, &m_before, nullptr);
    }
    BrokenPipeIgnored(const BrokenPipeIgnored&) = delete;
    BrokenPipeIgnored& operator=(const BrokenPipeIgnored&) = delete;

  private:
    sigset_t m_before{};
};

bool HasControlCharacter(std::string_view text) {
    return std::ranges::any_of(text, [](char c) { return static_cast<unsigned char>(c) < ' ' || c == 127; });
}

// Whether the text contains nothing that would end the host part of a URL.
bool IsUrlHost(const std::string& text) {
    constexpr std::string_view kAllowed = "-._:[]%";
    return !text.empty() && std::ranges::all_of(text, [&](char c) {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
               kAllowed.find(c) != std::string_view::npos;
    });
}

const char* CommandOf(ListCommand command) {
    switch (command) {
        case ListCommand::kMlsd:
            return "MLSD";
        case ListCommand::kListAll:
            return "LIST -a";
        case ListCommand::kList:
            return "LIST";
        case ListCommand::kNlst:
            return "NLST";
    }
    return "LIST";
}

// One component of a URL's path.
std::string Escaped(CURL* curl, const std::string& name) {
    if (name.empty()) return {};
    const std::unique_ptr<char, decltype(&curl_free)> escaped(
        curl_easy_escape(curl, name.data(), static_cast<int>(name.size())), curl_free);
    if (!escaped) throw std::bad_alloc();
    return escaped.get();
}

std::string EscapedPath(CURL* curl, const std::string& path) {
    std::string escaped;
    for (std::size_t begin = 0;;) {
        const std::size_t end = std::min(path.find('/', begin), path.size());
        escaped += Escaped(curl, path.substr(begin, end - begin));
        if (end == path.size()) return escaped;
        escaped += '/';
        begin = end + 1;
    }
}

struct FreeList {
    void operator()(curl_slist* list) const noexcept { curl_slist_free_all(list); }
};

// A session of libcurl. The options allow a hostile server no redirection, no other host and no unlimited wait.
class CurlSession : public FtpSession {
  public:
    CurlSession(ServerOptions&& options, Cancelled&& cancelled)
        : m_options(std::move(options)),
          m_cancelled(std::move(cancelled)),
          m_curl(curl_easy_init()),
          m_multi(curl_multi_init()) {}
    ~CurlSession() override {
        const BrokenPipeIgnored no_signal;
        curl_multi_cleanup(m_multi);
        curl_easy_cleanup(m_curl);
    }
    CurlSession(const CurlSession&) = delete;
    CurlSession& operator=(const CurlSession&) = delete;

    FtpResult List(const std::string& directory, ListCommand command, const Receiver& receiver) override {
        if (FtpResult result = Prepare(directory, ""); !result.Done()) return result;
        curl_easy_setopt(m_curl, CURLOPT_CUSTOMREQUEST, CommandOf(command));
        return Perform(&receiver);
    }

    FtpResult GetFacts(const std::string& directory, const std::string& name, FileFacts& facts) override {
        if (FtpResult result = Prepare(directory, name); !result.Done()) return result;
        curl_easy_setopt(m_curl, CURLOPT_NOBODY, 1L);
        curl_easy_setopt(m_curl, CURLOPT_FILETIME, 1L);
        FtpResult result = Perform(nullptr);
        if (!result.Done()) return result;
        curl_off_t size = -1, time = -1;
        curl_easy_getinfo(m_curl, CURLINFO_CONTENT_LENGTH_DOWNLOAD_T, &size);
        curl_easy_getinfo(m_curl, CURLINFO_FILETIME_T, &time);
        facts = {};
        if (size >= 0) facts.size = static_cast<std::uint64_t>(size);
        if (time >= 0) facts.modified = TimeText(static_cast<std::time_t>(time));
        return result;
    }

    FtpResult Fetch(const std::string& directory, const std::string& name, std::uint64_t offset,
                    const Receiver& receiver) override {
        if (FtpResult result = Prepare(directory, name); !result.Done()) return result;
        // Otherwise libcurl ends a transfer successfully at the size that the server reported. It then does not support
        // its own resuming, so REST is sent here.
        curl_easy_setopt(m_curl, CURLOPT_IGNORE_CONTENT_LENGTH, 1L);
        if (offset == 0) return Perform(&receiver);
        const std::string restart = "REST " + std::to_string(offset);
        const std::unique_ptr<curl_slist, FreeList> commands(curl_slist_append(nullptr, restart.c_str()));
        curl_easy_setopt(m_curl, CURLOPT_PREQUOTE, commands.get());
        FtpResult result = Perform(&receiver);
        curl_easy_setopt(m_curl, CURLOPT_PREQUOTE, nullptr);
        return result;
    }

    std::string LoginDirectory() const override { return m_login_directory; }

  private:
    using Clock = std::chrono::steady_clock;

    static std::string TimeText(std::time_t time) {
        std::tm parts{};
        char text[32] = {};
        if (gmtime_r(&time, &parts) == nullptr) return {};
        return {text, std::strftime(text, sizeof text, "%Y%m%d%H%M%S", &parts)};
    }

    static std::size_t OnBytes(char* bytes, std::size_t /*one*/, std::size_t count, void* self) {
        auto& session = *static_cast<CurlSession*>(self);
        session.m_last_data = Clock::now();
        if (session.m_receiver == nullptr) return count;
        const bool accepted = (*session.m_receiver)({reinterpret_cast<const std::uint8_t*>(bytes), count});
        if (!accepted) session.m_stopped = true;
        return accepted ? count : CURL_WRITEFUNC_ERROR;
    }
    static int OnProgress(void* self, curl_off_t, curl_off_t, curl_off_t, curl_off_t) {
        const auto& cancelled = static_cast<CurlSession*>(self)->m_cancelled;
        return cancelled && cancelled() ? 1 : 0;
    }

    // Sets all options; the connection is kept. The name is empty for a directory.
    FtpResult Prepare(const std::string& directory, const std::string& name) {
        if (m_curl == nullptr || m_multi == nullptr) return {FtpError::kOther, "out of memory"};
        for (const std::string_view text : {std::string_view(m_options.host), std::string_view(m_options.user),
                                            std::string_view(directory), std::string_view(name)}) {
            if (HasControlCharacter(text)) return {FtpError::kBadOption, "contains a control character"};
        }
        if (!IsUrlHost(m_options.host)) return {FtpError::kBadOption, "invalid server name"};
        if (HasControlCharacter(m_options.password.Reveal())) {
            return {FtpError::kBadOption, "the password contains a control character"};
        }
        curl_easy_reset(m_curl);
        SetUrl(directory, name);
        SetLimits();
        SetAccount();
        SetEncryption();
        curl_easy_setopt(m_curl, CURLOPT_WRITEFUNCTION, &CurlSession::OnBytes);
        curl_easy_setopt(m_curl, CURLOPT_WRITEDATA, this);
        curl_easy_setopt(m_curl, CURLOPT_XFERINFOFUNCTION, &CurlSession::OnProgress);
        curl_easy_setopt(m_curl, CURLOPT_XFERINFODATA, this);
        curl_easy_setopt(m_curl, CURLOPT_NOPROGRESS, 0L);
        return {};
    }

    void SetUrl(const std::string& directory, const std::string& name) {
        std::string url = m_options.tls_from_start ? "ftps://" : "ftp://";
        const bool bare_ipv6 = m_options.host.find(':') != std::string::npos && !m_options.host.starts_with('[');
        url += bare_ipv6 ? "[" + m_options.host + "]" : m_options.host;
        if (m_options.port != 0) url += ":" + std::to_string(m_options.port);
        // The path after the first slash is relative to the login directory; an absolute path begins with another
        // slash.
        const bool absolute = directory.starts_with('/');
        url += absolute ? "/%2F" + EscapedPath(m_curl, directory.substr(1)) : "/" + EscapedPath(m_curl, directory);
        if (url.back() != '/') url += '/';
        url += Escaped(m_curl, name);
        curl_easy_setopt(m_curl, CURLOPT_URL, url.c_str());
        curl_easy_setopt(m_curl, CURLOPT_PATH_AS_IS, 1L);
        curl_easy_setopt(m_curl, CURLOPT_FTP_FILEMETHOD, static_cast<long>(CURLFTPMETHOD_SINGLECWD));
    }

    void SetLimits() {
        const long connect = m_options.connect_seconds, stall = m_options.stall_seconds;
        curl_easy_setopt(m_curl, CURLOPT_PROTOCOLS_STR, "ftp,ftps");
        curl_easy_setopt(m_curl, CURLOPT_REDIR_PROTOCOLS_STR, "ftp,ftps");
        curl_easy_setopt(m_curl, CURLOPT_FOLLOWLOCATION, 0L);
        curl_easy_setopt(m_curl, CURLOPT_PROXY, "");  // not from the environment either
        curl_easy_setopt(m_curl, CURLOPT_NOSIGNAL, 1L);
        curl_easy_setopt(m_curl, CURLOPT_TCP_KEEPALIVE, 1L);
        curl_easy_setopt(m_curl, CURLOPT_CONNECTTIMEOUT, connect);
        curl_easy_setopt(m_curl, CURLOPT_ACCEPTTIMEOUT_MS, connect * 1000);
        curl_easy_setopt(m_curl, CURLOPT_SERVER_RESPONSE_TIMEOUT, stall);
        curl_easy_setopt(m_curl, CURLOPT_LOW_SPEED_TIME, stall);
        curl_easy_setopt(m_curl, CURLOPT_LOW_SPEED_LIMIT, static_cast<long>(kMinBytesPerSecond));
        // Connect to the server itself for data, whatever address it names.
        curl_easy_setopt(m_curl, CURLOPT_FTP_SKIP_PASV_IP, 1L);
        if (!m_options.passive) curl_easy_setopt(m_curl, CURLOPT_FTPPORT, "-");
    }

    void SetAccount() {
        const bool anonymous = m_options.user.empty();
        curl_easy_setopt(m_curl, CURLOPT_NETRC, static_cast<long>(CURL_NETRC_IGNORED));
        curl_easy_setopt(m_curl, CURLOPT_USERNAME, anonymous ? "anonymous" : m_options.user.c_str());
        curl_easy_setopt(m_curl, CURLOPT_PASSWORD, anonymous ? "zeltrans@" : m_options.password.Reveal().c_str());
    }

    void SetEncryption() {
        const bool require = m_options.tls == Tls::kRequire || m_options.tls_from_start;
        const long use = require ? CURLUSESSL_ALL : m_options.tls == Tls::kTry ? CURLUSESSL_TRY : CURLUSESSL_NONE;
        curl_easy_setopt(m_curl, CURLOPT_USE_SSL, use);
        curl_easy_setopt(m_curl, CURLOPT_FTPSSLAUTH, static_cast<long>(CURLFTPAUTH_TLS));
        curl_easy_setopt(m_curl, CURLOPT_SSLVERSION, static_cast<long>(CURL_SSLVERSION_TLSv1_2));
        curl_easy_setopt(m_curl, CURLOPT_SSL_VERIFYPEER, require ? 1L : 0L);
        curl_easy_setopt(m_curl, CURLOPT_SSL_VERIFYHOST, require ? 2L : 0L);
        if (!m_options.certificates.empty()) {
            curl_easy_setopt(m_curl, CURLOPT_CAINFO, m_options.certificates.c_str());
            curl_easy_setopt(m_curl, CURLOPT_CAPATH, nullptr);
        }
    }

    FtpResult Perform(const Receiver* receiver) {
        const BrokenPipeIgnored no_signal;
        m_receiver = receiver;
        m_stopped = false;
        const CURLcode code = Transfer();
        m_receiver = nullptr;
        long reply = 0;
        curl_easy_getinfo(m_curl, CURLINFO_RESPONSE_CODE, &reply);
        char* entry = nullptr;
        if (curl_easy_getinfo(m_curl, CURLINFO_FTP_ENTRY_PATH, &entry) == CURLE_OK && entry != nullptr) {
            m_login_directory = entry;
        }
        if (m_stopped) return {FtpError::kStopped, "stopped by the receiver"};
        return ResultOf(code, reply);
    }

    // Longest time without data. libcurl's own limits begin again with each line of a reply, so a server could hold the
    // connection for ever with a reply that never ends.
    std::chrono::seconds LongestSilence() const {
        return std::chrono::seconds(m_options.connect_seconds) + 2 * std::chrono::seconds(m_options.stall_seconds);
    }

    // The loop of curl_easy_perform waits for a second if the reply to the data connection comes immediately.
    CURLcode Transfer() {
        constexpr int kWaitMilliseconds = 20;
        m_last_data = Clock::now();
        if (curl_multi_add_handle(m_multi, m_curl) != CURLM_OK) return CURLE_OUT_OF_MEMORY;
        CURLcode code = CURLE_FAILED_INIT;
        for (int running = 1; running != 0;) {
            if (curl_multi_perform(m_multi, &running) != CURLM_OK) break;
            int left = 0;
            if (const CURLMsg* message = curl_multi_info_read(m_multi, &left)) {
                code = message->data.result;
                break;
            }
            if (Clock::now() - m_last_data > LongestSilence()) {
                code = CURLE_OPERATION_TIMEDOUT;
                break;
            }
            if (running != 0) curl_multi_poll(m_multi, nullptr, 0, kWaitMilliseconds, nullptr);
        }
        curl_multi_remove_handle(m_multi, m_curl);
        return code;
    }

    ServerOptions m_options;
    Cancelled m_cancelled;
    Clock::time_point m_last_data;
    CURL* m_curl;
    CURLM* m_multi;  // owns the connection
    const Receiver* m_receiver = nullptr;
    bool m_stopped = false;
    std::string m_login_directory;
};

}  // namespace

extern "C" [[gnu::visibility("default")]] FtpSession* ZelTransMakeCurlSession(ServerOptions&& options,
                                                                              FtpSession::Cancelled&& cancelled) {
    return new CurlSession(std::move(options), std::move(cancelled));
}

extern "C" [[gnu::visibility("default")]] const char* ZelTransCurlVersion() {
    return curl_version_info(CURLVERSION_NOW)->version;
}

}  // namespace zel::ftp
