#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "host/target.h"
#include "module/contract/records/char_inf.h"
#include "platform/script/headless_desktop.h"

class CZelFont;

namespace zel::document {
struct MessageRecord;
}  // namespace zel::document

namespace zel::host {

class GlyphBitmaps;

/// A window message as it arrived, with what the host answered. `lParam` is the object that host_messages.h tells.
struct SentMessage {
    UINT message = 0;
    Target target = Target::kHost;
    WPARAM wParam = 0;
    LPARAM lParam = 0;
    LRESULT answer = 0;
};

/// A call of the character callback.
struct SentCharacter {
    const tag_CharInf& info;
    unsigned character;            ///< the callback's third argument.
    std::optional<int> font_slot;  ///< slot whose font_copy the record carries; empty in text form.
    GlyphBitmaps& glyphs;          ///< pixels of the characters of this message.
};

/// What a run of the module was for.
enum class Road { kImport, kBatch, kExport, kFont };

/// How a run of the module ended.
struct RunEnd {
    Road road = Road::kImport;
    std::optional<int> status;  ///< m_iStatus of the last import; empty when there was no dialog.
    std::string next_id;        ///< id that the next dialog starts with, in the module's bytes.
    int y_offset = 0;           ///< lines that the rows of the last message were moved up by.
};

/// What became of one number of a batch.
enum class ItemOutcome {
    kRecorded,     ///< imported, and the host was told to record it.
    kNotInserted,  ///< an RGBA file whose choice was cancelled: there is nothing to record.
    kMissing,      ///< no such message.
    kFailed,       ///< a message that is there couldn't be imported.
};

struct BatchItem {
    int number = 0;
    ItemOutcome outcome = ItemOutcome::kRecorded;
    std::string reason;  ///< of a failure: one line that names the file.
};

/// Hears what happens between module and host, in the order in which it happens. References and what they lead to are
/// good until the call returns. The calls come from inside the module, so that what OnSend and OnChar throw passes
/// through it and ends the import; the other calls throw nothing.
class HostObserver {
  public:
    virtual ~HostObserver() = default;

    virtual void OnBox(const script::HeadlessDesktop::Box& /*box*/) {}
    virtual void OnFileDialog(const script::HeadlessDesktop::FileDialog& /*dialog*/) {}
    virtual void OnSend(const SentMessage& /*message*/) {}
    virtual void OnChar(const SentCharacter& /*character*/) {}
    /// An import has come to its end and the host has copied what it keeps; comes after the WM_PAINT that ends it.
    virtual void OnMessage(const document::MessageRecord& /*message*/) {}
    /// One number of a batch is done with. What it throws ends the batch.
    virtual void OnBatchItem(const BatchItem& /*item*/) {}
    /// CZelTransExport::MakeTavroFont has returned `result`, and left its font in slot 0 if that is true.
    virtual void OnFont(bool /*result*/, const CZelFont& /*fonts*/) {}
    /// An exception has left the module. In a batch the rest of the range follows in another call of the module.
    virtual void OnException(const std::string& /*text*/) {}
    virtual void OnEnd(const RunEnd& /*end*/) {}
};

}  // namespace zel::host
