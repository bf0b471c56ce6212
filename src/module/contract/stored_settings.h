#pragma once

#include <cstddef>
#include <cstdint>

// The names under which the module stores its settings. A host may read and write them with the profile calls and the
// registry calls of the framework; the module reads a setting when it opens the dialog that shows it. Names are
// compared without regard to the case of ASCII letters.

namespace zel::stored {

/// Sections of the profile.
inline constexpr char kFontSection[] = "ZELFNTSaveOptions";
inline constexpr char kFtpSection[] = "ZELFTPSaveOptions";
/// The FTP dialog reads the account from this section as long as kFtpSection has no address. The module never writes to
/// it.
inline constexpr char kFallbackFtpSection[] = "RGBFTPSaveOptions";

/// Entry of kFontSection: non-zero leaves out the warnings of an import.
inline constexpr char kSkipWarnings[] = "SkipWarnings";
/// Entries of kFtpSection: upper left corner of the import dialog in pixels, restored where both are 1 to 1999.
inline constexpr char kDialogX[] = "DialogX";
inline constexpr char kDialogY[] = "DialogY";
/// Entries of kFtpSection: what the FTP dialog last requested. MessageNumber is the text of the file box.
inline constexpr char kMessageNumber[] = "MessageNumber";
inline constexpr char kOverwriteAll[] = "OverwriteAll";
inline constexpr char kPassive[] = "Passive FTP Transfer";
/// Entries of kFtpSection and of kFallbackFtpSection: the account. The password is stored scrambled, and read only
/// while SavePassword is non-zero.
inline constexpr char kIpAddress[] = "IPAddress";
inline constexpr char kUsername[] = "Username";
inline constexpr char kPassword[] = "Password";
inline constexpr char kSavePassword[] = "SavePassword";

enum class SettingKind : std::uint8_t {
    kNumber,
    kText,
    /// A scrambled text, not to be shown.
    kScrambled,
};

/// One setting of the profile.
struct Setting {
    const char* section;
    const char* entry;
    SettingKind kind;
};

/// Every setting of the profile that the module reads.
inline constexpr Setting kSettings[] = {
    {kFontSection, kSkipWarnings, SettingKind::kNumber},
    {kFtpSection, kDialogX, SettingKind::kNumber},
    {kFtpSection, kDialogY, SettingKind::kNumber},
    {kFtpSection, kIpAddress, SettingKind::kText},
    {kFtpSection, kMessageNumber, SettingKind::kText},
    {kFtpSection, kOverwriteAll, SettingKind::kNumber},
    {kFtpSection, kPassive, SettingKind::kNumber},
    {kFtpSection, kPassword, SettingKind::kScrambled},
    {kFtpSection, kSavePassword, SettingKind::kNumber},
    {kFtpSection, kUsername, SettingKind::kText},
    {kFallbackFtpSection, kIpAddress, SettingKind::kText},
    {kFallbackFtpSection, kPassword, SettingKind::kScrambled},
    {kFallbackFtpSection, kSavePassword, SettingKind::kNumber},
    {kFallbackFtpSection, kUsername, SettingKind::kText},
};

/// Registry path, below the current user's root, of the recent lists. A list is a key of that name below it; an entry
/// is a text value of that key, named by the list, a blank and the index, such as "FontDir 0". Index 0 is the newest.
inline constexpr char kRecentListsKey[] = "Software\\Kovesh\\Tavro\\ZelTrans";

inline constexpr char kFontDirList[] = "FontDir";
inline constexpr char kMessageDirList[] = "MessageDir";
inline constexpr char kFtpLocalDirList[] = "FTPLocalDir";
inline constexpr char kFtpRemoteDirList[] = "FTPRemoteDir";
inline constexpr char kFtpAddressList[] = "FTPIpAddr";

/// Every recent list.
inline constexpr const char* kRecentLists[] = {kFontDirList, kMessageDirList, kFtpLocalDirList, kFtpRemoteDirList,
                                               kFtpAddressList};

/// Entries of a list that the module reads, from index 0 on.
inline constexpr int kRecentEntries = 10;
/// Length of the longest text of an entry, in characters. The module ignores a longer one.
inline constexpr std::size_t kMaxRecentText = 259;

}  // namespace zel::stored
