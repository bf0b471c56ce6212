#pragma once

class CZelTransFTP;

namespace zel::host {

/// Does the work that the module's FTP dialog requests of the host.
class FtpService {
  public:
    virtual ~FtpService() = default;

    /// Transfers (m_bExecute set) or browses, and returns when that is done. Reads the dialog's members and sets
    /// m_strRemoteDir and m_strFile to what the dialog is to show. Throws only std::bad_alloc.
    virtual void Handle(CZelTransFTP& dialog) = 0;
};

}  // namespace zel::host
