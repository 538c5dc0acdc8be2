#pragma once

namespace ryn
{

class StateManager;

/// One screen of a game, updated in fixed steps and drawn once per frame.
class AbstractState
{
public:
    /// `owner` is kept for derived states; the engine never reads it.
    explicit AbstractState(StateManager* owner);
    virtual ~AbstractState() = default;
    AbstractState(const AbstractState&) = delete;
    AbstractState& operator=(const AbstractState&) = delete;

    virtual bool spareQuery() = 0;
    /// Called once per drawn frame between clearing and displaying the window: `frameTime` is
    /// the real time of the loop pass, `interpolation` the part of the next update step that
    /// has already elapsed (normally in [0, 1)).
    virtual void draw(float frameTime, float interpolation) = 0;
    /// Called once, right after the state is created; false stops the start-up.
    [[nodiscard]] virtual bool init() = 0;
    virtual void resetTime();
    virtual void spareAction() = 0;
    /// Calls `layout()`.
    virtual void updateLayout();
    /// One fixed step of `dt` seconds; the engine's version adds it to the elapsed time.
    virtual void update(float dt);
    /// Places the state's widgets for the current window size.
    virtual void layout() = 0;
    /// Whether the next frame would differ from the last one shown. When it answers false the
    /// main loop neither clears, draws nor displays, so a screen at rest costs no rendering.
    [[nodiscard]] virtual bool needsRedraw() const { return true; }

    /// Sum of the steps given to `update` since construction or `resetTime`.
    [[nodiscard]] float elapsed() const { return elapsed_; }

protected:
    StateManager* owner_ = nullptr;
    float elapsed_ = 0.f;
};

} // namespace ryn
