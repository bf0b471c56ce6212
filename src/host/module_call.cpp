#include "host/module_call.h"

#include "host/module_text.h"
#include "host/reference_host.h"
#include "module/contract/registration.h"
#include "module/contract/zel_trans_dlg.h"
#include "platform/framework/exceptions.h"

namespace zel::host {

namespace {

/// Reaches the id that the next dialog starts with, which is the dialog's own affair; no object is ever made.
class NextMessage : public CZelTransDlg {
  public:
    static std::string Id() { return M_sNextMessage.GetString(); }
};

}  // namespace

std::optional<std::string> CallInHost(ReferenceHost& host, const std::function<void()>& call) {
    try {
        call();
        host.EndCall(HowCallEnded::kReturned);
        return std::nullopt;
    } catch (CException* error) {
        host.EndCall(HowCallEnded::kException);
        return TakeText(error);
    } catch (...) {
        host.EndCall(HowCallEnded::kException);
        throw;
    }
}

RunEnd EndOf(Road road, std::optional<int> status) {
    return {road, status, NextMessage::Id(), ZelYOffset()};
}

}  // namespace zel::host
