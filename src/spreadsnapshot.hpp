#pragma once

#include <SFML/Graphics/RenderTarget.hpp>
#include <SFML/Graphics/RenderTexture.hpp>

#include <cstdint>
#include <functional>

namespace orane
{

/// The desk with the notebook open on it, painted once into a texture of the window's size and
/// shown as one opaque quad until it changes: with a software renderer, the layers under a
/// turning page cost more than the turn itself.
class SpreadSnapshot
{
public:
    using Paint = std::function<void(sf::RenderTarget&)>;

    /// Shows the snapshot on `target`, painting it again first with `paint` when `revision` or
    /// the target's size has changed. False, and nothing drawn, when no render texture can be
    /// made: the caller then paints `target` itself.
    bool draw(sf::RenderTarget& target, std::uint64_t revision, const Paint& paint);

private:
    sf::RenderTexture texture_;
    bool painted_ = false;
    bool unavailable_ = false;
    std::uint64_t revision_ = 0;
};

} // namespace orane
