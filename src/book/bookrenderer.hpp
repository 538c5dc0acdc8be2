#pragma once

#include "book/bookgeometry.hpp"
#include "book/pagecache.hpp"

#include <SFML/Graphics/RenderStates.hpp>
#include <SFML/Graphics/RenderTarget.hpp>
#include <SFML/Graphics/Shader.hpp>
#include <SFML/Graphics/Sprite.hpp>

#include <cstddef>
#include <cstdint>

namespace ryn
{
class ResourceManager;
}

namespace orane
{

class BookText;
class PageTurn;
struct Page;

/// Draws the notebook: the flat spread, and while a corner is off its place the page it
/// uncovers and the turning page's back, each cut along the fold by a masking shader. Pages are
/// composed once into the page cache and drawn from there.
class BookRenderer
{
public:
    /// Reads the geometry, which must outlive the renderer.
    explicit BookRenderer(const BookGeometry& geometry);

    /// Paper, blood and shadow textures, then the two shaders; false when a shader does not
    /// compile (SFML reports why).
    [[nodiscard]] bool loadResources(ryn::ResourceManager& resources);

    /// The spread shown; nothing while it has no pages. `bloody` stains the last spread.
    void drawSpread(sf::RenderTarget& target, BookText& text, const PageTurn& turn, bool bloody);
    /// The pages of a turn in progress over the spread; nothing at rest.
    void drawTurn(sf::RenderTarget& target, BookText& text, const PageTurn& turn, bool bloody);

private:
    /// The fold's mask and shadow for both shaders, for a corner `corner` heading to `targetCorner`.
    void setShaderUniforms(int height, float foldAngle, sf::Vector2f edgePoint, sf::Vector2f corner,
                           sf::Vector2f targetCorner, sf::Shader& backShader, sf::Shader& revealedShader);
    void drawPage(sf::RenderTarget& target, BookText& text, std::size_t pageIndex, sf::Vector2f position,
                  sf::Vector2f origin, float rotation, bool isLeftPage, bool isBloody,
                  const sf::Shader* shader = nullptr);
    /// Paper, text and spine shadow, each drawn with `states`.
    void drawPageLayers(sf::RenderTarget& target, BookText& text, const Page& page, sf::Vector2f position,
                        sf::Vector2f origin, float rotation, bool isLeftPage, bool isBloody,
                        const sf::RenderStates& states);

    const BookGeometry& geometry_;
    sf::Sprite paperSprite_;
    sf::Sprite bloodSprites_[2];
    sf::Sprite shadowSprite_;
    sf::Shader insideShader_;
    sf::Shader outsideShader_;
    PageCache pageCache_;
};

} // namespace orane
