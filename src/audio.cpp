#include "audio.hpp"

#include <ryn/core/console.hpp>

namespace orane
{

const std::string AUDIO_DIRECTORY = "resources/audio/";
const std::vector<std::string> soundFileNames = {"shot_pistol.wav"};
const std::vector<std::string> musicFileNames = {"WhiskyAndRevolver.ogg"};

std::vector<std::unique_ptr<sf::SoundBuffer>> soundBuffers;
std::vector<std::unique_ptr<sf::Sound>> sounds;
std::vector<std::unique_ptr<sf::Music>> musics;

namespace
{

constexpr std::size_t soundCount = static_cast<std::size_t>(SOUND::COUNT);
constexpr std::size_t musicCount = static_cast<std::size_t>(MUSIC::COUNT);

/// Null for an id not loaded, or whose file could not be opened.
sf::Music* findMusic(MUSIC music)
{
    const auto index = static_cast<std::size_t>(music);
    if (index >= musics.size() || musics[index]->getChannelCount() == 0)
        return nullptr;
    return musics[index].get();
}

/// The report of a file list whose length disagrees with its enumeration.
std::string countMismatchMessage(const std::string& listName, std::size_t count, std::size_t listSize)
{
    // The word "son" stands for the music list too: one message serves both lists.
    return "Erreur nombre de fichier son incohérent :\nCOUNT = " + std::to_string(count) + listName + " = "
           + std::to_string(listSize);
}

} // namespace

void loadAudio()
{
    if (soundFileNames.size() != soundCount)
        ryn::console::writeLine(countMismatchMessage("soundFileNames", soundCount, soundFileNames.size()));
    for (std::size_t id = 0; id < soundCount && id < soundFileNames.size(); ++id) {
        sounds.push_back(std::make_unique<sf::Sound>());
        soundBuffers.push_back(std::make_unique<sf::SoundBuffer>());
        if (!soundBuffers.back()->loadFromFile(AUDIO_DIRECTORY + "sounds/" + soundFileNames[id]))
            ryn::console::writeLine("Erreur chargement son :" + soundFileNames[id]);
        sounds.back()->setBuffer(*soundBuffers.back());
    }

    if (musicFileNames.size() != musicCount)
        ryn::console::writeLine(countMismatchMessage("musicFileNames", musicCount, musicFileNames.size()));
    for (std::size_t id = 0; id < musicCount && id < musicFileNames.size(); ++id) {
        musics.push_back(std::make_unique<sf::Music>());
        if (!musics.back()->openFromFile(AUDIO_DIRECTORY + "musics/" + musicFileNames[id]))
            ryn::console::writeLine("Erreur chargement music :" + musicFileNames[id]);
    }
}

void setMusicLoop(MUSIC music, bool loop)
{
    if (sf::Music* track = findMusic(music))
        track->setLoop(loop);
}

void playMusic(MUSIC music)
{
    if (sf::Music* track = findMusic(music))
        track->play();
}

void releaseAudio()
{
    // Sounds hold references to their buffers: they go first.
    musics.clear();
    sounds.clear();
    soundBuffers.clear();
}

} // namespace orane
