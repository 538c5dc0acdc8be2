#include "referencelinebreaker.hpp"

namespace orane
{
namespace
{

/// Turns the last blank at positions n - 2 down to 1 into a line feed: the character just added
/// (n - 1) is never the break, and neither is the first character of the text.
void breakAtLastBlank(sf::String& text)
{
    for (std::size_t j = text.getSize() - 1; j-- > 1;) {
        if (text[j] == U' ') {
            text[j] = U'\n';
            return;
        }
    }
}

} // namespace

sf::String breakLinesReference(const sf::String& text, sf::Text& writer, float maxWidth)
{
    writer.setRotation(0.f);
    writer.setOrigin(0.f, 0.f);

    const sf::String source = text;
    sf::String result;
    for (std::size_t i = 0; i < source.getSize(); ++i) {
        result += source[i];
        writer.setString(result);
        if (writer.getGlobalBounds().width > maxWidth)
            breakAtLastBlank(result);
    }
    return result;
}

sf::String breakLinesReference(const sf::String& text, const sf::Font& font, unsigned int characterSize, float maxWidth)
{
    sf::Text writer("", font, characterSize);
    return breakLinesReference(text, writer, maxWidth);
}

} // namespace orane
