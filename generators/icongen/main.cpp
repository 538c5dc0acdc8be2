// Paints the game's icon at every size of the hicolor theme, into <folder>/<n>x<n>/apps/<name>.png.
#include "texturegen/iconpainter.hpp"

#include <filesystem>
#include <iostream>
#include <string>

using namespace orane::texturegen;

int main(int argc, char** argv)
{
    if (argc != 3) {
        std::cerr << "usage: icongen <icons folder> <icon name>\n";
        return 2;
    }
    const FloatImage master = IconPainter(1947).paint();
    bool ok = true;
    for (const int size : {16, 22, 24, 32, 48, 64, 128, 256, 512}) {
        const std::string folder =
            std::string(argv[1]) + "/" + std::to_string(size) + "x" + std::to_string(size) + "/apps";
        std::filesystem::create_directories(folder);
        const std::string path = folder + "/" + argv[2] + ".png";
        if (!IconPainter::reduce(master, size).toImage(static_cast<std::uint64_t>(size)).saveToFile(path)) {
            std::cerr << "icongen: cannot write " << path << '\n';
            ok = false;
        }
    }
    return ok ? 0 : 1;
}
