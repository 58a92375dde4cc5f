#include "driver/script.h"

#include "driver/failure.h"

#include <gtest/gtest.h>

#include <sstream>

namespace
{

struct LineCase
{
    const char *name;
    const char *line;
    QStringList words;
};

class AScriptLine : public testing::TestWithParam<LineCase>
{};

TEST_P(AScriptLine, IsReadAsTheseWords)
{
    EXPECT_EQ(ParseLine(QString::fromUtf8(GetParam().line)), GetParam().words);
}

INSTANTIATE_TEST_SUITE_P(
    Words, AScriptLine,
    testing::Values(
        LineCase{"Empty", "", {}}, LineCase{"BlanksOnly", " \t ", {}},
        LineCase{"CommentOnly", "  # launch", {}},
        LineCase{"BlanksAndTabsBetween", " show\t frmX.txtY  ", {"show", "frmX.txtY"}},
        LineCase{"CommentBehindAWord", "launch # now", {"launch"}},
        LineCase{"HashInsideAWord", "file a#b.mdb", {"file", "a#b.mdb"}},
        LineCase{"HashInQuotes", "echo \"# 1\"", {"echo", "# 1"}},
        LineCase{"AColour", "color #ff8000 # orange", {"color", "#ff8000"}},
        LineCase{"Quoted", "echo \"two words\"", {"echo", "two words"}},
        LineCase{"EmptyQuotes", "type f.c \"\"", {"type", "f.c", ""}},
        LineCase{"Escapes", R"(echo "a\"b\\c\nd\te")", {"echo", "a\"b\\c\nd\te"}},
        LineCase{"BackslashOutsideQuotes", R"(file C:\new)", {"file", R"(C:\new)"}},
        LineCase{"QuotesInsideAWord",
                 "newrow f.g Name=\"Acme Corp\"",
                 {"newrow", "f.g", "Name=Acme Corp"}},
        LineCase{"QuotedCaption", "newrow f.g \"Trans Cost\"=1", {"newrow", "f.g", "Trans Cost=1"}},
        LineCase{"Accents", "echo Zürich", {"echo", QString::fromUtf8("Zürich")}}),
    [](const auto &info) { return info.param.name; });

int StatusOf(const char *line)
{
    try {
        ParseLine(QString::fromUtf8(line));
    } catch (const Failure &failure) {
        return failure.Status();
    }
    return 0;
}

TEST(AScriptLine, WithAnOpenQuoteIsWrong)
{
    EXPECT_EQ(StatusOf("echo \"open"), 2);
    EXPECT_EQ(StatusOf("echo \"open\\\""), 2);
}

TEST(AScriptLine, WithAnUnknownEscapeIsWrong)
{
    EXPECT_EQ(StatusOf(R"(echo "\x")"), 2);
}

TEST(AScript, NumbersItsCommandsByTheirLines)
{
    std::istringstream input("\xEF\xBB\xBF# topic\r\n\r\nlaunch\r\n  quit");
    Script script(input);
    auto line = script.Next();
    ASSERT_TRUE(line);
    EXPECT_EQ(line->line, 3);
    EXPECT_EQ(line->words, QStringList{"launch"});
    line = script.Next();
    ASSERT_TRUE(line);
    EXPECT_EQ(line->line, 4);
    EXPECT_EQ(line->words, QStringList{"quit"});
    EXPECT_FALSE(script.Next());
}

TEST(AScript, KnowsTheLineOfAMistake)
{
    std::istringstream input("launch\necho \"open\n");
    Script script(input);
    script.Next();
    EXPECT_THROW(script.Next(), Failure);
    EXPECT_EQ(script.Line(), 2);
}

} // namespace
