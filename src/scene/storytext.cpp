#include "scene/storytext.hpp"

#include "scene/scene.hpp"
#include "scene/tokens.hpp"

namespace orane
{
namespace
{

/// What follows the first occurrence of `token`, or false when the line lacks it.
bool textAfterToken(const sf::String& line, const sf::String& token, sf::String& rest)
{
    const std::size_t position = line.find(token);
    if (position == sf::String::InvalidPos)
        return false;
    const std::size_t start = position + token.getSize();
    rest = line.substring(start, sf::String::InvalidPos);
    return true;
}

/// True when `token` starts at `data[index]`; `size` is the length of `data`.
bool tokenAt(const sf::Uint32* data, std::size_t size, std::size_t index, const sf::String& token)
{
    const std::size_t length = token.getSize();
    if (size - index < length)
        return false;
    const sf::Uint32* tokenData = token.getData();
    for (std::size_t k = 0; k < length; ++k) {
        if (data[index + k] != tokenData[k])
            return false;
    }
    return true;
}

void reportMissingChoiceToken(std::uint32_t lineNumber)
{
    logError(L"CODE ERROR : Trying to read a choice in a string without choice token. "
             L"Fix -> Find Varek and kick his a**.",
             sf::String(), lineNumber);
}

} // namespace

bool containsToken(const sf::String& line, const sf::String& token)
{
    return line.find(token) != sf::String::InvalidPos;
}

LineTokens findLineTokens(const sf::String& line)
{
    LineTokens found;
    const sf::Uint32* data = line.getData();
    const std::size_t size = line.getSize();
    for (std::size_t index = 0; index < size; ++index) {
        switch (data[index]) {
        case U'F':
            found.forward = found.forward || tokenAt(data, size, index, TOKEN_FORWARD);
            break;
        case U'O':
            found.orane = found.orane || tokenAt(data, size, index, TOKEN_ORANE);
            break;
        case U'N':
            found.nathan = found.nathan || tokenAt(data, size, index, TOKEN_NATHAN);
            break;
        case U'*':
            found.choice = true;
            break;
        case U'-':
            found.nextScene = found.nextScene || tokenAt(data, size, index, TOKEN_NEXT_SCENE);
            break;
        default:
            break;
        }
    }
    return found;
}

std::vector<sf::String> splitWords(const sf::String& text)
{
    std::vector<sf::String> words;
    const std::size_t size = text.getSize();
    std::size_t index = 0;
    while (index < size) {
        while (index < size && text[index] == U' ')
            ++index;
        const std::size_t start = index;
        while (index < size && text[index] != U' ')
            ++index;
        if (index > start)
            words.push_back(text.substring(start, index - start));
    }
    return words;
}

bool isWhitespace(sf::Uint32 codePoint)
{
    return codePoint == U' ' || (codePoint >= U'\t' && codePoint <= U'\r');
}

sf::String trimWhitespace(const sf::String& text)
{
    std::size_t begin = 0;
    std::size_t end = text.getSize();
    while (begin < end && isWhitespace(text[begin]))
        ++begin;
    while (end > begin && isWhitespace(text[end - 1]))
        --end;
    return text.substring(begin, end - begin);
}

bool readChoiceBrief(const sf::String& line, Choice& choice, std::uint32_t lineNumber)
{
    if (!textAfterToken(line, TOKEN_CHOICE, choice.briefDescription)) {
        reportMissingChoiceToken(lineNumber);
        return false;
    }
    return true;
}

bool readChoiceTarget(const sf::String& line, Choice& choice, std::uint32_t lineNumber)
{
    sf::String rest;
    if (!textAfterToken(line, TOKEN_NEXT_SCENE, rest)) {
        reportMissingChoiceToken(lineNumber);
        return false;
    }
    choice.nextSceneName = trimWhitespace(rest);
    return true;
}

} // namespace orane
