#pragma once

#include <optional>
#include <span>
#include <variant>

#include "host/target.h"
#include "module/contract/host_messages.h"
#include "module/contract/records/tab_field.h"
#include "platform/system/messages.h"
#include "platform/system/types.h"

class CString;
class CZelFont;
class CZelMessage;
class CZelTransDlg;
class CZelTransFTP;

namespace zel::host {

// What the module sends to its host: one struct for each window message, with the message's number and the window that
// the contract sends it to. References are valid until the message is answered, unless host_messages.h says otherwise.

/// The import dialog is open, its recent lists are not loaded yet.
struct DialogReady {
    static constexpr UINT kMessage = kMsgDialogReady;
    static constexpr Target kTarget = Target::kMain;
    CZelTransDlg& dialog;
};

/// A message is read and its fonts are loaded. The characters follow.
struct FontsReady {
    static constexpr UINT kMessage = kMsgFonts;
    static constexpr Target kTarget = Target::kHost;
    CZelFont& fonts;
};

/// The last character has been sent.
struct RowsDone {
    static constexpr UINT kMessage = kMsgRowsDone;
    static constexpr Target kTarget = Target::kHost;
    const CZelMessage& message;
};

/// The tab fields of a message that has any.
struct TabsReady {
    static constexpr UINT kMessage = kMsgTabs;
    static constexpr Target kTarget = Target::kHost;
    std::span<const tag_tab_field> tabs;
};

/// The message is complete.
struct MessageDone {
    static constexpr UINT kMessage = kMsgMessageDone;
    static constexpr Target kTarget = Target::kHost;
    const CZelMessage& message;
};

/// The file is an RGBA picture and the user has chosen how to insert it.
struct RgbaChosen {
    static constexpr UINT kMessage = kMsgRgba;
    static constexpr Target kTarget = Target::kHost;
    const CZelTransDlg& dialog;
    /// Insert as an object; false: as the background.
    bool as_object;
};

/// The import is done. The dialog still contains the id of its message.
struct ImportDone {
    static constexpr UINT kMessage = kMsgImportDone;
    static constexpr Target kTarget = Target::kMain;
    const CZelTransDlg& dialog;
};

/// The host's window is to be painted, which ends an import.
struct Paint {
    static constexpr UINT kMessage = WM_PAINT;
    static constexpr Target kTarget = Target::kHost;
};

/// The host is to record the message that a batch has imported last.
struct RecordMessage {
    static constexpr UINT kMessage = kMsgRecord;
    static constexpr Target kTarget = Target::kHost;
    int number;
};

/// The host stores its output state here.
struct NuvoFetch {
    static constexpr UINT kMessage = kMsgNuvoOut;
    static constexpr Target kTarget = Target::kHost;
    BYTE& state;
};

/// The host takes its output state from here.
struct NuvoSet {
    static constexpr UINT kMessage = kMsgNuvoOut;
    static constexpr Target kTarget = Target::kHost;
    /// The low byte is the state.
    LPARAM state;
};

/// Does the host have a message of this number? The answer is 0 or 1.
struct HasMessage {
    static constexpr UINT kMessage = kMsgHasMessage;
    static constexpr Target kTarget = Target::kMain;
    int number;
};

/// First step of an export when the flag of the export window is set.
struct ExportFlagged {
    static constexpr UINT kMessage = kMsgExportFlagged;
    static constexpr Target kTarget = Target::kHost;
    int number;
    const CString& path;
};

/// First step of an export when the flag is clear.
struct ExportPlain {
    static constexpr UINT kMessage = kMsgExportPlain;
    static constexpr Target kTarget = Target::kExport;
    int number;
    const CString& path;
};

/// Second step of an export.
struct ExportFinish {
    static constexpr UINT kMessage = kMsgExportFinish;
    static constexpr Target kTarget = Target::kExport;
    int number;
    const CString& path;
};

/// The FTP dialog asks for a transfer or a directory listing.
struct FtpRequest {
    static constexpr UINT kMessage = kMsgFtp;
    static constexpr Target kTarget = Target::kMain;
    CZelTransFTP& dialog;
};

using HostEvent =
    std::variant<DialogReady, FontsReady, RowsDone, TabsReady, MessageDone, RgbaChosen, ImportDone, Paint,
                 RecordMessage, NuvoFetch, NuvoSet, HasMessage, ExportFlagged, ExportPlain, ExportFinish, FtpRequest>;

/// The window message as an event; empty for a message that is not the module's.
/// @param lParam  what host_messages.h defines for the message: an object that it names must exist.
std::optional<HostEvent> DecodeHostEvent(UINT message, WPARAM wParam, LPARAM lParam) noexcept;

/// Number of the window message that the event was decoded from.
UINT MessageOf(const HostEvent& event) noexcept;

/// The window that the contract sends such a message to.
Target ContractTargetOf(const HostEvent& event) noexcept;

}  // namespace zel::host
