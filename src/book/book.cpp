#include "book/book.hpp"

#include "book/bookshaders.hpp"
#include "book/linebreaker.hpp"
#include "resourceids.hpp"
#include "scene/choice.hpp"
#include "scene/scene.hpp"

#include <ryn/core/assert.hpp>
#include <ryn/core/components.hpp>
#include <ryn/core/floatcolor.hpp>
#include <ryn/core/resourcemanager.hpp>
#include <ryn/core/vectors.hpp>

#include <SFML/Graphics/RenderStates.hpp>

#include <algorithm>
#include <cmath>

namespace orane
{
namespace
{

const sf::Vector2f DEFAULT_MARGIN(362.f, 176.f);
const sf::Vector2f DEFAULT_PAGE_SIZE(440.f, 680.f);
const ryn::FloatColor ORANE_INK(0.1f, 0.08f, 0.1f, 1.f);
const ryn::FloatColor NATHAN_INK(0.15f, 0.05f, 0.1f, 1.f);
constexpr unsigned int WRITER_CHARACTER_SIZE = 20;

constexpr float PI = 3.1415927f;
constexpr float BACK_DARKEST_ALPHA = 0.85f;
constexpr float REVEALED_DARKEST_ALPHA = 0.65f;
constexpr float SHADOW_FADE_DISTANCE = 100.f;

float toDegrees(float radians)
{
    return radians * 180.f / PI;
}

/// Which way a lifted corner moves into its page.
sf::Vector2f liftDirection(HOOK h)
{
    switch (h)
    {
    case HOOK::TOP_LEFT: return {1.f, 1.f};
    case HOOK::LEFT: return {1.f, 0.f};
    case HOOK::BOTTOM_LEFT: return {1.f, -1.f};
    case HOOK::TOP_RIGHT: return {-1.f, 1.f};
    case HOOK::RIGHT: return {-1.f, 0.f};
    case HOOK::BOTTOM_RIGHT: return {-1.f, -1.f};
    case HOOK::COUNT: break;
    }
    RYN_ASSERT(false);
    return {};
}

} // namespace

Book::Book()
{
    setMargin(DEFAULT_MARGIN);
    setPageSize(DEFAULT_PAGE_SIZE);
}

bool Book::loadResources()
{
    ryn::ResourceManager* resources = ryn::components().resourceManager();
    RYN_ASSERT(resources != nullptr);
    if (resources == nullptr)
        return false;

    paperSprite_.setTexture(resources->texture(TextureId::Paper), true);
    bloodSprites_[0].setTexture(resources->texture(TextureId::PaperBloodLeft), true);
    bloodSprites_[1].setTexture(resources->texture(TextureId::PaperBloodRight), true);
    shadowSprite_.setTexture(resources->texture(TextureId::Shadow), true);

    if (!loadFragmentShader(insideShader_, INSIDE_SHADER_SOURCE)
        || !loadFragmentShader(outsideShader_, OUTSIDE_SHADER_SOURCE))
        return false;

    writerTexts_.resize(2);
    sf::Text& orane = writerTexts_[static_cast<std::size_t>(PageWriter::ORANE)];
    orane.setFillColor(ORANE_INK);
    orane.setFont(resources->font(FontId::Orane));
    orane.setCharacterSize(WRITER_CHARACTER_SIZE);
    sf::Text& nathan = writerTexts_[static_cast<std::size_t>(PageWriter::NATHAN)];
    nathan.setFillColor(NATHAN_INK);
    nathan.setFont(resources->font(FontId::Nathan));
    nathan.setCharacterSize(WRITER_CHARACTER_SIZE);
    return true;
}

void Book::setPageTurnedCallback(std::function<void()> callback)
{
    onPageTurned_.swap(callback);
}

// ---- Writers' text ----------------------------------------------------------------------------

void Book::addScene(const Scene& scene)
{
    Page orane{scene.oraneText, PageWriter::ORANE};
    Page nathan{scene.nathanText, PageWriter::NATHAN};
    wrapText(orane, writerTexts_, pageSize_, textPadding_);
    wrapText(nathan, writerTexts_, pageSize_, textPadding_);
    pages_.push_back(orane);
    pages_.push_back(nathan);
    pagesChanged();
}

void Book::appendChoice(const Choice& choice)
{
    RYN_ASSERT(!pages_.empty());
    if (pages_.empty())
        return;
    Page& last = pages_.back();
    if (last.text.isEmpty())
    {
        last.text = choice.longDescription;
    }
    else
    {
        last.text += sf::String(U'\n');
        last.text += choice.longDescription;
    }
    wrapText(last, writerTexts_, pageSize_, textPadding_);
    pagesChanged();
}

void Book::pagesChanged()
{
    ++textRevision_;
    ++spreadRevision_;
}

void Book::wrapText(Page& page, std::vector<sf::Text>& writerTexts, sf::Vector2f pageSize,
                    sf::Vector2f textPadding)
{
    const auto writer = static_cast<std::size_t>(page.writer);
    RYN_ASSERT(writer < writerTexts.size());
    if (writer >= writerTexts.size())
        return;
    const float maxWidth = pageSize.x - (textPadding.x + textPadding.x);
    page.text = breakLines(page.text, writerTexts[writer], maxWidth);
}

float Book::getLastTextHeight() const
{
    RYN_ASSERT(!pages_.empty());
    if (pages_.empty())
        return 0.f;
    const Page& last = pages_.back();
    const auto writer = static_cast<std::size_t>(last.writer);
    if (writer >= writerTexts_.size())
        return 0.f;
    sf::Text text = writerTexts_[writer];
    text.setString(last.text);
    return text.getGlobalBounds().height;
}

// ---- Page turning -----------------------------------------------------------------------------

void Book::setPointer(const sf::Vector2f& pointer)
{
    pointer_ = pointer;
}

void Book::grab(sf::Vector2f pointer)
{
    if (state_ != STATE::IDLE && state_ != STATE::PEEKING)
        return;
    HOOK h = HOOK::COUNT;
    if (!findHook(pointer, h) || !canTurn(h))
        return;
    // At rest a page's corner lies on its hook corner, whatever an earlier turn left in corner_.
    if (state_ == STATE::IDLE)
        corner_ = getHookCorner(h);
    hook_ = h;
    state_ = STATE::DRAGGING;
}

void Book::release(sf::Vector2f pointer)
{
    if (state_ != STATE::DRAGGING)
        return;
    const bool beyondSpine = isForwardHook(hook_) ? pointer.x < topSpine_.x : pointer.x > topSpine_.x;
    if (!beyondSpine)
    {
        letGo();
        return;
    }
    target_ = getTargetCorner(hook_);
    state_ = STATE::TURNING;
}

void Book::update()
{
    if (state_ == STATE::IDLE)
    {
        HOOK h = HOOK::COUNT;
        if (findHook(pointer_, h) && canTurn(h))
            lift(h);
    }
    else if (state_ == STATE::PEEKING && !isInHook(pointer_, hook_))
    {
        letGo();
    }
    if (state_ == STATE::DRAGGING)
        target_ = pointer_;

    constrainTarget();
    moveCornerTowards(target_);
    finishMotion();
}

void Book::finishMotion()
{
    if (corner_ != target_)
        return;
    if (state_ == STATE::RETURNING)
    {
        state_ = STATE::IDLE;
    }
    else if (state_ == STATE::TURNING)
    {
        if (isForwardHook(hook_))
            currentPage_ += 2;
        else
            currentPage_ -= 2;
        ++spreadRevision_;
        state_ = STATE::IDLE;
        if (onPageTurned_)
            onPageTurned_();
    }
}

void Book::lift(HOOK h)
{
    if (state_ != STATE::IDLE || !canTurn(h))
        return;
    hook_ = h;
    corner_ = getHookCorner(h);
    target_ = corner_ + ryn::normalized(liftDirection(h)) * (hookRadius_ * 0.5f);
    state_ = STATE::PEEKING;
}

void Book::letGo()
{
    if (state_ != STATE::PEEKING && state_ != STATE::DRAGGING)
        return;
    target_ = getHookCorner(hook_);
    state_ = STATE::RETURNING;
}

void Book::constrainTarget()
{
    if (state_ != STATE::DRAGGING)
        return;

    if (isEdgeHook(hook_))
    {
        // The page slides along the bottom edge and folds vertically.
        target_.x = std::clamp(target_.x, bottomLeft_.x, bottomRight_.x);
        target_.y = bottomSpine_.y;
        return;
    }

    sf::Vector2f hookCorner, targetCorner, nearSpineEnd, farSpineEnd;
    if (!getHookAnchors(hook_, hookCorner, targetCorner, nearSpineEnd, farSpineEnd))
        return;
    // The page stays attached to the spine: its corner can be no farther than one page width
    // from the near end and one diagonal from the far end.
    const sf::Vector2f fromFar = target_ - farSpineEnd;
    if (ryn::lengthOf(fromFar) < pageDiagonal_ && ryn::lengthOf(target_ - nearSpineEnd) < pageSize_.x)
        return;
    if (ryn::lengthOf(fromFar) > pageDiagonal_)
        target_ = farSpineEnd + ryn::normalized(fromFar) * pageDiagonal_;
    const sf::Vector2f fromNear = target_ - nearSpineEnd;
    if (ryn::lengthOf(fromNear) > pageSize_.x)
        target_ = nearSpineEnd + ryn::normalized(fromNear) * pageSize_.x;
}

void Book::setBloody()
{
    bloody_ = true;
    ++spreadRevision_;
}

bool Book::isOnLastSpread() const
{
    return pages_.size() - 2 <= currentPage_;
}

// ---- Hooks ------------------------------------------------------------------------------------

STATE Book::getState() const
{
    return state_;
}

bool Book::canTurn(HOOK h) const
{
    return (isForwardHook(h) && currentPage_ + 2u < pages_.size())
        || (isBackwardHook(h) && currentPage_ != 0);
}

bool Book::isForwardHook(HOOK h) const
{
    return static_cast<unsigned int>(h) - 3u < 3u;
}

bool Book::isBackwardHook(HOOK h) const
{
    return !isForwardHook(h);
}

void Book::moveCornerTowards(sf::Vector2f target)
{
    const sf::Vector2f remaining = target - corner_;
    if (ryn::lengthOf(remaining) <= snapDistance_)
        corner_ = target;
    else
        corner_ += remaining * approachFactor_;
}

bool Book::findHook(sf::Vector2f point, HOOK& h) const
{
    for (int i = 0; i < static_cast<int>(HOOK::COUNT); ++i)
    {
        const auto candidate = static_cast<HOOK>(i);
        if (isInHook(point, candidate))
        {
            h = candidate;
            return true;
        }
    }
    return false;
}

bool Book::isInHook(sf::Vector2f point, HOOK h) const
{
    switch (h)
    {
    case HOOK::TOP_LEFT:
    case HOOK::BOTTOM_LEFT:
    case HOOK::TOP_RIGHT:
    case HOOK::BOTTOM_RIGHT:
        return ryn::isPointInCircle(point, getHookCorner(h), hookRadius_);
    case HOOK::LEFT:
    case HOOK::RIGHT:
    {
        const sf::Vector2f centre = h == HOOK::LEFT ? middleLeft_ : middleRight_;
        const sf::Vector2f half = edgeHookSize_ / 2.f;
        return ryn::isPointInRectangle(point, centre - half, centre + half);
    }
    case HOOK::COUNT: break;
    }
    RYN_ASSERT(false);
    return false;
}

HOOK Book::getHook() const
{
    return hook_;
}

sf::Vector2f Book::getTargetCorner(HOOK h) const
{
    switch (h)
    {
    case HOOK::TOP_LEFT: return topRight_;
    case HOOK::LEFT:
    case HOOK::BOTTOM_LEFT: return bottomRight_;
    case HOOK::TOP_RIGHT: return topLeft_;
    case HOOK::RIGHT:
    case HOOK::BOTTOM_RIGHT: return bottomLeft_;
    case HOOK::COUNT: break;
    }
    RYN_ASSERT(false);
    return {};
}

sf::Vector2f Book::getHookCorner(HOOK h) const
{
    switch (h)
    {
    case HOOK::TOP_LEFT: return topLeft_;
    case HOOK::LEFT:
    case HOOK::BOTTOM_LEFT: return bottomLeft_;
    case HOOK::TOP_RIGHT: return topRight_;
    case HOOK::RIGHT:
    case HOOK::BOTTOM_RIGHT: return bottomRight_;
    case HOOK::COUNT: break;
    }
    RYN_ASSERT(false);
    return {};
}

bool Book::isBottomHook(HOOK h) const
{
    return h == HOOK::BOTTOM_LEFT || h == HOOK::BOTTOM_RIGHT;
}

bool Book::isEdgeHook(HOOK h) const
{
    return h == HOOK::LEFT || h == HOOK::RIGHT;
}

bool Book::isTopHook(HOOK h) const
{
    return h == HOOK::TOP_LEFT || h == HOOK::TOP_RIGHT;
}

bool Book::getHookAnchors(HOOK h, sf::Vector2f& hookCorner, sf::Vector2f& targetCorner,
                          sf::Vector2f& nearSpineEnd, sf::Vector2f& farSpineEnd) const
{
    if (state_ == STATE::IDLE)
        return false;
    RYN_ASSERT(h != HOOK::COUNT);
    if (h == HOOK::COUNT)
        return false;
    hookCorner = getHookCorner(h);
    targetCorner = getTargetCorner(h);
    nearSpineEnd = isTopHook(h) ? topSpine_ : bottomSpine_;
    farSpineEnd = isTopHook(h) ? bottomSpine_ : topSpine_;
    return true;
}

// ---- Geometry ---------------------------------------------------------------------------------

void Book::setMargin(sf::Vector2f margin)
{
    RYN_ASSERT((margin.x > 0) && (margin.y > 0));
    margin_ = margin;
    updateCorners();
}

void Book::setPageSize(sf::Vector2f pageSize)
{
    RYN_ASSERT((pageSize.x > 0) && (pageSize.y > 0));
    pageSize_ = pageSize;
    pageDiagonal_ = ryn::lengthOf(pageSize);
    updateCorners();
}

void Book::updateCorners()
{
    const float width = pageSize_.x;
    const float height = pageSize_.y;
    topLeft_ = margin_;
    topSpine_ = {topLeft_.x + width, topLeft_.y};
    topRight_ = {topSpine_.x + width, topLeft_.y};
    bottomLeft_ = {topLeft_.x, topLeft_.y + height};
    bottomSpine_ = {bottomLeft_.x + width, bottomLeft_.y};
    bottomRight_ = {bottomSpine_.x + width, bottomLeft_.y};
    middleSpine_ = {topSpine_.x, topSpine_.y + height * 0.5f};
    middleRight_ = {topRight_.x, middleSpine_.y};
    middleLeft_ = {topLeft_.x, middleSpine_.y};
}

void Book::computeFold(sf::Vector2f corner, sf::Vector2f hookCorner, sf::Vector2f /*farSpineEnd*/,
                       sf::Vector2f nearSpineEnd, float& foldAngle, float& pageAngle,
                       sf::Vector2f& foldCentre, sf::Vector2f& edgePoint) const
{
    if (corner == hookCorner)
    {
        foldAngle = -45.f;
        pageAngle = 90.f;
        foldCentre = corner;
        edgePoint = nearSpineEnd;
        return;
    }

    const sf::Vector2f centre = (corner + hookCorner) / 2.f;
    const sf::Vector2f toHook = hookCorner - centre;
    // The fold, perpendicular to corner-hook corner through the centre, meets the page edge that
    // runs through the hook corner and the spine here; never beyond the spine.
    float x = centre.x - std::tan(std::atan2(toHook.y, toHook.x)) * toHook.y;
    const float spineX = nearSpineEnd.x;
    if ((x > spineX && spineX > hookCorner.x) || (x < spineX && spineX < hookCorner.x))
        x = spineX;
    const sf::Vector2f edge(x, nearSpineEnd.y);

    foldCentre = centre;
    edgePoint = edge;
    if (centre.y == edge.y)
    {
        foldAngle = 90.f;
        pageAngle = 0.f;
        return;
    }
    foldAngle = centre.y > edge.y ? toDegrees(std::atan2(centre.y - edge.y, centre.x - edge.x))
                                  : toDegrees(std::atan2(edge.y - centre.y, edge.x - centre.x));
    pageAngle = toDegrees(std::atan2(edge.y - corner.y, edge.x - corner.x));
}

void Book::computeMaskRectangle(float angle, sf::Vector2f centre, float width, float height,
                                sf::Vector2f& a, sf::Vector2f& b, sf::Vector2f& d) const
{
    const sf::Vector2f direction = ryn::rotated({1.f, 0.f}, angle);
    a = centre + direction * (width * 0.5f);
    const sf::Vector2f along = ryn::normalized(centre - a);
    b = a + along * width;
    d = a + ryn::rotated(along, 90.f) * height;
}

Book::TurnGeometry Book::computeTurnGeometry() const
{
    TurnGeometry geometry;
    sf::Vector2f hookCorner, targetCorner, nearSpineEnd, farSpineEnd;
    if (!getHookAnchors(hook_, hookCorner, targetCorner, nearSpineEnd, farSpineEnd))
        return geometry;
    computeFold(corner_, hookCorner, farSpineEnd, nearSpineEnd, geometry.foldAngle, geometry.pageAngle,
                geometry.foldCentre, geometry.edgePoint);

    geometry.revealedPosition = isForwardHook(hook_) ? topSpine_ : topLeft_;
    const bool leftCorner = hook_ == HOOK::TOP_LEFT || hook_ == HOOK::BOTTOM_LEFT;
    geometry.backRotation = geometry.pageAngle + (leftCorner ? 180.f : 0.f);

    // The point of the back page that sits on the moving corner.
    const float width = pageSize_.x;
    const float height = pageSize_.y;
    switch (hook_)
    {
    case HOOK::TOP_RIGHT: geometry.backOrigin = {0.f, 0.f}; break;
    case HOOK::RIGHT:
    case HOOK::BOTTOM_RIGHT: geometry.backOrigin = {0.f, height}; break;
    case HOOK::TOP_LEFT: geometry.backOrigin = {width, 0.f}; break;
    case HOOK::LEFT:
    case HOOK::BOTTOM_LEFT: geometry.backOrigin = {width, height}; break;
    case HOOK::COUNT: break;
    }
    return geometry;
}

// ---- Drawing ----------------------------------------------------------------------------------

void Book::setShaderUniforms(int height, float foldAngle, sf::Vector2f edgePoint, sf::Shader& backShader,
                             sf::Shader& revealedShader)
{
    // Strongest when the turn starts, gone when the corner arrives.
    const float shadowCoefficient =
        1.f - ryn::lengthOf(getTargetCorner(hook_) - corner_) / (2.f * pageSize_.x);

    // Large enough to cover the whole window on one side of the fold.
    const float maskWidth = 2.f * (2.f * margin_.x + 2.f * pageSize_.x);
    const float maskHeight = 2.f * margin_.y + 2.f * pageSize_.y;
    sf::Vector2f a, b, d;
    computeMaskRectangle(foldAngle, edgePoint, maskWidth, maskHeight, a, b, d);

    const auto set = [&](sf::Shader& shader, float darkestAlpha) {
        shader.setUniform("a", a);
        shader.setUniform("b", b);
        shader.setUniform("d", d);
        shader.setUniform("darkestAlpha", darkestAlpha);
        shader.setUniform("shadowFadeDistance", SHADOW_FADE_DISTANCE);
        shader.setUniform("shadowCoefficient", shadowCoefficient);
        shader.setUniform("height", height);
    };
    set(backShader, BACK_DARKEST_ALPHA);
    set(revealedShader, REVEALED_DARKEST_ALPHA);
}

void Book::draw(sf::RenderTarget& target)
{
    drawSpread(target);
    drawTurn(target);
}

void Book::drawSpread(sf::RenderTarget& target)
{
    if (pages_.size() < currentPage_ + 2u)
        return;
    const bool bloodySpread = bloody_ && currentPage_ == pages_.size() - 2;
    drawPage(target, currentPage_, topLeft_, {}, 0.f, true, bloodySpread);
    drawPage(target, currentPage_ + 1, topSpine_, {}, 0.f, false, bloodySpread);
}

void Book::drawTurn(sf::RenderTarget& target)
{
    if (state_ == STATE::IDLE || pages_.size() < currentPage_ + 2u)
        return;
    const bool forward = isForwardHook(hook_);
    if (forward ? currentPage_ + 4u > pages_.size() : currentPage_ < 2u)
        return;

    const std::size_t revealed = forward ? currentPage_ + 3 : currentPage_ - 2;
    const std::size_t back = forward ? currentPage_ + 2 : currentPage_ - 1;
    sf::Shader& backShader = forward ? outsideShader_ : insideShader_;
    sf::Shader& revealedShader = forward ? insideShader_ : outsideShader_;

    const TurnGeometry geometry = computeTurnGeometry();
    setShaderUniforms(static_cast<int>(target.getSize().y), geometry.foldAngle, geometry.edgePoint,
                      backShader, revealedShader);

    const bool bloody = bloody_ && currentPage_ + 4u == pages_.size();
    drawPage(target, revealed, geometry.revealedPosition, {}, 0.f, !forward, bloody, &revealedShader);
    drawPage(target, back, corner_, geometry.backOrigin, geometry.backRotation, forward, bloody,
             &backShader);
}

void Book::drawPage(sf::RenderTarget& target, std::size_t pageIndex, sf::Vector2f position, sf::Vector2f origin,
                    float rotation, bool isLeftPage, bool isBloody, const sf::Shader* shader)
{
    const Page& page = pages_[pageIndex];
    const sf::Vector2u size(static_cast<unsigned int>(pageSize_.x), static_cast<unsigned int>(pageSize_.y));
    const PageCache::Key key{pageIndex, isLeftPage, isBloody, textRevision_};
    // A page lying square on the pixels needs no filtering; a turned one keeps its text's shape with it.
    const bool smooth = std::fmod(rotation, 90.f) != 0.f;
    const sf::Texture* composed = pageCache_.get(key, size, smooth, [&](sf::RenderTarget& pageTarget) {
        drawPageLayers(pageTarget, page, {}, {}, 0.f, isLeftPage, isBloody, sf::RenderStates::Default);
    });
    if (composed == nullptr)
    {
        const sf::RenderStates states = shader != nullptr ? sf::RenderStates(shader) : sf::RenderStates::Default;
        drawPageLayers(target, page, position, origin, rotation, isLeftPage, isBloody, states);
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

void Book::drawPageLayers(sf::RenderTarget& target, const Page& page, sf::Vector2f position, sf::Vector2f origin,
                          float rotation, bool isLeftPage, bool isBloody, const sf::RenderStates& states)
{
    sf::Sprite& paper = isBloody ? bloodSprites_[isLeftPage ? 0 : 1] : paperSprite_;
    for (sf::Sprite* sprite : {&paper, &shadowSprite_})
    {
        sprite->setOrigin(origin);
        sprite->setPosition(position);
        sprite->setRotation(rotation);
    }

    // The shadow is painted for the spine side of a right page; a left page shows it mirrored.
    sf::IntRect shadowRect = shadowSprite_.getTextureRect();
    if (isLeftPage != (shadowRect.width < 0))
    {
        shadowRect.left += shadowRect.width;
        shadowRect.width = -shadowRect.width;
        shadowSprite_.setTextureRect(shadowRect);
    }

    target.draw(paper, states);

    const auto writer = static_cast<std::size_t>(page.writer);
    if (writer < writerTexts_.size())
    {
        sf::Text& text = writerTexts_[writer];
        text.setString(page.text);
        text.setOrigin(origin);
        text.setPosition(position);
        text.setRotation(rotation);
        // Inset along the page's own axes, however it is turned.
        const sf::Vector2f along = ryn::fromAngle(rotation);
        text.move(along * textPadding_.x);
        text.move(ryn::rotated(along, 90.f) * textPadding_.y);
        target.draw(text, states);
    }

    target.draw(shadowSprite_, states);
}

} // namespace orane
