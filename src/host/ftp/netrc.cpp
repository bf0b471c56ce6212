#include "host/ftp/netrc.h"

#include <algorithm>

#include "host/ftp/remote_name.h"

namespace zel::ftp {

namespace {

constexpr std::string_view kBlanks = " \t\r\n";

class Words {
  public:
    explicit Words(std::string_view text) : m_text(text) {}

    // The next word, empty at the end; comments are passed over.
    std::string Next() {
        for (;;) {
            m_text.remove_prefix(std::min(m_text.find_first_not_of(kBlanks), m_text.size()));
            if (!m_text.starts_with('#')) break;
            m_text.remove_prefix(std::min(m_text.find('\n'), m_text.size()));
        }
        return m_text.starts_with('"') ? Quoted() : Plain();
    }

    // A macro's lines, up to an empty one.
    void SkipMacro() {
        const std::size_t end = m_text.find("\n\n");
        m_text.remove_prefix(std::min(end, m_text.size()));
    }

  private:
    std::string Plain() {
        const std::size_t end = std::min(m_text.find_first_of(kBlanks), m_text.size());
        std::string word(m_text.substr(0, end));
        m_text.remove_prefix(end);
        return word;
    }

    std::string Quoted() {
        std::string word;
        m_text.remove_prefix(1);
        while (!m_text.empty() && m_text.front() != '"') {
            if (m_text.front() == '\\' && m_text.size() > 1) m_text.remove_prefix(1);
            word += m_text.front();
            m_text.remove_prefix(1);
        }
        if (!m_text.empty()) m_text.remove_prefix(1);
        return word;
    }

    std::string_view m_text;
};

}  // namespace

std::optional<Secret> FindNetrcPassword(std::string_view text, std::string_view host, std::string_view user) {
    Words words(text);
    bool applies = false;
    std::optional<std::string> login, password;
    const auto fits = [&] { return applies && password && (!login || *login == user); };
    for (std::string word = words.Next(); !word.empty(); word = words.Next()) {
        if (word == "machine" || word == "default") {
            if (fits()) break;
            applies = word == "default" || SameName(words.Next(), host);
            login.reset();
            if (password) Secret::Wipe(*password);
            password.reset();
        } else if (word == "login") {
            login = words.Next();
        } else if (word == "password") {
            password = words.Next();
        } else if (word == "account") {
            words.Next();
        } else if (word == "macdef") {
            words.SkipMacro();
        }
    }
    if (!fits()) return std::nullopt;
    return Secret(std::move(*password));
}

}  // namespace zel::ftp
