#include "host/host_event.h"

namespace zel::host {

namespace {

/// The object whose address the contract passes as a number.
template <class Object>
Object& At(LPARAM address) noexcept {
    return *reinterpret_cast<Object*>(address);
}

}  // namespace

std::optional<HostEvent> DecodeHostEvent(UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    const int number = static_cast<int>(wParam);
    switch (message) {
        case kMsgDialogReady:
            return DialogReady{At<CZelTransDlg>(lParam)};
        case kMsgFonts:
            return FontsReady{At<CZelFont>(lParam)};
        case kMsgRowsDone:
            return RowsDone{At<const CZelMessage>(lParam)};
        case kMsgTabs:
            return TabsReady{{reinterpret_cast<const tag_tab_field*>(lParam), wParam}};
        case kMsgMessageDone:
            return MessageDone{At<const CZelMessage>(lParam)};
        case kMsgRgba:
            return RgbaChosen{At<const CZelTransDlg>(lParam), wParam != 0};
        case kMsgImportDone:
            return ImportDone{At<const CZelTransDlg>(lParam)};
        case WM_PAINT:
            return Paint{};
        case kMsgRecord:
            return RecordMessage{static_cast<int>(lParam)};
        case kMsgNuvoOut:
            if (wParam == 1) return NuvoFetch{At<BYTE>(lParam)};
            return NuvoSet{lParam};
        case kMsgHasMessage:
            return HasMessage{number};
        case kMsgExportFlagged:
            return ExportFlagged{number, At<const CString>(lParam)};
        case kMsgExportPlain:
            return ExportPlain{number, At<const CString>(lParam)};
        case kMsgExportFinish:
            return ExportFinish{number, At<const CString>(lParam)};
        case kMsgFtp:
            return FtpRequest{At<CZelTransFTP>(lParam)};
        default:
            return std::nullopt;
    }
}

UINT MessageOf(const HostEvent& event) noexcept {
    return std::visit([](const auto& content) noexcept { return content.kMessage; }, event);
}

Target ContractTargetOf(const HostEvent& event) noexcept {
    return std::visit([](const auto& content) noexcept { return content.kTarget; }, event);
}

}  // namespace zel::host
