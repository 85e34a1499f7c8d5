#include "ui/ModelRow.h"
#include "core/Tr.h"

#include "app/AppModel.h"
#include "app/LanguageManager.h"
#include "app/ModelStore.h"
#include "ui/Icons.h"
#include "ui/Style.h"

#include <QCoreApplication>
#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QMouseEvent>
#include <QPainter>
#include <QProgressBar>
#include <QStyleOptionFocusRect>
#include <QToolButton>
#include <QVBoxLayout>

namespace {

// Progress fractions become bar values in thousandths.
constexpr int barSteps = 1000;

QToolButton *borderless(QWidget *parent, const char *name)
{
    auto *button = new QToolButton(parent);
    button->setObjectName(QString::fromLatin1(name));
    button->setAutoRaise(true);
    button->setCursor(Qt::PointingHandCursor);
    return button;
}

QProgressBar *thinBar(QWidget *parent, const char *name, int height)
{
    auto *bar = new QProgressBar(parent);
    bar->setObjectName(QString::fromLatin1(name));
    bar->setRange(0, barSteps);
    bar->setTextVisible(false);
    bar->setFixedHeight(height);
    return bar;
}

} // namespace

RadioMark::RadioMark(QWidget *parent) : QAbstractButton(parent)
{
    setObjectName(QStringLiteral("radio"));
    setFocusPolicy(Qt::TabFocus);
    setCursor(Qt::PointingHandCursor);
}

void RadioMark::setLook(bool selected, bool active)
{
    m_selected = selected;
    m_active = active;
    update();
}

QSize RadioMark::sizeHint() const
{
    const int side = QFontMetrics(Style::font(Style::TextSize::subheadline)).height();
    return {side, side};
}

void RadioMark::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QColor color = Style::color(palette(), m_active ? Style::Tone::accent : Style::Tone::secondary);
    const qreal side = std::min(width(), height()) - 2;
    const QRectF ring((width() - side) / 2, (height() - side) / 2, side, side);
    painter.setPen(QPen(color, 1.5));
    painter.setBrush(Qt::NoBrush);
    painter.drawEllipse(ring.adjusted(0.75, 0.75, -0.75, -0.75));
    if (m_selected) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(color);
        const qreal inset = side * 0.25;
        painter.drawEllipse(ring.adjusted(inset, inset, -inset, -inset));
    }
    if (hasFocus()) {
        QStyleOptionFocusRect option;
        option.initFrom(this);
        style()->drawPrimitive(QStyle::PE_FrameFocusRect, &option, &painter, this);
    }
}

ModelRow::ModelRow(AppModel &app, const WhisperModel &model, QWidget *parent)
    : QWidget(parent), m_app(app), m_store(*app.modelStore()), m_model(model)
{
    setObjectName(QStringLiteral("row-") + model.id);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(4);

    // First line: mark, name with size over note or bar, action.
    auto *line = new QHBoxLayout;
    line->setSpacing(8);
    m_radio = new RadioMark(this);
    connect(m_radio, &RadioMark::clicked, this, &ModelRow::choose);
    line->addWidget(m_radio, 0, Qt::AlignVCenter);

    auto *text = new QVBoxLayout;
    text->setSpacing(1);
    m_title = new QLabel(this);
    m_title->setObjectName(QStringLiteral("title"));
    m_progress = thinBar(this, "progress", 6);
    m_progress->setMaximumWidth(220);
    m_note = new QLabel(this);
    m_note->setObjectName(QStringLiteral("note"));
    text->addWidget(m_title);
    // Narrower than the column: held at the left, so that it does not narrow the column.
    text->addWidget(m_progress, 0, Qt::AlignLeft);
    text->addWidget(m_note);
    line->addLayout(text, 1);

    m_trash = borderless(this, "trash");
    connect(m_trash, &QToolButton::clicked, this, &ModelRow::deleteModel);
    m_load = borderless(this, "load");
    connect(m_load, &QToolButton::clicked, this, [this] { m_store.download(m_model); });
    line->addWidget(m_trash, 0, Qt::AlignVCenter);
    line->addWidget(m_load, 0, Qt::AlignVCenter);
    column->addLayout(line);

    // Second line, after a failed download: what went wrong, and a retry.
    m_failureLine = new QWidget(this);
    m_failureLine->setObjectName(QStringLiteral("failureLine"));
    auto *failure = new QHBoxLayout(m_failureLine);
    failure->setContentsMargins(22, 0, 0, 0);
    failure->setSpacing(6);
    m_failure = new QLabel(m_failureLine);
    m_failure->setObjectName(QStringLiteral("failure"));
    m_failure->setWordWrap(true);
    m_retry = borderless(m_failureLine, "retry");
    connect(m_retry, &QToolButton::clicked, this, [this] { m_store.download(m_model); });
    failure->addWidget(m_failure, 1, Qt::AlignVCenter);
    failure->addWidget(m_retry, 0, Qt::AlignVCenter);
    column->addWidget(m_failureLine);

    for (auto changed : {&ModelStore::installedChanged, &ModelStore::downloadingChanged, &ModelStore::failuresChanged})
        connect(&m_store, changed, this, &ModelRow::refresh);
    connect(&app, &AppModel::selectedModelIdChanged, this, &ModelRow::refresh);
    connect(&LanguageManager::instance(), &LanguageManager::languageChanged, this, [this] {
        retranslate();
        refresh();
    });
    retranslate();
    restyle();
    refresh();
}

ModelRow::State ModelRow::state() const
{
    if (m_store.downloading().contains(m_model.id))
        return State::downloading;
    return m_store.installed().contains(m_model.id) ? State::installed : State::available;
}

QString ModelRow::firstInstalled(const ModelStore &store)
{
    for (const WhisperModel &model : WhisperModel::all())
        if (store.installed().contains(model.id))
            return model.id;
    return QStringLiteral("small-q5_1");
}

void ModelRow::choose()
{
    if (m_store.installed().contains(m_model.id))
        m_app.setSelectedModelId(m_model.id);
}

void ModelRow::deleteModel()
{
    m_store.deleteModel(m_model);
    if (m_app.selectedModelId() == m_model.id)
        m_app.setSelectedModelId(firstInstalled(m_store));
}

void ModelRow::mousePressEvent(QMouseEvent *event)
{
    // The whole row is the target: it takes the press, so the release comes here.
    if (event->button() == Qt::LeftButton)
        event->accept();
    else
        QWidget::mousePressEvent(event);
}

void ModelRow::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton && rect().contains(event->position().toPoint()))
        choose();
    QWidget::mouseReleaseEvent(event);
}

void ModelRow::changeEvent(QEvent *event)
{
    Style::restyleOnLookChange(event, this, &ModelRow::restyle);
    QWidget::changeEvent(event);
}

void ModelRow::retranslate()
{
    m_title->setText(Tr::tr("%1 · %2 MB").arg(m_model.name).arg(m_model.approxSizeMB));
    m_note->setText(Tr::tr(m_model.note.toUtf8().constData()));
    m_trash->setToolTip(Tr::tr("Modell löschen"));
    m_load->setText(Tr::tr("Laden"));
    m_retry->setText(Tr::tr("Erneut versuchen"));
}

void ModelRow::restyle()
{
    const QPalette &pal = palette();
    Style::style(m_title, Style::TextSize::subheadline);
    Style::style(m_note, Style::TextSize::caption, Style::Tone::secondary);
    const int iconSize = QFontMetrics(Style::font(Style::TextSize::body)).height();
    m_trash->setIcon(Icons::icon(QStringLiteral("trash"), Style::color(pal, Style::Tone::text)));
    m_trash->setIconSize(QSize(iconSize, iconSize));
    Style::setTone(m_load, Style::Tone::accent);

    Style::style(m_failure, Style::TextSize::caption, Style::Tone::orange);
    m_retry->setFont(Style::font(Style::TextSize::caption));
    Style::setTone(m_retry, Style::Tone::accent);
    m_radio->update();
}

// Runs at every progress step of a download, so it only shows and hides.
void ModelRow::refresh()
{
    const bool installed = m_store.installed().contains(m_model.id);
    const std::optional<double> progress = m_store.downloading().contains(m_model.id)
                                               ? std::optional(m_store.downloading().value(m_model.id))
                                               : std::nullopt;

    m_radio->setLook(m_app.selectedModelId() == m_model.id, installed);
    m_progress->setVisible(progress.has_value());
    m_progress->setValue(qRound(progress.value_or(0) * barSteps));
    m_note->setVisible(!progress);
    // Downloading wins over installed: a model that is fetched anew shows its bar.
    m_trash->setVisible(!progress && installed);
    // After a failure the retry beside its reason stands in for "Laden".
    const QString failed = m_store.failures().value(m_model.id);
    m_load->setVisible(!progress && !installed && failed.isEmpty());
    m_failure->setText(Tr::tr("Laden fehlgeschlagen: %1").arg(failed));
    m_failureLine->setVisible(!progress && !failed.isEmpty());
}

ModelList::ModelList(AppModel &app, QWidget *parent) : QWidget(parent)
{
    auto *outer = new QVBoxLayout(this);
    outer->setContentsMargins(0, 0, 0, 0);
    auto *box = new Style::RoundedBox(0.08, 10, this);
    outer->addWidget(box);
    // In a taller place the rows keep their height, and the space stays below.
    outer->addStretch(1);
    auto *rows = new QVBoxLayout(box);
    rows->setContentsMargins(10, 10, 10, 10);
    rows->setSpacing(8);
    for (const WhisperModel &model : WhisperModel::all()) {
        auto *row = new ModelRow(app, model, box);
        rows->addWidget(row);
        m_rows << row;
    }
}
