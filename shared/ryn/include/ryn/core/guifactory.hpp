#pragma once

namespace ryn
{

/// The component that makes widgets. The engine's has nothing to make; a game derives it to
/// add the widget-making operations its states call.
class GuiFactory
{
public:
    virtual ~GuiFactory() = default;
};

} // namespace ryn
