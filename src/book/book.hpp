#pragma once

#include "book/bookgeometry.hpp"
#include "book/bookrenderer.hpp"
#include "book/booktext.hpp"
#include "book/page.hpp"
#include "book/pageturn.hpp"

#include <SFML/Graphics/RenderTarget.hpp>
#include <SFML/Graphics/Text.hpp>
#include <SFML/System/Vector2.hpp>

#include <cstdint>
#include <functional>
#include <vector>

namespace orane
{

struct Choice;
struct Scene;

/// The open notebook: Orane writes on the left pages, Nathan on the right ones, two pages per
/// scene. The reader turns pages by dragging a corner; while a corner is off its place the
/// fold is drawn with two masking shaders. The work is done by its parts: the geometry
/// (BookGeometry), the written pages (BookText), the turn (PageTurn) and the drawing
/// (BookRenderer).
class Book
{
public:
    /// Between a page's edge and its text, on each side.
    static const sf::Vector2f TEXT_PADDING;

    /// Default geometry; loads nothing (see loadResources).
    Book();
    Book(const Book&) = delete;
    Book& operator=(const Book&) = delete;

    /// Textures and fonts from the component set's resource manager, then the two shaders.
    /// False when a shader does not compile (SFML reports why). Needed before addScene.
    [[nodiscard]] bool loadResources();
    /// Called after every completed turn, the book already at rest on its new spread.
    void setPageTurnedCallback(std::function<void()> callback);

    /// Writes the scene as a new spread behind the others; the spread shown does not move.
    void addScene(const Scene& scene);
    /// Adds the answer's long description at the end of the last page, on its own line.
    void appendChoice(const Choice& choice);
    /// Breaks `page`'s text to the page width, measured with its writer's text object.
    static void wrapText(Page& page, std::vector<sf::Text>& writerTexts, sf::Vector2f pageSize,
                         sf::Vector2f textPadding);
    /// Height of the last page's text as set; needs at least one page.
    [[nodiscard]] float getLastTextHeight() const;

    void setPointer(const sf::Vector2f& pointer);
    /// "touch" pressed at `pointer`: takes the hook under it if the page can turn. A turn whose
    /// corner is within 24 pixels of its target ends at once first (its callback runs), and the
    /// hook is then looked for on the new spread.
    void grab(sf::Vector2f pointer);
    /// "touch" released at `pointer`: beyond the spine the turn completes, elsewhere the page
    /// falls back.
    void release(sf::Vector2f pointer);
    /// One animation step; once per drawn frame.
    void update();
    /// The spread shown, and the turning pages over it; nothing while there are no pages.
    void draw(sf::RenderTarget& target);

    /// The two halves of draw: the flat spread, then the pages of a turn in progress (nothing
    /// at rest). Whoever keeps a picture of the spread redraws it when getSpreadRevision changes.
    void drawSpread(sf::RenderTarget& target);
    void drawTurn(sf::RenderTarget& target);

    /// Changes whenever the flat spread would look different: text written, a page turned,
    /// blood.
    [[nodiscard]] std::uint64_t getSpreadRevision() const { return spreadRevision_; }

    /// The last spread is drawn on blood-stained paper from now on.
    void setBloody();
    [[nodiscard]] bool isOnLastSpread() const;

    [[nodiscard]] sf::Vector2f getMargin() const { return geometry_.margin(); }
    [[nodiscard]] sf::Vector2f getPageSize() const { return geometry_.pageSize(); }
    [[nodiscard]] sf::Vector2f getTextPadding() const { return text_.textPadding(); }

    [[nodiscard]] const std::vector<Page>& getPages() const { return text_.pages(); }
    /// Index of the left page of the spread shown; always even.
    [[nodiscard]] std::uint32_t getCurrentPage() const { return turn_.currentPage(); }
    /// Where the moving corner is drawn, and where it heads.
    [[nodiscard]] sf::Vector2f getCorner() const { return turn_.corner(); }
    [[nodiscard]] sf::Vector2f getTarget() const { return turn_.target(); }

    [[nodiscard]] virtual STATE getState() const;
    [[nodiscard]] virtual bool canTurn(HOOK h) const;
    [[nodiscard]] virtual bool isForwardHook(HOOK h) const;
    [[nodiscard]] virtual bool isBackwardHook(HOOK h) const;
    /// One step of the corner: snaps onto `target` within the snap distance (1 pixel), else
    /// covers the approach factor (2 %) of the way.
    virtual void moveCornerTowards(sf::Vector2f target);
    /// Tries the hooks in order; the first one hit goes into `h` (untouched when none is).
    [[nodiscard]] virtual bool findHook(sf::Vector2f point, HOOK& h) const;
    [[nodiscard]] virtual bool isInHook(sf::Vector2f point, HOOK h) const;
    [[nodiscard]] virtual HOOK getHook() const;
    /// Where the hook's corner ends when the turn completes.
    [[nodiscard]] virtual sf::Vector2f getTargetCorner(HOOK h) const;
    /// The page corner that moves when the hook is taken (the edge hooks move the bottom one).
    [[nodiscard]] virtual sf::Vector2f getHookCorner(HOOK h) const;
    [[nodiscard]] virtual bool isBottomHook(HOOK h) const;
    [[nodiscard]] virtual bool isEdgeHook(HOOK h) const;
    [[nodiscard]] virtual bool isTopHook(HOOK h) const;
    /// The fold of a page whose corner `hookCorner` has moved to `corner`: its angle, the angle
    /// of the turning page's back, the middle of corner-to-hook-corner and the point where the
    /// fold meets the page edge through the hook corner and `nearSpineEnd`.
    virtual void computeFold(sf::Vector2f corner, sf::Vector2f hookCorner, sf::Vector2f farSpineEnd,
                             sf::Vector2f nearSpineEnd, float& foldAngle, float& pageAngle, sf::Vector2f& foldCentre,
                             sf::Vector2f& edgePoint) const;
    /// A rectangle whose side a-b, `width` long and centred on `centre`, lies at `angle`, and
    /// whose side a-d, `height` long, runs perpendicular to it.
    virtual void computeMaskRectangle(float angle, sf::Vector2f centre, float width, float height, sf::Vector2f& a,
                                      sf::Vector2f& b, sf::Vector2f& d) const;

private:
    void pagesChanged();
    void pageTurned();

    BookGeometry geometry_;
    BookText text_;
    PageTurn turn_;
    BookRenderer renderer_;
    bool bloody_ = false;
    std::uint64_t spreadRevision_ = 0;
    std::function<void()> onPageTurned_;
};

} // namespace orane
