#include "inkstorywriter.hpp"

#include <fstream>

namespace orane::bench
{
namespace
{

// The texts the game composes itself for its special scenes.
const char* const HUB_TEXT = "Très bien, dites moi sur qui pensez-vous enquêter ?";
const char* const ARREST_TEXT =
    "Avez-vous une piste viable sur un suspect ?\n"
    "Attention, nous ferons des recherches assez poussées sur le coupable désigné. Je devrais "
    "révéler ce carnet. Cela peut nous mettre en danger si vous vous trompez. Choisissez bien.";
const char* const END_TEXT =
    "Bien joué Monsieur N,\nil semblerait que votre aide nous ait permis d'arrêter le justicier. "
    "C'est donc la fin de cette collaboration. J'en suis presque désolé de savoir que le cours "
    "normal des choses va reprendre.\nBonne continuation Monsieur N.\n"
    "Nos chemins se recroiseront certainement.\nAgent O";
const char* const GAME_OVER_TEXT = "Au revoir Monsieur N.\nJ.";

std::string knot(const std::string& name)
{
    return "=== " + name + " ===\n";
}

std::string choice(const char* mark, const std::string& condition, const std::string& label, const std::string& text,
                   const std::string& target)
{
    // The divert on a line of its own: at the end of the text line it would glue the next
    // scene's first line to this one.
    return std::string(mark) + ' ' + condition + '[' + label + "] " + text + "\n    -> " + target + '\n';
}

std::string sceneText(const PlannedScene& scene)
{
    std::string text = knot(scene.name);
    for (const std::string& line : scene.oraneLines)
        text += line + '\n';
    for (const std::string& line : scene.nathanLines)
        text += line + '\n';
    if (!scene.forward.empty())
        text += "-> " + scene.forward + '\n';
    for (const PlannedChoice& planned : scene.choices)
        text += choice("*", "", planned.label, planned.text, planned.target);
    return text + '\n';
}

std::string hubText(const StoryPlan& plan)
{
    std::string text = knot("hub") + HUB_TEXT + '\n';
    // A once-only choice disappears once taken, as a visited suspect leaves the hub.
    for (const std::string& suspect : plan.suspects)
        text += choice("*", "", "le " + suspect, "Je vais partir sur le " + suspect, suspect + "_begin");
    text +=
        choice("+", "{hub > 1} ", "Je pense avoir mon coupable.", "Je peux peut être confondre le coupable", "arrest");
    return text + '\n';
}

std::string arrestText(const StoryPlan& plan)
{
    std::string text = knot("arrest") + ARREST_TEXT + '\n';
    text += choice("+", "", "Je ne sais pas encore.",
                   "Je ne peux vous donner de nom, il faut que je continue d'enquêter", "hub");
    // Only the suspects already investigated can be named.
    for (const std::string& suspect : plan.suspects)
        text += choice("+", "{" + suspect + "_begin} ", "le " + suspect, "Je pense que notre lascard est le " + suspect,
                       suspect + "_arrest");
    return text + '\n';
}

} // namespace

std::string InkStoryWriter::storyText(const StoryPlan& plan)
{
    std::string text = "// Generated story: " + std::to_string(plan.sceneCount()) + " scenes.\n";
    text += "-> begin\n\n";
    for (const PlannedFile& file : plan.files)
        for (const PlannedScene& scene : file.scenes)
            text += sceneText(scene);
    text += hubText(plan);
    text += arrestText(plan);
    text += knot("end") + END_TEXT + "\n-> END\n\n";
    text += knot("game_over") + GAME_OVER_TEXT + "\n-> END\n";
    return text;
}

bool InkStoryWriter::write(const StoryPlan& plan, const std::string& path) const
{
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out << storyText(plan);
    return static_cast<bool>(out);
}

} // namespace orane::bench
