#pragma once

#include <cstring>
#include <string>

namespace zel::ftp {

/// A password. It cannot be copied, and its bytes are zeroed when it is destroyed or moved from.
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

    /// Zeroes the whole capacity of a text and empties it. A short text that was moved from still contains its bytes.
    static void Wipe(std::string& text) noexcept {
        text.resize(text.capacity());
        explicit_bzero(text.data(), text.size());
        text.clear();
    }

  private:
    std::string m_text;
};

}  // namespace zel::ftp
