#include "host/ftp/curl_words.h"

namespace zel::ftp {

namespace {

struct Meaning {
    CURLcode code;
    FtpError error;
    const char* words;
    bool with_reply;  // the server's number says more
};

constexpr Meaning kMeanings[] = {
    {CURLE_OK, FtpError::kNone, "", false},
    {CURLE_ABORTED_BY_CALLBACK, FtpError::kCancelled, "stopped", false},
    {CURLE_URL_MALFORMAT, FtpError::kBadOption, "the server's name or the path can't be used", false},
    {CURLE_LOGIN_DENIED, FtpError::kLogin, "user or password was refused", true},
    {CURLE_USE_SSL_FAILED, FtpError::kTls, "the server doesn't encrypt", true},
    {CURLE_SSL_CONNECT_ERROR, FtpError::kTls, "encryption couldn't be agreed on", false},
    {CURLE_PEER_FAILED_VERIFICATION, FtpError::kTls, "the server's certificate isn't good for it", false},
    {CURLE_SSL_CACERT_BADFILE, FtpError::kTls, "the file of trusted certificates can't be read", false},
    {CURLE_SSL_ISSUER_ERROR, FtpError::kTls, "the server's certificate isn't good for it", false},
    {CURLE_REMOTE_ACCESS_DENIED, FtpError::kNoDirectory, "the server has no such directory, or doesn't let it be seen",
     true},
    {CURLE_REMOTE_FILE_NOT_FOUND, FtpError::kRefused, "the server doesn't have it, or doesn't give it", true},
    {CURLE_FTP_COULDNT_RETR_FILE, FtpError::kRefused, "the server doesn't give it", true},
    {CURLE_QUOTE_ERROR, FtpError::kCannotResume, "the server can't resume", true},  // REST alone is sent this way
    {CURLE_COULDNT_RESOLVE_HOST, FtpError::kUnreachable, "there is no host of that name", false},
    {CURLE_COULDNT_CONNECT, FtpError::kUnreachable, "nothing answers there", false},
    {CURLE_PARTIAL_FILE, FtpError::kCut, "the connection was cut", false},
    {CURLE_RECV_ERROR, FtpError::kCut, "the connection was cut", false},
    {CURLE_SEND_ERROR, FtpError::kCut, "the connection was cut", false},
    {CURLE_GOT_NOTHING, FtpError::kCut, "the connection was cut", false},
    {CURLE_FTP_ACCEPT_FAILED, FtpError::kCut, "the server didn't connect back", true},
    {CURLE_FTP_ACCEPT_TIMEOUT, FtpError::kStalled, "the server didn't connect back in time", false},
    {CURLE_FTP_WEIRD_SERVER_REPLY, FtpError::kCut, "what answers doesn't speak FTP, or broke off", false},
    {CURLE_FTP_WEIRD_PASS_REPLY, FtpError::kCut, "the server's answer to the login isn't FTP", true},
    {CURLE_FTP_WEIRD_PASV_REPLY, FtpError::kCut, "the server opened no connection for data", true},
    {CURLE_FTP_WEIRD_227_FORMAT, FtpError::kCut, "the server's connection for data makes no sense", false},
    {CURLE_FTP_CANT_GET_HOST, FtpError::kCut, "the server's connection for data makes no sense", false},
    {CURLE_FTP_PORT_FAILED, FtpError::kCut, "the server can't connect back: try passive transfer", true},
    {CURLE_OPERATION_TIMEDOUT, FtpError::kStalled, "the server took too long", false},
};

}  // namespace

FtpResult ResultOf(CURLcode code, long reply) {
    for (const Meaning& meaning : kMeanings) {
        if (meaning.code != code) continue;
        FtpResult result{meaning.error, meaning.words};
        // A reply from 400 to 499 is for now; the same may work in a moment.
        const bool refused = result.error == FtpError::kRefused || result.error == FtpError::kLogin;
        if (refused && reply / 100 == 4) result.error = FtpError::kCut;
        if (meaning.with_reply && reply >= 100 && reply <= 599) {
            result.words += " (reply " + std::to_string(reply) + ")";
        }
        return result;
    }
    return {FtpError::kOther, curl_easy_strerror(code)};
}

}  // namespace zel::ftp
