#include "ui/HelpView.h"
#include "core/Tr.h"

#include "app/AppModel.h"
#include "app/LanguageManager.h"
#include "ui/Icons.h"
#include "ui/InlineMarkdown.h"
#include "ui/Style.h"

#include <QCoreApplication>
#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QLocale>
#include <QScrollArea>
#include <QSplitter>
#include <QVBoxLayout>

namespace {

using Style::TextSize;
using Style::Tone;

QLabel *textLabel(QWidget *parent, const QString &text, bool markdown)
{
    auto *label = new QLabel(parent);
    label->setWordWrap(true);
    label->setTextFormat(markdown ? Qt::RichText : Qt::PlainText);
    label->setText(markdown ? InlineMarkdown::toHtml(text) : text);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::LinksAccessibleByMouse);
    label->setOpenExternalLinks(true);
    label->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    label->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Minimum);
    Style::style(label, TextSize::body);
    return label;
}

// The scrolled page. Its height follows from its width; the heights that wrapped text
// would take at its narrowest must not become the page's minimum, or the page would
// scroll far past its end.
class ScrollPage : public QWidget {
public:
    using QWidget::QWidget;
    QSize minimumSizeHint() const override { return {QWidget::minimumSizeHint().width(), 0}; }
};

} // namespace

HelpSectionBody::HelpSectionBody(const HelpSection &section, QWidget *parent) : QWidget(parent), m_section(section)
{
    setObjectName(QStringLiteral("section-") + section.id);
    setMaximumWidth(660 + 2 * 26);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(26, 26, 26, 26);
    column->setSpacing(14);

    auto *heading = new QHBoxLayout;
    heading->setContentsMargins(0, 0, 0, 2);
    heading->setSpacing(10);
    auto *icon = new QLabel(this);
    const int iconSize = QFontMetrics(Style::font(TextSize::title2)).height();
    icon->setPixmap(Icons::pixmap(section.icon, iconSize, Style::color(palette(), Tone::accent), devicePixelRatioF()));
    auto *title = textLabel(this, section.title, false);
    title->setObjectName(QStringLiteral("title"));
    Style::style(title, TextSize::largeTitle, Tone::text, QFont::Bold);
    heading->addWidget(icon, 0, Qt::AlignVCenter);
    heading->addWidget(title, 1);
    column->addLayout(heading);

    for (const HelpBlock &block : section.blocks) {
        switch (block.kind) {
        case HelpBlock::Kind::paragraph:
            column->addWidget(textLabel(this, block.text, true));
            break;
        case HelpBlock::Kind::subheading: {
            auto *label = textLabel(this, block.text, false);
            Style::style(label, TextSize::title3, Tone::text, QFont::Bold);
            label->setContentsMargins(0, 6, 0, 0);
            column->addWidget(label);
            break;
        }
        case HelpBlock::Kind::bullets: {
            auto *items = new QVBoxLayout;
            items->setSpacing(7);
            for (const QString &item : block.items) {
                auto *row = new QHBoxLayout;
                row->setSpacing(8);
                auto *dot = new QLabel(QStringLiteral("•"), this);
                Style::style(dot, TextSize::body, Tone::secondary);
                row->addWidget(dot, 0, Qt::AlignTop);
                row->addWidget(textLabel(this, item, true), 1);
                items->addLayout(row);
            }
            column->addLayout(items);
            break;
        }
        case HelpBlock::Kind::tip: {
            auto *box = new Style::RoundedBox(0.12, 8, this);
            box->setObjectName(QStringLiteral("tip"));
            auto *row = new QHBoxLayout(box);
            row->setContentsMargins(11, 11, 11, 11);
            row->setSpacing(8);
            auto *bulb = new QLabel(box);
            const int bulbSize = QFontMetrics(Style::font(TextSize::body)).height() + 2;
            bulb->setPixmap(Icons::pixmap(QStringLiteral("lightbulb"), bulbSize, Style::color(palette(), Tone::yellow),
                                            devicePixelRatioF()));
            row->addWidget(bulb, 0, Qt::AlignTop);
            row->addWidget(textLabel(box, block.text, true), 1);
            column->addWidget(box);
            break;
        }
        }
    }
    column->addStretch(1);
}

HelpView::HelpView(AppModel &app, QWidget *parent) : QWidget(parent), m_app(app)
{
    setObjectName(QStringLiteral("HelpView"));
    setMinimumSize(760, 540);
    resize(960, 680);

    auto *outer = new QHBoxLayout(this);
    outer->setContentsMargins(0, 0, 0, 0);
    auto *split = new QSplitter(Qt::Horizontal, this);
    split->setChildrenCollapsible(false);
    outer->addWidget(split);

    m_list = new QListWidget(split);
    m_list->setObjectName(QStringLiteral("topics"));
    m_list->setMinimumWidth(210);
    m_list->setMaximumWidth(280);
    m_list->setSpacing(2);
    m_list->setFrameShape(QFrame::NoFrame);
    connect(m_list, &QListWidget::currentRowChanged, this, [this](int row) {
        if (row >= 0 && row < book().size())
            select(book()[row].id);
    });

    m_scroll = new QScrollArea(split);
    m_scroll->setFrameShape(QFrame::NoFrame);
    m_scroll->setWidgetResizable(true);
    m_scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    split->addWidget(m_list);
    split->addWidget(m_scroll);
    split->setStretchFactor(1, 1);
    split->setSizes({235, 725});

    connect(&app, &AppModel::appLanguageChanged, this, &HelpView::rebuildList);
    connect(&LanguageManager::instance(), &LanguageManager::languageChanged, this,
            [this] { setWindowTitle(Tr::tr("Hilfe")); });
    setWindowTitle(Tr::tr("Hilfe"));
    rebuildList();
}

QString HelpView::lang(const QString &appLanguage)
{
    if (appLanguage != QLatin1String("system"))
        return appLanguage;
    const QLocale::Language language = QLocale::system().language();
    if (language == QLocale::C || language == QLocale::AnyLanguage)
        return QStringLiteral("en");
    return QLocale::languageToCode(language);
}

std::optional<HelpSection> HelpView::shown(const QList<HelpSection> &book, const std::optional<QString> &selection)
{
    for (const HelpSection &section : book)
        if (selection && section.id == *selection)
            return section;
    if (book.isEmpty())
        return std::nullopt;
    return book.first();
}

const QList<HelpSection> &HelpView::book() const
{
    return HelpContent::book(lang(m_app.appLanguage()));
}

void HelpView::select(const QString &id)
{
    if (m_selection == id && m_body)
        return;
    m_selection = id;
    showSelection();
}

void HelpView::changeEvent(QEvent *event)
{
    Style::restyleOnLookChange(event, this, &HelpView::rebuildList);
    QWidget::changeEvent(event);
}

void HelpView::rebuildList()
{
    const QSignalBlocker blocker(m_list);
    m_list->clear();
    const QPalette &pal = palette();
    const int iconSize = QFontMetrics(Style::font(TextSize::body)).height() + 2;
    m_list->setIconSize(QSize(iconSize, iconSize));
    for (const HelpSection &section : book()) {
        auto *item = new QListWidgetItem(
            Icons::icon(section.icon, Style::color(pal, Tone::accent), pal.color(QPalette::HighlightedText)),
            section.title, m_list);
        item->setData(Qt::UserRole, section.id);
        item->setSizeHint(QSize(0, iconSize + 12));
    }
    // On first show the first topic is chosen.
    if (!m_selection && !book().isEmpty())
        m_selection = book().first().id;
    showSelection();
}

void HelpView::showSelection()
{
    const std::optional<HelpSection> section = shown(book(), m_selection);
    {
        const QSignalBlocker blocker(m_list);
        int row = -1;
        for (int i = 0; section && i < book().size(); ++i)
            if (book()[i].id == section->id)
                row = i;
        m_list->setCurrentRow(row);
    }
    if (!section) {
        delete m_scroll->takeWidget();
        m_body = nullptr;
        return;
    }
    // The body sits at the left of the whole width, at most 660 points of text wide.
    auto *page = new ScrollPage;
    auto *row = new QHBoxLayout(page);
    row->setContentsMargins(0, 0, 0, 0);
    m_body = new HelpSectionBody(*section, page);
    row->addWidget(m_body, 1);
    row->addStretch(0);
    delete m_scroll->takeWidget();
    m_scroll->setWidget(page);
}
