#include <ryn/core/desktop.hpp>
#include <ryn/core/graphics.hpp>
#include <ryn/core/letterbox.hpp>
#include <ryn/core/windowlistener.hpp>

#include <SFML/Graphics/Sprite.hpp>

#include <algorithm>
#include <cmath>

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
    if (scaled_ && !canvas_) {
        applyScaledView();
        return;
    }
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

sf::RenderTarget& Graphics::target()
{
    if (canvas_)
        return *canvas_;
    return *window_;
}

void Graphics::display()
{
    if (!canvas_) {
        window_->display();
        return;
    }
    canvas_->display();
    const sf::FloatRect area = pictureArea();
    sf::Sprite picture(canvas_->getTexture());
    // On whole pixels: a fractional offset would blur the whole frame once more.
    picture.setPosition(std::round(area.left), std::round(area.top));
    picture.setScale(area.width / static_cast<float>(drawingSize_.x), area.height / static_cast<float>(drawingSize_.y));
    window_->clear(sf::Color::Black);
    window_->draw(picture, sf::BlendNone);
    window_->display();
}

sf::Vector2f Graphics::mapPixelToTarget(sf::Vector2i pixel) const
{
    if (!scaled_)
        return {static_cast<float>(pixel.x), static_cast<float>(pixel.y)};
    if (!canvas_)
        return window_->mapPixelToCoords(pixel);
    return Letterbox(drawingSize_, window_->getSize()).toPicture(pixel);
}

sf::IntRect Graphics::workArea() const
{
    return Desktop::workArea();
}

void Graphics::openWindow(unsigned width, unsigned height, sf::Uint32 style)
{
    // UTF-8 decoded directly: the global locale's conversion would drop accented letters.
    const sf::String title = sf::String::fromUtf8(title_.begin(), title_.end());
    // Measured on the window open now, before it closes: a new window is not framed yet.
    const FrameExtents frame = Desktop::frameExtents(*window_);
    const sf::IntRect work = workArea();
    const sf::Vector2u asked(width, height);
    sf::Vector2u size = asked;
    if (work.width > 0 && work.height > 0) {
        const int roomWidth = std::max(work.width - frame.left - frame.right, 1);
        const int roomHeight = std::max(work.height - frame.top - frame.bottom, 1);
        size = Letterbox::fit(asked, sf::Vector2u(static_cast<unsigned>(roomWidth), static_cast<unsigned>(roomHeight)));
    }
    drawingSize_ = asked;
    scaled_ = size != asked;
    canvas_.reset();

    window_->create(sf::VideoMode(size.x, size.y, 32), title, style, sf::ContextSettings());
    window_->setFramerateLimit(framerateLimit_);
    if (scaled_) {
        // Decorations included, the window is centred in the work area.
        const int outerWidth = static_cast<int>(size.x) + frame.left + frame.right;
        const int outerHeight = static_cast<int>(size.y) + frame.top + frame.bottom;
        window_->setPosition(sf::Vector2i(work.left + std::max((work.width - outerWidth) / 2, 0),
                                          work.top + std::max((work.height - outerHeight) / 2, 0)));
        canvas_ = std::make_unique<sf::RenderTexture>();
        if (canvas_->create(width, height)) {
            canvas_->setSmooth(true);
        } else {
            // Still playable, drawn straight into the window through a scaled view; shaders that
            // work in window pixels are then off.
            canvas_.reset();
            applyScaledView();
        }
    }
    for (WindowListener* listener : listeners_)
        listener->windowCreated(window_.get());
}

sf::FloatRect Graphics::pictureArea() const
{
    return Letterbox(drawingSize_, window_->getSize()).area();
}

void Graphics::applyScaledView()
{
    sf::View view(sf::FloatRect(0.f, 0.f, static_cast<float>(drawingSize_.x), static_cast<float>(drawingSize_.y)));
    const sf::FloatRect area = pictureArea();
    const sf::Vector2f window(window_->getSize());
    view.setViewport(
        sf::FloatRect(area.left / window.x, area.top / window.y, area.width / window.x, area.height / window.y));
    window_->setView(view);
}

} // namespace ryn
