#include <ryn/gui/scenegraph.hpp>

#include <SFML/Graphics/RenderTarget.hpp>

namespace ryn
{

SceneGraph::~SceneGraph()
{
    root_.detachAllChildren();
}

void SceneGraph::updateHover(sf::Vector2f point)
{
    root_.updateHover(point);
}

bool SceneGraph::touchDown(sf::Vector2f point)
{
    return root_.touchDown(point);
}

bool SceneGraph::touchUp(sf::Vector2f point)
{
    return root_.touchUp(point);
}

void SceneGraph::update(float dt)
{
    root_.update(dt);
}

void SceneGraph::clear()
{
    root_.detachAllChildren();
}

void SceneGraph::draw(sf::RenderTarget& target, sf::RenderStates states) const
{
    root_.draw(target, states);
}

} // namespace ryn
