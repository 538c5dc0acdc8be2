#include "scene/storytext.hpp"
#include "storytesting.hpp"

using namespace storytesting;

namespace
{

orane::Scene scene(const std::string& text, const std::string& forward, std::vector<orane::Choice> choices)
{
    orane::Scene made;
    made.name = u8("cave");
    made.nathanText = u8(text);
    made.forward = u8(forward);
    made.choices = std::move(choices);
    return made;
}

orane::Choice choice(const std::string& brief, const std::string& description, const std::string& next)
{
    return orane::Choice{u8(brief), u8(description), u8(next)};
}

TEST(GameLogicCheck, ListsEveryProblemOfTheSceneUnderOneHeadLine)
{
    const std::string head = "ERROR (line 40 - cave) : Found the following game logic errors :";
    const std::string noText = "---- No valid description text was found. A scene must have at least one valid "
                               "text, for orane or nathan. (Choices don't count.)";
    const std::string noWayOn = "---- No choices were found, and no FORWARD was found. The scene must contain "
                                "exactly one of the two, or the game can't know where to go next";
    const std::vector<std::pair<orane::Scene, Lines>> cases = {
        {scene("Noir.\n", "puits", {}), {}},
        {scene("Noir.\n", "", {choice(" a", "A.\n", "x"), choice(" ", " ", " ")}), {}},
        {scene("Noir.\n", "puits", {choice(" a", "A.\n", "x"), choice(" b", "B.\n", "")}),
         {head, "---- Found 2 choices and FORWARD was found. You can't put both.", "---- Found 1 invalid choices.",
          "---- Choice 1", "-------- Next scene name is empty."}},
        {scene("", "", {}), {head, noText, noWayOn}},
        {scene("Noir.\n", "", {orane::Choice()}),
         {head, "---- Found 1 invalid choices.", "---- Choice 0", "-------- Brief description is empty.",
          "-------- Long description is empty.", "-------- Next scene name is empty."}},
        {scene("", "", {choice(" a", "A.\n", "x")}), {head, noText}},
        {scene("", "puits", {}), {head, noText}},
        {scene("", "puits", {orane::Choice(), choice(" b", "B.\n", "y"), choice("", "C.\n", "")}),
         {head, noText, "---- Found 3 choices and FORWARD was found. You can't put both.",
          "---- Found 2 invalid choices.", "---- Choice 0", "-------- Brief description is empty.",
          "-------- Long description is empty.", "-------- Next scene name is empty.", "---- Choice 2",
          "-------- Brief description is empty.", "-------- Next scene name is empty."}},
    };
    for (const auto& [tested, report] : cases) {
        ryn::console::Capture capture;
        EXPECT_EQ(tested.checkGameLogic(40), report.empty()) << describe(tested);
        EXPECT_EQ(capture.lines(), report);
    }
}

TEST(GameLogicCheck, FramesErrorsWithTheSceneNameOnlyWhenThereIsOne)
{
    ryn::console::Capture capture;
    orane::logError(u8("Rien."), sf::String(), 0);
    orane::logError(u8("x"), u8("église_𝄞"), 4294967295u);
    orane::Choice filled;
    EXPECT_FALSE(orane::readChoiceBrief(orane::viewOf(u8("pas de choix")), filled, 12));
    EXPECT_FALSE(orane::readChoiceTarget(orane::viewOf(u8("pas de cible")), filled, 13));
    const std::string guard = ") : CODE ERROR : Trying to read a choice in a string without choice token. "
                              "Fix -> Find Varek and kick his a**.";
    EXPECT_EQ(capture.lines(), (Lines{"ERROR (line 0) : Rien.", "ERROR (line 4294967295 - église_𝄞) : x",
                                      "ERROR (line 12" + guard, "ERROR (line 13" + guard}));
}

} // namespace
