#include "book/book.hpp"

#include <ryn/core/assert.hpp>
#include <ryn/core/components.hpp>
#include <ryn/core/resourcemanager.hpp>

namespace orane
{
const sf::Vector2f Book::TEXT_PADDING(40.f, 40.f);

Book::Book()
    : text_(geometry_.pageSize(), TEXT_PADDING)
    , turn_(geometry_)
    , renderer_(geometry_)
{}

bool Book::loadResources()
{
    ryn::ResourceManager* resources = ryn::components().resourceManager();
    RYN_ASSERT(resources != nullptr);
    if (resources == nullptr)
        return false;
    if (!renderer_.loadResources(*resources))
        return false;
    text_.loadFonts(*resources);
    return true;
}

void Book::setPageTurnedCallback(std::function<void()> callback)
{
    onPageTurned_.swap(callback);
}

// ---- Writers' text ----------------------------------------------------------------------------

void Book::addScene(const Scene& scene)
{
    text_.addScene(scene);
    pagesChanged();
}

void Book::appendChoice(const Choice& choice)
{
    text_.appendChoice(choice);
    pagesChanged();
}

void Book::pagesChanged()
{
    turn_.setPageCount(text_.pages().size());
    ++spreadRevision_;
}

void Book::wrapText(Page& page, std::vector<sf::Text>& writerTexts, sf::Vector2f pageSize, sf::Vector2f textPadding)
{
    BookText::wrapText(page, writerTexts, pageSize, textPadding);
}

float Book::getLastTextHeight() const
{
    return text_.lastTextHeight();
}

// ---- Page turning -----------------------------------------------------------------------------

void Book::setPointer(const sf::Vector2f& pointer)
{
    turn_.setPointer(pointer);
}

void Book::grab(sf::Vector2f pointer)
{
    // A quick grab ends the turn under way; whoever waits for it hears so before the new drag.
    if (turn_.finishNearlyDoneTurn())
        pageTurned();
    turn_.grab(pointer);
}

void Book::release(sf::Vector2f pointer)
{
    turn_.release(pointer);
}

void Book::update()
{
    if (turn_.update())
        pageTurned();
}

void Book::pageTurned()
{
    ++spreadRevision_;
    if (onPageTurned_)
        onPageTurned_();
}

void Book::setBloody()
{
    bloody_ = true;
    ++spreadRevision_;
}

bool Book::isOnLastSpread() const
{
    return turn_.isOnLastSpread();
}

// ---- Hooks and geometry -----------------------------------------------------------------------

STATE Book::getState() const
{
    return turn_.state();
}

bool Book::canTurn(HOOK h) const
{
    return turn_.canTurn(h);
}

bool Book::isForwardHook(HOOK h) const
{
    return BookGeometry::isForwardHook(h);
}

bool Book::isBackwardHook(HOOK h) const
{
    return BookGeometry::isBackwardHook(h);
}

void Book::moveCornerTowards(sf::Vector2f target)
{
    turn_.moveCornerTowards(target);
}

bool Book::findHook(sf::Vector2f point, HOOK& h) const
{
    return geometry_.findHook(point, h);
}

bool Book::isInHook(sf::Vector2f point, HOOK h) const
{
    return geometry_.isInHook(point, h);
}

HOOK Book::getHook() const
{
    return turn_.hook();
}

sf::Vector2f Book::getTargetCorner(HOOK h) const
{
    return geometry_.getTargetCorner(h);
}

sf::Vector2f Book::getHookCorner(HOOK h) const
{
    return geometry_.getHookCorner(h);
}

bool Book::isBottomHook(HOOK h) const
{
    return BookGeometry::isBottomHook(h);
}

bool Book::isEdgeHook(HOOK h) const
{
    return BookGeometry::isEdgeHook(h);
}

bool Book::isTopHook(HOOK h) const
{
    return BookGeometry::isTopHook(h);
}

void Book::computeFold(sf::Vector2f corner, sf::Vector2f hookCorner, sf::Vector2f farSpineEnd,
                       sf::Vector2f nearSpineEnd, float& foldAngle, float& pageAngle, sf::Vector2f& foldCentre,
                       sf::Vector2f& edgePoint) const
{
    const BookGeometry::Fold fold = BookGeometry::computeFold(corner, hookCorner, farSpineEnd, nearSpineEnd);
    foldAngle = fold.foldAngle;
    pageAngle = fold.pageAngle;
    foldCentre = fold.centre;
    edgePoint = fold.edgePoint;
}

void Book::computeMaskRectangle(float angle, sf::Vector2f centre, float width, float height, sf::Vector2f& a,
                                sf::Vector2f& b, sf::Vector2f& d) const
{
    const BookGeometry::MaskRectangle mask = BookGeometry::computeMaskRectangle(angle, centre, width, height);
    a = mask.a;
    b = mask.b;
    d = mask.d;
}

// ---- Drawing ----------------------------------------------------------------------------------

void Book::draw(sf::RenderTarget& target)
{
    drawSpread(target);
    drawTurn(target);
}

void Book::drawSpread(sf::RenderTarget& target)
{
    renderer_.drawSpread(target, text_, turn_, bloody_);
}

void Book::drawTurn(sf::RenderTarget& target)
{
    renderer_.drawTurn(target, text_, turn_, bloody_);
}

} // namespace orane
