#include "book/booktext.hpp"

#include "book/linebreaker.hpp"
#include "resourceids.hpp"
#include "scene/choice.hpp"
#include "scene/scene.hpp"

#include <ryn/core/assert.hpp>
#include <ryn/core/floatcolor.hpp>
#include <ryn/core/resourcemanager.hpp>

namespace orane
{
namespace
{

const ryn::FloatColor ORANE_INK(0.1f, 0.08f, 0.1f, 1.f);
const ryn::FloatColor NATHAN_INK(0.15f, 0.05f, 0.1f, 1.f);
constexpr unsigned int WRITER_CHARACTER_SIZE = 20;

} // namespace

BookText::BookText(sf::Vector2f pageSize, sf::Vector2f textPadding)
    : pageSize_(pageSize)
    , textPadding_(textPadding)
{}

void BookText::loadFonts(ryn::ResourceManager& resources)
{
    writerTexts_.resize(2);
    sf::Text& orane = writerTexts_[static_cast<std::size_t>(PageWriter::ORANE)];
    orane.setFillColor(ORANE_INK);
    orane.setFont(resources.font(FontId::Orane));
    orane.setCharacterSize(WRITER_CHARACTER_SIZE);
    sf::Text& nathan = writerTexts_[static_cast<std::size_t>(PageWriter::NATHAN)];
    nathan.setFillColor(NATHAN_INK);
    nathan.setFont(resources.font(FontId::Nathan));
    nathan.setCharacterSize(WRITER_CHARACTER_SIZE);
}

void BookText::addScene(const Scene& scene)
{
    Page orane{scene.oraneText, PageWriter::ORANE};
    Page nathan{scene.nathanText, PageWriter::NATHAN};
    wrap(orane);
    wrap(nathan);
    pages_.push_back(orane);
    pages_.push_back(nathan);
    ++revision_;
}

void BookText::appendChoice(const Choice& choice)
{
    RYN_ASSERT(!pages_.empty());
    if (pages_.empty())
        return;
    Page& last = pages_.back();
    if (last.text.isEmpty()) {
        last.text = choice.longDescription;
    } else {
        last.text += sf::String(U'\n');
        last.text += choice.longDescription;
    }
    wrap(last);
    ++revision_;
}

void BookText::wrap(Page& page)
{
    wrapText(page, writerTexts_, pageSize_, textPadding_);
}

void BookText::wrapText(Page& page, std::vector<sf::Text>& writerTexts, sf::Vector2f pageSize, sf::Vector2f textPadding)
{
    const auto writer = static_cast<std::size_t>(page.writer);
    RYN_ASSERT(writer < writerTexts.size());
    if (writer >= writerTexts.size())
        return;
    const float maxWidth = pageSize.x - (textPadding.x + textPadding.x);
    page.text = breakLines(page.text, writerTexts[writer], maxWidth);
}

float BookText::lastTextHeight() const
{
    RYN_ASSERT(!pages_.empty());
    if (pages_.empty())
        return 0.f;
    const Page& last = pages_.back();
    const auto writer = static_cast<std::size_t>(last.writer);
    if (writer >= writerTexts_.size())
        return 0.f;
    sf::Text text = writerTexts_[writer];
    text.setString(last.text);
    return text.getGlobalBounds().height;
}

sf::Text* BookText::writerText(const Page& page)
{
    const auto writer = static_cast<std::size_t>(page.writer);
    return writer < writerTexts_.size() ? &writerTexts_[writer] : nullptr;
}

} // namespace orane
