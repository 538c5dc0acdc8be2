#include "gametree.hpp"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <vector>

namespace fs = std::filesystem;

namespace orane::test
{

GameTree::GameTree(const std::map<std::string, std::string>& stories, const std::set<std::string>& leftOut)
{
    std::string pattern = (fs::temp_directory_path() / "orane-game-test-XXXXXX").string();
    std::vector<char> buffer(pattern.begin(), pattern.end());
    buffer.push_back('\0');
    if (!mkdtemp(buffer.data()))
        throw std::runtime_error("cannot make a temporary folder");
    path_ = buffer.data();

    const fs::path built = fs::path(ORANE_BINARY_DIR) / "resources";
    const fs::path resources = fs::path(path_) / "resources";
    for (const char* folder : {"fonts", "textures", "audio"}) {
        if (!fs::exists(built / folder))
            continue;
        for (const auto& entry : fs::recursive_directory_iterator(built / folder)) {
            const fs::path relative = fs::relative(entry.path(), built);
            if (entry.is_directory() || leftOut.count(relative.string()))
                continue;
            fs::create_directories(resources / relative.parent_path());
            fs::create_symlink(entry.path(), resources / relative);
        }
    }
    fs::create_directories(resources / "stories");
    for (const auto& [name, content] : stories)
        std::ofstream(resources / "stories" / name, std::ios::binary) << content;

    previousDirectory_ = fs::current_path().string();
    fs::current_path(path_);
}

GameTree::~GameTree()
{
    fs::current_path(previousDirectory_);
    std::error_code ignored;
    fs::remove_all(path_, ignored);
}

std::map<std::string, std::string> storyWithChoices(const std::vector<std::string>& labels)
{
    std::string begin = "SCENE begin\nORANE\nMonsieur N., voici le carnet.\nNATHAN\nJe vous écoute.\n";
    for (std::size_t i = 0; i < labels.size(); ++i)
        begin += "*" + labels[i] + "\nRéponse numéro " + std::to_string(i) + ".\n-> suite\n";
    const std::string suite = "SCENE suite\nORANE\nLa suite de l'enquête.\nNATHAN\nEt maintenant ?\n"
                              "* Abandonner\nJe renonce.\n-> game_over\n"
                              "* Conclure\nJ'ai terminé.\n-> end\n";
    return {{"suspects.ini", ""}, {"story.txt", begin + suite}};
}

} // namespace orane::test
