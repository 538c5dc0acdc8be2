#include "storytesting.hpp"

using namespace storytesting;

namespace
{

std::string suspectFile(const std::string& name, const std::string& verdict)
{
    return "SCENE " + name + "_begin\nORANE\nSur " + name + ".\nFORWARD " + name + "_suite\nSCENE " + name
           + "_suite\nNATHAN\nVu " + name + ".\n* Revenir\nRetour.\n-> hub\nSCENE " + name + "_arrest\nNATHAN\nC'est "
           + name + ".\nFORWARD " + verdict + "\n";
}

const std::string HUB = "|Très bien, dites moi sur qui pensez-vous enquêter ?||";
const std::string ARREST = "|Avez-vous une piste viable sur un suspect ?\nAttention, nous ferons des recherches assez "
                           "poussées sur le coupable désigné. Je devrais révéler ce carnet. Cela peut nous mettre en "
                           "danger si vous vous trompez. Choisissez bien.|||*Je ne sais pas encore.>Je ne peux vous "
                           "donner de nom, il faut que je continue d'enquêter>hub";
const std::string ARREST_CHOICE = "|*Je pense avoir mon coupable.>Je peux peut être confondre le coupable>arrest";

std::string hubChoice(const std::string& name)
{
    return "|*le " + name + ">Je vais partir sur le " + name + ">" + name + "_begin";
}

std::string arrestChoice(const std::string& name)
{
    return "|*le " + name + ">Je pense que notre lascard est le " + name + ">" + name + "_arrest";
}

class SceneManagerPlay : public ::testing::Test
{
protected:
    SceneManagerPlay()
    {
        tree_.write("suspects.ini", "Moreau\nDupont\nLeroy\n");
        tree_.write("story.txt", "SCENE begin\nORANE\nBonjour.\nFORWARD intro\nSCENE intro\nNATHAN\nQui ?\n"
                                 "* Enquêter\nAllons-y.\n-> hub\n* Leroy d'abord\nHors du hub.\n-> Leroy_begin\n");
        tree_.write("Dupont.txt", suspectFile("Dupont", "game_over"));
        tree_.write("Leroy.txt", suspectFile("Leroy", "end"));
        tree_.write("Moreau.txt", suspectFile("Moreau", "game_over"));
    }

    StoryTree tree_;
};

TEST_F(SceneManagerPlay, RebuildsTheHubAndTheArrestSceneFromTheSuspectsVisited)
{
    Player player(tree_);
    ASSERT_TRUE(player.loaded) << ::testing::PrintToString(player.report);
    EXPECT_EQ(player.events, (Lines{"scene begin", "scene intro"}));

    // Reaching a suspect outside the hub does not count as investigating them.
    player.take(" Leroy d'abord");
    EXPECT_EQ(player.events, (Lines{"choice Leroy d'abord", "scene Leroy_begin", "scene Leroy_suite"}));
    player.take(" Revenir");
    EXPECT_EQ(player.events, (Lines{"choice Revenir", "scene hub"}));
    EXPECT_EQ(player.current(), HUB + hubChoice("Dupont") + hubChoice("Leroy") + hubChoice("Moreau"));

    player.take("le Dupont");
    EXPECT_EQ(player.events, (Lines{"choicele Dupont", "scene Dupont_begin", "scene Dupont_suite"}));
    player.take(" Revenir");
    EXPECT_EQ(player.current(), HUB + hubChoice("Leroy") + hubChoice("Moreau") + ARREST_CHOICE);
    player.take("Je pense avoir mon coupable.");
    EXPECT_EQ(player.current(), ARREST + arrestChoice("Dupont"));
    player.take("Je ne sais pas encore.");
    player.take("le Moreau");
    player.take(" Revenir");
    player.take("le Leroy");
    player.take(" Revenir");
    EXPECT_EQ(player.current(), HUB + ARREST_CHOICE);
    player.take("Je pense avoir mon coupable.");
    EXPECT_EQ(player.current(), ARREST + arrestChoice("Dupont") + arrestChoice("Leroy") + arrestChoice("Moreau"));

    player.take("le Leroy");
    EXPECT_EQ(player.events, (Lines{"choicele Leroy", "scene Leroy_arrest", "scene end"}));
    EXPECT_EQ(player.current().substr(player.current().size() - 10), " Agent O||");
}

TEST_F(SceneManagerPlay, TellsTheOwnerAboutGameOverOnceBeforeShowingIt)
{
    Player player(tree_);
    player.take(" Enquêter");
    EXPECT_EQ(player.events, (Lines{"choice Enquêter", "scene hub"}));
    player.take("le Moreau");
    player.take(" Revenir");
    player.take("Je pense avoir mon coupable.");
    player.take("le Moreau");
    EXPECT_EQ(player.events, (Lines{"choicele Moreau", "scene Moreau_arrest", "game over", "scene game_over"}));
    EXPECT_EQ(player.current(), "| |Au revoir Monsieur N.\n\n\t\t\t\t\t\t\t\t\t\t\t\t\t\tJ.|");
}

TEST(SceneManagerWithoutSuspects, OffersAHubWithoutChoices)
{
    StoryTree tree;
    tree.write("suspects.ini", "");
    tree.write("story.txt", "SCENE begin\nORANE\nBonjour.\nFORWARD hub\n");
    const Player player(tree);
    EXPECT_EQ(player.events, (Lines{"scene begin", "scene hub"}));
    EXPECT_EQ(player.current(), HUB);
}

} // namespace
