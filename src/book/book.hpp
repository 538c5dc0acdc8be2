#pragma once

#include "book/page.hpp"
#include "book/pagecache.hpp"

#include <SFML/Graphics/RenderTarget.hpp>
#include <SFML/Graphics/Shader.hpp>
#include <SFML/Graphics/Sprite.hpp>
#include <SFML/Graphics/Text.hpp>
#include <SFML/System/Vector2.hpp>

#include <cstdint>
#include <functional>
#include <vector>

namespace orane
{

struct Choice;
struct Scene;

/// The six regions by which a page can be taken. Hooks 3 to 5 turn forward, 0 to 2 backward.
enum class HOOK
{
    TOP_LEFT = 0,
    LEFT = 1,
    BOTTOM_LEFT = 2,
    TOP_RIGHT = 3,
    RIGHT = 4,
    BOTTOM_RIGHT = 5,
    COUNT = 6, ///< ends the list; never a valid hook
};

/// Where a page turn stands.
enum class STATE : std::int32_t
{
    IDLE = 0,      ///< every page lies flat
    PEEKING = 1,   ///< the pointer hovers a hook: its corner lifts by itself
    DRAGGING = 2,  ///< the corner follows the pointer
    TURNING = 3,   ///< released beyond the spine: the corner travels to the other side
    RETURNING = 4, ///< let go: the corner falls back to its place
};

/// The open notebook: Orane writes on the left pages, Nathan on the right ones, two pages per
/// scene. The reader turns pages by dragging a corner; while a corner is off its place the
/// fold is drawn with two masking shaders.
class Book
{
public:
    /// Default geometry; loads nothing (see loadResources).
    Book();
    Book(const Book&) = delete;
    Book& operator=(const Book&) = delete;

    /// Textures and fonts from the component set's resource manager, then the two shaders.
    /// False when a shader does not compile (SFML reports why). Needed before addScene.
    bool loadResources();
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
    float getLastTextHeight() const;

    void setPointer(const sf::Vector2f& pointer);
    /// "touch" pressed at `pointer`: takes the hook under it if the page can turn.
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
    std::uint64_t getSpreadRevision() const { return spreadRevision_; }

    /// The last spread is drawn on blood-stained paper from now on.
    void setBloody();
    bool isOnLastSpread() const;

    sf::Vector2f getMargin() const { return margin_; }
    sf::Vector2f getPageSize() const { return pageSize_; }
    sf::Vector2f getTextPadding() const { return textPadding_; }

    const std::vector<Page>& getPages() const { return pages_; }
    /// Index of the left page of the spread shown; always even.
    std::uint32_t getCurrentPage() const { return currentPage_; }
    /// Where the moving corner is drawn, and where it heads.
    sf::Vector2f getCorner() const { return corner_; }
    sf::Vector2f getTarget() const { return target_; }

    virtual STATE getState() const;
    virtual bool canTurn(HOOK h) const;
    virtual bool isForwardHook(HOOK h) const;
    virtual bool isBackwardHook(HOOK h) const;
    /// One step of the corner: snaps onto `target` within snapDistance_, else covers
    /// approachFactor_ of the way.
    virtual void moveCornerTowards(sf::Vector2f target);
    /// Tries the hooks in order; the first one hit goes into `h` (untouched when none is).
    virtual bool findHook(sf::Vector2f point, HOOK& h) const;
    virtual bool isInHook(sf::Vector2f point, HOOK h) const;
    virtual HOOK getHook() const;
    /// Where the hook's corner ends when the turn completes.
    virtual sf::Vector2f getTargetCorner(HOOK h) const;
    /// The page corner that moves when the hook is taken (the edge hooks move the bottom one).
    virtual sf::Vector2f getHookCorner(HOOK h) const;
    virtual bool isBottomHook(HOOK h) const;
    virtual bool isEdgeHook(HOOK h) const;
    virtual bool isTopHook(HOOK h) const;
    /// The fold of a page whose corner `hookCorner` has moved to `corner`: its angle, the angle
    /// of the turning page's back, the middle of corner-to-hook-corner and the point where the
    /// fold meets the page edge through the hook corner and `nearSpineEnd`.
    virtual void computeFold(sf::Vector2f corner, sf::Vector2f hookCorner, sf::Vector2f farSpineEnd,
                             sf::Vector2f nearSpineEnd, float& foldAngle, float& pageAngle,
                             sf::Vector2f& foldCentre, sf::Vector2f& edgePoint) const;
    /// A rectangle whose side a-b, `width` long and centred on `centre`, lies at `angle`, and
    /// whose side a-d, `height` long, runs perpendicular to it.
    virtual void computeMaskRectangle(float angle, sf::Vector2f centre, float width, float height,
                                      sf::Vector2f& a, sf::Vector2f& b, sf::Vector2f& d) const;

private:
    /// Where a turning page goes and how it hangs, for the turn in progress.
    struct TurnGeometry
    {
        float foldAngle = 0.f;
        float pageAngle = 0.f;
        sf::Vector2f foldCentre;
        sf::Vector2f edgePoint;
        sf::Vector2f revealedPosition;
        sf::Vector2f backOrigin;
        float backRotation = 0.f;
    };

    /// The four points of a hook; false (and nothing set) while at rest.
    bool getHookAnchors(HOOK h, sf::Vector2f& hookCorner, sf::Vector2f& targetCorner,
                        sf::Vector2f& nearSpineEnd, sf::Vector2f& farSpineEnd) const;

    void setMargin(sf::Vector2f margin);
    void setPageSize(sf::Vector2f pageSize);
    void updateCorners();

    void lift(HOOK h);
    void letGo();
    void constrainTarget();
    void finishMotion();

    TurnGeometry computeTurnGeometry() const;
    void setShaderUniforms(int height, float foldAngle, sf::Vector2f edgePoint, sf::Shader& backShader,
                           sf::Shader& revealedShader);
    void drawPage(sf::RenderTarget& target, std::size_t pageIndex, sf::Vector2f position, sf::Vector2f origin,
                  float rotation, bool isLeftPage, bool isBloody, const sf::Shader* shader = nullptr);
    /// Paper, text and spine shadow, each drawn with `states`.
    void drawPageLayers(sf::RenderTarget& target, const Page& page, sf::Vector2f position, sf::Vector2f origin,
                        float rotation, bool isLeftPage, bool isBloody, const sf::RenderStates& states);
    void pagesChanged();

    std::vector<Page> pages_;
    sf::Sprite paperSprite_;
    sf::Sprite bloodSprites_[2];
    std::vector<sf::Text> writerTexts_;
    STATE state_ = STATE::IDLE;
    HOOK hook_ = HOOK::COUNT;
    std::uint32_t currentPage_ = 0;
    sf::Vector2f pointer_;
    sf::Vector2f target_;
    sf::Vector2f corner_;
    float snapDistance_ = 1.f;
    float approachFactor_ = 0.02f;
    float hookRadius_ = 100.f;
    sf::Vector2f edgeHookSize_{80.f, 420.f};
    sf::Vector2f margin_;
    sf::Vector2f pageSize_;
    sf::Vector2f textPadding_{40.f, 40.f};
    float pageDiagonal_ = 0.f;
    sf::Vector2f topLeft_;
    sf::Vector2f topSpine_;
    sf::Vector2f topRight_;
    sf::Vector2f bottomLeft_;
    sf::Vector2f bottomSpine_;
    sf::Vector2f bottomRight_;
    sf::Vector2f middleSpine_;
    sf::Vector2f middleLeft_;
    sf::Vector2f middleRight_;
    sf::Shader insideShader_;
    sf::Shader outsideShader_;
    sf::Sprite shadowSprite_;
    bool bloody_ = false;
    PageCache pageCache_;
    std::uint64_t textRevision_ = 0;
    std::uint64_t spreadRevision_ = 0;
    std::function<void()> onPageTurned_;
};

} // namespace orane
