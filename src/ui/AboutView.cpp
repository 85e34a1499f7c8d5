#include "ui/AboutView.h"
#include "core/Tr.h"

#include "app/LanguageManager.h"
#include "ui/Style.h"

#include <QCoreApplication>
#include <QEvent>
#include <QGraphicsDropShadowEffect>
#include <QLabel>
#include <QPixmap>
#include <QVBoxLayout>

// Whoever ships the program names the maker's person and the line with year and maker.
#ifndef SAGWERK_MAKER_NAME
#define SAGWERK_MAKER_NAME ""
#endif
#ifndef SAGWERK_MAKER_LINE
#define SAGWERK_MAKER_LINE "© 2026 Morvane"
#endif

namespace {

constexpr int logoSide = 104;

QLabel *centred(QWidget *parent, const char *name)
{
    auto *label = new QLabel(parent);
    label->setObjectName(QString::fromLatin1(name));
    label->setAlignment(Qt::AlignHCenter);
    label->setWordWrap(true);
    return label;
}

} // namespace

AboutView::AboutView(QWidget *parent) : QWidget(parent)
{
    setObjectName(QStringLiteral("AboutView"));
    setFixedSize(380, 400);

    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(30, 30, 30, 30);
    column->setSpacing(14);
    column->addStretch(1);

    m_logo = new QLabel(this);
    m_logo->setObjectName(QStringLiteral("logo"));
    m_logo->setFixedSize(logoSide, logoSide);
    auto *shadow = new QGraphicsDropShadowEffect(m_logo);
    shadow->setColor(QColor(0, 0, 0, 38));
    shadow->setBlurRadius(12);
    shadow->setOffset(0, 2);
    m_logo->setGraphicsEffect(shadow);
    column->addWidget(m_logo, 0, Qt::AlignHCenter);

    auto *names = new QVBoxLayout;
    names->setSpacing(2);
    m_maker = centred(this, "maker");
    m_person = centred(this, "person");
    names->addWidget(m_maker);
    names->addWidget(m_person);
    column->addLayout(names);

    QFrame *line = Style::divider(this);
    line->setFixedWidth(220);
    column->addWidget(line, 0, Qt::AlignHCenter);

    auto *product = new QVBoxLayout;
    product->setSpacing(4);
    m_product = centred(this, "product");
    m_line = centred(this, "line");
    m_version = centred(this, "version");
    product->addWidget(m_product);
    product->addWidget(m_line);
    product->addWidget(m_version);
    column->addLayout(product);

    m_copyright = centred(this, "copyright");
    m_copyright->setContentsMargins(0, 2, 0, 0);
    column->addWidget(m_copyright);
    column->addStretch(1);

    connect(&LanguageManager::instance(), &LanguageManager::languageChanged, this, &AboutView::refresh);
    refresh();
}

QString AboutView::version()
{
    const QString built = QStringLiteral(SAGWERK_VERSION);
    return built.isEmpty() ? QStringLiteral("1.0") : built;
}

void AboutView::changeEvent(QEvent *event)
{
    Style::restyleOnLookChange(event, this, &AboutView::refresh);
    QWidget::changeEvent(event);
}

void AboutView::refresh()
{
    using Style::TextSize;
    using Style::Tone;
    setWindowTitle(Tr::tr("Über Morvane"));

    // The logo is read anew each time; without it the rest stands alone.
    const QPixmap logo(QStringLiteral(":/MorvaneLogo.png"));
    if (!logo.isNull()) {
        const qreal dpr = devicePixelRatioF();
        QPixmap scaled = logo.scaled(QSize(logoSide, logoSide) * dpr, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
        scaled.setDevicePixelRatio(dpr);
        m_logo->setPixmap(scaled);
    }
    m_logo->setVisible(!logo.isNull());

    m_maker->setText(QStringLiteral("Morvane"));
    QFont big = Style::font(TextSize::body, QFont::Bold);
    big.setPixelSize(30);
    m_maker->setFont(big);
    Style::setTone(m_maker, Tone::text);
    m_person->setText(QString::fromUtf8(SAGWERK_MAKER_NAME));
    Style::style(m_person, TextSize::title3, Tone::secondary);
    m_person->setVisible(!m_person->text().isEmpty());

    m_product->setText(QStringLiteral("Sagwerk"));
    Style::style(m_product, TextSize::headline);
    m_line->setText(Tr::tr("Lokale Transkription mit whisper.cpp (Metal / Neural Engine)"));
    Style::style(m_line, TextSize::caption, Tone::secondary);
    m_version->setText(Tr::tr("Version %1").arg(version()));
    Style::style(m_version, TextSize::caption, Tone::secondary);

    m_copyright->setText(QString::fromUtf8(SAGWERK_MAKER_LINE));
    Style::style(m_copyright, TextSize::caption2, Tone::secondary);
    m_copyright->setVisible(!m_copyright->text().isEmpty());
}
