#pragma once

#include <SFML/Graphics/RenderTarget.hpp>
#include <SFML/Graphics/RenderTexture.hpp>
#include <SFML/System/Vector2.hpp>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

namespace orane
{

/// Pages composed once (paper, text, spine shadow) into textures of their own, so that a frame
/// draws a page as one quad: a software renderer pays for every layer of every pixel, and a
/// page's text would otherwise be laid out again on every frame.
/// The textures hold premultiplied colours: draw them with `PREMULTIPLIED_ALPHA`.
class PageCache
{
public:
    /// What a composed page depends on. `revision` changes whenever any page's text does.
    struct Key
    {
        std::size_t page = 0;
        bool leftPage = false;
        bool bloody = false;
        std::uint64_t revision = 0;

        bool operator==(const Key& other) const;
    };

    using Compose = std::function<void(sf::RenderTarget&)>;

    static const sf::BlendMode PREMULTIPLIED_ALPHA;

    /// At most `capacity` pages are kept; the one unused longest makes room.
    explicit PageCache(std::size_t capacity = 6);

    /// The page under `key`, composed by `compose` into a transparent `size` texture when it is
    /// not kept yet, filtered when `smooth` (worth its cost only for a page drawn turned). Null
    /// when no render texture can be made (the caller draws the layers).
    const sf::Texture* get(const Key& key, sf::Vector2u size, bool smooth, const Compose& compose);

private:
    struct Entry
    {
        Key key;
        std::unique_ptr<sf::RenderTexture> texture;
        std::uint64_t lastUse = 0;
    };

    Entry* find(const Key& key);
    Entry* makeRoom(sf::Vector2u size);

    std::vector<Entry> entries_;
    std::size_t capacity_ = 6;
    std::uint64_t uses_ = 0;
};

} // namespace orane
