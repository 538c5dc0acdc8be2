#include <ryn/core/graphics.hpp>
#include <ryn/core/windowlistener.hpp>

#include <SFML/Graphics/RectangleShape.hpp>
#include <SFML/Graphics/Texture.hpp>

#include <gtest/gtest.h>

#include <vector>

// Real windows: these tests need a display (the test command provides a virtual one).
namespace
{

class CountingListener : public ryn::WindowListener
{
public:
    CountingListener(int id, std::vector<int>& order)
        : id_(id)
        , order_(order)
    {}
    void windowCreated(sf::RenderWindow* window) override
    {
        EXPECT_TRUE(window && window->isOpen());
        order_.push_back(id_);
    }

private:
    int id_;
    std::vector<int>& order_;
};

TEST(Graphics, ListenersAreToldOfEveryOpeningInRegistrationOrder)
{
    std::vector<int> order;
    CountingListener first(1, order);
    CountingListener second(2, order);
    ryn::Graphics graphics;
    graphics.addWindowListener(&second);
    graphics.addWindowListener(&first);
    graphics.addWindowListener(&second);

    ASSERT_TRUE(graphics.create(""));
    graphics.createWindow(640, 480);
    EXPECT_EQ(order, (std::vector<int>{2, 1, 2, 1}));
    EXPECT_EQ(graphics.window()->getSize(), sf::Vector2u(640, 480));

    graphics.removeWindowListener(&second);
    graphics.createWindow(640, 480);
    EXPECT_EQ(order, (std::vector<int>{2, 1, 2, 1, 1}));
}

/// A desktop whose work area the test chooses, whatever the display's screen.
class SmallDesktopGraphics : public ryn::Graphics
{
public:
    explicit SmallDesktopGraphics(sf::IntRect area)
        : area_(area)
    {}

protected:
    sf::IntRect workArea() const override { return area_; }

private:
    sf::IntRect area_;
};

sf::Color windowPixel(const sf::RenderWindow& window, unsigned x, unsigned y)
{
    sf::Texture frame;
    frame.create(window.getSize().x, window.getSize().y);
    frame.update(window);
    return frame.copyToImage().getPixel(x, y);
}

TEST(Graphics, WindowLargerThanTheDesktopOpensScaledAndDrawsAtTheSizeAskedFor)
{
    SmallDesktopGraphics graphics(sf::IntRect(0, 0, 1280, 720));
    ASSERT_TRUE(graphics.create(""));
    EXPECT_FALSE(graphics.isScaled());
    EXPECT_EQ(&graphics.target(), graphics.window());

    graphics.createWindow(1600, 900);
    ASSERT_TRUE(graphics.isScaled());
    EXPECT_EQ(graphics.window()->getSize(), sf::Vector2u(1280, 720));
    EXPECT_EQ(graphics.target().getSize(), sf::Vector2u(1600, 900));
    EXPECT_EQ(graphics.mapPixelToTarget({640, 360}), sf::Vector2f(800.f, 450.f));
    EXPECT_EQ(graphics.mapPixelToTarget({1280, 720}), sf::Vector2f(1600.f, 900.f));

    // A square in the bottom-right corner of the frame lands in the window's corner, scaled.
    graphics.target().clear(sf::Color::Black);
    sf::RectangleShape square({100.f, 100.f});
    square.setPosition(1500.f, 800.f);
    square.setFillColor(sf::Color::Red);
    graphics.target().draw(square);
    graphics.display();
    EXPECT_EQ(windowPixel(*graphics.window(), 1275, 715), sf::Color::Red);
    EXPECT_EQ(windowPixel(*graphics.window(), 1190, 630), sf::Color::Black);

    // A size that fits again draws straight into the window, pixel for pixel.
    graphics.createWindow(640, 480);
    EXPECT_FALSE(graphics.isScaled());
    EXPECT_EQ(&graphics.target(), graphics.window());
    EXPECT_EQ(graphics.mapPixelToTarget({639, 479}), sf::Vector2f(639.f, 479.f));
}

} // namespace
