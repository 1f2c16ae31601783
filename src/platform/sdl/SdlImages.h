// SdlImages: pictures decoded with SDL_image, fitted to where they are shown, kept in a cache bounded in
// bytes and decoded ahead of the selection on worker threads.
#pragma once

#include "platform/Images.h"
#include "platform/sdl/SdlHandles.h"

#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <list>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace ombrel::platform::sdl {

// The picture cache. For each version of a file (its path, size and modification time) it keeps a small
// record: whether it decodes, its natural size and why it was refused; so probe() answers without
// pixels. Pixels are kept only at the sizes they are shown at: expect() has the workers decode each
// wished picture and scale it to its box, and the full-size picture is dropped once that is done; a
// full-size decode the caller's thread had to make itself stays until it is fitted. Every surface held
// counts in one bound in bytes; the least recently used go first.
//
// Every file is read once into memory and its header checked before it is decoded: a picture that
// claims more pixels than PictureHeader's bounds, or whose header is not one of the four formats, is
// refused without allocating its pixels. A refusal is said through onRefused on the caller's thread,
// once per version of the file, when the caller first asks for that picture: so what is said, and when,
// does not depend on which thread found it first. Safe to use from any thread.
class SdlImages final : public Images
{
public:
    static constexpr int kDefaultDecoders = 2;
    struct Limits
    {
        // NOTE: sized for a 1 GB cabinet PC running nothing else but the front end and a game: four
        // panels at 1920x1080 take about 4 MB of fitted pictures a step, so this holds the pictures of a
        // dozen steps around the selection, and the program stays about 90 MB in all.
        // Beside it the painter keeps up to 24 MB of the pictures it showed last (its
        // kDefaultMaxPictureBytes): mostly these same pixels, never a copy of them.
        size_t maxBytes = size_t { 48 } * 1024 * 1024;
        // Records are a hundred bytes or so; this is one for each game of a full list and more.
        size_t maxRecords = 8192;
        // Wishes past this many, or past those whose boxes fill half of maxBytes, are ignored.
        size_t maxWishes = 64;
    };
    // What the cache knows of one version of a picture file.
    struct Facts
    {
        uint64_t version = 0; // a new number whenever the file is seen to change
        runtime::PixelSize size; // the picture's own size
    };

    SdlImages();
    // workers: decoder threads; 0 decodes everything on the caller's thread when it is needed.
    explicit SdlImages(Limits limits, int workers = kDefaultDecoders);
    ~SdlImages() override;
    SdlImages(const SdlImages&) = delete;
    SdlImages& operator=(const SdlImages&) = delete;

    std::optional<runtime::PixelSize> probe(const std::string& path) override;
    void expect(const std::vector<PictureWish>& wishes) override;
    Served served() const override;

    // Called with the path and the reason when a picture is refused before decoding, on the thread that
    // asked for it. Set it before the first picture is asked for.
    std::function<void(const std::string& path, const std::string& why)> onRefused;

    // The facts of the picture as the file stands, decoding it (or waiting for a worker at it) when they
    // are not known yet; nullopt when the file cannot be shown. Not counted in served().
    std::optional<Facts> facts(const std::string& path);
    // The picture scaled to size (32-bit ARGB), or null when the file cannot be shown. A size larger
    // than kMaxScaledSide gives the picture at its own size, for the renderer to scale. Its blend mode
    // is SDL_BLENDMODE_NONE when every pixel is opaque, else SDL_BLENDMODE_BLEND. The surface is
    // shared with the decoders: read it, never change it (blit from a surface over its pixels).
    SharedSurface fitted(const std::string& path, runtime::PixelSize size);

    // The size a picture of size picture takes when fitted into box, proportions kept.
    static runtime::PixelSize fitInto(runtime::PixelSize picture, runtime::PixelSize box);
    static constexpr int kMaxScaledSide = 8192;

    // For tests: how many files were handed to the decoder so far (a refused one is not), the bytes
    // and the surfaces held, and a wait until no wish is left and no worker is decoding.
    int decodeCount() const;
    size_t heldBytes() const;
    size_t heldCount() const;
    void waitIdle();

private:
    // What identifies one version of a file: a change of either means the file was replaced.
    struct Stamp
    {
        bool exists = false;
        int64_t modifiedNs = 0;
        uintmax_t size = 0;
        bool operator==(const Stamp&) const = default;
    };
    struct Record
    {
        Stamp stamp;
        Facts facts;
        bool decodes = false;
        std::string why; // a refusal not yet said when not empty and not told
        bool told = false;
        std::list<std::string>::iterator lru;
    };
    struct Held
    {
        SharedSurface surface;
        size_t bytes = 0;
        std::list<std::string>::iterator lru;
    };
    // A decode's outcome, made without the lock.
    struct Decoded
    {
        SharedSurface surface;
        std::string why;
    };

    static Stamp stampOf(const std::string& path);
    static std::string keyOf(uint64_t version, runtime::PixelSize size);
    Decoded decode(const std::string& path, const Stamp& stamp);
    // Under the lock: the record of this version of path, or null.
    Record* current(const std::string& path, const Stamp& stamp);
    Record& remember(const std::string& path, const Stamp& stamp, const Decoded& decoded);
    SharedSurface heldSurface(const std::string& key);
    void hold(const std::string& key, SharedSurface surface);
    void letGo(const std::string& key);
    // Under the lock: the refusal of record to say, once.
    std::string untold(Record& record);
    void say(const std::string& path, const std::string& why);
    std::optional<Facts> factsOf(const std::string& path, bool& waited);
    void workerLoop();
    void serveWish(const PictureWish& wish);

    Limits m_limits;
    mutable std::mutex m_mutex;
    std::condition_variable m_changed; // a decode finished, or the wishes changed
    std::unordered_map<std::string, Record> m_records;
    std::list<std::string> m_recordLru; // most recent first
    std::unordered_map<std::string, Held> m_held;
    std::list<std::string> m_heldLru; // most recent first
    size_t m_bytes = 0;
    std::deque<PictureWish> m_wishes;
    std::unordered_set<std::string> m_decoding; // paths a thread is decoding now
    int m_busyWorkers = 0;
    int m_decodes = 0;
    uint64_t m_nextVersion = 1;
    Served m_served;
    bool m_stopping = false;
    std::vector<std::thread> m_workers;
};

// Makes every allocation of a quarter of a megabyte or more (the pixels of a picture) a mapping of its
// own, given back to the system when it is freed. Otherwise the C library raises that threshold to the
// size of the first such block freed, and the pictures the cache lets go stay resident in the
// decoders' heaps: memory would then grow past the cache's bound under a held key. Process-wide, so
// the program calls it once, at its start.
void returnPicturesToTheSystem();

} // namespace ombrel::platform::sdl
