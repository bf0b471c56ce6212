#pragma once

#include "platform/system/types.h"

// Numbers of the module's dialog templates and of their controls, for a host that operates a dialog or has resources
// with numbers of its own. The enumerations are unscoped because the framework takes int; a struct is the scope of
// each.

namespace zel {

/// The import dialog, CZelTransDlg.
inline constexpr UINT kImportDialog = 129;
struct ImportControl {
    enum Id : int {
        kSkipWarningsCheck = 132,
        kFontDirBox = 1000,
        kBrowseFontButton = 1001,
        kMessageDirBox = 1002,
        kBrowseMessageButton = 1003,
        kReadButton = 1006,
        kMessageIdEdit = 1007,
        kBatchButton = 1008,
        kCopyFilesButton = 1010,
        /// Hidden.
        kTrueFontCheck = 1011,
        /// Hidden.
        kBaselineAlignCheck = 1012,
        kFtpButton = 1045,
    };
};

/// The batch dialog, for an import or an export of a range of ids.
inline constexpr UINT kBatchDialog = 130;
struct BatchControl {
    enum Id : int {
        kStartIdEdit = 1013,
        kEndIdEdit = 1014,
        kStatusLabel = 1015,
        /// Hidden.
        kSkipWarningsCheck = 1016,
        /// Hidden.
        kSkipNuvoOutCheck = 1018,
    };
};

/// The FTP dialog, CZelTransFTP.
inline constexpr UINT kFtpDialog = 131;
struct FtpControl {
    enum Id : int {
        kExecuteButton = 1038,
        kAddressBox = 1039,
        kUsernameEdit = 1040,
        kPasswordEdit = 1041,
        kSavePasswordCheck = 1042,
        kFileEdit = 1044,
        kRemoteDirBox = 1050,
        kLocalDirBox = 1051,
        kBrowseRemoteButton = 1052,
        kBrowseLocalButton = 1053,
        kOverwriteCheck = 1054,
        kSkipWarningsCheck = 1055,
        kPassiveCheck = 1060,
    };
};

/// The choice for an RGBA file: insert the picture as an object or as the background.
inline constexpr UINT kRgbaDialog = 135;
struct RgbaControl {
    enum Id : int { kObjectRadio = 1341, kBackgroundRadio = 1344 };
};

}  // namespace zel
