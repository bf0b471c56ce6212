#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "host/host_event.h"
#include "host/target.h"
#include "module/contract/records/char_inf.h"
#include "platform/script/headless_desktop.h"

class CZelFont;

namespace zel::document {
struct MessageRecord;
}  // namespace zel::document

namespace zel::host {

class GlyphBitmaps;

/// A message from the module and the host's answer.
struct SentMessage {
    HostEvent event;
    /// The window that received it, which should be the contract's.
    Target target;
    /// As it arrived, for records of the call itself; `event` has its meaning.
    WPARAM wParam;
    LRESULT answer;
};

/// A call of the character callback.
struct SentCharacter {
    const tag_CharInf& info;
    /// The callback's third argument.
    unsigned character;
    /// Slot whose font_copy the record carries; empty in text form.
    std::optional<int> font_slot;
    /// Pixels of the characters of this message.
    GlyphBitmaps& glyphs;
};

/// The purpose of a run of the module.
enum class RunKind { kImport, kBatch, kExport, kFont };

/// How a run of the module ended.
struct RunEnd {
    RunKind kind = RunKind::kImport;
    /// m_iStatus of the last import; empty when there was no dialog.
    std::optional<int> status;
    /// Id that the next dialog starts with, in the module's bytes.
    std::string next_id;
    /// Pixels by which the rows of the last message were moved up.
    int y_offset = 0;
};

enum class ItemOutcome {
    /// Imported, and the module asked the host to record it.
    kRecorded,
    /// An RGBA file whose choice was cancelled: there is nothing to record.
    kNotInserted,
    /// No such message.
    kMissing,
    /// The message exists and could not be imported.
    kFailed,
};

/// The result for one number of a batch.
struct BatchItem {
    int number = 0;
    ItemOutcome outcome = ItemOutcome::kRecorded;
    /// Of a failure: one line that names the file.
    std::string reason;
};

/// Receives what happens between module and host, in order. References, and what they refer to, are valid until the
/// call returns. The calls come from inside the module: an exception of OnSend or OnChar passes through it and ends the
/// import. The other functions must not throw, except where noted.
class HostObserver {
  public:
    virtual ~HostObserver() = default;

    virtual void OnBox(const script::HeadlessDesktop::Box& /*box*/) {}
    virtual void OnFileDialog(const script::HeadlessDesktop::FileDialog& /*dialog*/) {}
    virtual void OnSend(const SentMessage& /*message*/) {}
    virtual void OnChar(const SentCharacter& /*character*/) {}
    /// An import has ended and the host has copied what it keeps. Follows the event Paint.
    virtual void OnMessage(const document::MessageRecord& /*message*/) {}
    /// One number of a batch is finished. An exception ends the batch.
    virtual void OnBatchItem(const BatchItem& /*item*/) {}
    /// CZelTransExport::MakeTavroFont has returned `result`; if true, its font is in slot 0.
    virtual void OnFont(bool /*result*/, const CZelFont& /*fonts*/) {}
    /// An exception has left the module. A batch continues with the rest of the range in another call of the module.
    virtual void OnException(const std::string& /*text*/) {}
    virtual void OnEnd(const RunEnd& /*end*/) {}
};

}  // namespace zel::host
