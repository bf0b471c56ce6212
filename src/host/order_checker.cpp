#include "host/order_checker.h"

#include "module/contract/host_messages.h"
#include "platform/system/messages.h"

namespace zel::host {

namespace {

const char* WindowName(Target target) noexcept {
    switch (target) {
        case Target::kHost:
            return "the host window";
        case Target::kExport:
            return "the export window";
        case Target::kMain:
            return "the main window";
    }
    return "a window";
}

Target RightTarget(UINT message) noexcept {
    switch (message) {
        case kMsgDialogReady:
        case kMsgImportDone:
        case kMsgHasMessage:
        case kMsgFtp:
            return Target::kMain;
        case kMsgExportPlain:
        case kMsgExportFinish:
            return Target::kExport;
        default:
            return Target::kHost;
    }
}

}  // namespace

void OrderChecker::OnMessage(Target target, UINT message, WPARAM wParam) {
    if (target != RightTarget(message)) Breach("message " + std::to_string(message) + " came to " + WindowName(target));
    switch (message) {
        case kMsgFonts:
        case kMsgRowsDone:
        case kMsgTabs:
        case kMsgMessageDone:
        case kMsgRgba:
        case kMsgImportDone:
        case WM_PAINT:
            OnImportMessage(message, wParam);
            break;
        default:
            OnToolMessage(message);
            break;
    }
    m_last = message;
}

void OrderChecker::OnImportMessage(UINT message, WPARAM wParam) {
    switch (message) {
        case kMsgFonts:
            return Step(m_stage == Stage::kIdle, Stage::kCharacters, message);
        case kMsgRowsDone:
            return Step(m_stage == Stage::kCharacters, Stage::kRowsDone, message);
        case kMsgTabs:
            return Step(m_stage == Stage::kRowsDone && wParam > 0, Stage::kTabs, message);
        case kMsgMessageDone:
            return Step(m_stage == Stage::kRowsDone || m_stage == Stage::kTabs, Stage::kHandedOver, message);
        case kMsgRgba:
            return Step(m_stage == Stage::kIdle, Stage::kHandedOver, message);
        case kMsgImportDone:
            return Step(m_stage == Stage::kHandedOver, Stage::kImportDone, message);
        // A picture whose choice was cancelled ends with nothing in front.
        default:
            return Step(m_stage == Stage::kImportDone || m_stage == Stage::kIdle, Stage::kIdle, message);
    }
}

void OrderChecker::OnToolMessage(UINT message) {
    bool right = m_stage == Stage::kIdle;
    if (message == kMsgRecord) right = right && m_last == WM_PAINT;
    if (message == kMsgExportFlagged || message == kMsgExportPlain) right = right && m_last == kMsgHasMessage;
    if (message == kMsgExportFinish) right = right && (m_last == kMsgExportFlagged || m_last == kMsgExportPlain);
    Step(right, m_stage, message);
}

void OrderChecker::OnCharacter() {
    if (m_stage != Stage::kCharacters) Breach("a character came outside 1157 and 1181");
    m_last = 0;
}

void OrderChecker::OnReturn() {
    if (m_stage != Stage::kIdle) Breach("the import returned before its WM_PAINT");
    m_stage = Stage::kIdle;
    m_last = 0;
}

void OrderChecker::OnException() noexcept {
    m_stage = Stage::kIdle;
    m_last = 0;
}

void OrderChecker::Step(bool right, Stage next, UINT message) {
    if (!right) {
        Breach("message " + std::to_string(message) + " came out of place, after " +
               (m_last != 0               ? std::to_string(m_last)
                : m_stage == Stage::kIdle ? "nothing"
                                          : "a character"));
    }
    m_stage = next;
}

void OrderChecker::Breach(const std::string& what) {
    m_breaches.push_back(what);
}

}  // namespace zel::host
