// SdlImages: pictures decoded with SDL_image, kept in a bounded cache and decoded ahead on workers.
#pragma once

#include "platform/Images.h"
#include "platform/sdl/SdlHandles.h"

#include <condition_variable>
#include <cstddef>
#include <deque>
#include <filesystem>
#include <functional>
#include <list>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <unordered_map>
#include <vector>

namespace ombrel::platform::sdl {

// Decoded pictures by path, least recently used ones dropped past a size or a count. Every file is
// read once into memory and its header checked before it is decoded: a picture that claims more
// pixels than PictureHeader's bounds, or whose header is not one of the four formats, is refused
// without allocating its pixels, and said once through onRefused. A file that
// cannot be decoded is remembered as such until it changes on disk, so a missing snap costs one
// failed decode, not one per step of the selection. prefetch() queues a decode for the worker
// threads; probe() and picture() decode at once on the calling thread unless a worker is already at
// it. Safe to use from any thread.
class SdlImages final : public Images
{
public:
    struct Limits
    {
        size_t maxBytes = size_t { 256 } * 1024 * 1024;
        size_t maxEntries = 400;
        size_t maxQueued = 64; // older prefetch requests are dropped beyond this
    };

    SdlImages();
    explicit SdlImages(Limits limits, int workers = 2);
    ~SdlImages() override;
    SdlImages(const SdlImages&) = delete;
    SdlImages& operator=(const SdlImages&) = delete;

    std::optional<runtime::PixelSize> probe(const std::string& path) override;
    void prefetch(const std::string& path) override;

    // Called with the path and the reason when a picture is refused before decoding. NOTE: it runs on
    // the decoding thread, a prefetch worker included; set it before the first picture is asked for.
    std::function<void(const std::string& path, const std::string& why)> onRefused;

    // The decoded picture (32-bit ARGB), or null when the file cannot be decoded.
    SharedSurface picture(const std::string& path);

    // For tests: how many files were handed to the decoder so far (a refused one is not), and how many
    // pictures the cache holds.
    int decodeCount() const;
    size_t cachedCount() const;
    // For tests: returns once the prefetch queue is empty and no worker is decoding.
    void waitIdle();

private:
    // What identifies one version of a file: a change of either means the file was replaced.
    struct Stamp
    {
        bool exists = false;
        std::filesystem::file_time_type modified {};
        uintmax_t size = 0;
        bool operator==(const Stamp&) const = default;
    };
    struct Entry
    {
        bool decoding = true;
        Stamp stamp;
        SharedSurface surface; // null: the file could not be decoded
        size_t bytes = 0;
        std::list<std::string>::iterator lru;
    };

    static Stamp stampOf(const std::string& path);
    SharedSurface decode(const std::string& path, const Stamp& stamp);
    // Under the lock: the fresh entry for path, waiting for a decode in flight; false when the
    // caller must decode (an entry marked decoding was then made for it).
    bool lookup(
        std::unique_lock<std::mutex>& lock, const std::string& path, const Stamp& stamp, SharedSurface& out);
    void store(const std::string& path, const Stamp& stamp, SharedSurface surface);
    void touch(Entry& entry);
    void evict();
    void workerLoop();

    Limits m_limits;
    mutable std::mutex m_mutex;
    std::condition_variable m_changed; // an entry finished decoding, or the queue changed
    std::unordered_map<std::string, Entry> m_entries;
    std::list<std::string> m_lru; // most recent first
    size_t m_bytes = 0;
    std::deque<std::string> m_queue;
    int m_busyWorkers = 0;
    int m_decodes = 0;
    bool m_stopping = false;
    std::vector<std::thread> m_workers;
};

} // namespace ombrel::platform::sdl
