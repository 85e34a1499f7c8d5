#include "ui/CorrectionSheet.h"
#include "core/Text.h"
#include "core/Tr.h"

#include "ui/Icons.h"
#include "ui/Style.h"

#include <QCheckBox>
#include <QCoreApplication>
#include <QDialogButtonBox>
#include <QFontDatabase>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QVBoxLayout>

namespace {

QLabel *headline(const QString &text, QWidget *parent)
{
    auto *label = new QLabel(text, parent);
    label->setFont(Style::font(Style::TextSize::headline));
    return label;
}

} // namespace

CorrectionSheet::CorrectionSheet(const QString &searchBase, const QString &from, QWidget *parent)
    : QDialog(parent), m_searchBase(searchBase)
{
    setWindowTitle(Tr::tr("Korrektur"));
    setFixedSize(470, 430);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(22, 22, 22, 22);
    column->setSpacing(14);

    auto *title = new QLabel(Tr::tr("Korrektur"), this);
    title->setFont(Style::font(Style::TextSize::title, QFont::Bold));
    column->addWidget(title);

    auto field = [&](const QString &label, QLineEdit *&edit) {
        auto *group = new QVBoxLayout;
        group->setSpacing(4);
        group->addWidget(headline(label, this));
        edit = new QLineEdit(from, this);
        edit->setClearButtonEnabled(false);
        group->addWidget(edit);
        column->addLayout(group);
    };
    field(Tr::tr("Suchen"), m_from);
    field(Tr::tr("Ersetzen durch"), m_to);

    auto *checks = new QHBoxLayout;
    checks->setSpacing(18);
    m_caseSensitive = new QCheckBox(Tr::tr("Groß-/Kleinschreibung"), this);
    m_wholeWord = new QCheckBox(Tr::tr("Nur ganze Wörter"), this);
    checks->addWidget(m_caseSensitive);
    checks->addWidget(m_wholeWord);
    checks->addStretch(1);
    column->addLayout(checks);

    auto *count = new QHBoxLayout;
    count->setSpacing(6);
    m_countIcon = new QLabel(this);
    m_count = new QLabel(this);
    count->addWidget(m_countIcon);
    count->addWidget(m_count, 1);
    column->addLayout(count);

    auto *scroll = new QScrollArea(this);
    scroll->setWidgetResizable(true);
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setMaximumHeight(96);
    scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_previewBox = scroll;
    auto *inner = new QWidget(scroll);
    inner->setObjectName(QStringLiteral("previews"));
    QColor tint = palette().color(QPalette::PlaceholderText);
    tint.setAlphaF(0.08f);
    inner->setStyleSheet(QStringLiteral("#previews { background: %1; border-radius: 8px; }").arg(tint.name(QColor::HexArgb)));
    m_previewLines = new QVBoxLayout(inner);
    m_previewLines->setContentsMargins(8, 8, 8, 8);
    m_previewLines->setSpacing(4);
    scroll->setWidget(inner);
    scroll->viewport()->setAutoFillBackground(false);
    inner->setAutoFillBackground(false);
    column->addWidget(scroll);
    column->addStretch(1);

    auto *buttons = new QDialogButtonBox(this);
    buttons->addButton(Tr::tr("Abbrechen"), QDialogButtonBox::RejectRole);
    m_save = buttons->addButton(Tr::tr("Ersetzen"), QDialogButtonBox::AcceptRole);
    m_save->setDefault(true);
    column->addWidget(buttons);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(buttons, &QDialogButtonBox::accepted, this, [this] {
        if (!canSave())
            return;
        emit saved(draft());
        accept();
    });

    connect(m_from, &QLineEdit::textChanged, this, &CorrectionSheet::showState);
    connect(m_to, &QLineEdit::textChanged, this, &CorrectionSheet::showState);
    connect(m_caseSensitive, &QCheckBox::toggled, this, &CorrectionSheet::showState);
    connect(m_wholeWord, &QCheckBox::toggled, this, &CorrectionSheet::showState);
    showState();
}

Correction CorrectionSheet::draft() const
{
    Correction c;
    c.from = m_from->text();
    c.to = m_to->text();
    c.caseSensitive = m_caseSensitive->isChecked();
    c.wholeWord = m_wholeWord->isChecked();
    return c;
}

QList<Corrections::Range> CorrectionSheet::ranges() const
{
    return Corrections::matchRanges(m_from->text(), m_caseSensitive->isChecked(), m_wholeWord->isChecked(),
                                    m_searchBase);
}

QString CorrectionSheet::matchCountText() const
{
    return Tr::tr("%n Stelle(n) werden ersetzt", nullptr, int(ranges().size()));
}

QStringList CorrectionSheet::previews() const
{
    QStringList out;
    for (const Corrections::Range &r : ranges().mid(0, 6)) {
        const qsizetype before = Text::stepCharacters(m_searchBase, r.start, 24, false);
        const qsizetype after = Text::stepCharacters(m_searchBase, r.end, 24, true);
        out << u'…' + m_searchBase.sliced(before, r.start - before) + u'⟦' + m_searchBase.sliced(r.start, r.end - r.start)
                + u'⟧' + m_searchBase.sliced(r.end, after - r.end) + u'…';
    }
    return out;
}

bool CorrectionSheet::canSave() const
{
    return !m_from->text().isEmpty() && !ranges().isEmpty() && m_from->text() != m_to->text();
}

void CorrectionSheet::showState()
{
    const bool none = ranges().isEmpty();
    const QColor color
        = none ? Style::color(palette(), Style::Tone::orange) : palette().color(QPalette::PlaceholderText);
    Style::setTextColor(m_count, color);
    m_count->setText(matchCountText());
    const QIcon icon = QIcon::fromTheme(QStringLiteral("edit-find"));
    m_countIcon->setPixmap(icon.pixmap(14, 14));
    m_countIcon->setVisible(!icon.isNull());

    while (QLayoutItem *item = m_previewLines->takeAt(0)) {
        delete item->widget();
        delete item;
    }
    const QStringList lines = previews();
    const QFont mono = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    for (const QString &line : lines) {
        auto *label = new QLabel(line, m_previewLines->parentWidget());
        QFont f = mono;
        f.setPointSizeF(Style::font(Style::TextSize::caption2).pointSizeF());
        label->setFont(f);
        label->setForegroundRole(QPalette::PlaceholderText);
        label->setTextFormat(Qt::PlainText);
        label->setWordWrap(true);
        m_previewLines->addWidget(label);
    }
    m_previewLines->addStretch(1);
    m_previewBox->setVisible(!lines.isEmpty());
    m_save->setEnabled(canSave());
}
