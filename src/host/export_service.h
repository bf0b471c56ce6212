#pragma once

#include <string>

namespace zel::host {

/// The host's part of a batch export, called once for each number from inside the module.
class ExportService {
  public:
    virtual ~ExportService() = default;

    /// Whether the host has a message of this number.
    virtual bool Has(int number) = 0;
    /// First step: the message is chosen.
    virtual void Begin(int number) = 0;
    /// Second step: writes the message. @param path  the export path, as the host passed it to the module.
    virtual void Complete(int number, const std::string& path) = 0;
};

}  // namespace zel::host
