// MediaView: a player's pictures on a form.
#include "runtime/controls/MediaView.h"

#include "core/FailureLog.h"
#include "runtime/Form.h"
#include "runtime/FormStack.h"

namespace ombrel::runtime {

namespace {

    // The player as the handlers use it, which writes a file that cannot be opened to the failure log.
    // The handlers only see that FileName reads back empty, in every place that opens a file.
    class LoggedPlayer final : public platform::MediaPlayer {
    public:
        LoggedPlayer(std::unique_ptr<platform::MediaPlayer> player, FormStack& forms, std::string name)
            : m_player(std::move(player))
            , m_forms(forms)
            , m_name(std::move(name))
        {
            m_player->onPlayStateChange = [this](int from, int to) {
                // A copy: the handler may destroy this player.
                if (auto handler = onPlayStateChange)
                    handler(from, to);
            };
        }
        void setFileName(const std::string& path) override
        {
            m_player->setFileName(path);
            if (!path.empty() && m_player->fileName().empty())
                m_forms.failures().noteAt(
                    m_name, "sound or film " + m_forms.relative(path) + ": cannot be opened");
        }
        std::string fileName() const override { return m_player->fileName(); }
        void play() override { m_player->play(); }
        void stop() override { m_player->stop(); }
        void pause() override { m_player->pause(); }
        int playState() const override { return m_player->playState(); }
        void setVolume(int hundredthsDb) override { m_player->setVolume(hundredthsDb); }
        int volume() const override { return m_player->volume(); }
        double duration() const override { return m_player->duration(); }

    private:
        std::unique_ptr<platform::MediaPlayer> m_player;
        FormStack& m_forms;
        std::string m_name;
    };

} // namespace

MediaView::MediaView(Form& form, std::string name, std::unique_ptr<platform::MediaPlayer> player)
    : Control(form, name)
    , m_player(std::make_unique<LoggedPlayer>(std::move(player), form.stack(), form.name() + "." + name))
{
}

void MediaView::paint(DrawList& out, int originX, int originY, const PixelRect& clip) const
{
    DrawCommand fill;
    fill.kind = DrawCommand::Kind::Fill;
    fill.rect = pixelRect(originX, originY);
    fill.clip = clip;
    fill.colour = 0;
    out.push_back(fill);
    if (m_player->playState() == platform::kStopped)
        return;
    DrawCommand film;
    film.kind = DrawCommand::Kind::Film;
    film.rect = fill.rect;
    film.clip = clip;
    film.text = name();
    out.push_back(std::move(film));
}

} // namespace ombrel::runtime
