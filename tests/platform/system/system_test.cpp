#include <cerrno>
#include <string>

#include <gtest/gtest.h>

#include "platform/framework/cwinapp.h"
#include "platform/framework/exceptions.h"
#include "platform/framework/message_box.h"
#include "platform/framework/wait_cursor.h"
#include "platform/script/headless_desktop.h"
#include "platform/system/commands.h"
#include "platform/system/errors.h"
#include "platform/system/keys.h"
#include "platform/system/random.h"
#include "platform/system/version.h"

namespace zel::test {

namespace {

class OnADesktop : public testing::Test {
  protected:
    void SetUp() override { seam::SetDesktop(&m_desktop); }
    void TearDown() override { seam::SetDesktop(nullptr); }
    script::HeadlessDesktop m_desktop;
};
using Errors = OnADesktop;
using Services = OnADesktop;

std::string ErrorText(DWORD error) {
    char* text = nullptr;
    const DWORD length = FormatMessageA(0x1100, nullptr, error, 0x400, reinterpret_cast<char*>(&text), 0, nullptr);
    std::string result = text != nullptr ? text : "";
    EXPECT_EQ(length, result.size());
    LocalFree(text);
    return result;
}

TEST_F(Errors, HaveTheSystemsTexts) {
    EXPECT_EQ(ErrorText(2), "The system cannot find the file specified.\r\n");
    EXPECT_EQ(ErrorText(26), "The specified disk or diskette cannot be accessed.\r\n");
    EXPECT_EQ(ErrorText(206), "The filename or extension is too long.\r\n");
    EXPECT_EQ(ErrorText(99999), "");
    EXPECT_EQ(GetLastError(), ERROR_MR_MID_NOT_FOUND);
}

TEST_F(Errors, AreTheCounterpartsOfErrno) {
    EXPECT_EQ(system::ErrorFromErrno(ENOENT), ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(system::ErrorFromErrno(ENOTDIR), ERROR_PATH_NOT_FOUND);
    EXPECT_EQ(system::ErrorFromErrno(EACCES), ERROR_ACCESS_DENIED);
    EXPECT_EQ(system::ErrorFromErrno(ENOMEDIUM), ERROR_NO_MEDIA_IN_DRIVE);
    EXPECT_EQ(system::ErrorFromErrno(EMEDIUMTYPE), ERROR_UNRECOGNIZED_MEDIA);
    EXPECT_EQ(system::ErrorFromErrno(EIO), ERROR_IO_DEVICE);
    EXPECT_EQ(system::ErrorFromErrno(ENXIO), ERROR_DEVICE_NOT_CONNECTED);
    EXPECT_EQ(system::ErrorFromErrno(EUCLEAN), ERROR_DISK_CORRUPT);
    EXPECT_EQ(system::ErrorFromErrno(ENAMETOOLONG), ERROR_FILENAME_EXCED_RANGE);
    EXPECT_EQ(system::ErrorFromErrno(EPROTO), ERROR_GEN_FAILURE);
}

TEST_F(Errors, OfFilesAreReportedWithTheirName) {
    try {
        AfxThrowFileException(CFileException::genericException, -1, "D:\\f\\.0012");
    } catch (CFileException* e) {
        EXPECT_EQ(e->m_lOsError, -1);
        e->ReportError(0, 0);
        e->Delete();
    }
    CFileException(CFileException::fileNotFound).ReportError(MB_ICONEXCLAMATION);
    CFileException(99, -1, "x").ReportError();
    ASSERT_EQ(m_desktop.Boxes().size(), 3u);
    EXPECT_EQ(m_desktop.Boxes()[0].text, "An unknown error occurred while accessing D:\\f\\.0012.");
    EXPECT_EQ(m_desktop.Boxes()[0].caption, "Tavro");
    EXPECT_EQ(m_desktop.Boxes()[0].style, 48u);
    EXPECT_EQ(m_desktop.Boxes()[1].text, "an unnamed file was not found.");
    EXPECT_EQ(m_desktop.Boxes()[1].style, MB_ICONEXCLAMATION);
    EXPECT_EQ(m_desktop.Boxes()[2].text, "An unknown error occurred while accessing x.");
}

TEST_F(Errors, OfMemoryAreCaughtAsAnyException) {
    try {
        AfxThrowMemoryException();
    } catch (CException* e) {
        char text[8];
        EXPECT_TRUE(e->GetErrorMessage(text, sizeof text));
        EXPECT_STREQ(text, "Out of ");
        e->ReportError();
        e->Delete();
    }
    EXPECT_EQ(m_desktop.Boxes().at(0).text, "Out of memory.");
    EXPECT_THROW(CString('x', 0x7FFFFFFF), CMemoryException*);
}

TEST_F(Services, ShowBoxesUnderTheApplicationsName) {
    {
        const CWinApp app("Host");
        EXPECT_EQ(AfxGetApp(), &app);
        AfxMessageBox("text", MB_OKCANCEL);
    }
    MessageBoxA(nullptr, nullptr, nullptr, 0x40033);
    EXPECT_EQ(m_desktop.Boxes()[0].caption, "Host");
    EXPECT_EQ(m_desktop.Boxes()[1].caption, "Error");
    EXPECT_EQ(m_desktop.Boxes()[1].style, 0x40033u);
    EXPECT_STREQ(AfxGetApp()->m_pszAppName, "Tavro");
}

TEST_F(Services, GiveAnIconToABoxOfTheFrameworkWithOkAlone) {
    for (const auto& [wanted, shown] : {std::pair{MB_OK, MB_ICONEXCLAMATION},
                                        {MB_OK | MB_TOPMOST, MB_ICONEXCLAMATION | MB_TOPMOST},
                                        {MB_OK | MB_ICONHAND, MB_ICONHAND},
                                        {MB_YESNO, MB_YESNO},
                                        {MB_OKCANCEL | MB_ICONQUESTION, MB_OKCANCEL | MB_ICONQUESTION}}) {
        AfxMessageBox("text", wanted);
        EXPECT_EQ(m_desktop.Boxes().back().style, shown) << wanted;
    }
    MessageBoxA(nullptr, "text", "caption", MB_OK);
    EXPECT_EQ(m_desktop.Boxes().back().style, MB_OK) << "the system adds none";
}

TEST_F(Services, NestWaitCursors) {
    CWnd window;
    window.BeginWaitCursor();
    { const CWaitCursor inner; }
    EXPECT_TRUE(m_desktop.HasWaitCursor());
    window.EndWaitCursor();
    window.EndWaitCursor();
    EXPECT_FALSE(m_desktop.HasWaitCursor());
    window.BeginWaitCursor();
    EXPECT_TRUE(m_desktop.HasWaitCursor()) << "an end too many isn't counted";
    window.EndWaitCursor();
}

TEST_F(Services, PassKeysAndCommandsToTheDesktop) {
    EXPECT_EQ(GetAsyncKeyState(VK_ESCAPE), 0);
    m_desktop.SetKeyDown(VK_ESCAPE, true);
    EXPECT_NE(GetAsyncKeyState(VK_ESCAPE), 0);
    m_desktop.AnswerKeys([](int) { return false; });
    EXPECT_EQ(GetAsyncKeyState(VK_ESCAPE), 0);
    EXPECT_GT(WinExec("Notepad a.txt; rm -r x", 5), 31u);
    EXPECT_EQ(m_desktop.Commands().at(0), "Notepad a.txt; rm -r x");
}

TEST_F(Services, RepeatTheRandomNumbersOfASeed) {
    crt::srand(1);
    EXPECT_EQ(crt::rand(), 16838);
    EXPECT_EQ(crt::rand(), 5758);
    for (int i = 0; i < 1000; ++i) ASSERT_EQ(crt::rand() & ~crt::kRandMax, 0);
    crt::srand(0xFFFFFFFF);
    const int first = crt::rand();
    crt::srand(0xFFFFFFFF);
    EXPECT_EQ(crt::rand(), first);
    EXPECT_NE(crt::rand(), first);
}

TEST_F(Services, ReportTheVersionThatIsSet) {
    OSVERSIONINFOA info{};
    EXPECT_FALSE(GetVersionExA(&info));
    info.dwOSVersionInfoSize = sizeof info;
    ASSERT_TRUE(GetVersionExA(&info));
    EXPECT_EQ(info.dwMajorVersion, 5u);
    EXPECT_EQ(info.dwMinorVersion, 0u);
    system::SetSystemVersion(6, 1);
    GetVersionExA(&info);
    EXPECT_EQ(info.dwMinorVersion, 1u);
    system::SetSystemVersion(5, 0);
}

}  // namespace

}  // namespace zel::test
