#include "view/base64.h"

#include <gtest/gtest.h>

namespace {

using keld::view::Base64;

std::string written(std::string const & bytes, std::size_t pieceSize)
{
    std::string text;
    Base64 output([&](std::string_view piece) { text += piece; });
    for (std::size_t i = 0; i < bytes.size(); i += pieceSize)
        output.write(bytes.data() + i, std::min(pieceSize, bytes.size() - i));
    output.end();
    return text;
}

TEST(Base64Text, IsThatOfTheKnownExamples)
{
    EXPECT_EQ("", Base64::text(""));
    EXPECT_EQ("Zg==", Base64::text("f"));
    EXPECT_EQ("Zm8=", Base64::text("fo"));
    EXPECT_EQ("Zm9v", Base64::text("foo"));
    EXPECT_EQ("Zm9vYg==", Base64::text("foob"));
    EXPECT_EQ("Zm9vYmE=", Base64::text("fooba"));
    EXPECT_EQ("Zm9vYmFy", Base64::text("foobar"));
    EXPECT_EQ("+/8A", Base64::text(std::string("\xfb\xff\0", 3)));
}

TEST(Base64Output, HasLinesOf120Characters)
{
    std::string const line(120, 'A');
    EXPECT_EQ(line + "\nAAA=\n", written(std::string(92, '\0'), 7));
}

TEST(Base64Output, IsTheSameInWhateverPiecesTheBytesCome)
{
    std::string bytes;
    for (int i = 0; i < 200'000; ++i)
        bytes += static_cast<char>(i * 7 % 251);
    std::string text = written(bytes, 13);
    EXPECT_EQ(text, written(bytes, bytes.size()));
    std::erase(text, '\n');
    EXPECT_EQ(Base64::text(bytes), text);
}

} // namespace
