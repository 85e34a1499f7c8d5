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

    // Second line, for installed models: the Neural Engine package.
    m_coreML = new QWidget(this);
    auto *engine = new QHBoxLayout(m_coreML);
    engine->setContentsMargins(22, 0, 0, 0);
    engine->setSpacing(6);
    m_coreMLIcon = new QLabel(m_coreML);
    m_coreMLActive = new QLabel(m_coreML);
    m_coreMLActive->setObjectName(QStringLiteral("coreMLActive"));
    m_coreMLRemove = borderless(m_coreML, "coreMLRemove");
    connect(m_coreMLRemove, &QToolButton::clicked, this, [this] { m_store.deleteCoreML(m_model); });
    m_coreMLLoading = new QLabel(m_coreML);
    m_coreMLLoading->setObjectName(QStringLiteral("coreMLLoading"));
    m_coreMLProgress = thinBar(m_coreML, "coreMLProgress", 4);
    m_coreMLProgress->setFixedWidth(60);
    m_coreMLLoad = borderless(m_coreML, "coreMLLoad");
    connect(m_coreMLLoad, &QToolButton::clicked, this, [this] { m_store.downloadCoreML(m_model); });
    for (QWidget *w : {static_cast<QWidget *>(m_coreMLIcon), static_cast<QWidget *>(m_coreMLActive),
                       static_cast<QWidget *>(m_coreMLRemove), static_cast<QWidget *>(m_coreMLLoading),
                       static_cast<QWidget *>(m_coreMLProgress), static_cast<QWidget *>(m_coreMLLoad)})
        engine->addWidget(w, 0, Qt::AlignVCenter);
    engine->addStretch(1);
    column->addWidget(m_coreML);

    for (auto changed : {&ModelStore::installedChanged, &ModelStore::downloadingChanged,
                         &ModelStore::coreMLInstalledChanged, &ModelStore::coreMLDownloadingChanged})
        connect(&m_store, changed, this, &ModelRow::refresh);
    connect(&app, &AppModel::selectedModelIdChanged, this, &ModelRow::refresh);
    connect(&LanguageManager::instance(), &LanguageManager::languageChanged, this, &ModelRow::retranslate);
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
    m_coreMLActive->setText(Tr::tr("Neural Engine aktiv"));
    m_coreMLRemove->setText(Tr::tr("entfernen"));
    m_coreMLLoading->setText(Tr::tr("Neural Engine lädt…"));
    m_coreMLLoad->setText(Tr::tr("Neural Engine laden (%1 MB)").arg(m_model.coreMLSizeMB));
    m_coreMLLoad->setToolTip(
        Tr::tr("Beschleunigt den Encoder über die Neural Engine und spart Strom."));
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

    const QFont mini = Style::font(Style::TextSize::caption2);
    for (QWidget *w : m_coreML->findChildren<QWidget *>())
        w->setFont(mini);
    const int miniIcon = QFontMetrics(mini).height();
    m_coreMLIcon->setPixmap(Icons::pixmap(QStringLiteral("cpu"), miniIcon, Style::color(pal, Style::Tone::accent),
                                            devicePixelRatioF()));
    Style::setTone(m_coreMLRemove, Style::Tone::accent);
    Style::setTone(m_coreMLLoading, Style::Tone::secondary);
    Style::setTone(m_coreMLLoad, Style::Tone::accent);
    m_radio->update();
}

// Runs at every progress step of a download, so it only shows and hides.
void ModelRow::refresh()
{
    const bool installed = m_store.installed().contains(m_model.id);
    const std::optional<double> progress = m_store.downloading().contains(m_model.id)
                                               ? std::optional(m_store.downloading().value(m_model.id))
                                               : std::nullopt;
    const std::optional<double> coreMLProgress = m_store.coreMLDownloading().contains(m_model.id)
                                                     ? std::optional(m_store.coreMLDownloading().value(m_model.id))
                                                     : std::nullopt;
    const bool coreMLActive = m_store.coreMLInstalled().contains(m_model.id);

    m_radio->setLook(m_app.selectedModelId() == m_model.id, installed);
    m_progress->setVisible(progress.has_value());
    m_progress->setValue(qRound(progress.value_or(0) * barSteps));
    m_note->setVisible(!progress);
    // Downloading wins over installed: a model that is fetched anew shows its bar.
    m_trash->setVisible(!progress && installed);
    m_load->setVisible(!progress && !installed);

    m_coreML->setVisible(installed);
    m_coreMLIcon->setVisible(coreMLActive);
    m_coreMLActive->setVisible(coreMLActive);
    m_coreMLRemove->setVisible(coreMLActive);
    const bool loading = !coreMLActive && coreMLProgress.has_value();
    m_coreMLLoading->setVisible(loading);
    m_coreMLProgress->setVisible(loading);
    m_coreMLProgress->setValue(qRound(coreMLProgress.value_or(0) * barSteps));
    m_coreMLLoad->setVisible(!coreMLActive && !loading);
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
