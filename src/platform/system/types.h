#pragma once

#include <cstddef>
#include <cstdint>

/// The system's basic types, records and constants, with the widths of the module's home system. LONG and DWORD have 32
/// bits in every build. Types that hold an address (WPARAM, LPARAM, LRESULT, INT_PTR, handles) are as wide as a pointer.

using BOOL = int;
using BYTE = std::uint8_t;
using WORD = std::uint16_t;
using DWORD = std::uint32_t;
using SHORT = std::int16_t;
using UINT = unsigned int;
using LONG = std::int32_t;
using LONGLONG = std::int64_t;
using ULONGLONG = std::uint64_t;
using INT_PTR = std::intptr_t;
using UINT_PTR = std::uintptr_t;
using WPARAM = std::uintptr_t;
using LPARAM = std::intptr_t;
using LRESULT = std::intptr_t;
using COLORREF = DWORD;  // 0x00bbggrr

struct HWND__;
using HWND = HWND__*;
struct HKEY__;
using HKEY = HKEY__*;
struct HINSTANCE__;  // defined in framework/dialog_template.h
using HINSTANCE = const HINSTANCE__*;

#ifndef TRUE
#define TRUE 1
#define FALSE 0
#endif

/// Characters of a path, the closing NUL included.
inline constexpr int MAX_PATH = 260;

inline constexpr int IDOK = 1, IDCANCEL = 2, IDABORT = 3, IDRETRY = 4, IDIGNORE = 5, IDYES = 6, IDNO = 7;

inline constexpr UINT MB_OK = 0x0, MB_OKCANCEL = 0x1, MB_ABORTRETRYIGNORE = 0x2, MB_YESNOCANCEL = 0x3, MB_YESNO = 0x4,
                      MB_RETRYCANCEL = 0x5, MB_TYPEMASK = 0xF;
inline constexpr UINT MB_ICONHAND = 0x10, MB_ICONQUESTION = 0x20, MB_ICONEXCLAMATION = 0x30, MB_ICONASTERISK = 0x40,
                      MB_ICONMASK = 0xF0;
inline constexpr UINT MB_TOPMOST = 0x40000;

inline constexpr int VK_ESCAPE = 27;
inline constexpr int SW_HIDE = 0, SW_SHOW = 5;

constexpr COLORREF RGB(DWORD red, DWORD green, DWORD blue) noexcept {
    return (red & 0xFF) | (green & 0xFF) << 8 | (blue & 0xFF) << 16;
}
constexpr WORD LOWORD(WPARAM value) noexcept {
    return static_cast<WORD>(value & 0xFFFF);
}
constexpr WORD HIWORD(WPARAM value) noexcept {
    return static_cast<WORD>(value >> 16 & 0xFFFF);
}
constexpr WPARAM MAKEWPARAM(UINT low, UINT high) noexcept {
    return (low & 0xFFFF) | static_cast<WPARAM>(high & 0xFFFF) << 16;
}

struct POINT {
    LONG x, y;
};
struct SIZE {
    LONG cx, cy;
};
struct RECT {
    LONG left, top, right, bottom;
};

/// Description of a font, 60 bytes.
struct LOGFONT {
    LONG lfHeight;          //  0
    LONG lfWidth;           //  4
    LONG lfEscapement;      //  8
    LONG lfOrientation;     // 12
    LONG lfWeight;          // 16
    BYTE lfItalic;          // 20
    BYTE lfUnderline;       // 21
    BYTE lfStrikeOut;       // 22
    BYTE lfCharSet;         // 23
    BYTE lfOutPrecision;    // 24
    BYTE lfClipPrecision;   // 25
    BYTE lfQuality;         // 26
    BYTE lfPitchAndFamily;  // 27
    char lfFaceName[32];    // 28
};
static_assert(sizeof(LOGFONT) == 60 && offsetof(LOGFONT, lfWeight) == 16 && offsetof(LOGFONT, lfItalic) == 20);
static_assert(offsetof(LOGFONT, lfOutPrecision) == 24 && offsetof(LOGFONT, lfPitchAndFamily) == 27);
static_assert(offsetof(LOGFONT, lfFaceName) == 28);

/// A bitmap and the address of its pixels.
struct BITMAP {
    LONG bmType;
    LONG bmWidth;
    LONG bmHeight;
    LONG bmWidthBytes;
    WORD bmPlanes;
    WORD bmBitsPixel;
    void* bmBits;
};
static_assert(offsetof(BITMAP, bmBitsPixel) == 18 && (sizeof(void*) != 4 || sizeof(BITMAP) == 24));

struct BITMAPINFOHEADER {
    DWORD biSize;
    LONG biWidth;
    // Positive: the bottom row is first.
    LONG biHeight;
    WORD biPlanes;
    WORD biBitCount;
    DWORD biCompression;
    DWORD biSizeImage;
    LONG biXPelsPerMeter;
    LONG biYPelsPerMeter;
    DWORD biClrUsed;
    DWORD biClrImportant;
};
static_assert(sizeof(BITMAPINFOHEADER) == 40);

/// A device-independent bitmap. dsBm.bmBits is the address of its pixels.
struct DIBSECTION {
    BITMAP dsBm;
    BITMAPINFOHEADER dsBmih;
    DWORD dsBitfields[3];
    void* dshSection;
    DWORD dsOffset;
};
static_assert(sizeof(void*) != 4 || (offsetof(DIBSECTION, dsBmih) == 24 && sizeof(DIBSECTION) == 84));
