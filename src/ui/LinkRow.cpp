#include "ui/LinkRow.h"
#include "core/Tr.h"

#include "ui/Spinner.h"
#include "ui/Style.h"

#include "app/AppModel.h"
#include "app/LinkImport.h"
#include "app/TranscriptionJob.h"
#include "core/Text.h"

#include <QCoreApplication>
#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QProgressBar>
#include <QPushButton>
#include <QStyle>
#include <QStyleOptionFrame>
#include <QTimer>
#include <QVBoxLayout>

namespace {

void makeCaption(QLabel *label)
{
    // Figures of one width, so that the percentage does not jitter.
    label->setFont(Style::withTabularDigits(Style::font(Style::TextSize::caption)));
    label->setForegroundRole(QPalette::PlaceholderText);
}

} // namespace

LinkRow::LinkRow(AppModel &app, QWidget *parent) : QWidget(parent), m_app(app)
{
    setMaximumWidth(540);

    auto *icon = new QLabel(this);
    const QIcon link = QIcon::fromTheme(QStringLiteral("link"), QIcon::fromTheme(QIcon::ThemeIcon::InsertLink));
    icon->setPixmap(link.pixmap(16, 16, QIcon::Disabled));
    // A desktop without an icon theme shows the field alone.
    icon->setVisible(!link.isNull());

    m_field = new QLineEdit(this);
    m_field->setObjectName(QStringLiteral("linkField"));
    m_field->setClearButtonEnabled(false);

    m_load = new QPushButton(this);
    m_load->setObjectName(QStringLiteral("load"));
    m_loadSpinner = new Spinner(14, m_load);
    m_loadSpinner->setObjectName(QStringLiteral("loadSpinner"));
    auto *overlay = new QHBoxLayout(m_load);
    overlay->setContentsMargins(0, 0, 0, 0);
    overlay->addWidget(m_loadSpinner, 0, Qt::AlignCenter);

    auto *first = new QHBoxLayout;
    first->setSpacing(8);
    first->addWidget(icon);
    first->addWidget(m_field, 1);
    first->addWidget(m_load);

    m_progressRow = new QWidget(this);
    m_progressRow->setObjectName(QStringLiteral("progressRow"));
    m_bar = new QProgressBar(m_progressRow);
    m_bar->setFixedWidth(160);
    m_bar->setRange(0, 1000);
    m_bar->setTextVisible(false);
    m_bar->setMaximumHeight(8);
    m_percent = new QLabel(m_progressRow);
    m_percent->setObjectName(QStringLiteral("percent"));
    makeCaption(m_percent);
    m_statusSpinner = new Spinner(12, m_progressRow);
    m_statusSpinner->setObjectName(QStringLiteral("statusSpinner"));
    m_status = new QLabel(m_progressRow);
    m_status->setObjectName(QStringLiteral("status"));
    makeCaption(m_status);
    auto *second = new QHBoxLayout(m_progressRow);
    second->setContentsMargins(0, 0, 0, 0);
    second->setSpacing(8);
    second->addStretch();
    second->addWidget(m_bar);
    second->addWidget(m_percent);
    second->addWidget(m_statusSpinner);
    second->addWidget(m_status);
    second->addStretch();

    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(8);
    column->addLayout(first);
    column->addWidget(m_progressRow);

    connect(m_field, &QLineEdit::textChanged, this, &LinkRow::refresh);
    connect(m_field, &QLineEdit::returnPressed, this, &LinkRow::submitLink);
    connect(m_load, &QPushButton::clicked, this, &LinkRow::submitLink);
    for (auto signal : {&LinkImport::isBusyChanged, &LinkImport::statusChanged, &LinkImport::progressChanged})
        connect(&m_app.linkImport(), signal, this, &LinkRow::refresh);
    connect(&m_app.transcription(), &TranscriptionJob::isBusyChanged, this, &LinkRow::refresh);

    retranslate();
}

void LinkRow::submitLink()
{
    const QString text = m_field->text().trimmed();
    if (text.isEmpty())
        return;
    m_app.stageLink(text);
}

void LinkRow::refresh()
{
    const bool linkBusy = m_app.linkImport().isBusy();
    const bool busy = linkBusy || m_app.transcription().isBusy();
    m_field->setEnabled(!busy);
    // Only blanks keep the button off; line breaks are left to submitLink.
    m_load->setEnabled(!busy && !Text::trimBlanks(m_field->text()).isEmpty());
    m_load->setText(linkBusy ? QString() : Tr::tr("Laden"));
    m_loadSpinner->setVisible(linkBusy);

    m_progressRow->setVisible(linkBusy);
    const double progress = m_app.linkImport().progress();
    const bool determinate = progress > 0;
    m_bar->setVisible(determinate);
    m_percent->setVisible(determinate);
    m_statusSpinner->setVisible(!determinate);
    m_status->setVisible(!determinate);
    m_bar->setValue(int(std::clamp(progress, 0.0, 1.0) * 1000));
    m_percent->setText(Tr::tr("%1 %").arg(int(progress * 100)));
    m_status->setText(m_app.linkImport().status().value_or(QString()));
}

void LinkRow::retranslate()
{
    const QString placeholder = Tr::tr("Podcast- oder Audio-Link (Apple Podcasts, RSS, MP3)…");
    m_field->setPlaceholderText(placeholder);
    // The field is never narrower than its hint, in any language; the row grows past its
    // usual width where a language needs it.
    QStyleOptionFrame frame;
    frame.initFrom(m_field);
    frame.lineWidth = m_field->style()->pixelMetric(QStyle::PM_DefaultFrameWidth, &frame, m_field);
    const QMargins margins = m_field->textMargins();
    const QSize text(m_field->fontMetrics().horizontalAdvance(placeholder) + margins.left() + margins.right() + 4 /* the inner margin, 2 a side */,
                     m_field->fontMetrics().height());
    m_field->setMinimumWidth(m_field->style()->sizeFromContents(QStyle::CT_LineEdit, &frame, text, m_field).width());
    // The button keeps the width of its word while the spinner stands in for it.
    m_load->setText(Tr::tr("Laden"));
    m_load->setMinimumWidth(m_load->sizeHint().width());
    setMaximumWidth(std::max(540, minimumSizeHint().width()));
    refresh();
}

void LinkRow::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::LanguageChange)
        retranslate();
    QWidget::changeEvent(event);
}
