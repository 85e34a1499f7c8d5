#include "ui/RecordSheet.h"
#include "core/Tr.h"

#include "ui/Style.h"

#include "app/AppModel.h"
#include "app/RecordingJob.h"
#include "export/Format.h"

#include <QCoreApplication>
#include <QEvent>
#include <QFontDatabase>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPainterPath>
#include <QPushButton>
#include <QVBoxLayout>

#include <utility>

namespace {

// The meter: a quiet track and, from the left, a bar as long as the level.
class LevelBar : public QWidget {
public:
    LevelBar(const RecordingJob &recorder, QWidget *parent) : QWidget(parent), recorder(recorder)
    {
        setObjectName(QStringLiteral("levelBar"));
        setFixedHeight(16);
        setMaximumWidth(320);
        setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    }

    QSize sizeHint() const override { return {320, 16}; }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter p(this);
        p.setRenderHint(QPainter::Antialiasing);
        p.setPen(Qt::NoPen);
        QColor track = palette().color(QPalette::PlaceholderText);
        track.setAlphaF(0.15f);
        p.setBrush(track);
        p.drawRoundedRect(QRectF(rect()), 6, 6);
        const double width = double(this->width()) * std::clamp(double(recorder.level()), 0.0, 1.0);
        if (width <= 0)
            return;
        p.setBrush(recorder.isRecording() ? QColor(Qt::red) : palette().color(QPalette::Highlight));
        p.drawRoundedRect(QRectF(0, 0, width, height()), 6, 6);
    }

private:
    const RecordingJob &recorder;
};

} // namespace

RecordSheet::RecordSheet(AppModel &app, QWidget *parent)
    : QDialog(parent), m_app(app), m_recorder(&app.recording())
{
    setFixedSize(420, 300);
    setModal(true);

    m_title = new QLabel(this);
    m_title->setFont(Style::font(Style::TextSize::title, QFont::Bold));
    m_title->setAlignment(Qt::AlignCenter);

    m_levelBar = new LevelBar(*m_recorder, this);

    m_time = new QLabel(this);
    m_time->setObjectName(QStringLiteral("time"));
    QFont mono = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    mono.setPixelSize(34);
    mono.setWeight(QFont::DemiBold);
    m_time->setFont(mono);
    m_time->setAlignment(Qt::AlignCenter);

    m_denied = new QLabel(this);
    m_denied->setObjectName(QStringLiteral("permissionDenied"));
    m_denied->setWordWrap(true);
    m_denied->setAlignment(Qt::AlignCenter);
    m_denied->setFont(Style::font(Style::TextSize::caption));
    QPalette red = m_denied->palette();
    red.setColor(QPalette::WindowText, Qt::red);
    m_denied->setPalette(red);

    m_cancel = new QPushButton(this);
    m_cancel->setObjectName(QStringLiteral("cancel"));
    m_cancel->setAutoDefault(false);
    m_go = new QPushButton(this);
    m_go->setObjectName(QStringLiteral("go"));
    m_go->setDefault(true);

    auto *buttons = new QHBoxLayout;
    buttons->setSpacing(16);
    buttons->addStretch();
    buttons->addWidget(m_cancel);
    buttons->addWidget(m_go);
    buttons->addStretch();

    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(24, 24, 24, 24);
    column->setSpacing(16);
    column->addStretch();
    column->addWidget(m_title);
    column->addWidget(m_levelBar, 0, Qt::AlignHCenter);
    column->addWidget(m_time);
    column->addWidget(m_denied);
    column->addLayout(buttons);
    column->addStretch();
    m_levelBar->setMinimumWidth(320);

    connect(m_cancel, &QPushButton::clicked, this, &RecordSheet::reject);
    connect(m_go, &QPushButton::clicked, this, &RecordSheet::startOrStop);
    connect(m_recorder, &RecordingJob::isRecordingChanged, this, &RecordSheet::refresh);
    connect(m_recorder, &RecordingJob::elapsedChanged, this, &RecordSheet::refresh);
    connect(m_recorder, &RecordingJob::levelChanged, m_levelBar, qOverload<>(&QWidget::update));
    connect(m_recorder, &RecordingJob::permissionDeniedChanged, this, &RecordSheet::refresh);
    // Closed any other way than by stopping: the sheet's flag goes down with it.
    connect(this, &QDialog::finished, &m_app, [this] { m_app.setShowRecorder(false); });

    retranslate();
}

RecordSheet::~RecordSheet()
{
    // Nobody is left to take the file of a recording that runs or is being closed.
    if (m_recorder->isRecording() || m_stopping)
        m_recorder->cancel();
}

QString RecordSheet::timeString(double elapsed)
{
    const qint64 s = qint64(std::max(0.0, elapsed));
    return QString::asprintf("%02lld:%02lld", s / 60, s % 60);
}

void RecordSheet::startOrStop()
{
    // A press while the file is being closed would start a second recording.
    if (m_stopping)
        return;
    if (m_recorder->isRecording())
        stopAndTranscribe();
    else
        m_recorder->start();
}

void RecordSheet::stopAndTranscribe()
{
    m_stopping = true;
    // The sheet stays until the encoder has closed the file, usually a moment.
    m_recorder->stop().then(this, [this](const std::optional<QString> &url) {
        // A cancel meanwhile has thrown the recording away.
        if (!std::exchange(m_stopping, false) || !url)
            return;
        // Kept German in every language, as the names of dropped files are kept as they are.
        const QString name = QStringLiteral("Aufnahme ") + Format::date(QDateTime::currentDateTime());
        m_app.setShowRecorder(false);
        accept();
        m_app.transcribe(*url, name);
    });
}

void RecordSheet::showEvent(QShowEvent *event)
{
    QDialog::showEvent(event);
    // The user asked for the recording on the setup screen already: it runs as the sheet
    // opens. The button asks again only after a refusal.
    if (!std::exchange(m_started, true))
        m_recorder->start();
}

void RecordSheet::reject()
{
    m_stopping = false;
    m_recorder->cancel();
    QDialog::reject();
}

void RecordSheet::refresh()
{
    const bool recording = m_recorder->isRecording();
    m_time->setText(timeString(m_recorder->elapsed()));
    m_denied->setVisible(m_recorder->permissionDenied());
    const QString text = recording ? Tr::tr("Stopp & Transkribieren")
                                   : Tr::tr("Aufnahme starten");
    // A single & would mark a shortcut letter instead of showing.
    m_go->setText(QString(text).replace(u'&', QStringLiteral("&&")));
    m_go->setIcon(QIcon::fromTheme(recording ? QIcon::ThemeIcon::MediaPlaybackStop : QIcon::ThemeIcon::MediaRecord));
    m_levelBar->update();
}

void RecordSheet::retranslate()
{
    setWindowTitle(Tr::tr("Audio aufnehmen"));
    m_title->setText(Tr::tr("Audio aufnehmen"));
    m_denied->setText(Tr::tr("Kein Mikrofon-Zugriff. Bitte in Systemeinstellungen → Datenschutz → Mikrofon erlauben."));
    m_cancel->setText(Tr::tr("Abbrechen"));
    refresh();
}

void RecordSheet::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::LanguageChange)
        retranslate();
    QDialog::changeEvent(event);
}
