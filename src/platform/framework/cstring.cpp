#include "platform/framework/cstring.h"

#include <algorithm>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <utility>

#include "platform/framework/exceptions.h"

namespace {

/// Precedes the characters.
struct Record {
    /// Number of texts that share the characters; -1 for the static empty text, which is never freed.
    int sharers;
    int length;
    /// Characters that fit, without the NUL.
    int capacity;
};

struct {
    Record record{-1, 0, 0};
    char text[4] = {};
} constinit g_empty;
static_assert(sizeof(g_empty) == sizeof(Record) + 4);

Record& RecordOf(char* text) noexcept {
    return *(reinterpret_cast<Record*>(text) - 1);
}

/// Allocates characters with one sharer and length 0.
char* Allocate(std::size_t capacity) {
    if (capacity > INT_MAX - 64) AfxThrowMemoryException();
    auto* const record = static_cast<Record*>(std::malloc(sizeof(Record) + capacity + 1));
    if (record == nullptr) AfxThrowMemoryException();
    *record = {1, 0, static_cast<int>(capacity)};
    char* const text = reinterpret_cast<char*>(record + 1);
    *text = '\0';
    return text;
}

void SetLength(char* text, std::size_t length) noexcept {
    RecordOf(text).length = static_cast<int>(length);
    text[length] = '\0';
}

char* Share(char* text) noexcept {
    if (RecordOf(text).sharers > 0) ++RecordOf(text).sharers;
    return text;
}

std::size_t LengthOf(const char* text) noexcept {
    return text != nullptr ? std::strlen(text) : 0;
}

}  // namespace

CString::CString() noexcept : m_pszData(g_empty.text) {}
CString::CString(const char* text) : CString() {
    Append(text, LengthOf(text));
}
CString::CString(const char* text, int length) : CString() {
    if (text != nullptr && length > 0) Append(text, static_cast<std::size_t>(length));
}
CString::CString(char c, int repeat) : CString() {
    if (repeat > 0) std::memset(GetBufferSetLength(repeat), c, static_cast<std::size_t>(repeat));
}
CString::CString(const CString& other) noexcept : m_pszData(Share(other.m_pszData)) {}
CString::CString(CString&& other) noexcept : m_pszData(std::exchange(other.m_pszData, g_empty.text)) {}
CString::~CString() {
    Release();
}

CString& CString::operator=(const CString& other) noexcept {
    if (other.m_pszData == m_pszData) return *this;
    char* const shared = Share(other.m_pszData);
    Release();
    m_pszData = shared;
    return *this;
}

CString& CString::operator=(CString&& other) noexcept {
    std::swap(m_pszData, other.m_pszData);
    return *this;
}

CString& CString::operator=(const char* text) {
    return *this = CString(text);
}
CString& CString::operator=(char c) {
    return *this = CString(c);
}

int CString::GetLength() const noexcept {
    return RecordOf(m_pszData).length;
}

void CString::Empty() noexcept {
    Release();
    m_pszData = g_empty.text;
}

char CString::GetAt(int index) const noexcept {
    return index >= 0 && index < GetLength() ? m_pszData[index] : '\0';
}

void CString::SetAt(int index, char c) {
    if (index < 0 || index >= GetLength()) return;
    Unshare(GetLength());
    m_pszData[index] = c;
}

CString& CString::operator+=(const CString& other) {
    if (IsEmpty()) return *this = other;
    Append(other.m_pszData, static_cast<std::size_t>(other.GetLength()));
    return *this;
}

CString& CString::operator+=(const char* text) {
    Append(text, LengthOf(text));
    return *this;
}

CString& CString::operator+=(char c) {
    Append(&c, 1);
    return *this;
}

CString operator+(const CString& a, const CString& b) {
    return CString(a) += b;
}
CString operator+(const CString& a, const char* b) {
    return CString(a) += b;
}
CString operator+(const char* a, const CString& b) {
    return CString(a) += b;
}
CString operator+(const CString& a, char b) {
    return CString(a) += b;
}
CString operator+(char a, const CString& b) {
    return CString(a) += b;
}

int CString::Compare(const char* other) const noexcept {
    return std::strcmp(m_pszData, other != nullptr ? other : "");
}

CString CString::Left(int count) const {
    return Mid(0, count);
}
CString CString::Right(int count) const {
    return Mid(GetLength() - std::clamp(count, 0, GetLength()));
}
CString CString::Mid(int first) const {
    return Mid(first, GetLength());
}

CString CString::Mid(int first, int count) const {
    first = std::clamp(first, 0, GetLength());
    count = std::clamp(count, 0, GetLength() - first);
    if (count == GetLength()) return *this;
    return {m_pszData + first, count};
}

int CString::Find(char c, int start) const noexcept {
    start = std::max(start, 0);
    if (start >= GetLength()) return -1;
    const void* const found = std::memchr(m_pszData + start, c, static_cast<std::size_t>(GetLength() - start));
    return found != nullptr ? static_cast<int>(static_cast<const char*>(found) - m_pszData) : -1;
}

int CString::Find(const char* text, int start) const noexcept {
    start = std::max(start, 0);
    if (text == nullptr || start > GetLength()) return -1;
    const char* const found = std::strstr(m_pszData + start, text);
    return found != nullptr ? static_cast<int>(found - m_pszData) : -1;
}

int CString::ReverseFind(char c) const noexcept {
    int index = GetLength() - 1;
    while (index >= 0 && m_pszData[index] != c) --index;
    return index;
}

void CString::Format(const char* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    FormatV(format, arguments);
    va_end(arguments);
}

void CString::FormatV(const char* format, std::va_list arguments) {
    char small[512];
    std::va_list again;
    va_copy(again, arguments);
    const int length = std::vsnprintf(small, sizeof small, format, arguments);
    CString text;
    if (length >= static_cast<int>(sizeof small)) {
        std::vsnprintf(text.GetBufferSetLength(length), static_cast<std::size_t>(length) + 1, format, again);
    } else if (length > 0) {
        text.Append(small, static_cast<std::size_t>(length));
    }
    va_end(again);
    *this = std::move(text);
}

char* CString::GetBuffer(int minimum) {
    Unshare(std::max(minimum, GetLength()));
    return m_pszData;
}

void CString::ReleaseBuffer(int length) {
    Unshare(GetLength());
    const auto capacity = static_cast<std::size_t>(RecordOf(m_pszData).capacity);
    SetLength(m_pszData,
              length < 0 ? ::strnlen(m_pszData, capacity) : std::min(static_cast<std::size_t>(length), capacity));
}

char* CString::GetBufferSetLength(int length) {
    length = std::max(length, 0);
    char* const buffer = GetBuffer(length);
    const int old = GetLength();
    if (length > old) std::memset(buffer + old, 0, static_cast<std::size_t>(length - old));
    SetLength(buffer, static_cast<std::size_t>(length));
    return buffer;
}

/// Makes this text the only sharer of its characters, with room for `capacity`.
void CString::Unshare(int capacity) {
    const Record& record = RecordOf(m_pszData);
    if (record.sharers == 1 && record.capacity >= capacity) return;
    const int room = std::max(capacity, record.length);
    char* const text = Allocate(static_cast<std::size_t>(room));
    std::memcpy(text, m_pszData, static_cast<std::size_t>(record.length));
    SetLength(text, static_cast<std::size_t>(record.length));
    Release();
    m_pszData = text;
}

/// Appends characters. They may be a part of this text.
void CString::Append(const char* text, std::size_t length) {
    if (length == 0) return;
    const auto old = static_cast<std::size_t>(GetLength());
    if (length > INT_MAX - old) AfxThrowMemoryException();
    const std::size_t total = old + length;
    const Record& record = RecordOf(m_pszData);
    if (record.sharers == 1 && static_cast<std::size_t>(record.capacity) >= total) {
        std::memmove(m_pszData + old, text, length);
        SetLength(m_pszData, total);
        return;
    }
    char* const joined = Allocate(old == 0 ? total : total + total / 2);
    std::memcpy(joined, m_pszData, old);
    std::memcpy(joined + old, text, length);
    SetLength(joined, total);
    Release();
    m_pszData = joined;
}

void CString::Release() noexcept {
    Record& record = RecordOf(m_pszData);
    if (record.sharers > 0 && --record.sharers == 0) std::free(&record);
}
