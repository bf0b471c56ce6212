#include "host/module_call.h"

#include "host/module_text.h"
#include "host/reference_host.h"
#include "module/contract/registration.h"
#include "module/contract/zel_trans_dlg.h"
#include "platform/framework/exceptions.h"

namespace zel::host {

namespace {

/// Gives access to the id that the next dialog starts with, a protected member. Never instantiated.
class NextMessage : public CZelTransDlg {
  public:
    static std::string Id() { return M_sNextMessage.GetString(); }
};

}  // namespace

std::optional<std::string> CallInHost(ReferenceHost& host, const std::function<void()>& call) {
    try {
        call();
        host.EndCall(CallEnd::kReturned);
        return std::nullopt;
    } catch (CException* error) {
        host.EndCall(CallEnd::kException);
        return TakeText(error);
    } catch (...) {
        host.EndCall(CallEnd::kException);
        throw;
    }
}

RunEnd RunEndOf(RunKind kind, std::optional<int> status) {
    return {kind, status, NextMessage::Id(), ZelYOffset()};
}

void ReportEnd(std::span<HostObserver* const> observers, const std::optional<std::string>& exception,
               const RunEnd& end) {
    for (HostObserver* observer : observers) {
        if (exception) {
            observer->OnException(*exception);
        } else {
            observer->OnEnd(end);
        }
    }
}

}  // namespace zel::host
