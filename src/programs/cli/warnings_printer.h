#pragma once

#include "host/host_observer.h"

namespace zel::cli {

/// Prints each box and each file dialog on standard error, in one line with its answer.
class WarningsPrinter : public host::HostObserver {
  public:
    void OnBox(const script::HeadlessDesktop::Box& box) override;
    void OnFileDialog(const script::HeadlessDesktop::FileDialog& dialog) override;
};

}  // namespace zel::cli
