#pragma once

#include <ryn/core/loopclock.hpp>

#include <SFML/System/Clock.hpp>

namespace ryn
{

/// Real time: `sf::Clock` and `sf::sleep`.
class SystemClock : public LoopClock
{
public:
    void restart() override;
    sf::Time elapsed() override;
    void sleep(sf::Time duration) override;

private:
    sf::Clock clock_;
};

} // namespace ryn
