#include "scenemanager/textfile.hpp"
#include "storytesting.hpp"

using namespace storytesting;
using orane::TextFile;

namespace
{

TEST(TextFile, CutsLinesLikeAGetlineLoopAndDropsTheCarriageReturns)
{
    const std::vector<std::pair<std::string, Lines>> cases = {
        {"", {}},
        {"\n", {""}},
        {"a\nb", {"a", "b"}},
        {"a\r\n\r\nb\r\n", {"a", "", "b"}},
        {"a\rb\r", {"a\rb"}},
        {"\xEF\xBB\xBF"
         "d\xC3\xA9"
         "but\n",
         {"\xEF\xBB\xBF"
          "d\xC3\xA9"
          "but"}},
        {std::string("a\0b\n", 4), {std::string("a\0b", 3)}},
        {"\xF0\x9D\x84\x9E \xF4\x8F\xBF\xBF", {"\xF0\x9D\x84\x9E \xF4\x8F\xBF\xBF"}},
    };
    for (const auto& [bytes, lines] : cases) {
        const TextFile file = TextFile::decode(bytes);
        EXPECT_EQ(file.status(), TextFile::STATUS::READ);
        Lines decoded;
        for (const sf::String& line : file.lines())
            decoded.push_back(utf8(line));
        EXPECT_EQ(decoded, lines);
    }
}

TEST(TextFile, FindsTheLineOfTheFirstInvalidByte)
{
    for (const std::string fault : {"\x80", "\xC0\x80", "\xE0\x80\x80", "\xF0\x80\x80\x80", "\xED\xA0\x80",
                                    "\xF4\x90\x80\x80", "\xF5\x80\x80\x80", "\xFF", "\xC3", "\xE2\x82\n", "\xC3("}) {
        const TextFile file = TextFile::decode("un\r\n\ndeux \xC3\xA9" + fault + "\nquatre\n\xFF");
        EXPECT_EQ(file.status(), TextFile::STATUS::INVALID_UTF8) << ::testing::PrintToString(fault);
        EXPECT_EQ(file.invalidLineIndex(), 2u) << ::testing::PrintToString(fault);
    }
}

} // namespace
