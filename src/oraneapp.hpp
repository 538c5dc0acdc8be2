#pragma once

#include <ryn/core/application.hpp>

namespace orane
{

/// The game's application: its components, its button ids and its final 1600 x 900 window.
class OraneApp : public ryn::Application
{
public:
    /// Every id the game's input can emit, in registration order. "debug" (Tab) and
    /// "alttouch" (right button) are read by nobody, but registered so that they stay silent.
    static const char* const BUTTON_IDS[10];
    static constexpr unsigned WINDOW_WIDTH = 1600;
    static constexpr unsigned WINDOW_HEIGHT = 900;
    static constexpr unsigned FRAMERATE_LIMIT = 60;

    /// The engine's start-up (which loads the story while the window is 800 x 600), then the
    /// button ids, the frame-rate limit and the window at its final size.
    [[nodiscard]] bool init() override;
    [[nodiscard]] bool createComponents() override;
};

} // namespace orane
