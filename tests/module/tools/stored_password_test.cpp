// The stored form of a password.
#include "module/tools/stored_password.h"

#include <ctime>
#include <string>

#include <gmock/gmock.h>

#include "platform/framework/cstring.h"
#include "platform/system/random.h"

namespace zel::test {

namespace {

std::string Scrambled(const std::string& password) {
    CString s(password.c_str());
    tools::ScramblePassword(s);
    return {s.GetString(), static_cast<std::size_t>(s.GetLength())};
}

std::string Unscrambled(const std::string& stored) {
    CString s(stored.data(), static_cast<int>(stored.size()));
    tools::UnscramblePassword(s);
    return {s.GetString(), static_cast<std::size_t>(s.GetLength())};
}

/// A stored form with `filler` in every byte and these two digits of the length.
std::string Field(char filler, char tens, char units) {
    std::string field(80, filler);
    field[static_cast<std::size_t>(tools::PasswordSlot(0))] = tens;
    field[static_cast<std::size_t>(tools::PasswordSlot(1))] = units;
    for (char& byte : field) byte = static_cast<char>(byte ^ '\r');
    return field;
}

TEST(StoredPassword, OfAnEarlierBuildIsRead) {
    EXPECT_EQ(Unscrambled("Cl9~cinz#T/<l)+hcUhZjnnXO2`L-w'I%\xE5W_?-G?NN*a+-tYQEu?5N^!_-[>PY:k.[x2\xE4oU-i?!+Zy"),
              "Caf\xE9 & Cr\xE8me, 24 Sugars");
}

TEST(StoredPassword, OfAnyLengthIsRestored) {
    for (int length = 0; length <= 78; ++length) {
        std::string password;
        for (int i = 0; i < length; ++i) password += static_cast<char>(i % 2 != 0 ? 33 + i : 255 - i);
        const std::string stored = Scrambled(password);
        ASSERT_EQ(stored.size(), 80U);
        EXPECT_EQ(stored.find('\0'), std::string::npos);
        EXPECT_EQ(Unscrambled(stored), password);
    }
}

TEST(StoredPassword, IsEmptyForAPasswordWithoutOne) {
    EXPECT_EQ(Scrambled(std::string(79, 'p')), "");
    EXPECT_EQ(Scrambled("a\rb"), "");
}

TEST(StoredPassword, HasTheFillerOfItsSecond) {
    std::time_t second = 0;
    std::string one, two, full;
    do {
        second = std::time(nullptr);
        one = Scrambled("x");
        two = Scrambled("x");
        full = Scrambled(std::string(78, 'q'));
    } while (std::time(nullptr) != second);
    EXPECT_EQ(one, two);
    std::string expected;
    crt::srand(static_cast<unsigned>(second));
    while (expected.size() < 80) {
        const int value = crt::rand();
        if (value >= 32 && value <= 122) expected += static_cast<char>(value ^ '\r');
    }
    int differences = 0, of_full = 0;
    for (std::size_t i = 0; i < 80; ++i) {
        differences += one[i] != expected[i] ? 1 : 0;
        of_full += full[i] == ('q' ^ '\r') ? 1 : 0;
    }
    EXPECT_LE(differences, 3) << "two digits and one character";
    EXPECT_EQ(of_full, 78) << "no filler is left";
}

TEST(StoredPassword, DamagedGivesAnyText) {
    for (const std::size_t length : {0U, 1U, 79U, 81U, 200U}) {
        const std::string text(length, 'x');
        EXPECT_EQ(Unscrambled(text), text) << "never scrambled";
    }
    EXPECT_EQ(Unscrambled(Field('x', '0', '0')), "");
    EXPECT_EQ(Unscrambled(Field('x', '/', '9')), "") << "a length below 0";
    EXPECT_EQ(Unscrambled(Field('x', '\x80', '\x80')), "") << "digits are signed";
    EXPECT_EQ(Unscrambled(Field('x', '0', '1')), "x");
    EXPECT_EQ(Unscrambled(Field('x', '\x7F', '\x7F')), std::string(869, 'x'))
        << "the last slot is followed by position 0";
    for (const int outside : {80, 0x7FFFFFFF, -1, -0x7FFFFFFF}) EXPECT_EQ(tools::PasswordSlot(outside), 0);
    EXPECT_EQ(Unscrambled(Field('\0', '0', '3')), std::string(3, '\0'));
}

}  // namespace

}  // namespace zel::test
