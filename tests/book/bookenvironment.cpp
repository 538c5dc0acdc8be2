// Puts a resource manager into the engine's component set for the whole test program: the
// build's handwriting fonts, and textures of solid colours so that rendered pixels can be told
// apart. The shadow darkens 24 pixels along the spine edge of a right page.

#include "booktesting.hpp"
#include "resourceids.hpp"

#include <ryn/core/components.hpp>
#include <ryn/core/resourcemanager.hpp>

#include <SFML/Graphics/Image.hpp>

#include <filesystem>
#include <unistd.h>

namespace
{

namespace fs = std::filesystem;

class TestResources : public ryn::ResourceManager
{
public:
    explicit TestResources(const fs::path& textures)
        : textures_(textures)
    {}

    bool init() override { return true; }

    bool load() override
    {
        const std::string fonts = std::string(ORANE_BINARY_DIR) + "/resources/fonts/";
        loadFont(orane::FontId::Orane, fonts + "orane.ttf");
        loadFont(orane::FontId::Nathan, fonts + "nathan.ttf");
        loadTexture(orane::TextureId::Paper, (textures_ / "paper.png").string());
        loadTexture(orane::TextureId::PaperBloodLeft, (textures_ / "blood_left.png").string());
        loadTexture(orane::TextureId::PaperBloodRight, (textures_ / "blood_right.png").string());
        loadTexture(orane::TextureId::Shadow, (textures_ / "shadow.png").string());
        return true;
    }

private:
    fs::path textures_;
};

class BookEnvironment : public ::testing::Environment
{
public:
    void SetUp() override
    {
        directory_ = fs::temp_directory_path() / ("orane-book-tests-" + std::to_string(getpid()));
        fs::create_directories(directory_);
        fs::create_directories(std::string(ORANE_BINARY_DIR) + "/shots");

        save(solid(booktesting::TEST_PAPER), "paper.png");
        save(solid(booktesting::TEST_BLOOD_LEFT), "blood_left.png");
        save(solid(booktesting::TEST_BLOOD_RIGHT), "blood_right.png");
        sf::Image shadow = solid(sf::Color::Transparent);
        for (unsigned int x = 0; x < 24; ++x)
            for (unsigned int y = 0; y < shadow.getSize().y; ++y)
                shadow.setPixel(x, y, sf::Color(0, 0, 0, 120));
        save(shadow, "shadow.png");

        auto* resources = new TestResources(directory_);
        ryn::components().set(nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, resources, nullptr);
        ASSERT_TRUE(resources->load());
    }

    void TearDown() override
    {
        ryn::components().clear();
        fs::remove_all(directory_);
    }

private:
    static sf::Image solid(sf::Color colour)
    {
        sf::Image image;
        image.create(440, 680, colour);
        return image;
    }

    void save(const sf::Image& image, const std::string& name) const
    {
        ASSERT_TRUE(image.saveToFile((directory_ / name).string()));
    }

    fs::path directory_;
};

const auto* const environment = ::testing::AddGlobalTestEnvironment(new BookEnvironment);

} // namespace
