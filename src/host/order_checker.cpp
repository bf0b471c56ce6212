#include "host/order_checker.h"

#include <variant>

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

}  // namespace

void OrderChecker::OnEvent(const HostEvent& event, Target target) {
    const UINT message = MessageOf(event);
    if (target != ContractTargetOf(event)) {
        AddBreach("message " + std::to_string(message) + " arrived at " + WindowName(target));
    }
    std::visit([this](const auto& content) { Check(content); }, event);
    m_last = message;
}

void OrderChecker::Check(const FontsReady& event) {
    Step(m_stage == Stage::kIdle, Stage::kFontsReady, event.kMessage);
}

void OrderChecker::Check(const RowsDone& event) {
    Step(m_stage == Stage::kFontsReady, Stage::kRowsDone, event.kMessage);
}

void OrderChecker::Check(const TabsReady& event) {
    Step(m_stage == Stage::kRowsDone && !event.tabs.empty(), Stage::kTabsReady, event.kMessage);
}

void OrderChecker::Check(const MessageDone& event) {
    Step(m_stage == Stage::kRowsDone || m_stage == Stage::kTabsReady, Stage::kHandedOver, event.kMessage);
}

void OrderChecker::Check(const RgbaChosen& event) {
    Step(m_stage == Stage::kIdle, Stage::kHandedOver, event.kMessage);
}

void OrderChecker::Check(const ImportDone& event) {
    Step(m_stage == Stage::kHandedOver, Stage::kImportDone, event.kMessage);
}

void OrderChecker::Check(const Paint& event) {
    // An RGBA file whose choice was cancelled ends without any other event.
    Step(m_stage == Stage::kImportDone || m_stage == Stage::kIdle, Stage::kIdle, event.kMessage);
}

void OrderChecker::Check(const RecordMessage& event) {
    CheckOutsideImport(m_last == Paint::kMessage, event.kMessage);
}

void OrderChecker::Check(const ExportFlagged& event) {
    CheckOutsideImport(m_last == HasMessage::kMessage, event.kMessage);
}

void OrderChecker::Check(const ExportPlain& event) {
    CheckOutsideImport(m_last == HasMessage::kMessage, event.kMessage);
}

void OrderChecker::Check(const ExportFinish& event) {
    CheckOutsideImport(m_last == ExportFlagged::kMessage || m_last == ExportPlain::kMessage, event.kMessage);
}

void OrderChecker::OnCharacter() {
    if (m_stage != Stage::kFontsReady) AddBreach("a character arrived outside 1157 and 1181");
    m_last = 0;
}

void OrderChecker::OnReturn() {
    if (m_stage != Stage::kIdle) AddBreach("the import returned before its WM_PAINT");
    m_stage = Stage::kIdle;
    m_last = 0;
}

void OrderChecker::OnException() noexcept {
    m_stage = Stage::kIdle;
    m_last = 0;
}

void OrderChecker::Step(bool in_order, Stage next, UINT message) {
    if (!in_order) {
        AddBreach("message " + std::to_string(message) + " arrived out of order, after " +
                  (m_last != 0               ? std::to_string(m_last)
                   : m_stage == Stage::kIdle ? "nothing"
                                             : "a character"));
    }
    m_stage = next;
}

void OrderChecker::CheckOutsideImport(bool in_order, UINT message) {
    Step(in_order && m_stage == Stage::kIdle, m_stage, message);
}

void OrderChecker::AddBreach(const std::string& what) {
    m_breaches.push_back(what);
}

}  // namespace zel::host
