#pragma once

#include "host/host_observer.h"

/// Prints each box and each file dialog as one line on standard error, with its answer.
class WarningsPrinter : public HostObserver {
  public:
    void OnBox(const HeadlessDesktop::Box& box) override;
    void OnFileDialog(const HeadlessDesktop::FileDialog& dialog) override;
};
