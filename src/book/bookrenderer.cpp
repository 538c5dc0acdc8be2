#include "book/bookrenderer.hpp"

#include "book/bookshaders.hpp"
#include "book/booktext.hpp"
#include "book/pageturn.hpp"
#include "resourceids.hpp"

#include <ryn/core/resourcemanager.hpp>
#include <ryn/core/vectors.hpp>

#include <cmath>

namespace orane
{
namespace
{

constexpr float BACK_DARKEST_ALPHA = 0.85f;
constexpr float REVEALED_DARKEST_ALPHA = 0.65f;
constexpr float SHADOW_FADE_DISTANCE = 100.f;

} // namespace

BookRenderer::BookRenderer(const BookGeometry& geometry)
    : geometry_(geometry)
{}

bool BookRenderer::loadResources(ryn::ResourceManager& resources)
{
    paperSprite_.setTexture(resources.texture(TextureId::Paper), true);
    bloodSprites_[0].setTexture(resources.texture(TextureId::PaperBloodLeft), true);
    bloodSprites_[1].setTexture(resources.texture(TextureId::PaperBloodRight), true);
    shadowSprite_.setTexture(resources.texture(TextureId::Shadow), true);
    return loadFragmentShader(insideShader_, INSIDE_SHADER_SOURCE)
           && loadFragmentShader(outsideShader_, OUTSIDE_SHADER_SOURCE);
}

void BookRenderer::drawSpread(sf::RenderTarget& target, BookText& text, const PageTurn& turn, bool bloody)
{
    const std::size_t pages = text.pages().size();
    const std::uint32_t current = turn.currentPage();
    if (pages < current + 2u)
        return;
    const bool bloodySpread = bloody && current == pages - 2;
    drawPage(target, text, current, geometry_.topLeft(), {}, 0.f, true, bloodySpread);
    drawPage(target, text, current + 1, geometry_.topSpine(), {}, 0.f, false, bloodySpread);
}

void BookRenderer::drawTurn(sf::RenderTarget& target, BookText& text, const PageTurn& turn, bool bloody)
{
    const std::size_t pages = text.pages().size();
    const std::uint32_t current = turn.currentPage();
    if (turn.state() == STATE::IDLE || pages < current + 2u)
        return;
    const HOOK hook = turn.hook();
    const bool forward = BookGeometry::isForwardHook(hook);
    if (forward ? current + 4u > pages : current < 2u)
        return;

    const std::size_t revealed = forward ? current + 3 : current - 2;
    const std::size_t back = forward ? current + 2 : current - 1;
    sf::Shader& backShader = forward ? outsideShader_ : insideShader_;
    sf::Shader& revealedShader = forward ? insideShader_ : outsideShader_;

    const BookGeometry::TurnPose pose = geometry_.computeTurnPose(hook, turn.corner());
    setShaderUniforms(static_cast<int>(target.getSize().y), pose.fold.foldAngle, pose.fold.edgePoint, turn.corner(),
                      geometry_.getTargetCorner(hook), backShader, revealedShader);

    const bool bloodyTurn = bloody && current + 4u == pages;
    drawPage(target, text, revealed, pose.revealedPosition, {}, 0.f, !forward, bloodyTurn, &revealedShader);
    drawPage(target, text, back, turn.corner(), pose.backOrigin, pose.backRotation, forward, bloodyTurn, &backShader);
}

void BookRenderer::setShaderUniforms(int height, float foldAngle, sf::Vector2f edgePoint, sf::Vector2f corner,
                                     sf::Vector2f targetCorner, sf::Shader& backShader, sf::Shader& revealedShader)
{
    // Strongest when the turn starts, gone when the corner arrives.
    const float shadowCoefficient = 1.f - ryn::lengthOf(targetCorner - corner) / (2.f * geometry_.pageSize().x);
    const BookGeometry::MaskRectangle mask = geometry_.windowMask(foldAngle, edgePoint);

    const auto set = [&](sf::Shader& shader, float darkestAlpha) {
        shader.setUniform("a", mask.a);
        shader.setUniform("b", mask.b);
        shader.setUniform("d", mask.d);
        shader.setUniform("darkestAlpha", darkestAlpha);
        shader.setUniform("shadowFadeDistance", SHADOW_FADE_DISTANCE);
        shader.setUniform("shadowCoefficient", shadowCoefficient);
        shader.setUniform("height", height);
    };
    set(backShader, BACK_DARKEST_ALPHA);
    set(revealedShader, REVEALED_DARKEST_ALPHA);
}

void BookRenderer::drawPage(sf::RenderTarget& target, BookText& text, std::size_t pageIndex, sf::Vector2f position,
                            sf::Vector2f origin, float rotation, bool isLeftPage, bool isBloody,
                            const sf::Shader* shader)
{
    const Page& page = text.pages()[pageIndex];
    const sf::Vector2f pageSize = geometry_.pageSize();
    const sf::Vector2u size(static_cast<unsigned int>(pageSize.x), static_cast<unsigned int>(pageSize.y));
    const PageCache::Key key{pageIndex, isLeftPage, isBloody, text.revision()};
    // A page lying square on the pixels needs no filtering; a turned one keeps its text's shape with it.
    const bool smooth = std::fmod(rotation, 90.f) != 0.f;
    const sf::Texture* composed = pageCache_.get(key, size, smooth, [&](sf::RenderTarget& pageTarget) {
        drawPageLayers(pageTarget, text, page, {}, {}, 0.f, isLeftPage, isBloody, sf::RenderStates::Default);
    });
    if (composed == nullptr) {
        const sf::RenderStates states = shader != nullptr ? sf::RenderStates(shader) : sf::RenderStates::Default;
        drawPageLayers(target, text, page, position, origin, rotation, isLeftPage, isBloody, states);
        return;
    }
    sf::Sprite sprite(*composed);
    sprite.setOrigin(origin);
    sprite.setPosition(position);
    sprite.setRotation(rotation);
    sf::RenderStates states(PageCache::PREMULTIPLIED_ALPHA);
    states.shader = shader;
    target.draw(sprite, states);
}

void BookRenderer::drawPageLayers(sf::RenderTarget& target, BookText& text, const Page& page, sf::Vector2f position,
                                  sf::Vector2f origin, float rotation, bool isLeftPage, bool isBloody,
                                  const sf::RenderStates& states)
{
    sf::Sprite& paper = isBloody ? bloodSprites_[isLeftPage ? 0 : 1] : paperSprite_;
    for (sf::Sprite* sprite : {&paper, &shadowSprite_}) {
        sprite->setOrigin(origin);
        sprite->setPosition(position);
        sprite->setRotation(rotation);
    }

    // The shadow is painted for the spine side of a right page; a left page shows it mirrored.
    sf::IntRect shadowRect = shadowSprite_.getTextureRect();
    if (isLeftPage != (shadowRect.width < 0)) {
        shadowRect.left += shadowRect.width;
        shadowRect.width = -shadowRect.width;
        shadowSprite_.setTextureRect(shadowRect);
    }

    target.draw(paper, states);

    if (sf::Text* writing = text.writerText(page)) {
        writing->setString(page.text);
        writing->setOrigin(origin);
        writing->setPosition(position);
        writing->setRotation(rotation);
        // Inset along the page's own axes, however it is turned.
        const sf::Vector2f along = ryn::fromAngle(rotation);
        const sf::Vector2f padding = text.textPadding();
        writing->move(along * padding.x);
        writing->move(ryn::rotated(along, 90.f) * padding.y);
        target.draw(*writing, states);
    }

    target.draw(shadowSprite_, states);
}

} // namespace orane
