// Renders the game's sound effect and music into the audio folder given as the only argument
// (files go to its "sounds/" and "musics/" subfolders, which must exist).
#include "../common/random.hpp"
#include "jazzloop.hpp"
#include "pistolshot.hpp"

#include <SFML/Audio/OutputSoundFile.hpp>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <iostream>
#include <string>

using namespace orane::audiogen;

namespace
{

constexpr unsigned SAMPLE_RATE = 44100;

/// 16-bit samples with triangular dither, from a fixed seed so that the file is the same every run.
std::vector<sf::Int16> quantise(const std::vector<const std::vector<float>*>& channels, std::uint64_t seed)
{
    orane::assetgen::Random random(seed);
    const std::size_t frames = channels.front()->size();
    std::vector<sf::Int16> interleaved;
    interleaved.reserve(frames * channels.size());
    for (std::size_t frame = 0; frame < frames; ++frame)
        for (const auto* channel : channels) {
            const double dither = random.uniform() - random.uniform();
            const double value = std::round((*channel)[frame] * 32767.0 + dither);
            interleaved.push_back(static_cast<sf::Int16>(std::clamp(value, -32768.0, 32767.0)));
        }
    return interleaved;
}

bool write(const std::string& path, const std::vector<sf::Int16>& samples, unsigned channels)
{
    sf::OutputSoundFile file;
    if (!file.openFromFile(path, SAMPLE_RATE, channels)) {
        std::cerr << "audiogen: cannot write " << path << '\n';
        return false;
    }
    file.write(samples.data(), samples.size());
    return true;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::cerr << "usage: audiogen <audio folder>\n";
        return 2;
    }
    const std::string folder = std::string(argv[1]) + "/";
    // The Ogg stream's serial number comes from rand(): seed it so the file is reproducible.
    std::srand(1947);

    const std::vector<float> shot = PistolShot(SAMPLE_RATE, 45).render();
    bool ok = write(folder + "sounds/shot_pistol.wav", quantise({&shot}, 7), 1);

    const StereoLoop music = JazzLoop(SAMPLE_RATE, 1947).render();
    ok = write(folder + "musics/WhiskyAndRevolver.ogg",
               quantise({&music.left().samples(), &music.right().samples()}, 8), 2)
         && ok;
    return ok ? 0 : 1;
}
