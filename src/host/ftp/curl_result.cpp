#include "host/ftp/curl_result.h"

namespace zel::ftp {

namespace {

struct Meaning {
    CURLcode code;
    FtpError error;
    const char* reason;
    bool with_reply;  // append the reply number
};

constexpr Meaning kMeanings[] = {
    {CURLE_OK, FtpError::kNone, "", false},
    {CURLE_ABORTED_BY_CALLBACK, FtpError::kCancelled, "cancelled", false},
    {CURLE_URL_MALFORMAT, FtpError::kBadOption, "invalid server name or path", false},
    {CURLE_LOGIN_DENIED, FtpError::kLogin, "user name or password refused", true},
    {CURLE_USE_SSL_FAILED, FtpError::kTls, "the server does not support TLS", true},
    {CURLE_SSL_CONNECT_ERROR, FtpError::kTls, "the TLS handshake failed", false},
    {CURLE_PEER_FAILED_VERIFICATION, FtpError::kTls, "the server's certificate is not valid for it", false},
    {CURLE_SSL_CACERT_BADFILE, FtpError::kTls, "cannot read the file of trusted certificates", false},
    {CURLE_SSL_ISSUER_ERROR, FtpError::kTls, "the server's certificate is not valid for it", false},
    {CURLE_REMOTE_ACCESS_DENIED, FtpError::kNoDirectory, "no such directory on the server, or access denied", true},
    {CURLE_REMOTE_FILE_NOT_FOUND, FtpError::kRefused, "not on the server, or access denied", true},
    {CURLE_FTP_COULDNT_RETR_FILE, FtpError::kRefused, "the server refused to send it", true},
    // The only command sent this way is REST.
    {CURLE_QUOTE_ERROR, FtpError::kCannotResume, "the server cannot resume transfers", true},
    {CURLE_COULDNT_RESOLVE_HOST, FtpError::kUnreachable, "unknown host name", false},
    {CURLE_COULDNT_CONNECT, FtpError::kUnreachable, "cannot connect to the server", false},
    {CURLE_PARTIAL_FILE, FtpError::kConnectionLost, "connection lost", false},
    {CURLE_RECV_ERROR, FtpError::kConnectionLost, "connection lost", false},
    {CURLE_SEND_ERROR, FtpError::kConnectionLost, "connection lost", false},
    {CURLE_GOT_NOTHING, FtpError::kConnectionLost, "connection lost", false},
    {CURLE_FTP_ACCEPT_FAILED, FtpError::kConnectionLost, "the server did not open the data connection", true},
    {CURLE_FTP_ACCEPT_TIMEOUT, FtpError::kStalled, "the server did not open the data connection in time", false},
    {CURLE_FTP_WEIRD_SERVER_REPLY, FtpError::kConnectionLost, "invalid FTP reply, or connection lost", false},
    {CURLE_FTP_WEIRD_PASS_REPLY, FtpError::kConnectionLost, "invalid FTP reply to the login", true},
    {CURLE_FTP_WEIRD_PASV_REPLY, FtpError::kConnectionLost, "the server refused passive mode", true},
    {CURLE_FTP_WEIRD_227_FORMAT, FtpError::kConnectionLost, "invalid address for the data connection", false},
    {CURLE_FTP_CANT_GET_HOST, FtpError::kConnectionLost, "invalid address for the data connection", false},
    {CURLE_FTP_PORT_FAILED, FtpError::kConnectionLost, "the server refused active mode: try passive mode", true},
    {CURLE_OPERATION_TIMEDOUT, FtpError::kStalled, "the server timed out", false},
};

}  // namespace

FtpResult ResultOf(CURLcode code, long reply) {
    for (const Meaning& meaning : kMeanings) {
        if (meaning.code != code) continue;
        FtpResult result{meaning.error, meaning.reason};
        // Replies 400 to 499 are transient: the same request may succeed later.
        const bool refused = result.error == FtpError::kRefused || result.error == FtpError::kLogin;
        if (refused && reply / 100 == 4) result.error = FtpError::kConnectionLost;
        if (meaning.with_reply && reply >= 100 && reply <= 599) {
            result.reason += " (reply " + std::to_string(reply) + ")";
        }
        return result;
    }
    return {FtpError::kOther, curl_easy_strerror(code)};
}

}  // namespace zel::ftp
