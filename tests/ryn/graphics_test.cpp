#include "ryn/core/graphics.hpp"
#include "ryn/core/windowlistener.hpp"

#include <gtest/gtest.h>

#include <vector>

// Real windows: these tests need a display (the test command provides a virtual one).
namespace
{

class CountingListener : public ryn::WindowListener
{
public:
    CountingListener(int id, std::vector<int>& order) : id_(id), order_(order) {}
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

    graphics.create("");
    graphics.createWindow(640, 480);
    EXPECT_EQ(order, (std::vector<int>{2, 1, 2, 1}));
    EXPECT_EQ(graphics.window()->getSize(), sf::Vector2u(640, 480));

    graphics.removeWindowListener(&second);
    graphics.createWindow(640, 480);
    EXPECT_EQ(order, (std::vector<int>{2, 1, 2, 1, 1}));
}

} // namespace
