#include <SFML/Audio/InputSoundFile.hpp>
#include <SFML/Graphics/Image.hpp>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <unistd.h>
#include <vector>

namespace fs = std::filesystem;

namespace
{

const fs::path RESOURCES = fs::path(ORANE_BINARY_DIR) / "resources";

std::vector<char> bytesOf(const fs::path& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

std::vector<sf::Int16> decode(const fs::path& path, sf::InputSoundFile& file)
{
    EXPECT_TRUE(file.openFromFile(path.string())) << path;
    std::vector<sf::Int16> samples(static_cast<std::size_t>(file.getSampleCount()));
    samples.resize(static_cast<std::size_t>(file.read(samples.data(), samples.size())));
    return samples;
}

double peakDecibels(const std::vector<sf::Int16>& samples)
{
    int peak = 0;
    for (sf::Int16 sample : samples)
        peak = std::max(peak, std::abs(static_cast<int>(sample)));
    return 20.0 * std::log10(peak / 32768.0);
}

} // namespace

TEST(ResourceTree, HoldsEveryTextureAtTheSizeTheGameDrawsIt)
{
    const struct
    {
        const char* name;
        sf::Vector2u size;
    } textures[] = {{"paper.png", {440, 680}},
                    {"paper_blood_left.png", {440, 680}},
                    {"paper_blood_right.png", {440, 680}},
                    {"shadow.png", {440, 680}},
                    {"game_background.png", {1600, 900}}};
    for (const auto& texture : textures) {
        sf::Image image;
        ASSERT_TRUE(image.loadFromFile((RESOURCES / "textures" / texture.name).string())) << texture.name;
        EXPECT_EQ(image.getSize(), texture.size) << texture.name;
    }
    for (const char* font : {"orane.ttf", "nathan.ttf", "monofonto.ttf"})
        EXPECT_GT(fs::file_size(RESOURCES / "fonts" / font), 10000u) << font;
}

TEST(ResourceTree, TheEncodedMusicStillLoopsCleanlyUnderMinusOneDecibel)
{
    sf::InputSoundFile file;
    const std::vector<sf::Int16> samples = decode(RESOURCES / "audio/musics/WhiskyAndRevolver.ogg", file);
    ASSERT_EQ(file.getChannelCount(), 2u);
    EXPECT_EQ(file.getSampleRate(), 44100u);
    EXPECT_GE(file.getDuration().asSeconds(), 60.f);
    EXPECT_EQ(samples.size(), file.getSampleCount()) << "the whole stream decodes";
    // The lossy encoder may overshoot the rendered peak a little; what is heard must stay under -1 dBFS.
    EXPECT_LE(peakDecibels(samples), -1.0);

    for (std::size_t channel = 0; channel < 2; ++channel) {
        // Every fifth frame of the channel is enough to know its usual step.
        constexpr std::size_t STRIDE = 2 * 5;
        std::vector<int> steps;
        for (std::size_t i = channel + 2; i < samples.size(); i += STRIDE)
            steps.push_back(std::abs(samples[i] - samples[i - 2]));
        std::nth_element(steps.begin(), steps.begin() + steps.size() * 99 / 100, steps.end());
        const int usual = steps[steps.size() * 99 / 100];
        const int seam = std::abs(samples[channel] - samples[samples.size() - 2 + channel]);
        EXPECT_LE(seam, usual) << "channel " << channel << ": the loop point does not click";
    }
}

TEST(ResourceTree, TheShotIsAboutASecondAndPeaksAtMinusOneDecibel)
{
    sf::InputSoundFile file;
    const std::vector<sf::Int16> samples = decode(RESOURCES / "audio/sounds/shot_pistol.wav", file);
    EXPECT_EQ(file.getChannelCount(), 1u);
    EXPECT_NEAR(file.getDuration().asSeconds(), 1.f, 0.05f);
    EXPECT_NEAR(peakDecibels(samples), -1.0, 0.1);
}

TEST(ResourceTree, GeneratorsWriteTheSameBytesOnEveryRun)
{
    // Named after the process, so that test runs of several build folders never share it.
    const fs::path scratch = fs::temp_directory_path() / ("orane-assets-" + std::to_string(::getpid()));
    fs::create_directories(scratch / "textures");
    fs::create_directories(scratch / "audio/sounds");
    fs::create_directories(scratch / "audio/musics");
    const std::string textures =
        std::string("\"") + ORANE_TEXTUREGEN + "\" \"" + (scratch / "textures").string() + "\"";
    const std::string audio = std::string("\"") + ORANE_AUDIOGEN + "\" \"" + (scratch / "audio").string() + "\"";
    ASSERT_EQ(std::system(textures.c_str()), 0);
    ASSERT_EQ(std::system(audio.c_str()), 0);
    for (const char* file : {"textures/paper.png", "textures/paper_blood_left.png", "textures/paper_blood_right.png",
                             "textures/shadow.png", "textures/game_background.png", "audio/sounds/shot_pistol.wav",
                             "audio/musics/WhiskyAndRevolver.ogg"}) {
        const std::vector<char> again = bytesOf(scratch / file);
        EXPECT_FALSE(again.empty()) << file;
        EXPECT_TRUE(again == bytesOf(RESOURCES / file)) << file << " differs from the build's copy";
    }
    fs::remove_all(scratch);
}
