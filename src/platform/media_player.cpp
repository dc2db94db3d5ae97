#include "media_player.h"

#include "form.h"
#include "paths.h"
#include "timing.h"

#include <QAudioOutput>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QMediaPlayer>
#include <QSlider>
#include <QProxyStyle>
#include <QStyle>
#include <QTimer>
#include <QToolButton>
#include <QUrl>
#include <QVBoxLayout>

#include <malloc.h>

namespace platform {

void prepareMedia()
{
    QByteArray ranks = QByteArrayLiteral("mpg123audiodec:257"); // one above primary
    const QByteArray own = qgetenv("GST_PLUGIN_FEATURE_RANK");
    if (!own.isEmpty())
        ranks += ',' + own; // later entries win
    qputenv("GST_PLUGIN_FEATURE_RANK", ranks);
}

namespace {
// A window that opens music in its load handler is drawn first: the media framework takes
// tens of milliseconds to start. One that is not shown gets its music after this long.
constexpr int kLatestStartMs = 250;

// The controls' look, in pixels: a margin round the face and between its rows, a dark display
// with light green text, the speaker before the volume slider set apart from the buttons.
constexpr int kFaceMarginPx = 4;
constexpr int kRowSpacingPx = 3;
const QColor kDisplayBackground(0x10, 0x18, 0x20);
const QColor kDisplayText(0x70, 0xF0, 0xB0);
constexpr int kDisplayMarginXPx = 6;
constexpr int kDisplayMarginYPx = 4;
constexpr int kDisplayLineSpacingPx = 2;
constexpr int kSpeakerIconPx = 16;
constexpr int kVolumeGapPx = 6;
// Page Up and Page Down on the position slider move this far.
constexpr int kPositionPageStepMs = 5000;

// A click on the position slider's groove puts the tune there, as media players do; stepping
// instead would take any click on a tune shorter than a step to its end.
class JumpToClickStyle : public QProxyStyle {
public:
    using QProxyStyle::QProxyStyle;
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget, QStyleHintReturn* returned) const override
    {
        if (hint == SH_Slider_AbsoluteSetButtons)
            return Qt::LeftButton;
        return QProxyStyle::styleHint(hint, option, widget, returned);
    }
};

QString clock(qint64 ms)
{
    const qint64 seconds = std::max<qint64>(ms, 0) / 1000;
    return QStringLiteral("%1:%2").arg(seconds / 60).arg(seconds % 60, 2, 10, QLatin1Char('0'));
}
} // namespace

MediaPlayer::MediaPlayer(Container& parent, const char* name, TwipsRect rect, Controls controls)
    : Control(parent, name, new QWidget, rect)
{
    if (controls == Controls::Shown)
        buildControls();
}

MediaPlayer::~MediaPlayer()
{
    if (m_player)
        m_player->stop();
}

void MediaPlayer::buildControls()
{
    QWidget* face = widget();
    face->setAutoFillBackground(true);
    auto* layout = new QVBoxLayout(face);
    layout->setContentsMargins(kFaceMarginPx, kFaceMarginPx, kFaceMarginPx, kFaceMarginPx);
    layout->setSpacing(kRowSpacingPx);
    layout->addWidget(makeDisplay(), 1);
    layout->addWidget(makePositionSlider());
    layout->addLayout(makeTransport());
    showState();
    showTime();
}

QWidget* MediaPlayer::makeDisplay()
{
    // Dark, with the file's name above its state and the time.
    m_display = new QWidget(widget());
    m_display->setObjectName(QStringLiteral("Display"));
    m_display->setAutoFillBackground(true);
    QPalette dark = m_display->palette();
    dark.setColor(QPalette::Window, kDisplayBackground);
    dark.setColor(QPalette::WindowText, kDisplayText);
    m_display->setPalette(dark);
    auto* lines = new QVBoxLayout(m_display);
    lines->setContentsMargins(kDisplayMarginXPx, kDisplayMarginYPx, kDisplayMarginXPx, kDisplayMarginYPx);
    lines->setSpacing(kDisplayLineSpacingPx);
    m_title = new QLabel(m_display);
    m_title->setTextFormat(Qt::PlainText);
    m_state = new QLabel(m_display);
    m_time = new QLabel(m_display);
    m_time->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    lines->addWidget(m_title);
    auto* row = new QHBoxLayout;
    row->addWidget(m_state);
    row->addWidget(m_time);
    lines->addLayout(row);
    return m_display;
}

QWidget* MediaPlayer::makePositionSlider()
{
    m_position = new QSlider(Qt::Horizontal, widget());
    m_position->setAccessibleName(QStringLiteral("Position"));
    m_position->setRange(0, 0);
    m_position->setPageStep(kPositionPageStepMs);
    auto* jump = new JumpToClickStyle;
    jump->setParent(m_position);
    m_position->setStyle(jump);
    connect(m_position, &QSlider::sliderReleased, this, [this] {
        if (m_player)
            m_player->setPosition(m_position->value());
    });
    connect(m_position, &QSlider::actionTriggered, this, [this](int action) {
        // A key moves the position at once; a click or a drag when the button is let go.
        if (m_player && action != QAbstractSlider::SliderMove)
            QTimer::singleShot(0, this, [this] { m_player->setPosition(m_position->value()); });
    });
    return m_position;
}

QLayout* MediaPlayer::makeTransport()
{
    // Play or pause, stop, then the volume.
    QWidget* face = widget();
    auto* transport = new QHBoxLayout;
    transport->setSpacing(kRowSpacingPx);
    m_playPause = new QToolButton(face);
    m_playPause->setAutoRaise(false);
    m_stop = new QToolButton(face);
    m_stop->setIcon(face->style()->standardIcon(QStyle::SP_MediaStop));
    m_stop->setAccessibleName(QStringLiteral("Stop"));
    m_stop->setToolTip(QStringLiteral("Stop"));
    auto* speaker = new QLabel(face);
    speaker->setPixmap(face->style()->standardIcon(QStyle::SP_MediaVolume).pixmap(kSpeakerIconPx, kSpeakerIconPx));
    m_volumeSlider = new QSlider(Qt::Horizontal, face);
    m_volumeSlider->setRange(0, 100);
    m_volumeSlider->setValue(m_volume);
    m_volumeSlider->setAccessibleName(QStringLiteral("Volume"));
    m_volumeSlider->setToolTip(QStringLiteral("Volume"));
    transport->addWidget(m_playPause);
    transport->addWidget(m_stop);
    transport->addSpacing(kVolumeGapPx);
    transport->addWidget(speaker);
    transport->addWidget(m_volumeSlider, 1);

    connect(m_playPause, &QToolButton::clicked, this, [this] {
        if (isPlaying())
            Pause();
        else
            Play();
    });
    connect(m_stop, &QToolButton::clicked, this, &MediaPlayer::Stop);
    connect(m_volumeSlider, &QSlider::valueChanged, this, [this](int volume) {
        m_volume = volume;
        if (m_output)
            m_output->setVolume(volume / 100.0f);
        Q_EMIT displayChanged();
    });
    return transport;
}

void MediaPlayer::Open(const QString& fileName)
{
    m_fileName = fileName;
    const bool waiting = m_pending.has_value();
    m_pending = Request{fileName, m_autoStart};
    if (m_title)
        showState();
    if (waiting)
        return;
    Form* window = Form::of(widget()->window());
    if (window && !window->painted()) {
        connect(window, &Form::firstPainted, this, &MediaPlayer::startPending,
                Qt::ConnectionType(Qt::QueuedConnection | Qt::SingleShotConnection));
        QTimer::singleShot(kLatestStartMs, this, &MediaPlayer::startPending);
    } else {
        QMetaObject::invokeMethod(this, &MediaPlayer::startPending, Qt::QueuedConnection);
    }
}

void MediaPlayer::makePlayer()
{
    if (m_player)
        return;
    m_player = new QMediaPlayer(this);
    m_output = new QAudioOutput(this);
    m_output->setVolume(m_volume / 100.0f);
    m_player->setAudioOutput(m_output);
    // Played to its end, the file lets go of the decoding pipeline and what it holds; a player
    // that shows its controls keeps it, to be played again.
    connect(m_player, &QMediaPlayer::mediaStatusChanged, this, [this](QMediaPlayer::MediaStatus status) {
        if (status == QMediaPlayer::EndOfMedia && !m_title) {
            m_player->setSource(QUrl());
            // The pipeline's buffers go back to the system, not only to the allocator's pool.
            QTimer::singleShot(0, this, [] { malloc_trim(0); });
        }
    });
    if (m_title) {
        connect(m_player, &QMediaPlayer::playbackStateChanged, this, &MediaPlayer::showState);
        connect(m_player, &QMediaPlayer::mediaStatusChanged, this, &MediaPlayer::showState);
        connect(m_player, &QMediaPlayer::durationChanged, this, &MediaPlayer::showTime);
        connect(m_player, &QMediaPlayer::positionChanged, this, &MediaPlayer::showTime);
    }
}

void MediaPlayer::startPending()
{
    if (!m_pending)
        return;
    const Request request = *m_pending;
    m_pending.reset();
    logTiming(QStringLiteral("opening ") + request.fileName);
    makePlayer();
    m_player->setSource(request.fileName.isEmpty() ? QUrl() : QUrl::fromLocalFile(nativePath(request.fileName)));
    if (request.play)
        m_player->play();
}

void MediaPlayer::Stop()
{
    if (m_player)
        m_player->stop();
}

void MediaPlayer::Play()
{
    if (m_player && !m_player->source().isEmpty())
        m_player->play();
}

void MediaPlayer::Pause()
{
    if (m_player)
        m_player->pause();
}

qint64 MediaPlayer::Position() const
{
    return m_player ? m_player->position() : 0;
}

qint64 MediaPlayer::Duration() const
{
    return m_player ? m_player->duration() : 0;
}

bool MediaPlayer::isPlaying() const
{
    return m_player && m_player->playbackState() == QMediaPlayer::PlayingState;
}

void MediaPlayer::showState()
{
    if (!m_title)
        return;
    const QString name = QFileInfo(nativePath(m_fileName)).fileName();
    m_title->setText(name.isEmpty() ? QStringLiteral("No file") : name);
    QString state = QStringLiteral("Stopped");
    if (m_player && m_player->mediaStatus() == QMediaPlayer::InvalidMedia)
        state = QStringLiteral("Cannot play this file");
    else if (m_player && m_player->playbackState() == QMediaPlayer::PlayingState)
        state = QStringLiteral("Playing");
    else if (m_player && m_player->playbackState() == QMediaPlayer::PausedState)
        state = QStringLiteral("Paused");
    m_state->setText(state);
    const bool playing = isPlaying();
    m_playPause->setIcon(widget()->style()->standardIcon(playing ? QStyle::SP_MediaPause : QStyle::SP_MediaPlay));
    m_playPause->setAccessibleName(playing ? QStringLiteral("Pause") : QStringLiteral("Play"));
    m_playPause->setToolTip(m_playPause->accessibleName());
    Q_EMIT displayChanged();
}

void MediaPlayer::showTime()
{
    if (!m_title)
        return;
    const qint64 duration = Duration();
    const qint64 position = Position();
    m_time->setText(clock(position) + QStringLiteral(" / ") + clock(duration));
    if (!m_position->isSliderDown()) {
        m_position->setRange(0, int(std::min<qint64>(duration, INT_MAX)));
        m_position->setValue(int(std::min<qint64>(position, INT_MAX)));
    }
    Q_EMIT displayChanged();
}

QRect MediaPlayer::partRect(Part part) const
{
    if (!m_title)
        return {};
    const QWidget* w = nullptr;
    switch (part) {
    case Part::Display: w = m_display; break;
    case Part::PlayPause: w = m_playPause; break;
    case Part::Stop: w = m_stop; break;
    case Part::Position: w = m_position; break;
    case Part::Volume: w = m_volumeSlider; break;
    }
    return QRect(w->mapTo(widget(), QPoint(0, 0)), w->size());
}

QString MediaPlayer::displayText() const
{
    if (!m_title)
        return {};
    return m_title->text() + QLatin1Char('\n') + m_state->text() + QLatin1Char('\n') + m_time->text();
}

} // namespace platform
