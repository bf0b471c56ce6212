#pragma once

#include <cstring>
#include <string>
#include <utility>

namespace ftp {

/// A password. Its bytes are wiped when it goes; it can't be copied by mistake, nor written anywhere.
class Secret {
  public:
    Secret() = default;
    explicit Secret(std::string text) : m_text(std::move(text)) { Wipe(text); }
    Secret(Secret&& other) noexcept : m_text(std::move(other.m_text)) { Wipe(other.m_text); }
    Secret& operator=(Secret&& other) noexcept {
        if (this != &other) {
            Wipe(m_text);
            m_text = std::move(other.m_text);
            Wipe(other.m_text);
        }
        return *this;
    }
    ~Secret() { Wipe(m_text); }

    const std::string& Reveal() const noexcept { return m_text; }

    /// Zeroes a text's bytes and empties it.
    static void Wipe(std::string& text) noexcept {
        explicit_bzero(text.data(), text.size());
        text.clear();
    }

  private:
    std::string m_text;
};

}  // namespace ftp
