#include "componentset.hpp"

#include <ryn/core/focusmanager.hpp>
#include <ryn/gui/scenenode.hpp>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace
{

using Calls = std::vector<std::string>;

class FocusLoggingNode : public ryn::SceneNode
{
public:
    FocusLoggingNode(std::string name, Calls& calls)
        : name_(std::move(name))
        , calls_(calls)
    {}

protected:
    void onFocusGained() override { calls_.push_back(name_ + " gained"); }
    void onFocusLost() override { calls_.push_back(name_ + " lost"); }

private:
    std::string name_;
    Calls& calls_;
};

class FocusTest : public ::testing::Test
{
protected:
    FocusTest()
        : set_(new ryn::FocusManager, nullptr, nullptr)
    {}

    ryn::FocusManager& focus() { return *ryn::components().focusManager(); }

    Calls calls;
    FocusLoggingNode a{"a", calls};
    FocusLoggingNode b{"b", calls};

private:
    ryn::test::ComponentSet set_;
};

TEST_F(FocusTest, MovingTheFocusTellsBothNodes)
{
    focus().setFocus(&a);
    focus().setFocus(&b);
    EXPECT_EQ(calls, (Calls{"a gained", "a lost", "b gained"}));
    EXPECT_EQ(focus().focused(), &b);
    EXPECT_TRUE(b.hasFocus());
    EXPECT_FALSE(a.hasFocus());
}

TEST_F(FocusTest, OnlyTheFocusedNodeCanBeReleasedOrCleared)
{
    focus().setFocus(&b);
    calls.clear();
    EXPECT_FALSE(focus().releaseFocus(&a));
    EXPECT_EQ(focus().focused(), &b);
    EXPECT_TRUE(calls.empty());

    EXPECT_TRUE(focus().releaseFocus(&b));
    EXPECT_EQ(focus().focused(), nullptr);
    EXPECT_EQ(calls, (Calls{"b lost"}));

    focus().clearFocus();
    focus().setFocus(&a);
    focus().clearFocus();
    focus().clearFocus();
    EXPECT_EQ(calls, (Calls{"b lost", "a gained", "a lost"}));
}

TEST_F(FocusTest, NodeAsksOnlyWhenItHasNotTheFocus)
{
    EXPECT_TRUE(a.focus());
    EXPECT_FALSE(a.focus()) << "no second gain for the node that has the focus";
    // The manager itself does not compare: the same node loses and gains again.
    focus().setFocus(&a);
    EXPECT_EQ(calls, (Calls{"a gained", "a lost", "a gained"}));
}

} // namespace
