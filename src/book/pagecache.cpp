#include "book/pagecache.hpp"

#include <algorithm>

namespace orane
{

const sf::BlendMode PageCache::PREMULTIPLIED_ALPHA(sf::BlendMode::One, sf::BlendMode::OneMinusSrcAlpha);

bool PageCache::Key::operator==(const Key& other) const
{
    return page == other.page && leftPage == other.leftPage && bloody == other.bloody && revision == other.revision;
}

PageCache::PageCache(std::size_t capacity)
    : capacity_(std::max<std::size_t>(capacity, 1))
{}

const sf::Texture* PageCache::get(const Key& key, sf::Vector2u size, bool smooth, const Compose& compose)
{
    ++uses_;
    if (Entry* kept = find(key)) {
        kept->lastUse = uses_;
        kept->texture->setSmooth(smooth);
        return &kept->texture->getTexture();
    }
    Entry* entry = makeRoom(size);
    if (entry == nullptr)
        return nullptr;
    entry->key = key;
    entry->lastUse = uses_;
    sf::RenderTexture& texture = *entry->texture;
    texture.clear(sf::Color::Transparent);
    compose(texture);
    texture.display();
    texture.setSmooth(smooth);
    return &texture.getTexture();
}

PageCache::Entry* PageCache::find(const Key& key)
{
    for (Entry& entry : entries_)
        if (entry.key == key && entry.texture)
            return &entry;
    return nullptr;
}

PageCache::Entry* PageCache::makeRoom(sf::Vector2u size)
{
    if (entries_.size() < capacity_)
        entries_.emplace_back();
    Entry* entry = &*std::min_element(entries_.begin(), entries_.end(),
                                      [](const Entry& a, const Entry& b) { return a.lastUse < b.lastUse; });
    if (!entry->texture || entry->texture->getSize() != size) {
        auto texture = std::make_unique<sf::RenderTexture>();
        if (!texture->create(size.x, size.y)) {
            entry->texture.reset();
            return nullptr;
        }
        entry->texture = std::move(texture);
    }
    return entry;
}

} // namespace orane
