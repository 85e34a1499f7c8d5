#include "ui/FindBar.h"
#include "core/Tr.h"

#include "ui/Icons.h"
#include "ui/Style.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QToolButton>

FindBar::FindBar(QWidget *parent) : QWidget(parent)
{
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(6);
    m_field = new QLineEdit(this);
    m_field->setObjectName(QStringLiteral("findField"));
    m_field->setClearButtonEnabled(true);
    m_field->setMaximumWidth(320);
    m_field->installEventFilter(this);
    m_count = new QLabel(this);
    m_count->setObjectName(QStringLiteral("findCount"));
    m_count->setFont(Style::withTabularDigits(Style::font(Style::TextSize::caption)));
    m_count->setForegroundRole(QPalette::PlaceholderText);
    auto button = [this](const QString &icon) {
        auto *b = new QToolButton(this);
        b->setAutoRaise(true);
        b->setIcon(Icons::themed(icon));
        return b;
    };
    m_previous = button(QStringLiteral("go-up"));
    m_next = button(QStringLiteral("go-down"));
    m_play = button(QStringLiteral("media-playback-start"));
    m_play->setObjectName(QStringLiteral("findPlay"));
    m_close = button(QStringLiteral("window-close"));
    row->addWidget(m_field, 1);
    row->addWidget(m_count);
    row->addWidget(m_previous);
    row->addWidget(m_next);
    row->addWidget(m_play);
    row->addStretch(0);
    row->addWidget(m_close);

    connect(m_field, &QLineEdit::textChanged, this, &FindBar::queryChanged);
    connect(m_previous, &QToolButton::clicked, this, [this] { emit step(false); });
    connect(m_next, &QToolButton::clicked, this, [this] { emit step(true); });
    connect(m_play, &QToolButton::clicked, this, &FindBar::playRequested);
    connect(m_close, &QToolButton::clicked, this, &FindBar::closeRequested);
    retranslate();
    showCount(-1, 0);
}

QString FindBar::query() const
{
    return m_field->text();
}

void FindBar::open()
{
    show();
    m_field->setFocus(Qt::ShortcutFocusReason);
    m_field->selectAll();
}

void FindBar::showCount(qsizetype current, qsizetype count)
{
    m_current = current;
    m_total = count;
    if (m_field->text().trimmed().isEmpty())
        m_count->clear();
    else if (count == 0)
        m_count->setText(Tr::tr("Keine Treffer"));
    else
        m_count->setText(Tr::tr("%1 von %n", nullptr, int(count)).arg(current < 0 ? 0 : current + 1));
    // Nothing found is shown in the warning colour, as the correction sheet does.
    Style::setTone(m_count, count == 0 ? Style::Tone::orange : Style::Tone::secondary);
    m_previous->setEnabled(count > 0);
    m_next->setEnabled(count > 0);
}

void FindBar::setCanPlay(bool can)
{
    m_play->setEnabled(can);
}

bool FindBar::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_field && event->type() == QEvent::KeyPress) {
        const auto *key = static_cast<QKeyEvent *>(event);
        const bool enter = key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter;
        if (enter && (key->modifiers() & Qt::AltModifier)) {
            emit playRequested();
            return true;
        }
        if (enter) {
            emit step(!(key->modifiers() & Qt::ShiftModifier));
            return true;
        }
        if (key->key() == Qt::Key_Escape) {
            emit closeRequested();
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

void FindBar::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::LanguageChange) {
        retranslate();
        showCount(m_current, m_total);
    } else if (event->type() == QEvent::PaletteChange) {
        showCount(m_current, m_total);
    }
}

void FindBar::retranslate()
{
    m_field->setPlaceholderText(Tr::tr("Im Text suchen"));
    m_previous->setToolTip(Tr::tr("Vorheriger Treffer (Umschalt+Eingabe)"));
    m_next->setToolTip(Tr::tr("Nächster Treffer (Eingabe, F3)"));
    m_play->setToolTip(Tr::tr("Ab diesem Treffer abspielen (Alt+Eingabe)"));
    m_close->setToolTip(Tr::tr("Suche schließen (Esc)"));
}
