#include "host/ftp/netrc.h"

#include <algorithm>
#include <string>
#include <utility>

#include "base/fold_case.h"
#include "host/ftp/remote_name.h"

namespace zel::ftp {

namespace {

constexpr std::string_view kBlanks = " \t\r\n";

class Tokenizer {
  public:
    explicit Tokenizer(std::string_view text) : m_text(text) {}

    // The next token, empty at the end; comments are skipped.
    std::string Next() {
        for (;;) {
            m_text.remove_prefix(std::min(m_text.find_first_not_of(kBlanks), m_text.size()));
            if (!m_text.starts_with('#')) break;
            m_text.remove_prefix(std::min(m_text.find('\n'), m_text.size()));
        }
        return m_text.starts_with('"') ? Quoted() : Plain();
    }

    // A macro ends at an empty line.
    void SkipMacro() { m_text.remove_prefix(std::min(m_text.find("\n\n"), m_text.size())); }

  private:
    std::string Plain() {
        const std::size_t end = std::min(m_text.find_first_of(kBlanks), m_text.size());
        std::string token(m_text.substr(0, end));
        m_text.remove_prefix(end);
        return token;
    }

    std::string Quoted() {
        std::string token;
        m_text.remove_prefix(1);
        while (!m_text.empty() && m_text.front() != '"') {
            if (m_text.front() == '\\' && m_text.size() > 1) m_text.remove_prefix(1);
            token += m_text.front();
            m_text.remove_prefix(1);
        }
        if (!m_text.empty()) m_text.remove_prefix(1);
        return token;
    }

    std::string_view m_text;
};

struct Entry {
    // Empty: the default entry, for every host.
    std::optional<std::string> host;
    std::optional<std::string> login;
    std::optional<Secret> password;

    bool AppliesTo(std::string_view wanted_host, std::string_view user) const {
        return (!host || base::EqualsFolded(*host, wanted_host)) && (!login || *login == user) && password;
    }
};

class EntryReader {
  public:
    explicit EntryReader(std::string_view text) : m_tokens(text), m_token(m_tokens.Next()) {}

    std::optional<Entry> Next() {
        while (!m_token.empty() && !AtEntry()) SkipToken();
        if (m_token.empty()) return std::nullopt;
        Entry entry;
        if (m_token == "machine") entry.host = m_tokens.Next();
        for (m_token = m_tokens.Next(); !m_token.empty() && !AtEntry(); SkipToken()) {
            if (m_token == "login") {
                entry.login = m_tokens.Next();
            } else if (m_token == "password") {
                entry.password = Secret(m_tokens.Next());
            } else if (m_token == "account") {
                m_tokens.Next();
            }
        }
        return entry;
    }

  private:
    bool AtEntry() const { return m_token == "machine" || m_token == "default"; }

    void SkipToken() {
        if (m_token == "macdef") m_tokens.SkipMacro();
        m_token = m_tokens.Next();
    }

    Tokenizer m_tokens;
    std::string m_token;
};

}  // namespace

std::optional<Secret> FindNetrcPassword(std::string_view text, std::string_view host, std::string_view user) {
    EntryReader entries(text);
    while (std::optional<Entry> entry = entries.Next()) {
        if (entry->AppliesTo(host, user)) return std::move(entry->password);
    }
    return std::nullopt;
}

}  // namespace zel::ftp
