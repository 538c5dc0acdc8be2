#include "previewoverlay.hpp"

#include <ryn/gui/shapeshifterpushbuttonnode.hpp>

#include <SFML/Graphics/RectangleShape.hpp>
#include <SFML/Graphics/Text.hpp>

#include <memory>

namespace orane
{
namespace
{

constexpr unsigned CHARACTER_SIZE = 17;
constexpr float LINE_HEIGHT = 22.f;
constexpr float PADDING = 12.f;
constexpr float TOP = 8.f;
/// The height a button takes under the lines, with a gap above and below it.
constexpr float BUTTON_ROOM = 46.f;
const sf::Color PANEL_FILL(24, 20, 18, 225);
const sf::Color PANEL_FRAME(200, 80, 60);
const sf::Color HEADING_INK(255, 200, 120);
const sf::Color LINE_INK(240, 236, 228);
const sf::Color BUTTON_FILL(255, 255, 255, 30);

/// Cuts a UTF-8 line into pieces of at most `columns` code points, after a blank where there is
/// one; the pieces after the first are indented.
std::vector<std::string> wrap(const std::string& line, std::size_t columns)
{
    constexpr std::size_t INDENT = 4;
    std::vector<std::string> pieces;
    std::string rest = line;
    std::size_t width = columns;
    for (;;) {
        // Byte offsets of the code points, to cut between them.
        std::vector<std::size_t> starts;
        for (std::size_t index = 0; index < rest.size(); ++index) {
            if ((static_cast<unsigned char>(rest[index]) & 0xC0) != 0x80)
                starts.push_back(index);
        }
        if (starts.size() <= width || width == 0) {
            pieces.push_back(std::string(pieces.empty() ? 0 : INDENT, ' ') + rest);
            return pieces;
        }
        std::size_t cut = starts[width];
        const std::size_t blank = rest.rfind(' ', cut);
        if (blank != std::string::npos && blank > cut / 2)
            cut = blank + 1;
        pieces.push_back(std::string(pieces.empty() ? 0 : INDENT, ' ') + rest.substr(0, cut));
        rest = rest.substr(cut);
        width = columns > INDENT ? columns - INDENT : columns;
    }
}

} // namespace

PreviewOverlay::PreviewOverlay(const sf::Font& font)
    : font_(font)
{}

void PreviewOverlay::setLines(const std::string& heading, const std::vector<std::string>& lines)
{
    // Monospaced: one advance is every glyph's.
    const float advance = font_.getGlyph(U'M', CHARACTER_SIZE, false).advance;
    const auto columns = static_cast<std::size_t>((PANEL_WIDTH - 2.f * PADDING) / (advance > 0.f ? advance : 10.f));
    std::vector<std::string> body;
    for (const std::string& line : lines) {
        for (std::string& piece : wrap(line, columns))
            body.push_back(std::move(piece));
    }
    lines_ = wrap(heading, columns);
    const std::size_t room = MOST_LINES > lines_.size() ? MOST_LINES - lines_.size() : 1;
    if (body.size() <= room) {
        lines_.insert(lines_.end(), body.begin(), body.end());
        return;
    }
    lines_.insert(lines_.end(), body.begin(), body.begin() + static_cast<std::ptrdiff_t>(room - 1));
    lines_.push_back("... " + std::to_string(body.size() - (room - 1)) + " more lines in the terminal");
}

void PreviewOverlay::showFaults(const std::string& heading, const std::vector<std::string>& lines)
{
    setLines(heading, lines);
    sceneGraph_.clear();
    button_ = nullptr;
}

void PreviewOverlay::showNotice(const std::string& message, const std::string& buttonLabel,
                                std::function<void()> onClick)
{
    setLines(message, {});
    sceneGraph_.clear();
    auto node = std::make_unique<ryn::ShapeShifterPushButtonNode>(
        &sceneGraph_.root(), ryn::ShapeShifter::TEXT | ryn::ShapeShifter::SHAPE, ryn::ShapeShifter::RECTANGLE);
    button_ = static_cast<ryn::ShapeShifterPushButtonNode*>(sceneGraph_.root().attachChild(std::move(node)));
    button_->text()->setFont(font_);
    button_->text()->setCharacterSize(CHARACTER_SIZE);
    button_->text()->setFillColor(LINE_INK);
    button_->setMode(ryn::ShapeShifter::FIT_SHAPE);
    button_->setTextAlignment(ryn::ShapeShifter::Alignment::LEFT);
    button_->setAlignment(ryn::ShapeShifter::Alignment::LEFT);
    button_->setMargin(10.f, 6.f);
    button_->shape()->setOutlineColor(LINE_INK);
    button_->shape()->setOutlineThickness(1.f);
    button_->shape()->setFillColor(BUTTON_FILL);
    button_->setString(buttonLabel);
    // The label is centred on the button's origin: half a button below the last line.
    button_->setPosition(PADDING + PADDING,
                         TOP + PADDING + LINE_HEIGHT * static_cast<float>(lines_.size()) + BUTTON_ROOM / 2.f);
    button_->setCallback(std::move(onClick));
}

void PreviewOverlay::clear()
{
    lines_.clear();
    sceneGraph_.clear();
    button_ = nullptr;
}

void PreviewOverlay::handlePointer(sf::Vector2f pointer, bool pressed, bool released)
{
    if (button_ == nullptr)
        return;
    sceneGraph_.updateHover(pointer);
    if (pressed)
        sceneGraph_.touchDown(pointer);
    if (released)
        sceneGraph_.touchUp(pointer);
}

float PreviewOverlay::panelHeight() const
{
    // The button's room holds its own gap to the frame.
    const float below = button_ != nullptr ? BUTTON_ROOM : PADDING;
    return PADDING + LINE_HEIGHT * static_cast<float>(lines_.size()) + below;
}

void PreviewOverlay::draw(sf::RenderTarget& target) const
{
    if (lines_.empty())
        return;
    const float left = (1600.f - PANEL_WIDTH) / 2.f;
    sf::RectangleShape panel(sf::Vector2f(PANEL_WIDTH, panelHeight()));
    panel.setPosition(left, TOP);
    panel.setFillColor(PANEL_FILL);
    panel.setOutlineColor(PANEL_FRAME);
    panel.setOutlineThickness(1.f);
    target.draw(panel);

    sf::Text text;
    text.setFont(font_);
    text.setCharacterSize(CHARACTER_SIZE);
    for (std::size_t index = 0; index < lines_.size(); ++index) {
        text.setString(sf::String::fromUtf8(lines_[index].begin(), lines_[index].end()));
        text.setFillColor(index == 0 ? HEADING_INK : LINE_INK);
        text.setPosition(left + PADDING, TOP + PADDING + LINE_HEIGHT * static_cast<float>(index));
        target.draw(text);
    }
    target.draw(sceneGraph_);
}

} // namespace orane
