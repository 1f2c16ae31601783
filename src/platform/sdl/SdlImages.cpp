// SdlImages: the picture cache, its records of each file's version, and the workers that decode ahead.
#include "platform/sdl/SdlImages.h"

#include "core/AtomicFile.h"
#include "platform/sdl/PictureHeader.h"

#include <SDL_image.h>

#include <malloc.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cmath>

namespace ombrel::platform::sdl {

using runtime::PixelSize;

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

// NOTE: the decoders run beside the loop's thread on a machine that may have two cores; a step of the
// selection must not wait for a decode of a picture four steps ahead. Ten is as far down as a thread
// may go without privilege and still get the time the loop leaves.
constexpr int kDecoderNice = 10;

// Whether no pixel of a 32-bit ARGB picture lets what is below show through.
bool opaquePixels(SDL_Surface* surface)
{
    const Uint32 amask = surface->format->Amask;
    for (int y = 0; y < surface->h; ++y) {
        const auto* row = reinterpret_cast<const Uint32*>(
            static_cast<const Uint8*>(surface->pixels) + static_cast<ptrdiff_t>(y) * surface->pitch);
        for (int x = 0; x < surface->w; ++x)
            if ((row[x] & amask) != amask)
                return false;
    }
    return true;
}

// The picture scaled to size with linear filtering, as the renderer scales a texture; null when the
// scaling fails. The copy keeps the source's blend mode, which says whether it is opaque.
SharedSurface scaledCopy(const SharedSurface& source, PixelSize size)
{
    if (size == PixelSize { source->w, source->h })
        return source;
    SurfacePtr scaled(SDL_CreateRGBSurfaceWithFormat(0, size.w, size.h, 32, source->format->format));
    if (!scaled || SDL_SoftStretchLinear(source.get(), nullptr, scaled.get(), nullptr) != 0)
        return nullptr;
    SDL_BlendMode blend = SDL_BLENDMODE_BLEND;
    SDL_GetSurfaceBlendMode(source.get(), &blend);
    SDL_SetSurfaceBlendMode(scaled.get(), blend);
    return shareSurface(scaled.release());
}

size_t bytesOf(const SharedSurface& surface)
{
    return static_cast<size_t>(surface->pitch) * static_cast<size_t>(surface->h);
}

} // namespace

SdlImages::SdlImages()
    : SdlImages(Limits {}, kDefaultDecoders)
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
        m_wishes.clear();
    }
    m_changed.notify_all();
    for (auto& worker : m_workers)
        worker.join();
}

PixelSize SdlImages::fitInto(PixelSize picture, PixelSize box)
{
    if (picture.w <= 0 || picture.h <= 0 || box.w <= 0 || box.h <= 0)
        return { 0, 0 };
    const double scale
        = std::min(static_cast<double>(box.w) / picture.w, static_cast<double>(box.h) / picture.h);
    const int w = std::clamp(static_cast<int>(std::lround(picture.w * scale)), 1, box.w);
    const int h = std::clamp(static_cast<int>(std::lround(picture.h * scale)), 1, box.h);
    return { w, h };
}

SdlImages::Stamp SdlImages::stampOf(const std::string& path)
{
    // One stat: the painter looks at every picture it paints, each time it paints it.
    Stamp stamp;
    struct stat st = {};
    if (path.empty() || ::stat(path.c_str(), &st) != 0 || !S_ISREG(st.st_mode))
        return stamp;
    stamp.exists = true;
    stamp.modifiedNs = static_cast<int64_t>(st.st_mtim.tv_sec) * 1'000'000'000 + st.st_mtim.tv_nsec;
    stamp.size = static_cast<uintmax_t>(st.st_size);
    return stamp;
}

std::string SdlImages::keyOf(uint64_t version, PixelSize size)
{
    return std::to_string(version) + ':' + std::to_string(size.w) + 'x' + std::to_string(size.h);
}

SdlImages::Decoded SdlImages::decode(const std::string& path, const Stamp& stamp)
{
    if (!stamp.exists)
        return {};
    std::string bytes;
    if (std::string why = readChecked(path, stamp.size, bytes); !why.empty())
        return { nullptr, why };
    {
        std::lock_guard lock(m_mutex);
        ++m_decodes;
    }
    SurfacePtr loaded(IMG_Load_RW(SDL_RWFromConstMem(bytes.data(), static_cast<int>(bytes.size())), 1));
    if (!loaded)
        return {};
    // One pixel format for every picture makes it quick to copy to the screen.
    SurfacePtr converted(SDL_ConvertSurfaceFormat(loaded.get(), SDL_PIXELFORMAT_ARGB8888, 0));
    if (!converted)
        return {};
    // Found out here, off the loop's thread: an opaque picture is copied rather than blended, and one
    // that covers the screen hides all below it, which then need not be painted.
    const bool opaque
        = (loaded->format->Amask == 0 && !SDL_HasColorKey(loaded.get())) || opaquePixels(converted.get());
    SDL_SetSurfaceBlendMode(converted.get(), opaque ? SDL_BLENDMODE_NONE : SDL_BLENDMODE_BLEND);
    return { shareSurface(converted.release()), {} };
}

SdlImages::Record* SdlImages::current(const std::string& path, const Stamp& stamp)
{
    auto it = m_records.find(path);
    if (it == m_records.end() || !(it->second.stamp == stamp))
        return nullptr;
    m_recordLru.splice(m_recordLru.begin(), m_recordLru, it->second.lru);
    return &it->second;
}

SdlImages::Record& SdlImages::remember(const std::string& path, const Stamp& stamp, const Decoded& decoded)
{
    // The surfaces of an older version are no longer found and leave with the least recently used.
    if (auto old = m_records.find(path); old != m_records.end()) {
        m_recordLru.erase(old->second.lru);
        m_records.erase(old);
    }
    while (!m_recordLru.empty() && m_records.size() >= std::max<size_t>(m_limits.maxRecords, 1)) {
        m_records.erase(m_recordLru.back());
        m_recordLru.pop_back();
    }
    m_recordLru.push_front(path);
    Record record;
    record.stamp = stamp;
    record.facts.version = m_nextVersion++;
    record.decodes = decoded.surface != nullptr;
    if (decoded.surface)
        record.facts.size = { decoded.surface->w, decoded.surface->h };
    record.why = decoded.why;
    record.lru = m_recordLru.begin();
    return m_records.emplace(path, std::move(record)).first->second;
}

SharedSurface SdlImages::heldSurface(const std::string& key)
{
    auto it = m_held.find(key);
    if (it == m_held.end())
        return nullptr;
    m_heldLru.splice(m_heldLru.begin(), m_heldLru, it->second.lru);
    return it->second.surface;
}

void SdlImages::hold(const std::string& key, SharedSurface surface)
{
    const size_t bytes = bytesOf(surface);
    // One surface larger than the whole cache is handed out, not kept.
    if (bytes > m_limits.maxBytes || m_held.count(key))
        return;
    m_heldLru.push_front(key);
    m_held.emplace(key, Held { std::move(surface), bytes, m_heldLru.begin() });
    m_bytes += bytes;
    while (m_bytes > m_limits.maxBytes) {
        auto last = m_held.find(m_heldLru.back());
        m_bytes -= last->second.bytes;
        m_held.erase(last);
        m_heldLru.pop_back();
    }
}

void SdlImages::letGo(const std::string& key)
{
    auto it = m_held.find(key);
    if (it == m_held.end())
        return;
    m_bytes -= it->second.bytes;
    m_heldLru.erase(it->second.lru);
    m_held.erase(it);
}

std::string SdlImages::untold(Record& record)
{
    if (record.told || record.why.empty())
        return {};
    record.told = true;
    return record.why;
}

void SdlImages::say(const std::string& path, const std::string& why)
{
    if (!why.empty() && onRefused)
        onRefused(path, why);
}

std::optional<SdlImages::Facts> SdlImages::factsOf(const std::string& path, bool& waited)
{
    const Stamp stamp = stampOf(path);
    std::unique_lock lock(m_mutex);
    Record* record = nullptr;
    for (;;) {
        record = current(path, stamp);
        if (record || !m_decoding.count(path))
            break;
        waited = true;
        m_changed.wait(lock);
    }
    if (!record) {
        // Nobody wished for it in time: decoded here, and the full picture kept for what follows.
        waited = waited || stamp.exists;
        m_decoding.insert(path);
        lock.unlock();
        const Decoded decoded = decode(path, stamp);
        lock.lock();
        m_decoding.erase(path);
        record = &remember(path, stamp, decoded);
        if (decoded.surface)
            hold(keyOf(record->facts.version, record->facts.size), decoded.surface);
        m_changed.notify_all();
    }
    const std::string why = untold(*record);
    const std::optional<Facts> facts = record->decodes ? std::optional<Facts>(record->facts) : std::nullopt;
    lock.unlock();
    say(path, why);
    return facts;
}

std::optional<SdlImages::Facts> SdlImages::facts(const std::string& path)
{
    bool waited = false;
    return factsOf(path, waited);
}

std::optional<PixelSize> SdlImages::probe(const std::string& path)
{
    bool waited = false;
    const auto facts = factsOf(path, waited);
    {
        std::lock_guard lock(m_mutex);
        ++(waited ? m_served.waited : m_served.ready);
    }
    if (!facts)
        return std::nullopt;
    return facts->size;
}

SharedSurface SdlImages::fitted(const std::string& path, PixelSize size)
{
    bool waited = false;
    const auto facts = factsOf(path, waited);
    std::unique_lock lock(m_mutex);
    auto served = [&](SharedSurface surface) {
        ++(waited ? m_served.waited : m_served.ready);
        return surface;
    };
    if (!facts || size.w <= 0 || size.h <= 0)
        return served(nullptr);
    if (size.w > kMaxScaledSide || size.h > kMaxScaledSide)
        size = facts->size;
    const std::string key = keyOf(facts->version, size);
    for (;;) {
        if (SharedSurface surface = heldSurface(key))
            return served(surface);
        if (!m_decoding.count(path))
            break;
        waited = true;
        m_changed.wait(lock);
    }
    waited = true;
    const std::string fullKey = keyOf(facts->version, facts->size);
    SharedSurface full = heldSurface(fullKey);
    m_decoding.insert(path);
    lock.unlock();
    if (!full)
        full = decode(path, stampOf(path)).surface;
    SharedSurface surface = full ? scaledCopy(full, size) : nullptr;
    lock.lock();
    m_decoding.erase(path);
    if (surface) {
        hold(key, surface);
        // As the decoders do, the full picture goes once it is fitted: a flyer at full size takes the
        // room of eight fitted ones, and would push out the pictures wished for the next steps, which
        // the caller's thread would then have to decode itself in turn.
        if (surface != full)
            letGo(fullKey);
    }
    m_changed.notify_all();
    return served(surface);
}

void SdlImages::expect(const std::vector<PictureWish>& wishes)
{
    {
        std::lock_guard lock(m_mutex);
        m_wishes.clear();
        if (m_workers.empty())
            return;
        // The least wanted would push the most wanted out of the cache if all of them did not fit: the
        // wishes are taken while their boxes fill at most half of it.
        size_t bytes = 0;
        for (const PictureWish& wish : wishes) {
            if (wish.path.empty() || wish.box.w <= 0 || wish.box.h <= 0)
                continue;
            bytes += static_cast<size_t>(wish.box.w) * static_cast<size_t>(wish.box.h) * 4;
            if (m_wishes.size() >= m_limits.maxWishes || bytes > m_limits.maxBytes / 2)
                break;
            m_wishes.push_back(wish);
        }
    }
    m_changed.notify_all();
}

void SdlImages::serveWish(const PictureWish& wish)
{
    // The size the picture will be asked for at: as fitted to its box, unless that is past the side
    // scaled ahead at all.
    auto target = [&](PixelSize natural) {
        const PixelSize size = fitInto(natural, wish.box);
        return size.w > kMaxScaledSide || size.h > kMaxScaledSide ? natural : size;
    };
    const Stamp stamp = stampOf(wish.path);
    Facts facts;
    SharedSurface full;
    {
        std::lock_guard lock(m_mutex);
        if (const Record* record = current(wish.path, stamp)) {
            // A picture wished for again is made the most recent, so the newest wishes do not push it out.
            if (!record->decodes || heldSurface(keyOf(record->facts.version, target(record->facts.size))))
                return;
            facts = record->facts;
            full = heldSurface(keyOf(facts.version, facts.size));
        }
    }
    if (!full) {
        const Decoded decoded = decode(wish.path, stamp);
        std::lock_guard lock(m_mutex);
        const Record* record = current(wish.path, stamp);
        if (!record)
            record = &remember(wish.path, stamp, decoded);
        if (!decoded.surface || !record->decodes)
            return;
        facts = record->facts;
        full = decoded.surface;
    }
    // The full picture goes when this returns, unless the cache held it already.
    SharedSurface surface = scaledCopy(full, target(facts.size));
    if (!surface)
        return;
    const std::string key = keyOf(facts.version, { surface->w, surface->h });
    std::lock_guard lock(m_mutex);
    hold(key, std::move(surface));
}

void SdlImages::workerLoop()
{
    // On Linux a thread's own id names it to setpriority; failing leaves it at the loop's priority.
    setpriority(PRIO_PROCESS, static_cast<id_t>(::gettid()), kDecoderNice);
    std::unique_lock lock(m_mutex);
    for (;;) {
        m_changed.wait(lock, [this] { return m_stopping || !m_wishes.empty(); });
        if (m_stopping)
            return;
        PictureWish wish = std::move(m_wishes.front());
        m_wishes.pop_front();
        // Whoever decodes it now also makes what this wish would.
        if (m_decoding.count(wish.path))
            continue;
        m_decoding.insert(wish.path);
        ++m_busyWorkers;
        lock.unlock();
        serveWish(wish);
        lock.lock();
        m_decoding.erase(wish.path);
        --m_busyWorkers;
        m_changed.notify_all();
    }
}

SdlImages::Served SdlImages::served() const
{
    std::lock_guard lock(m_mutex);
    return m_served;
}

int SdlImages::decodeCount() const
{
    std::lock_guard lock(m_mutex);
    return m_decodes;
}

size_t SdlImages::heldBytes() const
{
    std::lock_guard lock(m_mutex);
    return m_bytes;
}

size_t SdlImages::heldCount() const
{
    std::lock_guard lock(m_mutex);
    return m_held.size();
}

void SdlImages::waitIdle()
{
    std::unique_lock lock(m_mutex);
    m_changed.wait(lock, [this] { return m_stopping || (m_wishes.empty() && m_busyWorkers == 0); });
}

void returnPicturesToTheSystem()
{
    mallopt(M_MMAP_THRESHOLD, 256 * 1024);
}

} // namespace ombrel::platform::sdl
