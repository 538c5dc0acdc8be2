#pragma once

#include <SFML/Audio/Music.hpp>
#include <SFML/Audio/Sound.hpp>
#include <SFML/Audio/SoundBuffer.hpp>

#include <memory>
#include <string>
#include <vector>

/// The game's one music track and its sound effect: loaded once by the program entry, before
/// the application exists, and addressed afterwards by the enumerations below.
namespace orane
{

enum class SOUND
{
    SHOT_PISTOL = 0,
    COUNT
};

enum class MUSIC
{
    WHISKY_AND_REVOLVER = 0,
    COUNT
};

/// Fixed: audio does not go through the path manager, it is loaded before any component exists.
extern const std::string AUDIO_DIRECTORY;
/// One file name per SOUND id, in id order, under AUDIO_DIRECTORY + "sounds/".
extern const std::vector<std::string> soundFileNames;
/// One file name per MUSIC id, in id order, under AUDIO_DIRECTORY + "musics/".
extern const std::vector<std::string> musicFileNames;

/// Owned audio objects, one per id once loadAudio has run; their addresses never change, so a
/// sound's reference to its buffer stays valid.
extern std::vector<std::unique_ptr<sf::SoundBuffer>> soundBuffers;
extern std::vector<std::unique_ptr<sf::Sound>> sounds;
extern std::vector<std::unique_ptr<sf::Music>> musics;

/// Loads every sound and opens every music track. A missing or unreadable file is reported on
/// the console (in French) and the game goes on without it.
void loadAudio();

/// Whether the track starts again when it ends. Does nothing for a track not loaded.
void setMusicLoop(MUSIC music, bool loop);

/// Starts the track, which streams on SFML's own thread. Does nothing for a track not loaded.
void playMusic(MUSIC music);

/// Stops and destroys every audio object. The program entry calls it before returning: the
/// containers are static, and left to static destruction they would outlive SFML's audio device.
void releaseAudio();

} // namespace orane
