#pragma once

#include <cstdarg>
#include <cstddef>

#include "platform/api.h"

/// A text of single-byte characters, as wide as one pointer. Copies share their characters until one of them changes,
/// so copying and assigning allocate nothing. The reference count is not synchronised: a text and its copies stay on
/// one thread. Functions that allocate throw CMemoryException when memory runs out. Not provided: wide characters,
/// resources, locales.
class ZEL_PLATFORM_API CString {
  public:
    CString() noexcept;
    /// @param text  null for the empty text.
    CString(const char* text);
    CString(const char* text, int length);
    explicit CString(char c, int repeat = 1);
    CString(const CString& other) noexcept;
    CString(CString&& other) noexcept;
    ~CString();

    CString& operator=(const CString& other) noexcept;
    CString& operator=(CString&& other) noexcept;
    CString& operator=(const char* text);
    CString& operator=(char c);

    /// The characters, terminated by NUL; valid until the text is changed or destroyed.
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

    /// Compares byte by byte, as std::strcmp. Null is the empty text.
    /// @return less than 0, 0, or greater than 0.
    int Compare(const char* other) const noexcept;
    friend bool operator==(const CString& a, const CString& b) noexcept { return a.Compare(b.m_pszData) == 0; }
    friend bool operator==(const CString& a, const char* b) noexcept { return a.Compare(b) == 0; }
    friend bool operator<(const CString& a, const CString& b) noexcept { return a.Compare(b.m_pszData) < 0; }
    friend bool operator<(const CString& a, const char* b) noexcept { return a.Compare(b) < 0; }

    /// Parts of the text. A start or count outside it is limited to it.
    CString Left(int count) const;
    CString Right(int count) const;
    CString Mid(int first) const;
    CString Mid(int first, int count) const;

    /// Index of the first occurrence from index `start` on, -1 for none.
    int Find(char c, int start = 0) const noexcept;
    int Find(const char* text, int start = 0) const noexcept;
    /// Index of the last occurrence, -1 for none.
    int ReverseFind(char c) const noexcept;

    /// Replaces the text by a formatted one. The arguments may refer to the old text.
    void Format(const char* format, ...) __attribute__((format(printf, 2, 3)));
    void FormatV(const char* format, std::va_list arguments) __attribute__((format(printf, 2, 0)));

    /// A buffer for at least `minimum` characters and a NUL that belongs to this text alone. It may be written until
    /// ReleaseBuffer is called.
    char* GetBuffer(int minimum);
    /// Ends writing to the buffer and sets the length.
    /// @param length  -1 to take the length up to the first NUL.
    void ReleaseBuffer(int length = -1);
    /// GetBuffer that also sets the length.
    char* GetBufferSetLength(int length);

  private:
    void Unshare(int capacity);
    void Append(const char* text, std::size_t length);
    void Release() noexcept;

    // The characters. A record with their number and the reference count precedes them.
    char* m_pszData;
};
static_assert(sizeof(CString) == sizeof(void*));
