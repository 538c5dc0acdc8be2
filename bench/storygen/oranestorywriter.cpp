#include "oranestorywriter.hpp"

#include <filesystem>
#include <fstream>

namespace orane::bench
{
namespace
{

bool writeFile(const std::filesystem::path& path, const std::string& text)
{
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out << text;
    return static_cast<bool>(out);
}

void appendLines(std::string& text, const char* writer, const std::vector<std::string>& lines)
{
    if (lines.empty())
        return;
    text += writer;
    text += '\n';
    for (const std::string& line : lines)
        text += line + '\n';
}

} // namespace

std::string OraneStoryWriter::fileText(const PlannedFile& file)
{
    std::string text = "# Generated story: " + std::to_string(file.scenes.size()) + " scenes.\n";
    for (const PlannedScene& scene : file.scenes) {
        text += "SCENE " + scene.name + '\n';
        appendLines(text, "ORANE", scene.oraneLines);
        appendLines(text, "NATHAN", scene.nathanLines);
        if (!scene.forward.empty())
            text += "FORWARD " + scene.forward + '\n';
        for (const PlannedChoice& choice : scene.choices)
            text += "* " + choice.label + '\n' + choice.text + "\n-> " + choice.target + '\n';
        text += '\n';
    }
    return text;
}

bool OraneStoryWriter::write(const StoryPlan& plan, const std::string& directory) const
{
    std::error_code error;
    std::filesystem::create_directories(directory, error);
    const std::filesystem::path root(directory);

    std::string suspects;
    for (const std::string& suspect : plan.suspects)
        suspects += suspect + '\n';
    bool written = writeFile(root / "suspects.ini", suspects);
    for (const PlannedFile& file : plan.files)
        written = writeFile(root / file.fileName, fileText(file)) && written;
    return written;
}

} // namespace orane::bench
