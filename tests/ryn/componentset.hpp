#pragma once

#include <ryn/core/components.hpp>

namespace ryn::test
{

/// Fills the program's component set with the given components for one test and destroys
/// them afterwards; the others stay null.
class ComponentSet
{
public:
    ComponentSet(FocusManager* focusManager, Graphics* graphics, InputManager* inputManager)
    {
        components().set(nullptr, focusManager, graphics, nullptr, inputManager, nullptr, nullptr, nullptr, nullptr);
    }
    ~ComponentSet() { components().clear(); }
    ComponentSet(const ComponentSet&) = delete;
    ComponentSet& operator=(const ComponentSet&) = delete;
};

} // namespace ryn::test
