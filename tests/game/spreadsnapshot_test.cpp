#include "spreadsnapshot.hpp"

#include <SFML/Graphics/RectangleShape.hpp>
#include <SFML/Graphics/RenderTexture.hpp>

#include <gtest/gtest.h>

namespace orane
{
namespace
{

sf::Color shownAt(sf::RenderTexture& target, unsigned int x, unsigned int y)
{
    target.display();
    return target.getTexture().copyToImage().getPixel(x, y);
}

TEST(SpreadSnapshot, PaintsAgainOnlyWhenTheRevisionOrTheSizeChanges)
{
    sf::RenderTexture window;
    ASSERT_TRUE(window.create(64, 32));
    SpreadSnapshot snapshot;
    int paints = 0;
    sf::Color colour = sf::Color::Red;
    const auto paint = [&](sf::RenderTarget& target) {
        ++paints;
        sf::RectangleShape desk(sf::Vector2f(target.getSize()));
        desk.setFillColor(colour);
        target.draw(desk);
    };

    ASSERT_TRUE(snapshot.draw(window, 1, paint));
    EXPECT_EQ(sf::Color::Red, shownAt(window, 63, 31));
    colour = sf::Color::Blue;
    window.clear(sf::Color::Green);
    ASSERT_TRUE(snapshot.draw(window, 1, paint));
    EXPECT_EQ(1, paints);
    EXPECT_EQ(sf::Color::Red, shownAt(window, 10, 10)) << "the kept picture covers the whole target";

    ASSERT_TRUE(snapshot.draw(window, 2, paint));
    EXPECT_EQ(2, paints);
    EXPECT_EQ(sf::Color::Blue, shownAt(window, 10, 10));

    sf::RenderTexture larger;
    ASSERT_TRUE(larger.create(128, 64));
    colour = sf::Color::Yellow;
    ASSERT_TRUE(snapshot.draw(larger, 2, paint));
    EXPECT_EQ(3, paints);
    EXPECT_EQ(sf::Color::Yellow, shownAt(larger, 127, 63));
}

} // namespace
} // namespace orane
