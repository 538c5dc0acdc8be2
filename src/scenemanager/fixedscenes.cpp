#include "scenemanager/fixedscenes.hpp"

namespace orane
{
namespace
{

Choice makeChoice(const sf::String& brief, const sf::String& description, const sf::String& next)
{
    Choice choice;
    choice.briefDescription = brief;
    choice.longDescription = description;
    choice.nextSceneName = next;
    return choice;
}

} // namespace

Scene makeGameOverScene()
{
    Scene scene;
    scene.oraneText = L" ";
    scene.nathanText = L"Au revoir Monsieur N.\n\n" + sf::String(std::wstring(14, L'\t')) + L"J.";
    return scene;
}

Scene makeEndScene()
{
    Scene scene;
    scene.oraneText = sf::String(L"Bien joué Monsieur N,\n il semblerait que votre aide ")
                      + L"nous ait permis d'arrêter le justicier. C'est donc la fin de cette "
                        L"collaboration. "
                      + L"J'en suis presque désolé de savoir que le cours normal des choses va "
                        L"reprendre.\n"
                      + L"Bonne continuation Monsieur N.\n Nos chemins se recroiseront "
                        L"certainement.\n Agent O";
    return scene;
}

void composeHub(Scene& hub, const std::map<sf::String, bool>& suspectsVisited, bool offerArrest)
{
    hub.oraneText = L"Très bien, dites moi sur qui pensez-vous enquêter ?";
    hub.choices.clear();
    for (const auto& [name, visited] : suspectsVisited) {
        if (!visited) {
            hub.choices.push_back(
                makeChoice(L"le " + name, L"Je vais partir sur le " + name, name + SUSPECT_BEGIN_SUFFIX));
        }
    }
    if (offerArrest) {
        hub.choices.push_back(
            makeChoice(L"Je pense avoir mon coupable.", L"Je peux peut être confondre le coupable", ARREST_SCENE_NAME));
    }
}

void composeArrest(Scene& arrest, const std::map<sf::String, bool>& suspectsVisited)
{
    arrest.oraneText = sf::String(L"Avez-vous une piste viable sur un suspect ?\n")
                       + L"Attention, nous ferons des recherches assez poussées sur le coupable "
                         L"désigné. "
                       + L"Je devrais révéler ce carnet. Cela peut nous mettre en danger si vous "
                         L"vous trompez. Choisissez bien.";
    arrest.choices.clear();
    arrest.choices.push_back(makeChoice(L"Je ne sais pas encore.",
                                        L"Je ne peux vous donner de nom, il faut que je continue d'enquêter",
                                        HUB_SCENE_NAME));
    for (const auto& [name, visited] : suspectsVisited) {
        if (visited) {
            arrest.choices.push_back(
                makeChoice(L"le " + name, L"Je pense que notre lascard est le " + name, name + SUSPECT_ARREST_SUFFIX));
        }
    }
}

} // namespace orane
