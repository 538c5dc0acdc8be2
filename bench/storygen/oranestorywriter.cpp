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

bool endsWith(const std::string& text, const std::string& suffix)
{
    return text.size() > suffix.size() && text.compare(text.size() - suffix.size(), suffix.size(), suffix) == 0;
}

/// A fact's name made from a suspect's: letters, digits and "_" only.
std::string factName(std::string text)
{
    for (char& c : text) {
        const bool kept = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
        c = kept ? c : '_';
    }
    return "piste_" + text;
}

/// Facts for the authors' continuity proof: the start sets "mission", each investigation needs
/// it and finds a lead on its suspect, and accusing a suspect needs that lead.
std::string annotations(const std::string& scene)
{
    if (scene == "begin")
        return "# sets: mission\n";
    if (endsWith(scene, "_begin"))
        return "# needs: mission\n# sets: " + factName(scene.substr(0, scene.size() - 6)) + "\n";
    if (endsWith(scene, "_arrest"))
        return "# needs: " + factName(scene.substr(0, scene.size() - 7)) + "\n";
    return {};
}

} // namespace

std::string OraneStoryWriter::fileText(const PlannedFile& file)
{
    std::string text = "# Generated story: " + std::to_string(file.scenes.size()) + " scenes.\n";
    for (const PlannedScene& scene : file.scenes) {
        text += "SCENE " + scene.name + '\n' + annotations(scene.name);
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
    // The proper names of the generated prose, for the spelling check.
    written =
        writeFile(root / "lexique.txt", "# Noms propres\nAubry\nBréval\nCastagne\nLepic\nMouffetard\n") && written;
    for (const PlannedFile& file : plan.files)
        written = writeFile(root / file.fileName, fileText(file)) && written;
    return written;
}

} // namespace orane::bench
