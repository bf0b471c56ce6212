#pragma once

#include <string>

namespace zel::host {

/// What a host does in a batch export, number by number. The calls come from inside the module.
class ExportService {
  public:
    virtual ~ExportService() = default;

    /// Whether the host holds a message of this number.
    virtual bool Has(int number) = 0;
    /// First step: takes the message up.
    virtual void Begin(int number) = 0;
    /// Second step: writes it out. @param path  the export path, as the host gave it to the module.
    virtual void Complete(int number, const std::string& path) = 0;
};

}  // namespace zel::host
