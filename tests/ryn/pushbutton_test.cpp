#include "componentset.hpp"
#include "testfont.hpp"

#include <ryn/core/focusmanager.hpp>
#include <ryn/gui/scenegraph.hpp>
#include <ryn/gui/shapeshifterpushbuttonnode.hpp>

#include <SFML/Graphics/RenderTexture.hpp>

#include <gtest/gtest.h>

#include <string>
#include <vector>

// Buttons as the game builds its choices: a 20-pixel label in a rectangle fitted around it.
namespace
{

using ryn::ShapeShifter;

class ChoiceButton : public ryn::ShapeShifterPushButtonNode
{
public:
    ChoiceButton(SceneNode* parent, std::vector<std::string>& focusLog)
        : ShapeShifterPushButtonNode(parent, TEXT | SHAPE, RECTANGLE)
        , focusLog_(focusLog)
    {
        text()->setCharacterSize(20);
        setMode(FIT_SHAPE);
        setTextAlignment(Alignment::LEFT);
        setAlignment(Alignment::LEFT);
        setMargin(5.f, 5.f);
        text()->setFillColor(sf::Color::Black);
        text()->setFont(ryn::test::handwritingFont());
        shape()->setOutlineColor(sf::Color::Black);
        shape()->setOutlineThickness(1.f);
        shape()->setFillColor(sf::Color(0, 0, 0, 13));
    }

protected:
    void onFocusGained() override { focusLog_.push_back("gained"); }
    void onFocusLost() override { focusLog_.push_back("lost"); }

private:
    std::vector<std::string>& focusLog_;
};

class PushButtonTest : public ::testing::Test
{
protected:
    PushButtonTest()
        : set_(new ryn::FocusManager, nullptr, nullptr)
    {
        choices_ = graph.root().createChild();
        choices_->setPosition(50.f, 50.f);
    }

    ChoiceButton* addButton(const std::string& label, sf::Vector2f position, int* clicks)
    {
        auto* button =
            static_cast<ChoiceButton*>(choices_->attachChild(std::make_unique<ChoiceButton>(choices_, focusLog)));
        button->setString(label);
        button->setPosition(position);
        if (clicks)
            button->setCallback([clicks] { ++*clicks; });
        return button;
    }
    static sf::Vector2f middleOf(const sf::FloatRect& r) { return {r.left + r.width / 2.f, r.top + r.height / 2.f}; }
    void step(sf::Vector2f point, bool press, bool release)
    {
        graph.updateHover(point);
        if (press)
            graph.touchDown(point);
        if (release)
            releaseTaken = graph.touchUp(point);
    }
    ryn::SceneNode* focused() const { return ryn::components().focusManager()->focused(); }

    ryn::test::ComponentSet set_;
    ryn::SceneGraph graph;
    std::vector<std::string> focusLog;
    bool releaseTaken = false;

private:
    ryn::SceneNode* choices_ = nullptr;
};

TEST_F(PushButtonTest, ClickRunsTheCallbackOnceAndHoldsTheFocusOnlyMeanwhile)
{
    int clicks = 0;
    ChoiceButton* button = addButton("« Aller à la gare, où l'attend-il ? »", {0.f, 40.f}, &clicks);
    const sf::FloatRect area = button->bounds();
    EXPECT_NEAR(area.left, 50.f, 1e-3f) << "the outlined rectangle starts at the button's origin";
    EXPECT_NEAR(area.top + area.height / 2.f, 90.f, 1e-3f);

    step(middleOf(area), true, false);
    EXPECT_EQ(clicks, 0);
    step(middleOf(area), false, true);
    EXPECT_EQ(clicks, 1);
    EXPECT_TRUE(releaseTaken);
    EXPECT_EQ(focused(), nullptr);
    EXPECT_EQ(focusLog, (std::vector<std::string>{"gained", "lost"}));

    step(middleOf(area), true, true);
    EXPECT_EQ(clicks, 2);
}

TEST_F(PushButtonTest, ReleasingOutsideCancelsTheClick)
{
    int clicks = 0;
    ChoiceButton* button = addButton("Fouiller la cave", {}, &clicks);
    step(middleOf(button->bounds()), true, false);
    step({0.f, 0.f}, false, true);

    EXPECT_EQ(clicks, 0);
    EXPECT_FALSE(releaseTaken);
    EXPECT_FALSE(button->isHovered());
    EXPECT_FALSE(button->isTouched());
}

TEST_F(PushButtonTest, UnpressedButtonLeavesTheReleaseToTheNextSibling)
{
    int frontClicks = 0;
    int backClicks = 0;
    ChoiceButton* front = addButton("devant", {}, &frontClicks);
    ChoiceButton* back = addButton("derrière, plus long", {0.f, 10.f}, &backClicks);
    const sf::FloatRect frontArea = front->bounds();
    const sf::Vector2f onlyBack(frontArea.left + 2.f, frontArea.top + frontArea.height + 5.f);
    const sf::Vector2f both(frontArea.left + 2.f, frontArea.top + frontArea.height - 2.f);
    ASSERT_TRUE(back->bounds().contains(onlyBack) && back->bounds().contains(both));

    step(onlyBack, true, false);
    step(both, false, true);

    EXPECT_EQ(frontClicks, 0);
    EXPECT_EQ(backClicks, 1);
    EXPECT_TRUE(front->isHovered());
}

TEST_F(PushButtonTest, EdgesOfTheAreaBelongToIt)
{
    ChoiceButton* button = addButton("Interroger", {}, nullptr);
    const sf::FloatRect area = button->bounds();
    bool inside = false;
    EXPECT_TRUE(button->hitTest({area.left + area.width, area.top + area.height}, inside));
    EXPECT_TRUE(inside);
    button->hitTest({area.left, area.top}, inside);
    EXPECT_TRUE(inside);
    button->hitTest({area.left + area.width + 0.01f, area.top}, inside);
    EXPECT_FALSE(inside);

    // Without a callback a click still takes the focus and gives it back.
    step({area.left + area.width, area.top + area.height}, true, true);
    EXPECT_EQ(focusLog, (std::vector<std::string>{"gained", "lost"}));
}

TEST_F(PushButtonTest, DrawnButtonShowsOutlineAndTextOverItsFill)
{
    const sf::Color fill(255, 230, 150);
    ChoiceButton* button = addButton("Aller à la gare", {}, nullptr);
    button->shape()->setFillColor(fill);
    sf::RenderTexture texture;
    ASSERT_TRUE(texture.create(400, 120));
    texture.clear(sf::Color::White);
    texture.draw(graph);
    texture.display();
    const sf::Image image = texture.getTexture().copyToImage();

    const sf::FloatRect area = button->bounds();
    const auto left = static_cast<unsigned>(area.left);
    const auto middleY = static_cast<unsigned>(area.top + area.height / 2.f);
    EXPECT_EQ(image.getPixel(left, middleY), sf::Color::Black) << "outline";
    EXPECT_EQ(image.getPixel(left + 3, middleY), fill) << "fill inside the margin";
    EXPECT_EQ(image.getPixel(left - 2, middleY), sf::Color::White);

    const sf::FloatRect text = button->text()->getGlobalBounds();
    int inked = 0;
    for (unsigned x = 50 + static_cast<unsigned>(text.left); static_cast<float>(x) < 50 + text.left + text.width; ++x)
        for (unsigned y = 50 + static_cast<unsigned>(text.top); static_cast<float>(y) < 50 + text.top + text.height;
             ++y)
            inked += image.getPixel(x, y).r < 80;
    EXPECT_GT(inked, 50) << "dark letters drawn over the fill";
}

} // namespace
