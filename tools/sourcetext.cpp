#include "sourcetext.hpp"

#include "editdistance.hpp"
#include "letters.hpp"
#include "scene/storytext.hpp"
#include "scene/tokens.hpp"
#include "scenemanager/textfile.hpp"
#include "tooltext.hpp"

#include <algorithm>

namespace orane
{
namespace
{

constexpr int NO_WRITER = 0;
constexpr int ORANE_WRITES = 1;
constexpr int NATHAN_WRITES = 2;

bool isBlank(sf::Uint32 c)
{
    return c == U' ' || c == U'\t';
}

std::size_t skipBlanks(const sf::String& line, std::size_t index)
{
    while (index < line.getSize() && isBlank(line[index]))
        ++index;
    return index;
}

/// The second word of a SCENE or FORWARD line, as the game reads it (whatever the line's
/// faults: the game reports those), and the column where it starts.
sf::String secondWord(const sf::String& line, std::size_t& column)
{
    const CodePointView view = viewOf(line);
    std::size_t index = 0;
    CodePointView word;
    if (!nextWord(view, index, word) || !nextWord(view, index, word))
        return {};
    column = static_cast<std::size_t>(word.data() - view.data()) + 1;
    return toString(trimWhitespace(word));
}

} // namespace

bool isFactCharacter(sf::Uint32 c)
{
    return c == U'_' || isDigit(c) || isLetter(c);
}

SourceText SourceText::load(const std::string& path)
{
    std::string bytes;
    if (!TextFile::readBytes(path, bytes))
        return read(path, {});
    return read(path, std::move(bytes));
}

SourceText SourceText::read(std::string path, std::string bytes)
{
    SourceText source;
    source.path_ = std::move(path);
    // The game refuses a larger file unread, and says so.
    if (bytes.size() > TextFile::MAX_BYTES)
        return source;
    const TextFile file = TextFile::decode(std::move(bytes));
    const std::vector<sf::String> lines = file.lines();
    for (std::size_t index = 0; index < lines.size(); ++index)
        source.readLine(lines[index], index + 1);
    source.finishScene();
    return source;
}

void SourceText::readLine(const sf::String& line, std::size_t number)
{
    if (!line.isEmpty() && line[0] == U'#') {
        readComment(line, number);
        return;
    }
    // Scenes are cut wherever "SCENE" stands, as the loader cuts them.
    if (containsToken(line, TOKEN_SCENE)) {
        finishScene();
        scenes_.emplace_back();
        std::size_t column = 0;
        scenes_.back().name = secondWord(line, column);
        scenes_.back().line = number;
        inScene_ = true;
        choicesBegun_ = false;
        writer_ = NO_WRITER;
        return;
    }
    if (!inScene_ || line.isEmpty())
        return;
    Scene& scene = scenes_.back();
    const LineTokens tokens = findLineTokens(line);
    if (tokens.forward) {
        scene.forward = secondWord(line, scene.forwardColumn);
        scene.forwardLine = number;
        writer_ = NO_WRITER;
    } else if (tokens.orane) {
        writer_ = ORANE_WRITES;
    } else if (tokens.nathan) {
        writer_ = NATHAN_WRITES;
    } else if (tokens.choice) {
        choicesBegun_ = true;
        writer_ = NO_WRITER;
        const std::size_t star = line.find(TOKEN_CHOICE);
        Choice choice;
        choice.line = number;
        choice.column = star + 1;
        choice.beforeStar = trimWhitespace(line.substring(0, star));
        scene.choices.push_back(choice);
        TextLine label{TextLine::KIND::LABEL, number, star + 2, line.substring(star + 1), scene.choices.size() - 1};
        scene.texts.push_back(std::move(label));
    } else if (choicesBegun_ && tokens.nextScene) {
        Choice& choice = scene.choices.back();
        const std::size_t arrow = line.find(TOKEN_NEXT_SCENE);
        const std::size_t start = skipBlanks(line, arrow + TOKEN_NEXT_SCENE.getSize());
        choice.targetLine = number;
        choice.targetColumn = start + 1;
        choice.target = trimWhitespace(line.substring(arrow + TOKEN_NEXT_SCENE.getSize()));
    } else if (choicesBegun_) {
        scene.texts.push_back(TextLine{TextLine::KIND::ANSWER, number, 1, line, scene.choices.size() - 1});
    } else if (writer_ != NO_WRITER) {
        const TextLine::KIND kind = writer_ == ORANE_WRITES ? TextLine::KIND::ORANE : TextLine::KIND::NATHAN;
        scene.texts.push_back(TextLine{kind, number, 1, line, 0});
    }
}

void SourceText::readComment(const sf::String& line, std::size_t number)
{
    const std::size_t wordStart = skipBlanks(line, 1);
    std::size_t wordEnd = wordStart;
    std::string word;
    while (wordEnd < line.getSize() && line[wordEnd] < 0x80 && isLetter(line[wordEnd]))
        word += static_cast<char>(line[wordEnd++]);
    const std::size_t colon = skipBlanks(line, wordEnd);
    if (word.empty() || colon >= line.getSize() || line[colon] != U':')
        return;
    std::string lower = word;
    std::transform(lower.begin(), lower.end(), lower.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    const bool nearSets = editDistance(lower, std::string("sets")) <= 1;
    const bool nearNeeds = editDistance(lower, std::string("needs")) <= 1;
    if (!nearSets && !nearNeeds)
        return;
    const bool wellFormed =
        (word == "sets" || word == "needs") && wordStart == 2 && line[1] == U' ' && colon == wordEnd;
    if (!wellFormed) {
        const std::string meant = nearSets ? "# sets:" : "# needs:";
        annotationWarning(number, 1,
                          "this comment looks like a misspelt fact annotation; write \"" + meant
                              + " fact_a, fact_b\" (it is read as a plain comment)");
        return;
    }
    if (!inScene_) {
        annotationWarning(number, 1, "this annotation stands before the first SCENE line: it belongs to no scene");
        return;
    }
    readFactList(line, colon + 1, word == "sets", number);
}

void SourceText::readFactList(const sf::String& line, std::size_t start, bool sets, std::size_t number)
{
    Annotations& target = choicesBegun_ ? scenes_.back().choices.back().facts : scenes_.back().facts;
    std::vector<Fact>& facts = sets ? target.sets : target.needs;
    std::size_t index = start;
    bool any = false;
    while (index <= line.getSize()) {
        std::size_t end = index;
        while (end < line.getSize() && line[end] != U',')
            ++end;
        const std::size_t first = skipBlanks(line, index);
        std::size_t last = end;
        while (last > first && isBlank(line[last - 1]))
            --last;
        const sf::String name = line.substring(first, last - first);
        const bool valid = !name.isEmpty() && std::all_of(name.begin(), name.end(), isFactCharacter);
        if (valid) {
            facts.push_back(Fact{name, number, first + 1});
            any = true;
        } else if (!name.isEmpty() || end < line.getSize()) {
            annotationWarning(number, first + 1,
                              quoted(name)
                                  + " is not a fact name: a fact is written with letters, digits and _, and facts are "
                                    "separated by commas");
        }
        index = end + 1;
    }
    if (!any)
        annotationWarning(number, 1,
                          std::string("this annotation names no fact: write \"# ") + (sets ? "sets" : "needs")
                              + ": fact_a, fact_b\"");
}

void SourceText::annotationWarning(std::size_t number, std::size_t column, const std::string& message)
{
    StoryFinding finding;
    finding.severity = StoryFinding::SEVERITY::WARNING;
    finding.kind = "annotation";
    finding.file = path_;
    finding.line = number;
    finding.column = column;
    if (inScene_)
        finding.scene = scenes_.back().name;
    finding.message = message;
    findings_.push_back(std::move(finding));
}

void SourceText::finishScene()
{
    if (!inScene_)
        return;
    std::vector<TextLine>& texts = scenes_.back().texts;
    for (const TextLine::KIND kind : {TextLine::KIND::ORANE, TextLine::KIND::NATHAN}) {
        const auto last =
            std::find_if(texts.rbegin(), texts.rend(), [kind](const TextLine& text) { return text.kind == kind; });
        if (last != texts.rend())
            last->endsPage = true;
    }
}

} // namespace orane
