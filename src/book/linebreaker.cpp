#include "book/linebreaker.hpp"

#include "book/textlayout.hpp"

#include <SFML/Graphics/Transform.hpp>

#include <algorithm>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace orane
{
namespace
{

constexpr sf::Uint32 BLANK = U' ';
constexpr sf::Uint32 LINE_FEED = U'\n';
constexpr sf::Uint32 OPENING_GUILLEMET = U'\u00AB';

/// French sets a space before these marks, and a line never starts with one of them.
bool staysWithWordBefore(sf::Uint32 character)
{
    return character == U';' || character == U':' || character == U'!' || character == U'?' || character == U'\u00BB';
}

/// Adds the text one character at a time and breaks where the reference would, measuring only
/// what changed: the open (last) line as it grows, and the one line that a break cuts in two.
/// The extents of the closed lines sit in two ordered sets, so the text's bounds are known
/// without walking the lines again.
class LineBreaker
{
public:
    LineBreaker(const sf::Text& writer, float maxWidth);

    sf::String run(const sf::String& source);

private:
    struct Line
    {
        std::size_t start = 0;
        TextLayout::Extent extent; ///< for closed lines; the open line's is in `pen_`
    };

    void append(sf::Uint32 character);
    bool overflows() const;
    void breakOverflow();
    std::optional<std::size_t> lastBlankBefore(std::size_t index) const;
    void breakAt(std::size_t blank);
    bool openLineTooWide() const;
    void breakOverlongWord();

    TextLayout::Pen layRange(std::size_t first, std::size_t last);
    void closeOpenLine(const TextLayout::Extent& extent, std::size_t nextStart);
    void addClosed(const TextLayout::Extent& extent);
    void removeClosed(const TextLayout::Extent& extent);

    TextLayout layout_;
    sf::Transform transform_;
    float maxWidth_ = 0.f;
    std::basic_string<sf::Uint32> text_;
    std::vector<std::size_t> blanks_; ///< positions >= 1 of the blanks a line may end at, increasing
    std::vector<Line> lines_;         ///< by start; the last one is open
    TextLayout::Pen pen_;             ///< at the end of the open line
    std::multiset<float> closedMinX_;
    std::multiset<float> closedMaxX_;
    bool afterOpeningGuillemet_ = false; ///< only blanks since the last «
};

LineBreaker::LineBreaker(const sf::Text& writer, float maxWidth)
    : layout_(writer)
    , transform_(writer.getTransform())
    , maxWidth_(maxWidth)
{
    lines_.push_back(Line{});
    pen_ = TextLayout::penForLineAt(0);
}

sf::String LineBreaker::run(const sf::String& source)
{
    text_.reserve(source.getSize() + source.getSize() / 16);
    for (std::size_t i = 0; i < source.getSize(); ++i) {
        append(source[i]);
        if (overflows())
            breakOverflow();
    }
    return sf::String(text_);
}

void LineBreaker::append(sf::Uint32 character)
{
    text_.push_back(character);
    const std::size_t index = text_.size() - 1;
    // Blanks after an opening guillemet, or before ; : ! ? or a closing guillemet, hold their
    // neighbours together as no-break spaces would: no line ends with « nor starts with the mark.
    if (character == BLANK && index >= 1 && !afterOpeningGuillemet_)
        blanks_.push_back(index);
    else if (staysWithWordBefore(character))
        for (std::size_t blank = index; !blanks_.empty() && blanks_.back() + 1 == blank; --blank)
            blanks_.pop_back();
    if (character != BLANK)
        afterOpeningGuillemet_ = character == OPENING_GUILLEMET;
    layout_.lay(pen_, character);
    if (character == LINE_FEED)
        closeOpenLine(pen_.extent, index + 1);
}

bool LineBreaker::overflows() const
{
    TextLayout::Extent lines = pen_.extent;
    if (!closedMinX_.empty()) {
        lines.minX = std::min(lines.minX, *closedMinX_.begin());
        lines.maxX = std::max(lines.maxX, *closedMaxX_.rbegin());
    }
    const TextLayout::Extent text = layout_.textExtent(lines);
    // Through the text's own transform, as getGlobalBounds goes; with no rotation the vertical
    // bounds do not change the width.
    const sf::FloatRect local(text.minX, 0.f, text.maxX - text.minX, 0.f);
    return transform_.transformRect(local).width > maxWidth_;
}

void LineBreaker::breakOverflow()
{
    const std::optional<std::size_t> blank = lastBlankBefore(text_.size() - 1);
    if (blank && *blank >= lines_.back().start)
        breakAt(*blank);
    else if (openLineTooWide())
        breakOverlongWord();
    else if (blank)
        breakAt(*blank);
}

std::optional<std::size_t> LineBreaker::lastBlankBefore(std::size_t index) const
{
    // Only the character just added can lie at or after `index`.
    for (auto blank = blanks_.rbegin(); blank != blanks_.rend(); ++blank)
        if (*blank < index)
            return *blank;
    return std::nullopt;
}

void LineBreaker::breakAt(std::size_t blank)
{
    blanks_.erase(std::find(blanks_.rbegin(), blanks_.rend(), blank).base() - 1);
    text_[blank] = LINE_FEED;

    const auto line = std::upper_bound(lines_.begin(), lines_.end(), blank,
                                       [](std::size_t index, const Line& l) { return index < l.start; })
                      - 1;
    const std::size_t start = line->start;
    if (line + 1 == lines_.end()) {
        closeOpenLine(layRange(start, blank + 1).extent, blank + 1);
        pen_ = layRange(blank + 1, text_.size());
        return;
    }

    // A closed line cut in two: the lines after it keep their layout.
    const std::size_t end = (line + 1)->start;
    removeClosed(line->extent);
    line->extent = layRange(start, blank + 1).extent;
    addClosed(line->extent);
    const Line second{blank + 1, layRange(blank + 1, end).extent};
    addClosed(second.extent);
    lines_.insert(line + 1, second);
}

bool LineBreaker::openLineTooWide() const
{
    const TextLayout::Extent own = layout_.textExtent(pen_.extent);
    return own.maxX - own.minX > maxWidth_;
}

void LineBreaker::breakOverlongWord()
{
    const std::size_t last = text_.size() - 1;
    const std::size_t start = lines_.back().start;
    const sf::Uint32 character = text_[last];
    if (character == BLANK) {
        // The word fits but not the blank after it: the blank itself ends the line.
        if (!blanks_.empty() && blanks_.back() == last)
            blanks_.pop_back();
        text_[last] = LINE_FEED;
        closeOpenLine(layRange(start, last + 1).extent, last + 1);
        pen_ = TextLayout::penForLineAt(last + 1);
    } else if (last > start && character != LINE_FEED) {
        text_.insert(text_.begin() + static_cast<std::ptrdiff_t>(last), LINE_FEED);
        closeOpenLine(layRange(start, last + 1).extent, last + 1);
        pen_ = layRange(last + 1, text_.size());
    }
}

TextLayout::Pen LineBreaker::layRange(std::size_t first, std::size_t last)
{
    TextLayout::Pen pen = TextLayout::penForLineAt(first);
    for (std::size_t i = first; i < last; ++i)
        layout_.lay(pen, text_[i]);
    return pen;
}

void LineBreaker::closeOpenLine(const TextLayout::Extent& extent, std::size_t nextStart)
{
    lines_.back().extent = extent;
    addClosed(extent);
    lines_.push_back(Line{nextStart, {}});
    pen_ = TextLayout::penForLineAt(nextStart);
}

void LineBreaker::addClosed(const TextLayout::Extent& extent)
{
    closedMinX_.insert(extent.minX);
    closedMaxX_.insert(extent.maxX);
}

void LineBreaker::removeClosed(const TextLayout::Extent& extent)
{
    closedMinX_.erase(closedMinX_.find(extent.minX));
    closedMaxX_.erase(closedMaxX_.find(extent.maxX));
}

} // namespace

sf::String breakLines(const sf::String& text, sf::Text& writer, float maxWidth)
{
    writer.setRotation(0.f);
    writer.setOrigin(0.f, 0.f);
    if (writer.getFont() == nullptr)
        return text;
    return LineBreaker(writer, maxWidth).run(text);
}

sf::String breakLines(const sf::String& text, const sf::Font& font, unsigned int characterSize, float maxWidth)
{
    sf::Text writer("", font, characterSize);
    return breakLines(text, writer, maxWidth);
}

} // namespace orane
