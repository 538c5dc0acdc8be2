#include "scene/storytext.hpp"
#include "storytesting.hpp"

#include <random>

using namespace storytesting;

namespace
{

struct Parsed
{
    bool accepted = false;
    std::string scene;
    Lines report;
};

Parsed parse(const Lines& lines, std::uint32_t firstLine = 0)
{
    std::vector<sf::String> texts;
    for (const std::string& line : lines)
        texts.push_back(u8(line));
    orane::Scene scene;
    ryn::console::Capture capture;
    const bool accepted = scene.deserialize(texts, firstLine);
    return {accepted, describe(scene), capture.lines()};
}

const std::string NO_WRITER = "Found text without token without previous tokens ORANE or NATHAN. "
                              "Normal text must be placed after those tokens to define who wrote it.";

TEST(SceneParser, ReadsScenesIntoTheirFields)
{
    struct Case
    {
        Lines lines;
        std::string scene;
    };
    const std::vector<Case> cases = {
        {{"SCENE quai_gare", "ORANE", "Le train est arrivé.", "Personne.", "NATHAN", "Le voyageur ?", "* Le suivre",
          "Je le suis.", "-> sortie_gare", "* Rester", "J'attends.", "-> quai_attente"},
         "quai_gare|Le train est arrivé.\nPersonne.\n|Le voyageur ?\n||* Le suivre>Je le suis.\n>sortie_gare"
         "|* Rester>J'attends.\n>quai_attente"},
        {{"SCENE sortie_gare", "NATHAN", "Ne le perdez pas de vue.", "FORWARD rue_gare"},
         "sortie_gare||Ne le perdez pas de vue.\n|rue_gare"},
        // Empty lines vanish, lines of blanks stay, "->" is plain text before the choices, a
        // choice's text may follow its target, a second target replaces the first.
        {{"xSCENEx   gare\t", "ORANE", "Un.", "", "   ", "Deux -> trois.", "NATHAN", "Nathan a dit non.",
          "* Choix -> avec flèche", "->rue_gare", "Je sors", "* Autre", "Texte.", "->   place  ", "-> quai"},
         "gare|Un.\n   \nDeux -> trois.\n|Nathan a dit non.\n||* Choix -> avec flèche>Je sors\n>rue_gare"
         "|* Autre>Texte.\n>quai"},
        // Only the six ASCII whitespaces are trimmed: wide and no-break spaces belong to names.
        {{"quai SCENE", "ORANE", "𝄞\t", "FORWARD  \t\u00A0𝄞\u3000\r "}, "SCENE|𝄞\t\n||\u00A0𝄞\u3000"},
    };
    for (const Case& c : cases) {
        const Parsed parsed = parse(c.lines);
        EXPECT_TRUE(parsed.accepted) << c.scene;
        EXPECT_TRUE(parsed.report.empty()) << c.scene;
        EXPECT_EQ(parsed.scene, c.scene);
    }
}

TEST(SceneParser, StopsAtTheFirstFatalFaultWithoutTheGameLogicReport)
{
    const std::string sceneFormat = "ERROR (line 20) : Found token SCENE with incorrect format. (Correct format "
                                    "is : SCENE a_valid_scene_name)";
    const std::string forwardTwice = "ERROR (line 24 - cave) : Found more than one FORWARD  token. There can be "
                                     "only one forward per scene.";
    const std::vector<std::pair<Lines, std::string>> cases = {
        {{"SCENE quai gare"}, sceneFormat},
        {{"SCENE\tquai"}, sceneFormat},
        {{"Scene quai"}, "ERROR (line 20) : Scene doesn't start with token SCENE."},
        {{"SCENE cave", "ORANE", "Noir.", "FORWARD a", "FORWARD b"}, forwardTwice},
        {{"SCENE cave", "ORANE", "FORWARD a", "* Partir", "FORWARD b"}, forwardTwice},
        {{"SCENE cave", "ORANE", "Noir.", "* Partir", "FORWARD rue_gare"},
         "ERROR (line 24 - cave) : Found token FORWARD after a choice. The Forward token must be written before "
         "the choices."},
        {{"SCENE cave", "ORANE", "Elle a pris le FORWARD"},
         "ERROR (line 22 - cave) : Found token FORWARD with incorrect format. (Correct format is : FORWARD "
         "a_valid_scene_name)"},
        {{"SCENE cave", "ORANE", "Noir.", "NATHAN", "J'ai parlé à ORANE hier."},
         "ERROR (line 24 - cave) : Found more than one ORANE token. There can be only one text for orane per "
         "scene."},
        {{"SCENE cave", "NATHAN", "Noir.", "NATHAN"},
         "ERROR (line 23 - cave) : Found more than one NATHAN token. There can be only one text for nathan per "
         "scene."},
        {{"SCENE cave", "NATHAN", "Il a crié * et s'est tu.", "ORANE"},
         "ERROR (line 23 - cave) : Found token ORANE after a choice. Description text for orane or nathan must be "
         "written before the choices."},
        {{"SCENE cave", "ORANE", "* Partir", "Je pars.", "-> rue", "NATHAN"},
         "ERROR (line 25 - cave) : Found token NATHAN after a choice. Description text for orane or nathan must "
         "be written before the choices."},
        {{"SCENE cave", "ORANE", "Noir.", "* Partir", "->"},
         "ERROR (line 24 - cave) : Read incorrect next scene name \"\""},
        {{"SCENE cave", "ORANE", "Noir.", "* Partir", "-> rue gare"},
         "ERROR (line 24 - cave) : Read incorrect next scene name \"rue gare\""},
        {{}, "ERROR (line 20) : Scene doesn't start with token SCENE."},
    };
    for (const auto& [lines, report] : cases) {
        Lines withMore = lines;
        if (!lines.empty())
            withMore.push_back("ORANE"); // would draw a second report if reading went on
        const Parsed parsed = parse(withMore, 20);
        EXPECT_FALSE(parsed.accepted) << report;
        EXPECT_EQ(parsed.report, Lines{report});
    }
}

TEST(SceneParser, ReportsWarningsAndGoesOn)
{
    const Parsed lostText =
        parse({"SCENE rue", "Avant.", "ORANE", "Bonjour.", "FORWARD gare", "  ", "NATHAN", "Là."}, 3);
    EXPECT_TRUE(lostText.accepted);
    EXPECT_EQ(lostText.report, (Lines{"ERROR (line 4 - rue) : " + NO_WRITER, "ERROR (line 8 - rue) : " + NO_WRITER}));
    EXPECT_EQ(lostText.scene, "rue|Bonjour.\n|Là.\n|gare");

    // The choice without text stays in the list, so the scene fails once all its lines are read.
    const Parsed invalidChoice =
        parse({"SCENE rue", "ORANE", "Où ?", "* Gauche", "-> g", "* Droite", "D.", "-> d"}, 30);
    EXPECT_FALSE(invalidChoice.accepted);
    EXPECT_EQ(invalidChoice.report,
              (Lines{"ERROR (line 35 - rue) : Found new choice while previous one was still invalid.",
                     "ERROR (line 30 - rue) : Found the following game logic errors :", "---- Found 1 invalid choices.",
                     "---- Choice 0", "-------- Long description is empty."}));
}

TEST(SceneParser, TakesAnyCodePointAndAnyLength)
{
    const std::basic_string<sf::Uint32> odd = {0, 1, 0x1B, 0x7F, 0xFEFF, 0x1F600, 0x10FFFF, 0x110000, 0xFFFFFFFF};
    const sf::String longLine = u8(std::string(1 << 20, 'a'));
    orane::Scene scene;
    EXPECT_TRUE(scene.deserialize({u8("SCENE 𝄞"), u8("NATHAN"), sf::String(odd), longLine, u8("FORWARD 𝄞")}, 0));
    EXPECT_EQ(scene.nathanText, sf::String(odd) + "\n" + longLine + "\n");
}

// Scenes put together at random from the language's pieces: whatever the parser accepts must be
// playable, and whatever it rejects must have been reported.
TEST(SceneParser, AcceptsOnlyPlayableScenesAndReportsEveryRejection)
{
    const Lines pieces = {"SCENE a", "ORANE",  "NATHAN", "FORWARD b", "FORWARD", "* x", "*",  "-> c",
                          "->",      "-> c d", "texte",  "",          " ",       "\t",  "é𝄞", "SCENE"};
    std::mt19937 random(20240611);
    int accepted = 0;
    for (int round = 0; round < 4000; ++round) {
        Lines lines(random() % 9);
        for (std::string& line : lines)
            line = pieces[random() % pieces.size()] + pieces[random() % pieces.size()];
        if (!lines.empty() && random() % 2 == 0)
            lines.front() = "SCENE s";
        orane::Scene scene;
        std::vector<sf::String> texts;
        for (const std::string& line : lines)
            texts.push_back(u8(line));
        ryn::console::Capture capture;
        if (!scene.deserialize(texts, 0)) {
            EXPECT_FALSE(capture.text().empty()) << ::testing::PrintToString(lines);
            continue;
        }
        ++accepted;
        bool choicesValid = !scene.choices.empty();
        for (const orane::Choice& choice : scene.choices)
            choicesValid = choicesValid && choice.isValid();
        EXPECT_TRUE(scene.name.find(" ") == sf::String::InvalidPos
                    && (!scene.oraneText.isEmpty() || !scene.nathanText.isEmpty())
                    && (scene.forward.isEmpty() ? choicesValid : scene.choices.empty()))
            << ::testing::PrintToString(lines);
    }
    EXPECT_GT(accepted, 0);
}

} // namespace

// The one-pass token finder must answer exactly what a search for each token would, including
// for tokens cut at the line's end and for near-misses that share a token's first letters.
TEST(SceneParser, FindsLineTokensLikeASearchForEach)
{
    const std::vector<std::string> pieces = {"FORWARD", "FORWAR", "FFORWARD", "ORANE", "ORAN", "OORANE",
                                             "NATHAN",  "NATHA",  "NNATHAN",  "*",     "->",   "-",
                                             ">",       "- >",    " ",        "é",     "x",    "SCENE"};
    std::mt19937 random(7);
    std::uniform_int_distribution<std::size_t> pick(0, pieces.size() - 1);
    for (int round = 0; round < 2000; ++round) {
        std::string text;
        for (int count = round % 5; count >= 0; --count)
            text += pieces[pick(random)];
        const sf::String line = u8(text);
        const orane::LineTokens found = orane::findLineTokens(line);
        SCOPED_TRACE(text);
        EXPECT_EQ(found.forward, orane::containsToken(line, orane::TOKEN_FORWARD));
        EXPECT_EQ(found.orane, orane::containsToken(line, orane::TOKEN_ORANE));
        EXPECT_EQ(found.nathan, orane::containsToken(line, orane::TOKEN_NATHAN));
        EXPECT_EQ(found.choice, orane::containsToken(line, orane::TOKEN_CHOICE));
        EXPECT_EQ(found.nextScene, orane::containsToken(line, orane::TOKEN_NEXT_SCENE));
    }
}
