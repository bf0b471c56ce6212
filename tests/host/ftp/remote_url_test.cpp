#include "host/ftp/remote_url.h"

#include <gtest/gtest.h>

namespace zel::test {

namespace {

struct UrlCase {
    const char* text;
    const char* expected;  // "s" for ftps, user, host, port and directory, or the error
};

TEST(RemoteUrl, IsParsedOrRefusedWithTheReason) {
    const UrlCase rows[] = {{"ftp://192.0.2.7/DISK", "- @192.0.2.7:0 DISK"},
                            {"FTPS://anna@host.example:2121//srv/a%20b/", "s anna@host.example:2121 /srv/a b/"},
                            {"ftp://[::1]:21", "- @::1:21 "},
                            {"ftp://h", "- @h:0 "},
                            {"http://host/", "the address must begin with ftp:// or ftps://"},
                            {"ftp:///DISK", "invalid host or port in the address"},
                            {"ftp://h:0/", "invalid host or port in the address"},
                            {"ftp://h:99999/", "invalid host or port in the address"},
                            {"ftp://-h/", "invalid host or port in the address"},
                            {"ftp://h/a%0D%0ADELE%20x", "invalid directory in the address"},
                            {"ftp://h/a%4", "invalid directory in the address"},
                            {"ftp://anna:sw@fish@h/",
                             "a password in the address is visible to every user of this machine; omit it: it is taken "
                             "from ZELTRANS_FTP_PASSWORD, from a netrc file, or from a prompt"}};
    for (const UrlCase& row : rows) {
        std::string why;
        const auto url = ftp::ParseRemoteUrl(row.text, why);
        const std::string parsed = url ? (url->tls_from_start ? "s " : "- ") + url->user + "@" + url->host + ":" +
                                             std::to_string(url->port) + " " + url->directory
                                       : why;
        EXPECT_EQ(parsed, row.expected) << row.text;
    }
}

}  // namespace

}  // namespace zel::test
