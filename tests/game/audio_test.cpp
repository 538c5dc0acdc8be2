#include "audio.hpp"
#include "gametree.hpp"

#include <ryn/core/console.hpp>

#include <gtest/gtest.h>

namespace orane
{
namespace
{

class Audio : public ::testing::Test
{
protected:
    void TearDown() override { releaseAudio(); }
};

TEST_F(Audio, MissingFilesAreReportedInFrenchAndTheGameStaysSilent)
{
    test::GameTree tree({}, {"audio/sounds/shot_pistol.wav", "audio/musics/WhiskyAndRevolver.ogg"});
    ryn::console::Capture capture;
    loadAudio();

    EXPECT_EQ(capture.lines(), (std::vector<std::string>{"Erreur chargement son :shot_pistol.wav",
                                                         "Erreur chargement music :WhiskyAndRevolver.ogg"}));
    // One object per id all the same, so that the ids stay valid indices.
    ASSERT_EQ(sounds.size(), 1u);
    ASSERT_EQ(soundBuffers.size(), 1u);
    ASSERT_EQ(musics.size(), 1u);
    setMusicLoop(MUSIC::WHISKY_AND_REVOLVER, true);
    playMusic(MUSIC::WHISKY_AND_REVOLVER);
    EXPECT_EQ(musics[0]->getStatus(), sf::SoundSource::Stopped);
    EXPECT_EQ(capture.lines().size(), 2u);
}

TEST_F(Audio, PresentFilesLoadSilentlyAndTheMusicLoops)
{
    test::GameTree tree({});
    ryn::console::Capture capture;
    loadAudio();

    EXPECT_EQ(capture.text(), "");
    ASSERT_EQ(sounds.size(), 1u);
    EXPECT_EQ(sounds[0]->getBuffer(), soundBuffers[0].get());
    EXPECT_GT(soundBuffers[0]->getSampleCount(), 0u);
    ASSERT_EQ(musics.size(), 1u);
    setMusicLoop(MUSIC::WHISKY_AND_REVOLVER, true);
    playMusic(MUSIC::WHISKY_AND_REVOLVER);
    EXPECT_TRUE(musics[0]->getLoop());
    EXPECT_EQ(musics[0]->getStatus(), sf::SoundSource::Playing);

    releaseAudio();
    EXPECT_TRUE(sounds.empty() && soundBuffers.empty() && musics.empty());
}

} // namespace
} // namespace orane
