#include "scene/diagnosticprinter.hpp"
#include "scenemanager/bufferedstorysource.hpp"
#include "scenemanager/storyloader.hpp"
#include "storytesting.hpp"

using namespace storytesting;

namespace
{

using KIND = orane::Diagnostic::KIND;

const std::string BEGIN = "SCENE begin\nORANE\nBonjour Monsieur N.\nFORWARD hub\n";

std::string suspectFile(const std::string& name)
{
    return "SCENE " + name + "_begin\nORANE\nSur " + name + ".\nFORWARD hub\nSCENE " + name + "_arrest\nNATHAN\nC'est "
           + name + ".\nFORWARD end\n";
}

/// Every record's printed lines, in order: what the game's console shows.
Lines printed(const orane::Diagnostics& diagnostics)
{
    Lines lines;
    for (const orane::Diagnostic& diagnostic : diagnostics)
        for (const std::string& line : orane::DiagnosticPrinter::lines(diagnostic))
            lines.push_back(line);
    return lines;
}

/// kind, file name, game line, file line, scene, choice of each record.
Lines places(const orane::Diagnostics& diagnostics, const std::string& directory)
{
    Lines found;
    for (const orane::Diagnostic& diagnostic : diagnostics) {
        const std::string file = diagnostic.file.substr(0, directory.size()) == directory
                                     ? diagnostic.file.substr(directory.size())
                                     : diagnostic.file;
        found.push_back(std::to_string(static_cast<int>(diagnostic.kind)) + " " + file + " "
                        + std::to_string(diagnostic.line) + "/" + std::to_string(diagnostic.fileLine) + " "
                        + utf8(diagnostic.scene)
                        + (diagnostic.choice ? " #" + std::to_string(*diagnostic.choice) : std::string()));
    }
    return found;
}

orane::StoryLoader::Result loadBuffers(const std::vector<std::pair<std::string, std::string>>& files,
                                       orane::StoryLoader::Options options = {})
{
    orane::BufferedStorySource source;
    for (const auto& [name, bytes] : files)
        source.setBuffer("/nowhere/" + name, bytes);
    return orane::StoryLoader(source).load("/nowhere/", options);
}

TEST(Diagnostics, PrintTheGamesLinesAndPlaceEachFaultOnItsLineInTheFile)
{
    // Comments shift the file's lines from the game's count; the parser's warning, its fault
    // and the loader's closing line each name their own line.
    StoryTree tree;
    tree.write("suspects.ini", "");
    tree.write("story.txt", "# titre\n" + BEGIN + "SCENE cave\n# c\nPerdu.\nORANE\nNoir.\n* a\nA.\n-> x\nFORWARD y\n");
    const Player player(tree);
    EXPECT_FALSE(player.loaded);
    const orane::Diagnostics& found = player.manager().diagnostics();
    EXPECT_EQ(printed(found), player.report);
    EXPECT_EQ(places(found, tree.directory()),
              (Lines{std::to_string(static_cast<int>(KIND::TEXT_WITHOUT_WRITER)) + " story.txt 5/8 cave",
                     std::to_string(static_cast<int>(KIND::FORWARD_AFTER_CHOICE)) + " story.txt 11/14 cave",
                     std::to_string(static_cast<int>(KIND::SCENE_NOT_READ)) + " story.txt 12/6 "}));
    EXPECT_EQ(found[0].severity, orane::Diagnostic::SEVERITY::WARNING);
    EXPECT_EQ(found[1].severity, orane::Diagnostic::SEVERITY::ERROR);
}

TEST(Diagnostics, PlaceBrokenLinksAtTheirTargetLineAndSuspectFaultsAtTheirLine)
{
    const auto result = loadBuffers({{"suspects.ini", "Zoe\n\nAdele\n"},
                                     {"story.txt", BEGIN + "SCENE cave\nORANE\nNoir.\n* a\nA.\n\n-> nulle_part\n"},
                                     {".txt", "SCENE vide\nORANE\nRien.\nFORWARD perdu\n"},
                                     {"Adele.txt", suspectFile("Adele")},
                                     {"Zoe.txt", "SCENE Zoe_begin\nORANE\nZ.\nFORWARD hub\n"}});
    EXPECT_FALSE(result.playable);
    EXPECT_EQ(places(result.diagnostics, "/nowhere/"),
              (Lines{std::to_string(static_cast<int>(KIND::BROKEN_CHOICE)) + " story.txt 10/11 cave #0",
                     std::to_string(static_cast<int>(KIND::BROKEN_FORWARD)) + " .txt 3/4 vide"}));

    // Links whole, the suspects' own faults are placed in suspects.ini.
    const auto suspects = loadBuffers({{"suspects.ini", "Zoe\n\nAdele\n"},
                                       {"story.txt", BEGIN},
                                       {".txt", "SCENE vide\nORANE\nRien.\nFORWARD end\n"},
                                       {"Adele.txt", suspectFile("Adele")},
                                       {"Zoe.txt", "SCENE Zoe_begin\nORANE\nZ.\nFORWARD hub\n"}});
    EXPECT_EQ(printed(suspects.diagnostics),
              (Lines{"ERROR : Suspect \"\" has no scene \"_begin\".", "ERROR : Suspect \"\" has no scene \"_arrest\".",
                     "ERROR : Suspect \"Zoe\" has no scene \"Zoe_arrest\"."}));
    Lines fileLines;
    for (const orane::Diagnostic& diagnostic : suspects.diagnostics)
        fileLines.push_back(diagnostic.file + ":" + std::to_string(diagnostic.fileLine));
    EXPECT_EQ(fileLines, (Lines{"/nowhere/suspects.ini:2", "/nowhere/suspects.ini:2", "/nowhere/suspects.ini:1"}));
}

TEST(Diagnostics, BuffersTakeThePlaceOfFilesAndToolsReadPastAFaultyFile)
{
    StoryTree tree;
    tree.write("suspects.ini", "Adele\nBruno\n");
    tree.write("story.txt", BEGIN);
    tree.write("Adele.txt", "SCENE Adele_begin\nFORWARD\n");
    tree.write("Bruno.txt", "pas de scène\n");

    orane::BufferedStorySource source;
    // An unsaved editor buffer replaces the faulty file on disk, named by another spelling.
    source.setBuffer(tree.directory() + "./Adele.txt", suspectFile("Adele"));
    EXPECT_TRUE(source.holdsBuffer(tree.directory() + "Adele.txt"));
    const auto gameView = orane::StoryLoader(source).load(tree.directory());
    EXPECT_FALSE(gameView.playable);
    EXPECT_EQ(printed(gameView.diagnostics), Lines{"ERROR : no scene found in file " + tree.directory()
                                                   + "Bruno.txt. A story file must hold at "
                                                     "least one SCENE line."});

    source.removeBuffer(tree.directory() + "Adele.txt");
    const auto toolView = orane::StoryLoader(source).load(tree.directory(), {true});
    // The game stops at Adele.txt; the tools go on to Bruno.txt and keep its report apart.
    ASSERT_EQ(toolView.gameDiagnosticCount, 2u);
    EXPECT_EQ(toolView.diagnostics.size(), 3u);
    EXPECT_EQ(toolView.diagnostics[2].kind, KIND::NO_SCENE_IN_FILE);
    Lines statuses;
    for (const auto& file : toolView.story.files())
        statuses.push_back(file.path.substr(tree.directory().size()) + " "
                           + std::to_string(static_cast<int>(file.status)));
    EXPECT_EQ(statuses, (Lines{"story.txt 0", "Adele.txt 2", "Bruno.txt 2"}));
    EXPECT_TRUE(toolView.story.findScene(u8("begin")) != nullptr);
}

TEST(Diagnostics, AFileThatCannotBeOpenedLeavesARecordTheGameNeverPrints)
{
    const auto result = loadBuffers({{"suspects.ini", "Adele\n"}, {"story.txt", BEGIN}});
    ASSERT_EQ(result.diagnostics.size(), 1u);
    EXPECT_EQ(result.diagnostics[0].kind, KIND::STORY_FILE_UNREADABLE);
    EXPECT_EQ(result.diagnostics[0].file, "/nowhere/Adele.txt");
    EXPECT_TRUE(printed(result.diagnostics).empty());
    // An oversized buffer is refused as the file would be.
    const auto large = loadBuffers({{"suspects.ini", std::string(orane::TextFile::MAX_BYTES + 1, 'a')}});
    EXPECT_EQ(printed(large.diagnostics),
              Lines{"ERROR : file /nowhere/suspects.ini is 1048577 bytes long. A story file may hold at most "
                    "1048576 bytes."});
}

} // namespace
