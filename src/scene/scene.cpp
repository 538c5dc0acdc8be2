#include "scene/scene.hpp"

#include "scene/storytext.hpp"

#include <ryn/core/assert.hpp>
#include <ryn/core/console.hpp>

#include <algorithm>

namespace orane
{
namespace
{

/// Reads the lines of one scene into it; lives for one call of Scene::deserialize. Texts grow
/// in code-point buffers and reach the scene once, at their exact size.
class SceneReader
{
public:
    SceneReader(Scene& scene, std::uint32_t firstLine)
        : scene_(scene)
        , firstLine_(firstLine)
    {
    }

    bool read(const std::vector<CodePointView>& lines)
    {
        if (lines.empty()) {
            reportMissingSceneToken();
            return false;
        }
        if (!readSceneLine(lines.front()))
            return false;
        clearTexts();
        bool readToTheEnd = true;
        for (std::size_t k = 1; k < lines.size() && readToTheEnd; ++k)
            readToTheEnd = readLine(lines, k);
        storeWriterTexts();
        storeLongDescription();
        return readToTheEnd && scene_.checkGameLogic(firstLine_);
    }

private:
    bool readSceneLine(CodePointView line)
    {
        if (!containsToken(line, viewOf(TOKEN_SCENE))) {
            reportMissingSceneToken();
            return false;
        }
        CodePointView name;
        if (!readSecondOfTwoWords(line, name)) {
            scene_.logError(formatError(TOKEN_SCENE), firstLine_);
            return false;
        }
        scene_.name = toString(trimWhitespace(name));
        return true;
    }

    /// Every choice line holds a "*": counting those from the first choice on spares copying
    /// the choices (and all their texts) as the vector grows.
    void reserveChoices(const std::vector<CodePointView>& lines, std::size_t first)
    {
        const auto holdsStar = [](CodePointView line) { return line.find(U'*') != CodePointView::npos; };
        const auto from = lines.begin() + static_cast<std::ptrdiff_t>(first);
        scene_.choices.reserve(static_cast<std::size_t>(std::count_if(from, lines.end(), holdsStar)));
    }

    void clearTexts()
    {
        for (CodePoints* text : {&oraneText_, &nathanText_, &longDescription_})
            text->clear();
    }

    static bool readSecondOfTwoWords(CodePointView line, CodePointView& second)
    {
        std::size_t index = 0;
        CodePointView word;
        return nextWord(line, index, word) && nextWord(line, index, second) && !nextWord(line, index, word);
    }

    void reportMissingSceneToken() const
    {
        scene_.logError(L"Scene doesn't start with token " + TOKEN_SCENE + L".", firstLine_);
    }

    /// Reads line `k` of the scene. Answers false at a fatal fault; warnings are reported and
    /// the line passed over.
    bool readLine(const std::vector<CodePointView>& lines, std::size_t k)
    {
        const CodePointView line = lines[k];
        const std::uint32_t number = firstLine_ + static_cast<std::uint32_t>(k);
        if (line.empty())
            return true;
        const LineTokens tokens = findLineTokens(line);
        if (tokens.forward)
            return readForwardLine(line, number);
        if (tokens.orane)
            return readWriterLine(TOKEN_ORANE, Writer::Orane, oraneSeen_, number);
        if (tokens.nathan)
            return readWriterLine(TOKEN_NATHAN, Writer::Nathan, nathanSeen_, number);
        if (tokens.choice) {
            if (!choicesBegun_)
                reserveChoices(lines, k);
            return readChoiceLine(line, number);
        }
        if (choicesBegun_ && tokens.nextScene)
            return readTargetLine(line, number);
        if (choicesBegun_)
            appendLine(longDescription_, line);
        else
            readTextLine(line, number);
        return true;
    }

    bool readForwardLine(CodePointView line, std::uint32_t number)
    {
        if (forwardSeen_) {
            scene_.logError(L"Found more than one " + TOKEN_FORWARD
                                + L"  token. There can be only one forward per scene.",
                            number);
            return false;
        }
        if (choicesBegun_) {
            scene_.logError(L"Found token " + TOKEN_FORWARD
                                + L" after a choice. The Forward token must be written before "
                                  L"the choices.",
                            number);
            return false;
        }
        CodePointView target;
        if (!readSecondOfTwoWords(line, target)) {
            scene_.logError(formatError(TOKEN_FORWARD), number);
            return false;
        }
        scene_.forward = toString(trimWhitespace(target));
        forwardSeen_ = true;
        writer_ = Writer::None;
        return true;
    }

    bool readWriterLine(const sf::String& token, Writer writer, bool& seen, std::uint32_t number)
    {
        if (seen) {
            const sf::String lowerName = writer == Writer::Orane ? L"orane" : L"nathan";
            scene_.logError(L"Found more than one " + token + L" token. There can be only one text for "
                                + lowerName + L" per scene.",
                            number);
            return false;
        }
        if (choicesBegun_) {
            scene_.logError(L"Found token " + token
                                + L" after a choice. Description text for orane or nathan must be "
                                  L"written before the choices.",
                            number);
            return false;
        }
        seen = true;
        writer_ = writer;
        return true;
    }

    bool readChoiceLine(CodePointView line, std::uint32_t number)
    {
        if (!choicesBegun_) {
            choicesBegun_ = true;
            writer_ = Writer::None;
        } else {
            // The previous choice is complete only once its text is in.
            storeLongDescription();
            if (!scene_.choices.back().isValid()) {
                // The invalid choice stays: the game-logic check lists it with its missing texts.
                scene_.logError(L"Found new choice while previous one was still invalid.", number);
            }
        }
        scene_.choices.emplace_back();
        if (readChoiceBrief(line, scene_.choices.back(), number))
            return true;
        scene_.choices.pop_back();
        return false;
    }

    bool readTargetLine(CodePointView line, std::uint32_t number)
    {
        std::vector<Choice>& choices = scene_.choices;
        if (!RYN_CHECK(choices.size() > 0))
            return false;
        Choice& choice = choices.back();
        if (!readChoiceTarget(line, choice, number))
            return false;
        std::size_t index = 0;
        CodePointView word;
        const CodePointView name = viewOf(choice.nextSceneName);
        if (!nextWord(name, index, word) || nextWord(name, index, word)) {
            scene_.logError(L"Read incorrect next scene name \"" + choice.nextSceneName + L"\"", number);
            return false;
        }
        return true;
    }

    void readTextLine(CodePointView line, std::uint32_t number)
    {
        switch (writer_) {
        case Writer::Orane:
            appendLine(oraneText_, line);
            break;
        case Writer::Nathan:
            appendLine(nathanText_, line);
            break;
        case Writer::None:
            scene_.logError(L"Found text without token without previous tokens " + TOKEN_ORANE + L" or "
                                + TOKEN_NATHAN
                                + L". Normal text must be placed after those tokens to define who "
                                  L"wrote it.",
                            number);
            break;
        }
    }

    static void appendLine(CodePoints& text, CodePointView line)
    {
        text += line;
        text += U'\n';
    }

    void storeWriterTexts()
    {
        scene_.oraneText = toString(oraneText_);
        scene_.nathanText = toString(nathanText_);
    }

    /// Gives the text read since the last choice line to that choice.
    void storeLongDescription()
    {
        if (!scene_.choices.empty())
            scene_.choices.back().longDescription = toString(longDescription_);
        longDescription_.clear();
    }

    static sf::String formatError(const sf::String& token)
    {
        return L"Found token " + token + L" with incorrect format. (Correct format is : " + token
               + L" a_valid_scene_name)";
    }

    Scene& scene_;
    std::uint32_t firstLine_ = 0;
    Writer writer_ = Writer::None;
    bool forwardSeen_ = false;
    bool oraneSeen_ = false;
    bool nathanSeen_ = false;
    bool choicesBegun_ = false;
    // Kept from one scene to the next, so that a whole story is read with a few of them.
    static thread_local CodePoints oraneText_;
    static thread_local CodePoints nathanText_;
    static thread_local CodePoints longDescription_;
};

thread_local CodePoints SceneReader::oraneText_;
thread_local CodePoints SceneReader::nathanText_;
thread_local CodePoints SceneReader::longDescription_;

void writeReportLine(const std::string& text)
{
    ryn::console::writeLine(text);
}

} // namespace

void logError(const sf::String& message, const sf::String& sceneName, std::uint32_t line)
{
    sf::String text = L"ERROR (line " + sf::String(std::to_wstring(line));
    if (!sceneName.isEmpty())
        text += L" - " + sceneName;
    text += L") : " + message;
    ryn::console::writeLine(text);
}

bool Scene::deserialize(const std::vector<sf::String>& lines, std::uint32_t firstLine)
{
    std::vector<CodePointView> views;
    views.reserve(lines.size());
    for (const sf::String& line : lines)
        views.push_back(viewOf(line));
    return deserialize(views, firstLine);
}

bool Scene::deserialize(const std::vector<CodePointView>& lines, std::uint32_t firstLine)
{
    SceneReader reader(*this, firstLine);
    return reader.read(lines);
}

void Scene::logError(const sf::String& message, std::uint32_t line) const
{
    orane::logError(message, name, line);
}

bool Scene::checkGameLogic(std::uint32_t firstLine) const
{
    const bool hasForward = !forward.isEmpty();
    const bool hasText = !oraneText.isEmpty() || !nathanText.isEmpty();
    std::vector<std::size_t> invalidChoices;
    for (std::size_t i = 0; i < choices.size(); ++i) {
        if (!choices[i].isValid())
            invalidChoices.push_back(i);
    }
    const bool choicesUsable = !choices.empty() && invalidChoices.empty();
    const bool waysOnAreSound = hasForward ? choices.empty() : choicesUsable;
    if (hasText && waysOnAreSound)
        return true;

    logError(L"Found the following game logic errors :", firstLine);
    if (!hasText) {
        writeReportLine("---- No valid description text was found. A scene must have at least one "
                        "valid text, for orane or nathan. (Choices don't count.)");
    }
    if (!hasForward && choices.empty()) {
        writeReportLine("---- No choices were found, and no " + TOKEN_FORWARD.toAnsiString()
                        + " was found. The scene must contain exactly one of the two, or the game "
                          "can't know where to go next");
    }
    if (hasForward && !choices.empty()) {
        writeReportLine("---- Found " + std::to_string(choices.size()) + " choices and "
                        + TOKEN_FORWARD.toAnsiString() + " was found. You can't put both.");
    }
    if (!invalidChoices.empty()) {
        writeReportLine("---- Found " + std::to_string(invalidChoices.size()) + " invalid choices.");
        for (std::size_t i : invalidChoices) {
            writeReportLine("---- Choice " + std::to_string(i));
            choices[i].printMissingFields();
        }
    }
    return false;
}

} // namespace orane
