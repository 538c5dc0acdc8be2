#include "scene/scene.hpp"

#include "scene/storytext.hpp"

#include <ryn/core/assert.hpp>
#include <ryn/core/console.hpp>

namespace orane
{
namespace
{

/// Reads the lines of one scene into it; lives for one call of Scene::deserialize.
class SceneReader
{
public:
    SceneReader(Scene& scene, std::uint32_t firstLine)
        : scene_(scene)
        , firstLine_(firstLine)
    {
    }

    bool read(const std::vector<const sf::String*>& lines)
    {
        if (lines.empty()) {
            reportMissingSceneToken();
            return false;
        }
        if (!readSceneLine(*lines.front()))
            return false;
        for (std::size_t k = 1; k < lines.size(); ++k) {
            if (!readLine(*lines[k], firstLine_ + static_cast<std::uint32_t>(k)))
                return false;
        }
        return scene_.checkGameLogic(firstLine_);
    }

private:
    bool readSceneLine(const sf::String& line)
    {
        if (!containsToken(line, TOKEN_SCENE)) {
            reportMissingSceneToken();
            return false;
        }
        const std::vector<sf::String> words = splitWords(line);
        if (words.size() != 2) {
            scene_.logError(formatError(TOKEN_SCENE), firstLine_);
            return false;
        }
        scene_.name = trimWhitespace(words[1]);
        return true;
    }

    void reportMissingSceneToken() const
    {
        scene_.logError(L"Scene doesn't start with token " + TOKEN_SCENE + L".", firstLine_);
    }

    /// Answers false at a fatal fault; warnings are reported and the line passed over.
    bool readLine(const sf::String& line, std::uint32_t number)
    {
        if (line.isEmpty())
            return true;
        const LineTokens tokens = findLineTokens(line);
        if (tokens.forward)
            return readForwardLine(line, number);
        if (tokens.orane)
            return readWriterLine(TOKEN_ORANE, Writer::Orane, oraneSeen_, number);
        if (tokens.nathan)
            return readWriterLine(TOKEN_NATHAN, Writer::Nathan, nathanSeen_, number);
        if (tokens.choice)
            return readChoiceLine(line, number);
        if (choicesBegun_ && tokens.nextScene)
            return readTargetLine(line, number);
        if (choicesBegun_)
            appendLine(scene_.choices.back().longDescription, line);
        else
            readTextLine(line, number);
        return true;
    }

    bool readForwardLine(const sf::String& line, std::uint32_t number)
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
        const std::vector<sf::String> words = splitWords(line);
        if (words.size() != 2) {
            scene_.logError(formatError(TOKEN_FORWARD), number);
            return false;
        }
        scene_.forward = trimWhitespace(words[1]);
        forwardSeen_ = true;
        writer_ = Writer::None;
        return true;
    }

    bool readWriterLine(const sf::String& token, Writer writer, bool& seen, std::uint32_t number)
    {
        const sf::String lowerName = writer == Writer::Orane ? L"orane" : L"nathan";
        if (seen) {
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

    bool readChoiceLine(const sf::String& line, std::uint32_t number)
    {
        if (!choicesBegun_) {
            choicesBegun_ = true;
            writer_ = Writer::None;
        } else if (!scene_.choices.back().isValid()) {
            // The invalid choice stays: the game-logic check lists it with its missing texts.
            scene_.logError(L"Found new choice while previous one was still invalid.", number);
        }
        Choice choice;
        if (!readChoiceBrief(line, choice, number))
            return false;
        scene_.choices.push_back(choice);
        return true;
    }

    bool readTargetLine(const sf::String& line, std::uint32_t number)
    {
        std::vector<Choice>& choices = scene_.choices;
        if (!RYN_CHECK(choices.size() > 0))
            return false;
        Choice& choice = choices.back();
        if (!readChoiceTarget(line, choice, number))
            return false;
        if (splitWords(choice.nextSceneName).size() != 1) {
            scene_.logError(L"Read incorrect next scene name \"" + choice.nextSceneName + L"\"", number);
            return false;
        }
        return true;
    }

    void readTextLine(const sf::String& line, std::uint32_t number)
    {
        switch (writer_) {
        case Writer::Orane:
            appendLine(scene_.oraneText, line);
            break;
        case Writer::Nathan:
            appendLine(scene_.nathanText, line);
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

    /// Appends in place: `text += line + L"\n"` would build and copy a temporary per line.
    static void appendLine(sf::String& text, const sf::String& line)
    {
        static const sf::String lineFeed = L"\n";
        text += line;
        text += lineFeed;
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
};

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
    std::vector<const sf::String*> pointers;
    pointers.reserve(lines.size());
    for (const sf::String& line : lines)
        pointers.push_back(&line);
    return deserialize(pointers, firstLine);
}

bool Scene::deserialize(const std::vector<const sf::String*>& lines, std::uint32_t firstLine)
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
