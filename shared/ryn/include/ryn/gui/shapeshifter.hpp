#pragma once

#include <SFML/Graphics/Drawable.hpp>
#include <SFML/Graphics/Rect.hpp>
#include <SFML/Graphics/Shader.hpp>
#include <SFML/Graphics/Shape.hpp>
#include <SFML/Graphics/Sprite.hpp>
#include <SFML/Graphics/Text.hpp>

#include <cstdint>
#include <memory>
#include <string>

namespace ryn
{

/// A drawable made of up to three optional parts, a shape (rectangle or circle), a sprite and
/// a text, each with an optional shader, kept laid out on a common horizontal centre line:
/// either the shape is sized around the content with a margin (`FIT_SHAPE`), or the content
/// is placed in a shape of given size (`FIT_CONTENT`), or nothing moves (`MANUAL`).
/// It is not transformable: the states given to `draw` place the whole.
class ShapeShifter : public virtual sf::Drawable
{
public:
    /// Which parts to create, combined as a bit mask.
    enum PartFlag : std::int32_t
    {
        TEXT = 1,
        SPRITE = 2,
        SHAPE = 4,
        TEXT_SHADER = 8,
        SPRITE_SHADER = 16,
        SHAPE_SHADER = 32,
    };
    enum ShapeType : std::int32_t
    {
        CIRCLE = 0,
        RECTANGLE = 1,
    };
    enum LayoutMode : std::int32_t
    {
        FIT_SHAPE = 0,
        FIT_CONTENT = 1,
        MANUAL = 2,
    };
    /// Which point of a part is its origin; all three are vertically centred.
    enum class Alignment : std::int32_t
    {
        CENTER = 0,
        LEFT = 1,
        RIGHT = 2,
    };

    /// Creates the parts of `flags` (a shape of `shapeType`, an unknown type giving none after
    /// a report); lays nothing out.
    ShapeShifter(int flags, int shapeType);
    ~ShapeShifter() override;
    ShapeShifter(const ShapeShifter&) = delete;
    ShapeShifter& operator=(const ShapeShifter&) = delete;

    [[nodiscard]] virtual LayoutMode mode() const;
    /// Global bounds of the first part present (shape, sprite, text) moved by `offset`;
    /// (offset, 0 x 0) without any part.
    [[nodiscard]] virtual sf::FloatRect bounds(sf::Vector2f offset) const;
    [[nodiscard]] virtual sf::Vector2f margin() const;
    /// Null when the part was not created.
    [[nodiscard]] virtual sf::Shape* shape() const;
    [[nodiscard]] virtual sf::Shader* shapeShader() const;
    [[nodiscard]] virtual sf::Text* text() const;
    [[nodiscard]] virtual sf::Shader* textShader() const;
    /// Lays the parts out again for the current mode.
    virtual void refresh();
    /// `FIT_SHAPE` without a shape part becomes `FIT_CONTENT`.
    virtual void setMode(LayoutMode mode);
    /// Space between content and shape edge, per axis; never negative.
    virtual void setMargin(const sf::Vector2f& margin);
    virtual void setMargin(float x, float y);
    virtual void setAlignment(Alignment alignment);
    /// UTF-8 text, decoded as such whatever the global locale.
    virtual void setString(std::string string);
    /// Where the text sits inside the shape or sprite in `FIT_CONTENT`.
    virtual void setTextAlignment(Alignment alignment);
    virtual void build(int flags, int shapeType);
    /// A rectangle gets `size`, a circle the radius `size.x`; does not lay out.
    virtual void setSize(sf::Vector2f size);
    /// Sizes the shape around the smaller of the content parts plus the margins and places it.
    virtual void fitShape();
    virtual void spareChanged1();
    virtual void spareChanged2();
    virtual void textChanged();
    virtual void layoutShape();
    virtual void layoutSprite();
    virtual void layoutText();

    /// Shape, then sprite, then text, each with its own shader instead of the states' one.
    void draw(sf::RenderTarget& target, sf::RenderStates states) const override;

    [[nodiscard]] Alignment alignment() const { return alignment_; }
    [[nodiscard]] Alignment textAlignment() const { return textAlignment_; }

protected:
    /// For derived looks that show an image; null without a sprite part.
    [[nodiscard]] sf::Sprite* sprite() const { return sprite_.get(); }

private:
    static sf::Vector2f originFor(const sf::FloatRect& localBounds, Alignment alignment);
    [[nodiscard]] sf::Vector2f contentSize() const;

    ShapeType shapeType_ = RECTANGLE;
    LayoutMode mode_ = FIT_SHAPE;
    Alignment textAlignment_ = Alignment::CENTER;
    Alignment alignment_ = Alignment::CENTER;
    bool hasText_ = false;
    bool hasShape_ = false;
    bool hasSprite_ = false;
    sf::Vector2f margin_;
    std::unique_ptr<sf::Text> text_;
    std::unique_ptr<sf::Shader> textShader_;
    std::unique_ptr<sf::Shape> shape_;
    std::unique_ptr<sf::Shader> shapeShader_;
    std::unique_ptr<sf::Sprite> sprite_;
    std::unique_ptr<sf::Shader> spriteShader_;
};

} // namespace ryn
