// The base protocol's framing and the editor's view of a document: the two places where a
// byte off by one silently corrupts everything that follows.
#include "messagereader.hpp"
#include "textdocument.hpp"
#include "uri.hpp"

#include <gtest/gtest.h>

namespace
{

using orane::lsp::MessageReader;
using orane::lsp::Position;
using orane::lsp::PositionEncoding;
using orane::lsp::TextDocument;

std::string framed(const std::string& body)
{
    return "Content-Length: " + std::to_string(body.size()) + "\r\n\r\n" + body;
}

std::vector<MessageReader::Frame> readAll(MessageReader& reader)
{
    std::vector<MessageReader::Frame> frames;
    while (auto frame = reader.next())
        frames.push_back(*frame);
    return frames;
}

TEST(MessageReaderTest, MessagesCutAnywhereComeOutWhole)
{
    const std::string stream =
        framed("{\"a\":1}") + "Content-Type: application/vscode-jsonrpc; charset=utf-8\r\n" + framed("{\"é\":2}");
    for (std::size_t piece = 1; piece <= stream.size(); ++piece) {
        MessageReader reader;
        std::vector<MessageReader::Frame> frames;
        for (std::size_t at = 0; at < stream.size(); at += piece) {
            reader.feed(stream.data() + at, std::min(piece, stream.size() - at));
            for (auto& frame : readAll(reader))
                frames.push_back(frame);
        }
        ASSERT_EQ(frames.size(), 2U) << "pieces of " << piece;
        EXPECT_EQ(frames[0].text, "{\"a\":1}");
        EXPECT_EQ(frames[1].text, "{\"é\":2}");
    }
}

TEST(MessageReaderTest, ABadHeaderIsReportedOnceAndTheNextMessageStillArrives)
{
    for (const std::string& bad :
         {std::string("Content-Length: lots\r\n\r\n{}"), std::string("Content-Length 5\r\n\r\nhello"),
          std::string("X-Other: 1\r\n\r\n{}"), std::string(5000, 'x')}) {
        MessageReader reader;
        const std::string stream = bad + framed("{\"ok\":true}");
        reader.feed(stream.data(), stream.size());
        const auto frames = readAll(reader);
        ASSERT_EQ(frames.size(), 2U) << bad.substr(0, 40);
        EXPECT_FALSE(frames[0].valid);
        EXPECT_TRUE(frames[1].valid);
        EXPECT_EQ(frames[1].text, "{\"ok\":true}");
    }
}

TEST(MessageReaderTest, AnOversizedBodyIsSkippedWithoutBeingKept)
{
    MessageReader reader;
    const std::string header = "Content-Length: " + std::to_string(MessageReader::MAX_BODY_BYTES + 3) + "\r\n\r\n";
    reader.feed(header.data(), header.size());
    const auto refused = reader.next();
    ASSERT_TRUE(refused.has_value());
    EXPECT_FALSE(refused->valid);
    const std::string chunk(1 << 20, 'z');
    for (std::size_t fed = 0; fed < MessageReader::MAX_BODY_BYTES + 3; fed += chunk.size()) {
        const std::size_t size = std::min(chunk.size(), MessageReader::MAX_BODY_BYTES + 3 - fed);
        reader.feed(chunk.data(), size);
        ASSERT_FALSE(reader.next().has_value());
    }
    const std::string after = framed("{}");
    reader.feed(after.data(), after.size());
    const auto frame = reader.next();
    ASSERT_TRUE(frame.has_value());
    EXPECT_EQ(frame->text, "{}");
}

TEST(TextDocumentTest, PositionsCountInTheAgreedUnits)
{
    // "é" is 2 bytes and 1 UTF-16 unit; "𝄞" is 4 bytes and 2 UTF-16 units.
    const TextDocument document("SCENE été\r\n-> 𝄞x\nfin");
    ASSERT_EQ(document.lineCount(), 3U);
    EXPECT_EQ(document.line(0), "SCENE été");
    const std::size_t x = document.text().find('x');
    EXPECT_EQ(document.offsetAt(Position{1, 5}, PositionEncoding::UTF16), x);
    EXPECT_EQ(document.offsetAt(Position{1, 7}, PositionEncoding::UTF8), x);
    EXPECT_EQ(document.offsetAt(Position{1, 4}, PositionEncoding::UTF32), x);
    EXPECT_EQ(document.positionAt(x, PositionEncoding::UTF16), (Position{1, 5}));
    // Half a surrogate pair lands on the character; past the line's end lands on its end.
    EXPECT_EQ(document.offsetAt(Position{1, 4}, PositionEncoding::UTF16), x - 4);
    EXPECT_EQ(document.offsetAt(Position{0, 500}, PositionEncoding::UTF16), document.text().find('\r'));
    EXPECT_EQ(document.offsetAt(Position{90, 0}, PositionEncoding::UTF16), document.text().size());
}

TEST(TextDocumentTest, EditsKeepTheLinesRightAndBrokenBytesCountAsOneCharacter)
{
    TextDocument document("a\nbb\ncc\n");
    document.replace(document.offsetAt(Position{1, 1}, PositionEncoding::UTF16),
                     document.offsetAt(Position{2, 1}, PositionEncoding::UTF16), "X\nY\nZ");
    EXPECT_EQ(document.text(), "a\nbX\nY\nZc\n");
    ASSERT_EQ(document.lineCount(), 5U);
    EXPECT_EQ(document.line(3), "Zc");
    document.replace(9, 2, "");
    EXPECT_EQ(document.text(), "a\n\n");
    EXPECT_EQ(document.lineCount(), 3U);

    const TextDocument binary(std::string("\xff\xc3(x", 4));
    EXPECT_EQ(binary.offsetAt(Position{0, 3}, PositionEncoding::UTF16), 3U);
    EXPECT_EQ(binary.positionAt(4, PositionEncoding::UTF16), (Position{0, 4}));
}

TEST(UriTest, PathsWithAccentsAndBlanksGoThereAndBack)
{
    const std::string path = "/home/auteur/mes histoires/Élodie #1.txt";
    const std::string uri = orane::lsp::uriFromPath(path);
    EXPECT_EQ(uri.find(' '), std::string::npos);
    EXPECT_EQ(orane::lsp::pathFromUri(uri), path);
    EXPECT_EQ(orane::lsp::pathFromUri("file://localhost/tmp/a%2Fb.txt"), "/tmp/a/b.txt");
    EXPECT_EQ(orane::lsp::pathFromUri("untitled:Untitled-1"), "");
}

} // namespace
