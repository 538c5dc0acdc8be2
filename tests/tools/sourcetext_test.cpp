#include "../story/storytesting.hpp"
#include "sourcetext.hpp"

#include <gtest/gtest.h>

namespace
{

using orane::SourceText;
using storytesting::utf8;

std::vector<std::string> names(const std::vector<SourceText::Fact>& facts)
{
    std::vector<std::string> result;
    for (const auto& fact : facts)
        result.push_back(utf8(fact.name) + "@" + std::to_string(fact.line) + ":" + std::to_string(fact.column));
    return result;
}

TEST(SourceText, AnnotationsBelongToTheirSceneOrToTheChoiceTheyFollow)
{
    const SourceText source = SourceText::read("story.txt", "# needs: avant_tout\n"
                                                            "SCENE begin\n"
                                                            "# sets: carnet, brossard_chantiers\n"
                                                            "ORANE\n"
                                                            "# needs: été_1894\n"
                                                            "Bonjour.\n"
                                                            "* Accepter\n"
                                                            "# sets: accord\n"
                                                            "Oui.\n"
                                                            "-> suite\n"
                                                            "# needs:  lucie ,salaire\n"
                                                            "* Refuser\n"
                                                            "Non.\n"
                                                            "-> end\n");
    ASSERT_EQ(source.scenes().size(), 1u);
    const SourceText::Scene& scene = source.scenes()[0];
    EXPECT_EQ(utf8(scene.name), "begin");
    EXPECT_EQ(scene.line, 2u);
    EXPECT_EQ(names(scene.facts.sets), (std::vector<std::string>{"carnet@3:9", "brossard_chantiers@3:17"}));
    EXPECT_EQ(names(scene.facts.needs), (std::vector<std::string>{"été_1894@5:10"}));
    ASSERT_EQ(scene.choices.size(), 2u);
    EXPECT_EQ(names(scene.choices[0].facts.sets), (std::vector<std::string>{"accord@8:9"}));
    // After the "->" line and before the next "*", the annotation is still the first choice's.
    EXPECT_EQ(names(scene.choices[0].facts.needs), (std::vector<std::string>{"lucie@11:11", "salaire@11:18"}));
    EXPECT_TRUE(scene.choices[1].facts.sets.empty() && scene.choices[1].facts.needs.empty());
    EXPECT_EQ(scene.choices[0].targetLine, 10u);
    EXPECT_EQ(scene.choices[0].targetColumn, 4u);

    // The annotation above the first scene belongs to none.
    ASSERT_EQ(source.annotationFindings().size(), 1u);
    EXPECT_EQ(source.annotationFindings()[0].line, 1u);
    EXPECT_NE(source.annotationFindings()[0].message.find("belongs to no scene"), std::string::npos);
}

TEST(SourceText, MisspeltAnnotationsWarnAndOtherCommentsStayComments)
{
    const SourceText source = SourceText::read("story.txt", "SCENE begin\n"
                                                            "# need: a\n"
                                                            "# set : b\n"
                                                            "#sets: c\n"
                                                            "# Sets: d\n"
                                                            "# Calendrier : Chambaz, nuit du samedi 13\n"
                                                            "# Lyon, novembre 1894.\n"
                                                            "# sets: fait-divers, bon\n"
                                                            "# needs:\n"
                                                            "ORANE\n"
                                                            "Texte.\n"
                                                            "FORWARD end\n");
    std::vector<std::size_t> lines;
    for (const auto& finding : source.annotationFindings())
        lines.push_back(finding.line);
    EXPECT_EQ(lines, (std::vector<std::size_t>{2, 3, 4, 5, 8, 9}));
    EXPECT_NE(source.annotationFindings()[0].message.find("\"# needs:"), std::string::npos);
    EXPECT_NE(source.annotationFindings()[1].message.find("\"# sets:"), std::string::npos);
    EXPECT_EQ(source.annotationFindings()[4].column, 9u);
    // The good name of a list with a bad one is still read.
    EXPECT_EQ(names(source.scenes()[0].facts.sets), (std::vector<std::string>{"bon@8:22"}));
    EXPECT_TRUE(source.scenes()[0].facts.needs.empty());
}

TEST(SourceText, TextLinesAreKnownByWriterWithTheirColumns)
{
    const SourceText source = SourceText::read("story.txt", "SCENE a\n"
                                                            "ORANE\n"
                                                            "Un.\n"
                                                            "\n"
                                                            "Deux.\n"
                                                            "NATHAN\n"
                                                            "Trois.\n"
                                                            "*  Quatre\n"
                                                            "Cinq.\n"
                                                            "-> b\n"
                                                            "SCENE b\n"
                                                            "ORANE\n"
                                                            "Six.\n"
                                                            "FORWARD end\n");
    ASSERT_EQ(source.scenes().size(), 2u);
    std::vector<std::string> texts;
    for (const auto& text : source.scenes()[0].texts)
        texts.push_back(std::to_string(static_cast<int>(text.kind)) + "@" + std::to_string(text.line) + ":"
                        + std::to_string(text.column) + (text.endsPage ? "!" : "") + utf8(text.text));
    EXPECT_EQ(texts,
              (std::vector<std::string>{"0@3:1Un.", "0@5:1!Deux.", "1@7:1!Trois.", "2@8:2  Quatre", "3@9:1Cinq."}));
    EXPECT_EQ(utf8(source.scenes()[1].forward), "end");
    EXPECT_EQ(source.scenes()[1].forwardColumn, 9u);
}

TEST(SourceText, BytesThatAreNotUtf8EndTheReadingWithoutHarm)
{
    const SourceText source = SourceText::read("story.txt", std::string("SCENE a\nORANE\nUn.\n\xff\xfe\nDeux.\n", 23));
    ASSERT_EQ(source.scenes().size(), 1u);
    EXPECT_EQ(source.scenes()[0].texts.size(), 1u);
    EXPECT_TRUE(SourceText::load("/no/such/file.txt").scenes().empty());
}

} // namespace
