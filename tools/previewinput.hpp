#pragma once

#include "oraneinputprocessor.hpp"

namespace orane
{

/// The game's input with the preview's keys: F5 "reload", Backspace "back", Home "restart",
/// F12 "screenshot".
class PreviewInput : public OraneInputProcessor
{
public:
    static const char* const BUTTON_IDS[4];

    /// The preview's button bound to `key`, or an empty string.
    [[nodiscard]] static std::string previewButtonOf(sf::Keyboard::Key key);

private:
    [[nodiscard]] std::string boundButtonId(sf::Keyboard::Key key) const override;
};

} // namespace orane
