#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "host/settings/sqlite_settings_store.h"
#include "programs/cli/command_disk.h"

namespace zel::test {

namespace {

using testing::HasSubstr;

struct SettingsCase {
    const char* name;
    const char* line;
    int exit_code;
    const char* out;
    const char* error;  // part of standard error; empty for no output
};

class KeptSettings : public testing::Test {
  protected:
    const CommandDisk m_disk;
    settings::SqliteSettingsStore m_store{m_disk / "kept"};
};
class SettingsCommand : public KeptSettings, public testing::WithParamInterface<SettingsCase> {};

TEST_P(SettingsCommand, ListsPrintsChangesAndRemoves) {
    m_store.SetProfileInt("ZELFTPSaveOptions", "DialogX", 12);
    m_store.SetProfileText("ZELFTPSaveOptions", "Username", "ann\x1B");
    m_store.SetProfileText("ZELFTPSaveOptions", "Password", "secret");
    const CommandResult result = m_disk.Shell(GetParam().line);
    EXPECT_EQ(result.exit_code, GetParam().exit_code);
    EXPECT_EQ(result.out, GetParam().out);
    EXPECT_THAT(result.err,
                *GetParam().error == '\0' ? testing::Matcher<std::string>("") : HasSubstr(GetParam().error));
    EXPECT_THAT(result.out + result.err, testing::Not(HasSubstr("secret")));
    EXPECT_EQ(m_store.GetProfileText("ZELFTPSaveOptions", "Password"), "secret");
}

INSTANTIATE_TEST_SUITE_P(
    Each, SettingsCommand,
    testing::Values(
        SettingsCase{"gets_a_number", "zeltrans settings --settings kept get zelftpsaveoptions DIALOGX", 0, "12\n", ""},
        SettingsCase{"gets_a_text", "zeltrans settings get ZELFTPSaveOptions Username --settings kept", 0, "ann\\x1B\n",
                     ""},
        SettingsCase{"sets_a_negative_number",
                     "cd kept && zeltrans settings --settings . set ZELFTPSaveOptions DialogX -2147483648 && "
                     "zeltrans settings --settings . get ZELFTPSaveOptions DialogX",
                     0, "-2147483648\n", ""},
        SettingsCase{"sets_a_recent_entry_in_an_empty_store",
                     "zeltrans settings set fontdir 9 'D:\\it is' && zeltrans settings", 0,
                     "FontDir\n  9 = D:\\it is\n", ""},
        SettingsCase{"unsets_an_entry",
                     "zeltrans settings set ZELFNTSaveOptions SkipWarnings 1 && zeltrans settings unset "
                     "ZELFNTSaveOptions SkipWarnings && zeltrans settings",
                     0, "No settings are stored.\n", ""},
        SettingsCase{"unsets_a_recent_entry",
                     "zeltrans settings set FontDir 0 a && zeltrans settings unset FontDir 0 && "
                     "zeltrans settings get FontDir 0",
                     1, "", "zeltrans: FontDir 0: not stored\n"},
        SettingsCase{"gets_nothing", "zeltrans settings get ZELFTPSaveOptions IPAddress", 1, "",
                     "ZELFTPSaveOptions IPAddress: not stored"},
        SettingsCase{"never_shows_a_password", "zeltrans settings --settings kept get ZELFTPSaveOptions Password", 1,
                     "", "passwords are not shown"},
        SettingsCase{"takes_no_password", "zeltrans settings --settings kept set ZELFTPSaveOptions password x", 2, "",
                     "passwords cannot be set here; use the FTP dialog"},
        SettingsCase{"unknown_entry", "zeltrans settings set ZELFTPSaveOptions Pass 1", 2, "",
                     "unknown setting ZELFTPSaveOptions Pass. Settings:\n  ZELFNTSaveOptions: SkipWarnings\n"},
        SettingsCase{"index_beyond_the_last", "zeltrans settings set MessageDir 10 a", 2, "", "MessageDir: 0 to 9"},
        SettingsCase{"index_that_is_no_number", "zeltrans settings get MessageDir ''", 2, "", "unknown setting"},
        SettingsCase{"no_number", "zeltrans settings set ZELFTPSaveOptions DialogX 12px", 2, "",
                     "\"12px\" is not an integer of 32 bits"},
        SettingsCase{"number_too_large", "zeltrans settings set ZELFTPSaveOptions DialogX 2147483648", 2, "",
                     "is not an integer of 32 bits"},
        SettingsCase{"recent_text_too_long", "zeltrans settings set FontDir 0 \"$(printf %0260d 1)\"", 2, "",
                     "260 characters; the module reads at most 259"},
        SettingsCase{"missing_value", "zeltrans settings set FontDir 0", 2, "", "VALUE is required"},
        SettingsCase{"no_home", "cd kept && unset HOME XDG_CONFIG_HOME && zeltrans settings; ls -A", 0,
                     "settings.sqlite\nsettings.sqlite-shm\nsettings.sqlite-wal\n",
                     "zeltrans: settings can't be stored: neither XDG_CONFIG_HOME nor HOME is an absolute path\n"},
        SettingsCase{
            "closed_to_other_users",
            "mkdir -p run.settings/zeltrans && chmod 755 run.settings/zeltrans && umask 022 && "
            "zeltrans settings --settings new set FontDir 0 a && zeltrans settings set FontDir 0 a && "
            "stat -c %a new new/settings.sqlite new/settings.sqlite-wal run.settings/zeltrans && chmod 644 new/* && "
            "zeltrans settings --settings new set FontDir 0 b && stat -c %a new/settings.sqlite "
            "new/settings.sqlite-wal",
            0, "700\n600\n600\n700\n600\n600\n", ""},
        SettingsCase{"unusable_directory", "zeltrans settings --settings MESSAGES/.0012", 1, "",
                     "MESSAGES/.0012/settings.sqlite: settings can't be stored: "},
        SettingsCase{"damaged_file",
                     "for n in 1 2; do echo damage $n >settings.sqlite; rm -f settings.sqlite-*; zeltrans settings "
                     "--settings .; "
                     "done; cat settings.sqlite.damaged-1 settings.sqlite.damaged-2",
                     0, "No settings are stored.\nNo settings are stored.\ndamage 1\ndamage 2\n",
                     "note: ./settings.sqlite: the stored settings were damaged"}),
    [](const auto& row) { return std::string(row.param.name); });

TEST_F(KeptSettings, AreListedWithTheReasonWhyTheModuleIgnoresSome) {
    m_store.SetProfileInt("ZELFNTSaveOptions", "SkipWarnings", 1);
    m_store.SetProfileText("ZELFTPSaveOptions", "DialogX", "left");
    m_store.SetProfileText("ZELFTPSaveOptions", "Password", "secret");
    m_store.SetProfileText("ZELFTPSaveOptions", "Username", "a\nb");
    m_store.SetProfileInt("Other", "Entry", 2);
    const std::string key = "Software\\Kovesh\\Tavro\\ZelTrans\\FontDir";
    const auto store = [&](const std::string& name, const std::string& bytes) {
        m_store.CreateKey(key);
        m_store.SetValue(key, name, {1, {bytes.begin(), bytes.end()}});
    };
    store("FontDir 0", std::string("D:\\A\0rest", 9));
    store("FontDir 2", std::string(259, 'x') + '\0');
    store("FontDir 3", std::string(260, 'x') + '\0');
    store("FontDir 10", std::string("D:\\B\0", 5));
    store("Stray 0", "x");
    EXPECT_EQ(m_disk.Shell("zeltrans settings --settings kept").out,
              "Other\n  Entry = 2  (unknown to the module)\n\n"
              "ZELFNTSaveOptions\n  SkipWarnings = 1\n\n"
              "ZELFTPSaveOptions\n  DialogX = left  (ignored: not a number)\n  Password = (stored)\n"
              "  Username = a\\x0Ab\n\n"
              "FontDir\n  0 = D:\\A\n  2 = " +
                  std::string(259, 'x') + "\n  3 = " + std::string(260, 'x') +
                  "  (ignored: 260 characters; the module reads at most 259)\n"
                  "  10 = D:\\B  (ignored: only 0 to 9 are read)\n");
}

}  // namespace

}  // namespace zel::test
