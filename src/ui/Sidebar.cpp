#include "ui/Sidebar.h"
#include "core/Tr.h"

#include "app/AppModel.h"
#include "app/HistoryFilter.h"
#include "export/Format.h"
#include "ui/Icons.h"
#include "ui/NameDialog.h"
#include "ui/Style.h"

#include <QApplication>
#include <QEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QShortcut>
#include <QPainter>
#include <QPushButton>
#include <QStyledItemDelegate>
#include <QVBoxLayout>

namespace {

enum Role { IdRole = Qt::UserRole, NameRole, DateRole, HasAudioRole };

constexpr int rowPadding = 6;
constexpr int sidePadding = 8;

// A history row: the waveform when the item has audio, its name, and its date below.
class RowDelegate : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &) const override
    {
        const int height = QFontMetrics(nameFont()).height() + 2 + QFontMetrics(dateFont()).height();
        return {option.rect.width(), height + 2 * rowPadding};
    }

    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        QStyleOptionViewItem panel = option;
        initStyleOption(&panel, index);
        panel.text.clear();
        panel.icon = QIcon();
        const QWidget *widget = option.widget;
        QStyle *style = widget ? widget->style() : QApplication::style();
        style->drawPrimitive(QStyle::PE_PanelItemViewItem, &panel, painter, widget);

        const bool selected = option.state & QStyle::State_Selected;
        const QPalette &pal = option.palette;
        const QColor primary = selected ? pal.color(QPalette::HighlightedText) : pal.color(QPalette::Text);
        const QColor secondary = selected ? Style::withAlpha(primary, 0.75) : Style::color(pal, Style::Tone::secondary);

        QRect area = option.rect.adjusted(sidePadding, rowPadding, -sidePadding, -rowPadding);
        painter->save();
        if (index.data(HasAudioRole).toBool()) {
            const int side = QFontMetrics(dateFont()).height() - 2;
            const QPixmap symbol = Icons::pixmap(QStringLiteral("waveform"), side, secondary,
                                                            painter->device()->devicePixelRatioF());
            painter->drawPixmap(QPoint(area.left(), area.center().y() - side / 2), symbol);
            area.setLeft(area.left() + side + 6);
        }
        const QFontMetrics nameMetrics(nameFont());
        painter->setFont(nameFont());
        painter->setPen(primary);
        painter->drawText(QRect(area.left(), area.top(), area.width(), nameMetrics.height()),
                          Qt::AlignLeft | Qt::AlignVCenter,
                          nameMetrics.elidedText(index.data(NameRole).toString(), Qt::ElideRight, area.width()));
        painter->setFont(dateFont());
        painter->setPen(secondary);
        painter->drawText(
            QRect(area.left(), area.top() + nameMetrics.height() + 2, area.width(), QFontMetrics(dateFont()).height()),
            Qt::AlignLeft | Qt::AlignVCenter, index.data(DateRole).toString());
        painter->restore();
    }

private:
    static QFont nameFont() { return Style::font(Style::TextSize::body); }
    static QFont dateFont() { return Style::font(Style::TextSize::caption); }
};

} // namespace

Sidebar::Sidebar(AppModel &app, QWidget *parent) : QWidget(parent), m_app(app)
{
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(8, 10, 8, 8);
    layout->setSpacing(4);

    m_settings = new QPushButton(this);
    m_settings->setFlat(true);
    m_settings->setCursor(Qt::PointingHandCursor);
    m_settings->setStyleSheet(QStringLiteral(
        "QPushButton { text-align: left; padding: 6px 8px; border: none; border-radius: 6px; }"
        "QPushButton:hover { background: palette(midlight); }"));
    connect(m_settings, &QPushButton::clicked, &app, [&app] { app.setShowSettings(true); });
    layout->addWidget(m_settings);
    layout->addSpacing(10);

    m_heading = new QLabel(this);
    m_heading->setFont(Style::font(Style::TextSize::caption, QFont::Bold));
    m_heading->setContentsMargins(sidePadding, 0, 0, 2);
    layout->addWidget(m_heading);

    m_search = new QLineEdit(this);
    m_search->setObjectName(QStringLiteral("historySearch"));
    m_search->setClearButtonEnabled(true);
    layout->addWidget(m_search);
    m_filter = new HistoryFilter(this);
    connect(m_search, &QLineEdit::textChanged, this, [this](const QString &query) { m_filter->search(m_app.history(), query); });
    connect(m_filter, &HistoryFilter::matchesChanged, this, &Sidebar::showMatches);

    m_list = new QListWidget(this);
    m_list->setFrameShape(QFrame::NoFrame);
    m_list->setItemDelegate(new RowDelegate(m_list));
    m_list->setUniformItemSizes(true);
    m_list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_list->setSelectionMode(QAbstractItemView::SingleSelection);
    m_list->setContextMenuPolicy(Qt::CustomContextMenu);
    m_list->viewport()->setAutoFillBackground(false);
    m_list->setAutoFillBackground(false);
    layout->addWidget(m_list, 1);
    layout->addStretch(0); // takes the room while the history is empty

    connect(m_list, &QListWidget::itemSelectionChanged, this, [this] {
        if (m_syncing)
            return;
        const int row = m_list->currentRow();
        const QList<QListWidgetItem *> selected = m_list->selectedItems();
        if (selected.isEmpty() || row < 0 || row >= m_app.history().size())
            return;
        m_app.setCurrent(m_app.history().at(row));
    });
    // A click on the row on show shows it again (after "Neu", for one).
    connect(m_list, &QListWidget::itemClicked, this, [this](QListWidgetItem *item) {
        const int row = m_list->row(item);
        if (row >= 0 && row < m_app.history().size()
            && (!m_app.current() || m_app.current()->id != m_app.history().at(row).id))
            m_app.setCurrent(m_app.history().at(row));
    });
    connect(m_list, &QWidget::customContextMenuRequested, this, [this](const QPoint &at) {
        const int row = m_list->indexAt(at).row();
        if (row < 0)
            return;
        QMenu *menu = contextMenu(row);
        menu->popup(m_list->viewport()->mapToGlobal(at));
    });

    // F2 renames the selected item, as in a file manager.
    auto *rename = new QShortcut(Qt::Key_F2, m_list, nullptr, nullptr, Qt::WidgetWithChildrenShortcut);
    connect(rename, &QShortcut::activated, this, [this] {
        const int row = m_list->currentRow();
        if (row >= 0 && row < m_app.history().size())
            askName(m_app.history().at(row));
    });

    connect(&app, &AppModel::historyChanged, this, &Sidebar::rebuild);
    connect(&app, &AppModel::currentChanged, this, &Sidebar::selectCurrent);

    setMinimumWidth(240);
    setMaximumWidth(320);
    retranslate();
    restyle();
    rebuild();
}

QMenu *Sidebar::contextMenu(int row)
{
    auto *menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    if (row < 0 || row >= m_app.history().size())
        return menu;
    const HistoryItem item = m_app.history().at(row);
    QAction *rename = menu->addAction(Icons::themed(QStringLiteral("edit-rename")), Tr::tr("Umbenennen…"));
    rename->setShortcut(Qt::Key_F2);
    connect(rename, &QAction::triggered, this, [this, item] { askName(item); });
    QAction *remove = menu->addAction(Icons::icon(QStringLiteral("trash"), palette()),
                                      Tr::tr("Löschen"));
    // From the list no question is asked.
    connect(remove, &QAction::triggered, &m_app, [app = &m_app, item] { app->deleteItem(item); });
    return menu;
}

void Sidebar::askName(const HistoryItem &item)
{
    NameDialog::ask(this, Tr::tr("Umbenennen"), Tr::tr("Name im Verlauf:"), item.fileName,
                    [app = &m_app, id = item.id](const QString &name) { app->renameItem(id, name); });
}

void Sidebar::rebuild()
{
    const QSignalBlocker block(m_list);
    m_syncing = true;
    m_list->clear();
    for (const HistoryItem &item : m_app.history()) {
        auto *row = new QListWidgetItem(m_list);
        row->setData(IdRole, item.id);
        row->setData(NameRole, item.fileName);
        row->setData(DateRole, Format::date(item.date));
        row->setData(HasAudioRole, item.audioPath.has_value());
        row->setToolTip(item.fileName);
    }
    m_syncing = false;
    const bool any = !m_app.history().isEmpty();
    m_heading->setVisible(any);
    m_list->setVisible(any);
    m_search->setVisible(any);
    if (m_filter->isActive())
        m_filter->search(m_app.history(), m_search->text());
    selectCurrent();
}

void Sidebar::showMatches()
{
    for (int row = 0; row < m_list->count(); ++row) {
        QListWidgetItem *item = m_list->item(row);
        item->setHidden(m_filter->isActive() && !m_filter->matches().contains(item->data(IdRole).toString()));
    }
}

void Sidebar::selectCurrent()
{
    m_syncing = true;
    int found = -1;
    if (const auto &current = m_app.current()) {
        for (int i = 0; i < m_app.history().size(); ++i) {
            if (m_app.history().at(i).id == current->id) {
                found = i;
                break;
            }
        }
    }
    if (found >= 0)
        m_list->setCurrentRow(found);
    else
        m_list->clearSelection();
    m_syncing = false;
}

void Sidebar::retranslate()
{
    // A lone "&" would mark a mnemonic.
    m_settings->setText(Tr::tr("Modelle & Einstellungen").replace(u'&', QStringLiteral("&&")));
    m_heading->setText(Tr::tr("Verlauf"));
    m_search->setPlaceholderText(Tr::tr("Verlauf durchsuchen"));
}

void Sidebar::restyle()
{
    const QPalette &pal = QApplication::palette();
    m_settings->setIcon(Icons::icon(QStringLiteral("gearshape"), pal));
    Style::setTextColor(m_heading, Style::color(pal, Style::Tone::secondary));
    m_list->viewport()->update();
}

void Sidebar::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::LanguageChange)
        retranslate();
    else if (event->type() == QEvent::ApplicationPaletteChange)
        restyle();
    QWidget::changeEvent(event);
}
