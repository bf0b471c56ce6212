#pragma once

#include <iosfwd>
#include <string>

#include "host/document/json_line.h"
#include "host/host_observer.h"

namespace zel::host {

/// Whether the trace contains size and checksum of each character's pixels.
enum class TracePixels { kNo, kYes };

/// Writes what happens as JSON, one object per line, in order. docs/trace.md lists the keys.
class TraceWriter : public HostObserver {
  public:
    /// @param out  not owned; its state shows whether everything was written.
    explicit TraceWriter(std::ostream& out, TracePixels pixels = TracePixels::kNo);

    void OnBox(const script::HeadlessDesktop::Box& box) override;
    void OnFileDialog(const script::HeadlessDesktop::FileDialog& dialog) override;
    void OnSend(const SentMessage& sent) override;
    void OnChar(const SentCharacter& character) override;
    void OnFont(bool result, const CZelFont& fonts) override;
    void OnException(const std::string& text) override;
    void OnEnd(const RunEnd& end) override;

  private:
    document::JsonLine& Begin(const char* event);
    void Write();

    std::ostream& m_out;
    TracePixels m_pixels;
    document::JsonLine m_line;
    // An exception is the last line.
    bool m_ended = false;
};

}  // namespace zel::host
