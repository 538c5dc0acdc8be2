#pragma once

#include <ryn/core/resourceholder.hpp>

#include <SFML/Graphics/Font.hpp>
#include <SFML/Graphics/Texture.hpp>

#include <cstdint>
#include <string>

namespace ryn
{

/// Holds every font and texture of the game for the whole run. The engine knows nothing of
/// the game's identifiers: any enumeration (or integer) converts to the holders' 32-bit key,
/// e.g. `components().resourceManager()->texture(TextureId::Paper)`.
class ResourceManager
{
public:
    virtual ~ResourceManager() = default;

    [[nodiscard]] virtual bool init() = 0;
    /// Loads every font and texture of the game; a file that cannot be loaded throws.
    [[nodiscard]] virtual bool load() = 0;

    template <typename Id>
    sf::Font& font(Id id)
    {
        return fonts_.get(toKey(id));
    }
    template <typename Id>
    sf::Texture& texture(Id id)
    {
        return textures_.get(toKey(id));
    }

protected:
    template <typename Id>
    void loadFont(Id id, const std::string& filename)
    {
        fonts_.load(toKey(id), filename);
    }
    template <typename Id>
    void loadTexture(Id id, const std::string& filename)
    {
        textures_.load(toKey(id), filename);
    }

    template <typename Id>
    static std::uint32_t toKey(Id id)
    {
        return static_cast<std::uint32_t>(id);
    }

    ResourceHolder<sf::Texture, std::uint32_t> textures_;
    ResourceHolder<sf::Font, std::uint32_t> fonts_;
};

} // namespace ryn
