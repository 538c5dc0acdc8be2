#pragma once

#include <SFML/Graphics/Font.hpp>

#include <gtest/gtest.h>

namespace ryn::test
{

/// A handwriting font from Debian's fonts-kaushanscript, loaded once.
inline const sf::Font& handwritingFont()
{
    static sf::Font font;
    static const bool loaded = font.loadFromFile("/usr/share/fonts/opentype/kaushanscript/KaushanScript-Regular.otf");
    EXPECT_TRUE(loaded) << "fonts-kaushanscript is missing";
    return font;
}

} // namespace ryn::test
