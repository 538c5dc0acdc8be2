#include "recordedasserts.hpp"
#include "testapplication.hpp"

#include <ryn/core/console.hpp>
#include <ryn/core/runapplication.hpp>

#include <gtest/gtest.h>

#include <cstdlib>

namespace
{

using ryn::test::Log;
using ryn::test::StepApplication;
using ryn::test::Steps;
using Reports = std::vector<std::string>;

const Log BRING_UP = {"paths", "resources", "graphics", "input processor", "states"};

TEST(ApplicationInit, BringsTheComponentsUpInOrderAndDestroysThemInTheSetOrder)
{
    Steps steps;
    {
        StepApplication app(steps);
        ASSERT_TRUE(app.init());
        EXPECT_EQ(steps.log, BRING_UP);
        EXPECT_EQ(ryn::components().application(), &app);
        EXPECT_TRUE(ryn::components().inputManager()->isValidButtonId("touch"));
        EXPECT_EQ(app.graphics().window()->getSize(), sf::Vector2u(800, 600));
        steps.log.clear();
    }
    EXPECT_EQ(steps.log, (Log{"~focus", "~graphics", "~gui", "~input manager", "~input processor", "~paths",
                              "~resources", "~states"}));
    EXPECT_EQ(ryn::components().stateManager(), nullptr);
    EXPECT_EQ(ryn::components().application(), nullptr);
}

TEST(ApplicationInit, FailingStepIsReportedAndStopsTheStartUp)
{
    for (const std::string& failing : BRING_UP) {
        ryn::test::RecordedAsserts asserts;
        Steps steps;
        steps.failing = failing;
        StepApplication app(steps);

        EXPECT_FALSE(app.init()) << failing;
        EXPECT_EQ(steps.log.back(), failing) << "no step runs after the failing one";
        EXPECT_EQ(asserts.reported(), Reports{"false"}) << failing;
    }

    // What a program entry then does: the report is all, and it ends normally.
    ryn::test::RecordedAsserts asserts;
    Steps steps;
    steps.failing = "states";
    StepApplication app(steps);
    EXPECT_EQ(ryn::runApplication(app), EXIT_SUCCESS);
    EXPECT_EQ(asserts.reported().size(), 1u);
}

TEST(ApplicationInit, MissingComponentIsReportedWithTheWholeConditionDeclinedOnesSilently)
{
    ryn::test::RecordedAsserts asserts;
    Steps steps;
    StepApplication app(steps);
    app.withGuiFactory = false;

    EXPECT_FALSE(app.init());
    EXPECT_TRUE(steps.log.empty());
    EXPECT_EQ(asserts.reported(), Reports{"comp.application() && comp.focusManager() && comp.graphics() && "
                                          "comp.guiFactory() && comp.inputManager() && comp.inputProcessor() && "
                                          "comp.pathManager() && comp.resourceManager() && comp.stateManager()"});

    ryn::components().clear();
    asserts.clear();
    app.createsComponents = false;
    EXPECT_FALSE(app.init());
    EXPECT_TRUE(asserts.reported().empty());
}

TEST(ApplicationRates, DefaultsAndTheCheckOfTheGameRate)
{
    ryn::test::RecordedAsserts asserts;
    Steps steps;
    StepApplication app(steps);
    EXPECT_EQ(app.gameRate(), 0.05f);
    EXPECT_EQ(app.frameRate(), 1.f / 60.f);

    app.setGameRate(0.f);
    EXPECT_EQ(asserts.reported(), Reports{"gameRate > 0.f"});
}

TEST(RunApplication, ResourceErrorIsShownAndEndsWithAFailureStatus)
{
    Steps steps;
    StepApplication app(steps);
    app.loadsMissingTexture = true;
    ryn::console::Capture console;

    EXPECT_EQ(ryn::runApplication(app), EXIT_FAILURE);

    EXPECT_EQ(console.text(), "ResourceHolder::load - Failed to load resources/textures/missing.png\n");
    EXPECT_EQ(steps.log, Log{"paths"}) << "nothing after the resources is brought up";
}

} // namespace
