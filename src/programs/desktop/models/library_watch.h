#pragma once

#include <QObject>
#include <array>
#include <cstdint>
#include <string>

class QTimer;

namespace zel::desktop {

/// Notices that a library's file was written, by this or by another program.
class LibraryWatch : public QObject {
    Q_OBJECT

  public:
    explicit LibraryWatch(std::string library, QObject* parent = nullptr);

    void SetLibrary(std::string library);
    /// What is written from now on is a change. Call it before the library is read.
    void Note();

  Q_SIGNALS:
    /// The library was written after the last Note.
    void changed();

  private:
    /// Sizes, and times of the last writes in nanoseconds, of the file and its log; 0 for a missing one.
    using Stamp = std::array<std::int64_t, 4>;
    Stamp Now() const;
    void Check();

    std::string m_library;
    Stamp m_noted{};
    QTimer* m_timer;
};

}  // namespace zel::desktop
