#include "spreadsnapshot.hpp"

#include <SFML/Graphics/Sprite.hpp>

namespace orane
{

bool SpreadSnapshot::draw(sf::RenderTarget& target, std::uint64_t revision, const Paint& paint)
{
    if (unavailable_)
        return false;
    const sf::Vector2u size = target.getSize();
    if (texture_.getSize() != size) {
        if (!texture_.create(size.x, size.y)) {
            unavailable_ = true;
            return false;
        }
        painted_ = false;
    }
    if (!painted_ || revision != revision_) {
        texture_.clear(sf::Color::Black);
        paint(texture_);
        texture_.display();
        painted_ = true;
        revision_ = revision;
    }
    target.draw(sf::Sprite(texture_.getTexture()), sf::BlendNone);
    return true;
}

} // namespace orane
