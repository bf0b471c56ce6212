#pragma once

#include <cstdarg>
#include <cstddef>

#include "platform/api.h"

/// Text of single-byte characters, one pointer wide. The characters are shared between copies until one of them
/// changes, so that copying and assigning allocate nothing. The count of sharers isn't guarded: a text and its copies
/// stay on one thread. Memory that runs out is the framework's memory exception. Left out: wide characters, resources,
/// locales.
class ZEL_PLATFORM_API CString {
  public:
    CString() noexcept;
    CString(const char* text);  // null is the empty text
    CString(const char* text, int length);
    explicit CString(char c, int repeat = 1);
    CString(const CString& other) noexcept;
    CString(CString&& other) noexcept;
    ~CString();

    CString& operator=(const CString& other) noexcept;
    CString& operator=(CString&& other) noexcept;
    CString& operator=(const char* text);
    CString& operator=(char c);

    /// The characters with a closing NUL, good until the text changes or dies.
    operator const char*() const noexcept { return m_pszData; }
    const char* GetString() const noexcept { return m_pszData; }

    int GetLength() const noexcept;
    bool IsEmpty() const noexcept { return GetLength() == 0; }
    void Empty() noexcept;

    /// Character at `index`, 0 for an index outside the text.
    char GetAt(int index) const noexcept;
    char operator[](int index) const noexcept { return GetAt(index); }
    /// Changes a character; an index outside the text changes nothing.
    void SetAt(int index, char c);

    CString& operator+=(const CString& other);
    CString& operator+=(const char* text);
    CString& operator+=(char c);
    friend ZEL_PLATFORM_API CString operator+(const CString& a, const CString& b);
    friend ZEL_PLATFORM_API CString operator+(const CString& a, const char* b);
    friend ZEL_PLATFORM_API CString operator+(const char* a, const CString& b);
    friend ZEL_PLATFORM_API CString operator+(const CString& a, char b);
    friend ZEL_PLATFORM_API CString operator+(char a, const CString& b);

    /// Below, equal to or above 0, by the bytes' values.
    int Compare(const char* other) const noexcept;
    friend bool operator==(const CString& a, const CString& b) noexcept { return a.Compare(b.m_pszData) == 0; }
    friend bool operator==(const CString& a, const char* b) noexcept { return a.Compare(b) == 0; }
    friend bool operator<(const CString& a, const CString& b) noexcept { return a.Compare(b.m_pszData) < 0; }
    friend bool operator<(const CString& a, const char* b) noexcept { return a.Compare(b) < 0; }

    /// Parts of the text; a start or count beyond it, or below 0, is limited to it.
    CString Left(int count) const;
    CString Right(int count) const;
    CString Mid(int first) const;
    CString Mid(int first, int count) const;

    /// Index of the first occurrence at or behind `start`, -1 for none.
    int Find(char c, int start = 0) const noexcept;
    int Find(const char* text, int start = 0) const noexcept;
    /// Index of the last occurrence, -1 for none.
    int ReverseFind(char c) const noexcept;

    /// Replaces the text by a formatted one; the old text may be among the arguments.
    void Format(const char* format, ...) __attribute__((format(printf, 2, 3)));
    void FormatV(const char* format, std::va_list arguments) __attribute__((format(printf, 2, 0)));

    /// A buffer of the text's own, with room for at least `minimum` characters and a NUL, to be written until
    /// ReleaseBuffer.
    char* GetBuffer(int minimum);
    /// Ends writing; the length is that of the written text, or the one given.
    void ReleaseBuffer(int length = -1);
    /// As GetBuffer, with the length set at once.
    char* GetBufferSetLength(int length);

  private:
    void Unshare(int capacity);
    void Append(const char* text, std::size_t length);
    void Release() noexcept;

    char* m_pszData;  // the characters; their record lies in front of them
};
static_assert(sizeof(CString) == sizeof(void*));
