#pragma once

#include <cstring>
#include <string>

namespace zel::ftp {

/// A password. Its bytes are wiped when it goes; it can't be copied by mistake, nor written anywhere.
class Secret {
  public:
    Secret() = default;
    explicit Secret(std::string text) {
        m_text.swap(text);
        Wipe(text);
    }
    Secret(Secret&& other) noexcept {
        m_text.swap(other.m_text);
        Wipe(other.m_text);
    }
    Secret& operator=(Secret&& other) noexcept {
        if (this != &other) {
            m_text.swap(other.m_text);
            Wipe(other.m_text);
        }
        return *this;
    }
    ~Secret() { Wipe(m_text); }

    const std::string& Reveal() const noexcept { return m_text; }

    /// Zeroes a text's bytes, those of a short one that has been moved away too, and empties it.
    static void Wipe(std::string& text) noexcept {
        text.resize(text.capacity());
        explicit_bzero(text.data(), text.size());
        text.clear();
    }

  private:
    std::string m_text;
};

}  // namespace zel::ftp
