// SdlImages: the picture cache, its staleness check and the prefetch workers.
#include "platform/sdl/SdlImages.h"

#include "core/AtomicFile.h"
#include "platform/sdl/PictureHeader.h"

#include <SDL_image.h>

#include <algorithm>

namespace ombrel::platform::sdl {

SdlImages::SdlImages()
    : SdlImages(Limits {}, 2)
{
}

SdlImages::SdlImages(Limits limits, int workers)
    : m_limits(limits)
{
    // NOTE: SDL_image sets up its decoders on first use without a lock; doing it here, before any
    // worker starts, keeps the workers from racing on it.
    IMG_Init(IMG_INIT_PNG | IMG_INIT_JPG);
    for (int i = 0; i < std::max(workers, 0); ++i)
        m_workers.emplace_back([this] { workerLoop(); });
}

SdlImages::~SdlImages()
{
    {
        std::lock_guard lock(m_mutex);
        m_stopping = true;
        m_queue.clear();
    }
    m_changed.notify_all();
    for (auto& worker : m_workers)
        worker.join();
}

SdlImages::Stamp SdlImages::stampOf(const std::string& path)
{
    Stamp stamp;
    std::error_code ec;
    std::filesystem::path p(path);
    if (path.empty() || !std::filesystem::is_regular_file(p, ec))
        return stamp;
    stamp.modified = std::filesystem::last_write_time(p, ec);
    if (ec)
        return stamp;
    stamp.size = std::filesystem::file_size(p, ec);
    if (ec)
        return stamp;
    stamp.exists = true;
    return stamp;
}

namespace {

    // The file's bytes, or why the picture is not decoded. The header's claim is checked before the
    // decoder sees the file, so a tiny file claiming a giant picture costs its few bytes.
    std::string readChecked(const std::string& path, uintmax_t size, std::string& bytes)
    {
        if (size > static_cast<uintmax_t>(kMaxPictureFileBytes))
            return "the file is larger than " + std::to_string(kMaxPictureFileBytes >> 20) + " MB";
        if (!core::readFile(path, bytes))
            return "the file cannot be read";
        auto checked = checkPicture(bytes);
        if (auto* refusal = std::get_if<PictureRefusal>(&checked))
            return refusal->why;
        return std::string();
    }

} // namespace

SharedSurface SdlImages::decode(const std::string& path, const Stamp& stamp)
{
    std::string bytes;
    if (std::string why = readChecked(path, stamp.size, bytes); !why.empty()) {
        if (onRefused)
            onRefused(path, why);
        return nullptr;
    }
    {
        std::lock_guard lock(m_mutex);
        ++m_decodes;
    }
    SurfacePtr loaded(IMG_Load_RW(SDL_RWFromConstMem(bytes.data(), static_cast<int>(bytes.size())), 1));
    if (!loaded)
        return nullptr;
    // One pixel format for every picture makes textures quick to build on the loop's thread.
    SurfacePtr converted(SDL_ConvertSurfaceFormat(loaded.get(), SDL_PIXELFORMAT_ARGB8888, 0));
    if (!converted)
        return nullptr;
    return shareSurface(converted.release());
}

bool SdlImages::lookup(
    std::unique_lock<std::mutex>& lock, const std::string& path, const Stamp& stamp, SharedSurface& out)
{
    for (;;) {
        auto it = m_entries.find(path);
        if (it == m_entries.end())
            break;
        Entry& entry = it->second;
        if (entry.decoding) {
            m_changed.wait(lock);
            continue;
        }
        if (entry.stamp == stamp) {
            touch(entry);
            out = entry.surface;
            return true;
        }
        // The file changed on disk since it was decoded.
        m_bytes -= entry.bytes;
        m_lru.erase(entry.lru);
        m_entries.erase(it);
        break;
    }
    m_lru.push_front(path);
    Entry fresh;
    fresh.stamp = stamp;
    fresh.lru = m_lru.begin();
    m_entries.emplace(path, std::move(fresh));
    return false;
}

void SdlImages::store(const std::string& path, const Stamp& stamp, SharedSurface surface)
{
    auto it = m_entries.find(path);
    if (it != m_entries.end()) {
        Entry& entry = it->second;
        entry.decoding = false;
        entry.stamp = stamp;
        entry.bytes = surface ? static_cast<size_t>(surface->pitch) * static_cast<size_t>(surface->h) : 0;
        entry.surface = std::move(surface);
        m_bytes += entry.bytes;
        touch(entry);
        evict();
    }
    m_changed.notify_all();
}

void SdlImages::touch(Entry& entry)
{
    m_lru.splice(m_lru.begin(), m_lru, entry.lru);
}

void SdlImages::evict()
{
    // The newest entry always stays, even when it alone is over the limit.
    auto it = m_lru.end();
    while ((m_bytes > m_limits.maxBytes || m_entries.size() > m_limits.maxEntries) && it != m_lru.begin()) {
        --it;
        if (it == m_lru.begin())
            break;
        auto found = m_entries.find(*it);
        if (found == m_entries.end() || found->second.decoding)
            continue;
        m_bytes -= found->second.bytes;
        m_entries.erase(found);
        it = m_lru.erase(it);
    }
}

SharedSurface SdlImages::picture(const std::string& path)
{
    const Stamp stamp = stampOf(path);
    std::unique_lock lock(m_mutex);
    SharedSurface surface;
    if (lookup(lock, path, stamp, surface))
        return surface;
    lock.unlock();
    surface = stamp.exists ? decode(path, stamp) : nullptr;
    lock.lock();
    store(path, stamp, surface);
    return surface;
}

std::optional<runtime::PixelSize> SdlImages::probe(const std::string& path)
{
    SharedSurface surface = picture(path);
    if (!surface)
        return std::nullopt;
    return runtime::PixelSize { surface->w, surface->h };
}

void SdlImages::prefetch(const std::string& path)
{
    if (m_workers.empty() || path.empty())
        return;
    {
        std::lock_guard lock(m_mutex);
        if (m_entries.count(path) || std::find(m_queue.begin(), m_queue.end(), path) != m_queue.end())
            return;
        m_queue.push_back(path);
        while (m_queue.size() > std::max<size_t>(m_limits.maxQueued, 1))
            m_queue.pop_front();
    }
    m_changed.notify_all();
}

void SdlImages::workerLoop()
{
    std::unique_lock lock(m_mutex);
    for (;;) {
        m_changed.wait(lock, [this] { return m_stopping || !m_queue.empty(); });
        if (m_stopping)
            return;
        std::string path = std::move(m_queue.front());
        m_queue.pop_front();
        ++m_busyWorkers;
        lock.unlock();
        const Stamp stamp = stampOf(path);
        lock.lock();
        SharedSurface surface;
        if (!lookup(lock, path, stamp, surface)) {
            lock.unlock();
            surface = stamp.exists ? decode(path, stamp) : nullptr;
            lock.lock();
            store(path, stamp, std::move(surface));
        }
        --m_busyWorkers;
        m_changed.notify_all();
    }
}

int SdlImages::decodeCount() const
{
    std::lock_guard lock(m_mutex);
    return m_decodes;
}

size_t SdlImages::cachedCount() const
{
    std::lock_guard lock(m_mutex);
    return m_entries.size();
}

void SdlImages::waitIdle()
{
    std::unique_lock lock(m_mutex);
    m_changed.wait(lock, [this] { return m_stopping || (m_queue.empty() && m_busyWorkers == 0); });
}

} // namespace ombrel::platform::sdl
