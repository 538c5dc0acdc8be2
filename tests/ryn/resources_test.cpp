#include "recordedasserts.hpp"

#include <ryn/core/pathmanager.hpp>
#include <ryn/core/resourceholder.hpp>
#include <ryn/core/resourcemanager.hpp>

#include <SFML/Graphics/Font.hpp>

#include <gtest/gtest.h>

#include <cstdint>
#include <stdexcept>
#include <string>

namespace
{

const std::string FONT = "/usr/share/fonts/opentype/kaushanscript/KaushanScript-Regular.otf";

enum class TestFont : std::uint32_t
{
    Handwriting = 2,
    Missing = 3,
};

TEST(Paths, SubdirectoriesFollowTheResourceRoot)
{
    ryn::PathManager paths;
    EXPECT_EQ(paths.fontsPath(), "resources/fonts/");
    EXPECT_EQ(paths.texturesPath(), "resources/textures/");
    EXPECT_EQ(paths.shadersPath(), "resources/shaders/");

    struct Moved : ryn::PathManager
    {
        std::string resourcesPath() const override { return "data/"; }
    } moved;
    EXPECT_EQ(moved.fontsPath(), "data/fonts/");
    EXPECT_EQ(moved.texturesPath(), "data/textures/");
    EXPECT_EQ(moved.shadersPath(), "data/shaders/");
}

TEST(ResourceHolder, MissingFileThrowsWithItsNameAndLeavesNoEntry)
{
    ryn::test::RecordedAsserts asserts;
    ResourceHolder<sf::Font, TestFont> fonts;
    try {
        fonts.load(TestFont::Missing, "resources/fonts/nowhere.ttf");
        FAIL() << "no exception";
    } catch (const std::runtime_error& error) {
        EXPECT_STREQ(error.what(), "ResourceHolder::load - Failed to load resources/fonts/nowhere.ttf");
    }
    EXPECT_TRUE(asserts.reported().empty());

    fonts.get(TestFont::Missing);
    EXPECT_EQ(asserts.reported(), (std::vector<std::string>{"found != mResourceMap.end()"}));
}

TEST(ResourceHolder, SecondLoadOfAnIdIsReportedAndTheFirstStays)
{
    ryn::test::RecordedAsserts asserts;
    ResourceHolder<sf::Font, TestFont> fonts;
    fonts.load(TestFont::Handwriting, FONT);
    const sf::Font* first = &fonts.get(TestFont::Handwriting);

    fonts.load(TestFont::Handwriting, FONT);
    EXPECT_EQ(asserts.reported(), (std::vector<std::string>{"inserted.second"}));
    EXPECT_EQ(&fonts.get(TestFont::Handwriting), first);
}

/// A game's manager, whose identifiers the engine does not know.
class GameResources : public ryn::ResourceManager
{
public:
    bool init() override { return true; }
    bool load() override
    {
        loadFont(TestFont::Handwriting, FONT);
        return true;
    }
};

TEST(ResourceManager, AnswersResourcesByTheGamesIdentifiers)
{
    GameResources resources;
    resources.load();
    EXPECT_EQ(resources.font(TestFont::Handwriting).getInfo().family, "Kaushan Script");
}

} // namespace
