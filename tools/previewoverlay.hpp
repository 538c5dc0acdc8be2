#pragma once

#include <ryn/gui/scenegraph.hpp>

#include <SFML/Graphics/Font.hpp>
#include <SFML/Graphics/RenderTarget.hpp>

#include <functional>
#include <string>
#include <vector>

namespace ryn
{
class ShapeShifterPushButtonNode;
}

namespace orane
{

/// What the preview tells the author over the desk, above the notebook and leaving it playable:
/// the faults of the last save, or that the scene in view is gone, with a button to "begin".
/// Shows one of the two, or nothing.
class PreviewOverlay
{
public:
    /// Widest the panel is on the game's 1600-pixel canvas; lines longer than that wrap.
    static constexpr float PANEL_WIDTH = 1568.f;
    /// More lines than this are cut, with a last line saying how many more the terminal has.
    static constexpr std::size_t MOST_LINES = 24;

    /// `font` is monospaced and outlives the overlay.
    explicit PreviewOverlay(const sf::Font& font);

    /// `heading` then `lines`, as the game prints them.
    void showFaults(const std::string& heading, const std::vector<std::string>& lines);
    /// `message`, and a button labelled `buttonLabel` that calls `onClick`, which must not change
    /// the overlay (the button is inside its own callback): it should only note the click.
    void showNotice(const std::string& message, const std::string& buttonLabel, std::function<void()> onClick);
    void clear();

    [[nodiscard]] bool isEmpty() const { return lines_.empty(); }
    /// Every line of the panel, after wrapping (for tests).
    [[nodiscard]] const std::vector<std::string>& lines() const { return lines_; }

    /// The pointer and the "touch" edges of one update step, for the button.
    void handlePointer(sf::Vector2f pointer, bool pressed, bool released);
    void draw(sf::RenderTarget& target) const;

private:
    void setLines(const std::string& heading, const std::vector<std::string>& lines);
    [[nodiscard]] float panelHeight() const;

    const sf::Font& font_;
    std::vector<std::string> lines_;
    ryn::SceneGraph sceneGraph_;
    ryn::ShapeShifterPushButtonNode* button_ = nullptr;
};

} // namespace orane
