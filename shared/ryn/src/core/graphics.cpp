#include "ryn/core/graphics.hpp"

#include "ryn/core/windowlistener.hpp"

#include <algorithm>

namespace ryn
{

Graphics::Graphics() = default;

Graphics::~Graphics() = default;

sf::RenderWindow* Graphics::window() const
{
    return window_.get();
}

bool Graphics::create(std::string title)
{
    title_ = std::move(title);
    window_ = std::make_unique<sf::RenderWindow>();
    createWindow(800, 600);
    return window_ != nullptr;
}

bool Graphics::isOpen() const
{
    return window_ && window_->isOpen();
}

void Graphics::resize(unsigned width, unsigned height)
{
    const sf::FloatRect visible(0.f, 0.f, static_cast<float>(width), static_cast<float>(height));
    window_->setView(sf::View(visible));
}

void Graphics::createWindow(unsigned width, unsigned height)
{
    openWindow(width, height, sf::Style::Default);
}

void Graphics::addWindowListener(WindowListener* listener)
{
    if (std::find(listeners_.begin(), listeners_.end(), listener) == listeners_.end())
        listeners_.push_back(listener);
}

void Graphics::removeWindowListener(WindowListener* listener)
{
    listeners_.erase(std::remove(listeners_.begin(), listeners_.end(), listener), listeners_.end());
}

bool Graphics::pollEvent(sf::Event& event)
{
    return window_ && window_->pollEvent(event);
}

void Graphics::setFramerateLimit(unsigned limit)
{
    framerateLimit_ = limit;
    if (window_)
        window_->setFramerateLimit(limit);
}

void Graphics::openWindow(unsigned width, unsigned height, sf::Uint32 style)
{
    // UTF-8 decoded directly: the global locale's conversion would drop accented letters.
    const sf::String title = sf::String::fromUtf8(title_.begin(), title_.end());
    window_->create(sf::VideoMode(width, height, 32), title, style, sf::ContextSettings());
    window_->setFramerateLimit(framerateLimit_);
    for (WindowListener* listener : listeners_)
        listener->windowCreated(window_.get());
}

} // namespace ryn
