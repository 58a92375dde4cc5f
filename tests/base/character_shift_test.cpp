#include "base/character_shift.h"

#include "base/runtime_error.h"

#include <gtest/gtest.h>

namespace
{

int NumberOf(const auto &routine)
{
    try {
        routine();
        return 0;
    } catch (const RuntimeError &error) {
        return error.Number();
    }
}

} // namespace

TEST(CharacterShift, RaisesAndLowersEachCodeByThree)
{
    EXPECT_EQ(ShiftUp(QStringLiteral("abc")), QStringLiteral("def"));
    EXPECT_EQ(ShiftDown(QStringLiteral("def")), QStringLiteral("abc"));
    EXPECT_EQ(ShiftUp(QStringLiteral("Xyz 9")), QStringLiteral("[|}#<"));
    EXPECT_EQ(ShiftUp(QString()), QString());
}

TEST(CharacterShift, IsItsOwnInverseFromThreeToTwoHundredFiftyTwo)
{
    for (int code = 3; code <= 252; ++code) {
        const QString text(QChar(static_cast<char16_t>(code)));
        EXPECT_EQ(ShiftDown(ShiftUp(text)), text) << code;
        EXPECT_EQ(ShiftUp(ShiftDown(text)), text) << code;
    }
}

TEST(CharacterShift, KeepsAPasswordWithAccents)
{
    const QString password = QString::fromUtf8("Müller'é 100%");
    EXPECT_NE(ShiftUp(password), password);
    EXPECT_EQ(ShiftUp(password).size(), password.size());
    EXPECT_EQ(ShiftDown(ShiftUp(password)), password);
}

TEST(CharacterShift, RefusesACodeThatLeavesTheRange)
{
    for (const int code : {253, 254, 255})
        EXPECT_EQ(NumberOf([&] { ShiftUp(QString(QChar(static_cast<char16_t>(code)))); }), 5)
            << code;
    for (const int code : {0, 1, 2})
        EXPECT_EQ(NumberOf([&] { ShiftDown(QString(QChar(static_cast<char16_t>(code)))); }), 5)
            << code;
}

TEST(CharacterShift, LowersATextThatWasNeverRaised)
{
    EXPECT_EQ(ShiftDown(QStringLiteral("abc")), QString::fromLatin1("^_`"));
}

TEST(CharacterShift, RefusesACharacterThatTheCodePageLacks)
{
    EXPECT_EQ(NumberOf([] { ShiftUp(QString::fromUtf8("日")); }), 5);
}
