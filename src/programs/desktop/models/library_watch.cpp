#include "programs/desktop/models/library_watch.h"

#include <QTimer>
#include <utility>

#include <sys/stat.h>

namespace zel::desktop {

namespace {

// A notification of the system would not arrive for a file on another machine.
constexpr int kInterval_ms = 1500;
constexpr char kLogEnding[] = "-wal";

}  // namespace

LibraryWatch::LibraryWatch(std::string library, QObject* parent) : QObject(parent), m_timer(new QTimer(this)) {
    SetLibrary(std::move(library));
    connect(m_timer, &QTimer::timeout, this, &LibraryWatch::Check);
    m_timer->start(kInterval_ms);
}

void LibraryWatch::SetLibrary(std::string library) {
    m_library = std::move(library);
    Note();
}

void LibraryWatch::Note() {
    m_noted = Now();
}

LibraryWatch::Stamp LibraryWatch::Now() const {
    Stamp stamp{};
    std::size_t next = 0;
    for (const std::string& file : {m_library, m_library + kLogEnding}) {
        struct stat status {};
        const bool exists = ::stat(file.c_str(), &status) == 0;
        stamp[next++] = exists ? static_cast<std::int64_t>(status.st_size) : 0;
        stamp[next++] = exists ? std::int64_t{status.st_mtim.tv_sec} * 1'000'000'000 + status.st_mtim.tv_nsec : 0;
    }
    return stamp;
}

void LibraryWatch::Check() {
    const Stamp now = Now();
    if (now == m_noted) return;
    m_noted = now;
    Q_EMIT changed();
}

}  // namespace zel::desktop
