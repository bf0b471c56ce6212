#pragma once

namespace zel::diskcopy {

/// Template and controls of the copy dialog, as desktops and scripts know them.

inline constexpr unsigned kCopyDialog = 9001;  // clear of the module's templates

inline constexpr int kCopySourceEdit = 9010, kCopySourceBrowse = 9011;
inline constexpr int kCopyTargetEdit = 9012, kCopyTargetBrowse = 9013;
inline constexpr int kCopyShowButton = 9014;  // fills the list
inline constexpr int kCopyFileList = 9015;
inline constexpr int kCopySkipRadio = 9016, kCopyOverwriteRadio = 9017;
inline constexpr int kCopyStatus = 9018;
// IDOK copies, IDCANCEL closes; while files are being copied it stops.

}  // namespace zel::diskcopy
