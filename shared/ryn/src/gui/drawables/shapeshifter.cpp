#include <ryn/core/assert.hpp>
#include <ryn/gui/shapeshifter.hpp>

#include <SFML/Graphics/CircleShape.hpp>
#include <SFML/Graphics/RectangleShape.hpp>
#include <SFML/Graphics/RenderTarget.hpp>

namespace ryn
{
namespace
{

constexpr std::size_t CIRCLE_POINTS = 30;

sf::Vector2f centreOf(const sf::FloatRect& rectangle)
{
    return {rectangle.left + 0.5f * rectangle.width, rectangle.top + 0.5f * rectangle.height};
}

float areaOf(sf::Vector2f size)
{
    return size.x * size.y;
}

sf::Vector2f sizeOf(const sf::FloatRect& rectangle)
{
    return {rectangle.width, rectangle.height};
}

} // namespace

ShapeShifter::ShapeShifter(int flags, int shapeType)
    : shapeType_(static_cast<ShapeType>(shapeType))
{
    build(flags, shapeType);
}

ShapeShifter::~ShapeShifter() = default;

ShapeShifter::LayoutMode ShapeShifter::mode() const
{
    return mode_;
}

sf::FloatRect ShapeShifter::bounds(sf::Vector2f offset) const
{
    sf::FloatRect result;
    if (hasShape_) {
        RYN_ASSERT(shape_);
        result = shape_->getGlobalBounds();
    } else if (hasSprite_) {
        RYN_ASSERT(sprite_);
        result = sprite_->getGlobalBounds();
    } else if (hasText_) {
        RYN_ASSERT(text_);
        result = text_->getGlobalBounds();
    }
    result.left += offset.x;
    result.top += offset.y;
    return result;
}

sf::Vector2f ShapeShifter::margin() const
{
    return margin_;
}

sf::Shape* ShapeShifter::shape() const
{
    return shape_.get();
}

sf::Shader* ShapeShifter::shapeShader() const
{
    return shapeShader_.get();
}

sf::Text* ShapeShifter::text() const
{
    return text_.get();
}

sf::Shader* ShapeShifter::textShader() const
{
    return textShader_.get();
}

void ShapeShifter::refresh()
{
    if (mode_ == FIT_SHAPE) {
        layoutText();
        layoutSprite();
        layoutShape();
    } else {
        layoutShape();
        layoutSprite();
        layoutText();
    }
}

void ShapeShifter::setMode(LayoutMode mode)
{
    if (mode == mode_)
        return;
    mode_ = (mode == FIT_SHAPE && !hasShape_) ? FIT_CONTENT : mode;
    refresh();
}

void ShapeShifter::setMargin(const sf::Vector2f& margin)
{
    RYN_ASSERT(margin.x >= 0.f && margin.y >= 0.f);
    margin_ = margin;
    refresh();
}

void ShapeShifter::setMargin(float x, float y)
{
    setMargin(sf::Vector2f(x, y));
    refresh();
}

void ShapeShifter::setAlignment(Alignment alignment)
{
    if (alignment == alignment_)
        return;
    alignment_ = alignment;
    refresh();
}

void ShapeShifter::setString(std::string string)
{
    if (!hasText_)
        return;
    // Decoded as UTF-8 directly: the game's global locale would turn some accented letters
    // into NUL characters.
    text_->setString(sf::String::fromUtf8(string.begin(), string.end()));
    textChanged();
}

void ShapeShifter::setTextAlignment(Alignment alignment)
{
    if (alignment == textAlignment_)
        return;
    textAlignment_ = alignment;
    refresh();
}

void ShapeShifter::build(int flags, int shapeType)
{
    if (flags & TEXT) {
        text_ = std::make_unique<sf::Text>();
        hasText_ = true;
    }
    if (flags & TEXT_SHADER)
        textShader_ = std::make_unique<sf::Shader>();
    if (flags & SHAPE) {
        if (shapeType == CIRCLE) {
            shape_ = std::make_unique<sf::CircleShape>(0.f, CIRCLE_POINTS);
            hasShape_ = true;
        } else if (shapeType == RECTANGLE) {
            shape_ = std::make_unique<sf::RectangleShape>(sf::Vector2f());
            hasShape_ = true;
        } else {
            RYN_ASSERT(false);
        }
        if (hasShape_)
            shapeType_ = static_cast<ShapeType>(shapeType);
    }
    if (flags & SHAPE_SHADER)
        shapeShader_ = std::make_unique<sf::Shader>();
    if (flags & SPRITE) {
        sprite_ = std::make_unique<sf::Sprite>();
        hasSprite_ = true;
    }
    if (flags & SPRITE_SHADER)
        spriteShader_ = std::make_unique<sf::Shader>();
}

void ShapeShifter::setSize(sf::Vector2f size)
{
    if (!hasShape_)
        return;
    RYN_ASSERT(shape_);
    switch (shapeType_) {
    case RECTANGLE:
        RYN_ASSERT(size.x >= 0.f && size.y >= 0.f);
        static_cast<sf::RectangleShape&>(*shape_).setSize(size);
        break;
    case CIRCLE:
        RYN_ASSERT(size.x >= 0.f);
        static_cast<sf::CircleShape&>(*shape_).setRadius(size.x);
        break;
    default: RYN_ASSERT(false); break;
    }
}

void ShapeShifter::fitShape()
{
    if (!hasShape_)
        return;
    RYN_ASSERT(hasSprite_ || hasText_);
    const sf::Vector2f content = contentSize();
    setSize({content.x + 2.f * margin_.x, content.y + 2.f * margin_.y});

    RYN_ASSERT(hasText_ || hasSprite_);
    const sf::Vector2f reference = hasText_ ? text_->getPosition() : shape_->getPosition();
    shape_->setOrigin(originFor(shape_->getLocalBounds(), alignment_));
    switch (alignment_) {
    case Alignment::CENTER: shape_->setPosition(reference); break;
    case Alignment::LEFT: shape_->setPosition(reference.x - margin_.x, reference.y); break;
    case Alignment::RIGHT: shape_->setPosition(reference.x + margin_.x, reference.y); break;
    }
}

void ShapeShifter::spareChanged1()
{
    refresh();
}

void ShapeShifter::spareChanged2()
{
    refresh();
}

void ShapeShifter::textChanged()
{
    refresh();
}

void ShapeShifter::layoutShape()
{
    if (!hasShape_ || mode_ == MANUAL)
        return;
    if (mode_ == FIT_SHAPE)
        fitShape();
    else
        shape_->setOrigin(originFor(shape_->getLocalBounds(), alignment_));
}

void ShapeShifter::layoutSprite()
{
    if (!hasSprite_ || mode_ == MANUAL)
        return;
    sprite_->setOrigin(originFor(sprite_->getLocalBounds(), alignment_));
}

void ShapeShifter::layoutText()
{
    if (!hasText_ || mode_ == MANUAL)
        return;
    if (mode_ == FIT_SHAPE) {
        text_->setOrigin(originFor(text_->getLocalBounds(), alignment_));
        if (alignment_ == Alignment::LEFT)
            text_->setPosition(margin_.x, 0.f);
        else if (alignment_ == Alignment::RIGHT)
            text_->setPosition(-margin_.x, 0.f);
        return;
    }

    RYN_ASSERT(text_ && (hasShape_ || hasSprite_));
    if (!hasShape_ && !hasSprite_)
        return;
    const sf::FloatRect frame = hasShape_ ? shape_->getGlobalBounds() : sprite_->getGlobalBounds();
    text_->setOrigin(originFor(text_->getLocalBounds(), textAlignment_));
    switch (textAlignment_) {
    case Alignment::CENTER: text_->setPosition(centreOf(frame)); break;
    case Alignment::LEFT: text_->setPosition(frame.left + margin_.x, 0.f); break;
    case Alignment::RIGHT: text_->setPosition(frame.left + frame.width - margin_.x, 0.f); break;
    }
}

void ShapeShifter::draw(sf::RenderTarget& target, sf::RenderStates states) const
{
    if (hasShape_) {
        states.shader = shapeShader_.get();
        target.draw(*shape_, states);
    }
    if (hasSprite_) {
        states.shader = spriteShader_.get();
        target.draw(*sprite_, states);
    }
    if (hasText_) {
        states.shader = textShader_.get();
        target.draw(*text_, states);
    }
}

sf::Vector2f ShapeShifter::originFor(const sf::FloatRect& localBounds, Alignment alignment)
{
    const float middle = localBounds.top + 0.5f * localBounds.height;
    switch (alignment) {
    case Alignment::LEFT: return {localBounds.left, middle};
    case Alignment::RIGHT: return {localBounds.left + localBounds.width, middle};
    case Alignment::CENTER: break;
    }
    return centreOf(localBounds);
}

sf::Vector2f ShapeShifter::contentSize() const
{
    sf::Vector2f size;
    if (hasSprite_) {
        RYN_ASSERT(sprite_);
        size = sizeOf(sprite_->getGlobalBounds());
    }
    if (hasText_) {
        RYN_ASSERT(text_);
        const sf::Vector2f textSize = sizeOf(text_->getGlobalBounds());
        // The smaller content decides; the sprite wins a tie.
        if (size.x == 0.f || areaOf(textSize) < areaOf(size))
            size = textSize;
    }
    return size;
}

} // namespace ryn
