#include "componentset.hpp"
#include "recordedasserts.hpp"

#include <ryn/core/focusmanager.hpp>
#include <ryn/core/vectors.hpp>
#include <ryn/gui/scenegraph.hpp>

#include <SFML/Graphics/RenderTarget.hpp>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace
{

using Log = std::vector<std::string>;

/// A widget with a square hit area at its world position, logging every hook and drawing
/// as an entry in the log.
class Probe : public ryn::SceneNode
{
public:
    Probe(std::string name, Log& log, float side = 10.f)
        : name_(std::move(name))
        , log_(log)
        , side_(side)
    {}

    bool hitTest(sf::Vector2f point, bool& inside) const override
    {
        const sf::Vector2f corner = worldPosition();
        inside = ryn::isPointInRectangle(point, corner, corner + sf::Vector2f(side_, side_));
        return true;
    }

protected:
    void drawCurrent(sf::RenderTarget&, sf::RenderStates) const override { log_.push_back(name_ + " drawn"); }
    void onDisable() override { add("disable"); }
    void onEnable() override { add("enable"); }
    void onFocusLost() override { add("focus lost"); }
    void onHide() override { add("hide"); }
    void onHoverEnter() override { add("enter"); }
    void onHoverLeave() override { add("leave"); }
    void onTouchDown(sf::Vector2f) override { add("down"); }
    void onTouchCancel() override { add("cancel"); }
    void onTouchUp(sf::Vector2f) override { add("up"); }

private:
    void add(const std::string& what) const { log_.push_back(name_ + " " + what); }

    std::string name_;
    Log& log_;
    float side_;
};

/// Draws nothing itself; only the nodes' own logging tells what was drawn.
class NullTarget : public sf::RenderTarget
{
public:
    sf::Vector2u getSize() const override { return {100, 100}; }
    bool setActive(bool = true) override { return true; }
};

class SceneNodeTest : public ::testing::Test
{
protected:
    SceneNodeTest()
        : set_(new ryn::FocusManager, nullptr, nullptr)
    {}

    Probe* addProbe(ryn::SceneNode& parent, const std::string& name, sf::Vector2f position = {}, float side = 10.f)
    {
        auto* probe = static_cast<Probe*>(parent.attachChild(std::make_unique<Probe>(name, log, side)));
        probe->setPosition(position);
        return probe;
    }
    /// One update step of the pointer as the play state gives it.
    void step(sf::Vector2f point, bool press, bool release)
    {
        graph.updateHover(point);
        if (press)
            pressTaken = graph.touchDown(point);
        if (release)
            releaseTaken = graph.touchUp(point);
    }

    ryn::test::ComponentSet set_;
    Log log;
    ryn::SceneGraph graph;
    bool pressTaken = false;
    bool releaseTaken = false;
};

TEST_F(SceneNodeTest, OverlappingSiblingsAreBothHoveredButTheFirstTakesTheClick)
{
    Probe* under = addProbe(graph.root(), "under");
    Probe* over = addProbe(graph.root(), "over", {5.f, 5.f});

    step({7.f, 7.f}, true, true);

    EXPECT_TRUE(pressTaken);
    EXPECT_TRUE(releaseTaken);
    EXPECT_EQ(log, (Log{"under enter", "over enter", "under down", "under up"}));
    EXPECT_TRUE(over->isHovered());
    EXPECT_FALSE(under->isTouched());
}

TEST_F(SceneNodeTest, ChildTakesThePressBeforeItsParentAndPositionsAddUp)
{
    Probe* parent = addProbe(graph.root(), "parent", {100.f, 0.f}, 50.f);
    Probe* child = addProbe(*parent, "child", {10.f, 20.f});
    EXPECT_EQ(child->worldPosition(), sf::Vector2f(110.f, 20.f));

    // Both are hit at (110, 20): the child's corner lies inside the parent's square.
    step({110.f, 20.f}, true, false);
    EXPECT_TRUE(pressTaken);
    EXPECT_TRUE(child->isTouched());
    EXPECT_FALSE(parent->isTouched());
    EXPECT_EQ(log, (Log{"child enter", "parent enter", "child down"}));
}

TEST_F(SceneNodeTest, LeavingCancelsThePressAndTheReleaseReachesNobody)
{
    Probe* button = addProbe(graph.root(), "button");
    step({5.f, 5.f}, true, false);
    step({50.f, 50.f}, false, true);

    EXPECT_FALSE(releaseTaken);
    EXPECT_EQ(log, (Log{"button enter", "button down", "button leave", "button cancel"}));
    EXPECT_FALSE(button->isHovered());
    EXPECT_FALSE(button->isTouched());
}

TEST_F(SceneNodeTest, HiddenOrDisabledSubtreesKeepTheirFlagsAndIgnoreThePointer)
{
    Probe* parent = addProbe(graph.root(), "parent");
    Probe* child = addProbe(*parent, "child");
    step({5.f, 5.f}, true, false);
    log.clear();

    parent->setEnabled(false);
    step({50.f, 50.f}, true, true);
    EXPECT_FALSE(pressTaken);
    EXPECT_FALSE(releaseTaken);
    EXPECT_TRUE(child->isHovered());
    EXPECT_TRUE(child->isTouched());
    EXPECT_EQ(log, (Log{"parent disable"}));

    parent->setEnabled(true);
    parent->hide();
    step({5.f, 5.f}, true, true);
    EXPECT_FALSE(releaseTaken);
    EXPECT_EQ(log, (Log{"parent disable", "parent enable", "parent hide"}));

    // Shown again, the press that was frozen is still there and its release completes it.
    parent->setVisible(true);
    step({5.f, 5.f}, false, true);
    EXPECT_TRUE(releaseTaken);
    EXPECT_EQ(log.back(), "child up");
}

TEST_F(SceneNodeTest, HiddenNodesAreNotDrawnNorTheirChildrenDisabledOnesAre)
{
    Probe* first = addProbe(graph.root(), "first");
    addProbe(*first, "first's child");
    Probe* second = addProbe(graph.root(), "second");
    addProbe(*second, "second's child");
    NullTarget target;

    graph.draw(target, sf::RenderStates::Default);
    EXPECT_EQ(log, (Log{"first drawn", "first's child drawn", "second drawn", "second's child drawn"}));

    log.clear();
    first->setVisible(false);
    second->setEnabled(false);
    log.clear();
    graph.draw(target, sf::RenderStates::Default);
    EXPECT_EQ(log, (Log{"second drawn", "second's child drawn"}));
}

TEST_F(SceneNodeTest, ChildrenByIndexAndDetachingKeepTheOrder)
{
    ryn::test::RecordedAsserts asserts;
    ryn::SceneNode& root = graph.root();
    Probe* a = addProbe(root, "a");
    Probe* b = addProbe(root, "b");
    Probe* c = addProbe(root, "c");
    EXPECT_EQ(root.child(-1), nullptr);
    EXPECT_EQ(root.child(3), nullptr);
    EXPECT_EQ(root.child(2), c);

    std::unique_ptr<ryn::SceneNode> detached = root.detachChild(*b);
    EXPECT_EQ(detached.get(), b);
    EXPECT_EQ(detached->parent(), nullptr);
    EXPECT_EQ(root.children(), (std::vector<ryn::SceneNode*>{a, c}));
    EXPECT_TRUE(asserts.reported().empty());

    EXPECT_EQ(root.detachChild(*detached), nullptr);
    EXPECT_EQ(asserts.reported(), (std::vector<std::string>{"found != children_.end()"}));
    EXPECT_EQ(root.children().size(), 2u);
}

TEST_F(SceneNodeTest, DisablingOrHidingTheFocusedNodeReleasesTheFocus)
{
    Probe* node = addProbe(graph.root(), "node");
    node->setEnabled(true);
    EXPECT_TRUE(log.empty()) << "an unchanged value calls no hook";

    node->focus();
    node->setEnabled(false);
    EXPECT_EQ(log, (Log{"node disable", "node focus lost"}));
    EXPECT_EQ(ryn::components().focusManager()->focused(), nullptr);

    node->setEnabled(true);
    node->focus();
    log.clear();
    node->hide();
    EXPECT_EQ(log, (Log{"node focus lost", "node hide"}));
    node->hide();
    EXPECT_EQ(log.size(), 2u) << "hiding a hidden node does nothing";
}

TEST_F(SceneNodeTest, PressWithoutHoverOrReleaseOnAnUnhoveredNodeIsReported)
{
    ryn::test::RecordedAsserts asserts;
    addProbe(graph.root(), "node");

    graph.touchUp({5.f, 5.f});
    EXPECT_EQ(asserts.reported(), (std::vector<std::string>{"hover_"}));

    asserts.clear();
    graph.touchDown({5.f, 5.f});
    graph.touchDown({5.f, 5.f});
    EXPECT_EQ(asserts.reported(), (std::vector<std::string>{"hover_ && !touch_", "hover_ && !touch_"}));
}

TEST_F(SceneNodeTest, DestroyingTheFocusedNodeLeavesNoFocusBehind)
{
    Probe* node = addProbe(graph.root(), "node");
    node->focus();
    graph.clear();
    EXPECT_EQ(ryn::components().focusManager()->focused(), nullptr);
}

} // namespace
