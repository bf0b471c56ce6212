#pragma once

class CZelTransFTP;

namespace zel::host {

/// Does what the dialog of the FTP copy asks the host for.
class FtpService {
  public:
    virtual ~FtpService() = default;

    /// Transfers or browses, as m_bExecute tells, and returns when that is done. Reads the dialog's members;
    /// m_strRemoteDir and m_strFile are left as the dialog is to show them. Throws nothing but for want of memory.
    virtual void Handle(CZelTransFTP& dialog) = 0;
};

}  // namespace zel::host
