#include "recordedasserts.hpp"
#include "testfont.hpp"

#include <ryn/gui/shapeshifter.hpp>

#include <SFML/Graphics/CircleShape.hpp>
#include <SFML/Graphics/RectangleShape.hpp>
#include <SFML/Graphics/Texture.hpp>

#include <gtest/gtest.h>

#include <codecvt>
#include <locale>

// Glyph sizes need an OpenGL context: these tests run under a display.
namespace
{

using ryn::ShapeShifter;
using Alignment = ShapeShifter::Alignment;

constexpr float TOLERANCE = 1e-3f;

/// Text in a rectangle, laid out by the shape, with a 20-pixel label.
struct Label
{
    explicit Label(Alignment alignment, const char* string = "Aller à la gare")
        : shifter(ShapeShifter::TEXT | ShapeShifter::SHAPE, ShapeShifter::RECTANGLE)
    {
        shifter.text()->setFont(ryn::test::handwritingFont());
        shifter.text()->setCharacterSize(20);
        shifter.setAlignment(alignment);
        shifter.setMargin(5.f, 5.f);
        shifter.setString(string);
    }

    [[nodiscard]] sf::FloatRect textBounds() const { return shifter.text()->getGlobalBounds(); }
    [[nodiscard]] sf::FloatRect shapeBounds() const { return shifter.shape()->getGlobalBounds(); }
    [[nodiscard]] sf::Vector2f shapeSize() const
    {
        return static_cast<sf::RectangleShape*>(shifter.shape())->getSize();
    }

    ShapeShifter shifter;
};

float centreY(const sf::FloatRect& r)
{
    return r.top + r.height / 2.f;
}

void expectNear(sf::Vector2f actual, sf::Vector2f expected)
{
    EXPECT_NEAR(actual.x, expected.x, TOLERANCE);
    EXPECT_NEAR(actual.y, expected.y, TOLERANCE);
}

TEST(ShapeShifterLayout, LeftAlignedTextSitsOneMarginInsideItsRectangle)
{
    Label label(Alignment::LEFT);
    for (int layout = 0; layout < 2; ++layout) {
        const sf::FloatRect text = label.textBounds();
        const sf::FloatRect shape = label.shapeBounds();
        ASSERT_GT(text.width, 20.f);
        EXPECT_NEAR(text.left, 5.f, TOLERANCE);
        EXPECT_NEAR(centreY(text), 0.f, TOLERANCE);
        expectNear(label.shapeSize(), {text.width + 10.f, text.height + 10.f});
        EXPECT_NEAR(shape.left, 0.f, TOLERANCE);
        EXPECT_NEAR(centreY(shape), 0.f, TOLERANCE);
        // Laying out again changes nothing.
        label.shifter.refresh();
    }
}

TEST(ShapeShifterLayout, CentredTextAndRectangleShareTheTextsPosition)
{
    Label label(Alignment::CENTER);
    label.shifter.text()->setPosition(30.f, 40.f);
    label.shifter.refresh();

    const sf::FloatRect text = label.textBounds();
    const sf::FloatRect shape = label.shapeBounds();
    expectNear(label.shapeSize(), {text.width + 10.f, text.height + 10.f});
    expectNear({shape.left + shape.width / 2.f, centreY(shape)}, {30.f, 40.f});
    expectNear({text.left + text.width / 2.f, centreY(text)}, {30.f, 40.f});
}

class Picture : public ShapeShifter
{
public:
    Picture()
        : ShapeShifter(TEXT | SPRITE | SHAPE, RECTANGLE)
    {
        text()->setFont(ryn::test::handwritingFont());
        text()->setCharacterSize(20);
        setString("ab");
    }
    void show(const sf::Texture& texture)
    {
        sprite()->setTexture(texture, true);
        refresh();
    }
    [[nodiscard]] sf::Vector2f shapeSize() const { return static_cast<sf::RectangleShape*>(shape())->getSize(); }
};

TEST(ShapeShifterLayout, TheSmallerContentSizesTheShape)
{
    sf::Texture large;
    sf::Texture small;
    ASSERT_TRUE(large.create(100, 100));
    ASSERT_TRUE(small.create(4, 4));
    Picture picture;
    const sf::FloatRect text = picture.text()->getGlobalBounds();
    ASSERT_GT(text.width * text.height, 16.f);
    ASSERT_LT(text.width * text.height, 100.f * 100.f);

    picture.show(large);
    expectNear(picture.shapeSize(), {text.width, text.height});
    picture.show(small);
    expectNear(picture.shapeSize(), {4.f, 4.f});
}

TEST(ShapeShifterLayout, FitContentPlacesTheTextInAShapeOfGivenSize)
{
    ShapeShifter shifter(ShapeShifter::TEXT | ShapeShifter::SHAPE, ShapeShifter::RECTANGLE);
    shifter.text()->setFont(ryn::test::handwritingFont());
    shifter.setMode(ShapeShifter::FIT_CONTENT);
    shifter.setSize({200.f, 40.f});
    shifter.setMargin(8.f, 0.f);
    shifter.setString("où");

    // The shape keeps its size and is centred on its position; the text in its middle.
    const sf::FloatRect shape = shifter.shape()->getGlobalBounds();
    expectNear({shape.left, shape.top}, {-100.f, -20.f});
    const sf::FloatRect text = shifter.text()->getGlobalBounds();
    expectNear({text.left + text.width / 2.f, centreY(text)}, {0.f, 0.f});

    shifter.setTextAlignment(Alignment::LEFT);
    EXPECT_NEAR(shifter.text()->getGlobalBounds().left, -92.f, TOLERANCE);
    shifter.setTextAlignment(Alignment::RIGHT);
    const sf::FloatRect right = shifter.text()->getGlobalBounds();
    EXPECT_NEAR(right.left + right.width, 92.f, TOLERANCE);
}

TEST(ShapeShifterModes, FitShapeNeedsAShapeAndManualMovesNothing)
{
    ShapeShifter noShape(ShapeShifter::TEXT | ShapeShifter::SPRITE, ShapeShifter::RECTANGLE);
    noShape.setMode(ShapeShifter::MANUAL);
    noShape.setMode(ShapeShifter::FIT_SHAPE);
    EXPECT_EQ(noShape.mode(), ShapeShifter::FIT_CONTENT);

    Label label(Alignment::LEFT);
    label.shifter.setMode(ShapeShifter::MANUAL);
    label.shifter.text()->setPosition(70.f, 80.f);
    label.shifter.setString("autre chose, bien plus longue");
    EXPECT_EQ(label.shifter.text()->getPosition(), sf::Vector2f(70.f, 80.f));
    EXPECT_NEAR(label.shapeBounds().left, 0.f, TOLERANCE) << "the shape was not refitted";
}

TEST(ShapeShifterParts, BoundsComeFromTheFirstPartPresent)
{
    ShapeShifter none(0, ShapeShifter::RECTANGLE);
    EXPECT_EQ(none.bounds({10.f, 20.f}), sf::FloatRect(10.f, 20.f, 0.f, 0.f));
    EXPECT_EQ(none.text(), nullptr);
    none.setString("rien");
    none.setSize({5.f, 5.f});

    Label label(Alignment::CENTER);
    ShapeShifter textOnly(ShapeShifter::TEXT, ShapeShifter::CIRCLE);
    textOnly.text()->setFont(ryn::test::handwritingFont());
    textOnly.setString("indice");
    sf::FloatRect expected = textOnly.text()->getGlobalBounds();
    expected.left += 10.f;
    expected.top += 20.f;
    EXPECT_EQ(textOnly.bounds({10.f, 20.f}), expected);
    EXPECT_EQ(label.shifter.bounds({}), label.shapeBounds());
}

TEST(ShapeShifterParts, CircleTakesTheFirstSizeAsItsRadiusAndAnUnknownTypeGivesNoShape)
{
    ryn::test::RecordedAsserts asserts;
    ShapeShifter circle(ShapeShifter::SHAPE, ShapeShifter::CIRCLE);
    circle.setSize({12.f, 99.f});
    EXPECT_EQ(static_cast<sf::CircleShape*>(circle.shape())->getRadius(), 12.f);
    EXPECT_EQ(circle.shape()->getPointCount(), 30u);
    EXPECT_TRUE(asserts.reported().empty());

    ShapeShifter unknown(ShapeShifter::SHAPE | ShapeShifter::TEXT, 7);
    EXPECT_EQ(asserts.reported(), (std::vector<std::string>{"false"}));
    EXPECT_EQ(unknown.shape(), nullptr);
    EXPECT_NE(unknown.text(), nullptr);
}

TEST(ShapeShifterText, Utf8LabelKeepsEveryFrenchLetterWhateverTheGlobalLocale)
{
    const std::locale previous =
        std::locale::global(std::locale(std::locale::classic(), new std::codecvt_utf8<wchar_t, 0x10FFFF>));
    ShapeShifter shifter(ShapeShifter::TEXT, ShapeShifter::RECTANGLE);
    shifter.setString("« Aller à la gare, où l’attend-il ? » Œuvre, cœur, été, naïf, ça");
    std::locale::global(previous);

    EXPECT_EQ(shifter.text()->getString().toWideString(),
              L"« Aller à la gare, où l’attend-il ? » Œuvre, cœur, été, naïf, ça");
}

} // namespace
