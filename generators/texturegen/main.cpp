// Paints the game's textures into the folder given as the only argument.
#include "bloodpainter.hpp"
#include "deskpainter.hpp"
#include "paperpainter.hpp"
#include "shadowpainter.hpp"

#include <iostream>
#include <string>

using namespace orane::texturegen;

namespace
{

bool save(const FloatImage& picture, const std::string& path, std::uint64_t ditherSeed)
{
    if (picture.toImage(ditherSeed).saveToFile(path))
        return true;
    std::cerr << "texturegen: cannot write " << path << '\n';
    return false;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::cerr << "usage: texturegen <textures folder>\n";
        return 2;
    }
    const std::string folder = std::string(argv[1]) + "/";
    const FloatImage paper = PaperPainter(1861).paint(440, 680);
    const auto [bloodLeft, bloodRight] = BloodPainter(1888).paint(paper);
    bool ok = save(paper, folder + "paper.png", 11);
    ok = save(bloodLeft, folder + "paper_blood_left.png", 12) && ok;
    ok = save(bloodRight, folder + "paper_blood_right.png", 13) && ok;
    ok = save(ShadowPainter().paint(440, 680), folder + "shadow.png", 14) && ok;
    const FloatImage desk = DeskPainter(1947, sf::IntRect(362, 176, 880, 680)).paint(1600, 900);
    ok = save(desk, folder + "game_background.png", 15) && ok;
    return ok ? 0 : 1;
}
